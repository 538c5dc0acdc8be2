#pragma once

#include <SFML/System/String.hpp>

#include <vector>

namespace orane
{

/// Where the preview stands in the story: a scene and what play remembers on reaching it.
struct PreviewPlace
{
    sf::String scene;
    /// Suspect names, as suspects.ini spells them once trimmed.
    std::vector<sf::String> investigated;
    bool hubSeen = false;
};

} // namespace orane
