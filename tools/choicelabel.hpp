#pragma once

#include "scenemanager/playposition.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>

namespace orane
{

/// The label play shows for `choice` at `position`: the stored scene's, or the one the game
/// composes at the hub and the arrest scene for the suspects investigated there.
sf::String choiceLabel(const Story& story, const PlayPosition& position, std::size_t choice);

} // namespace orane
