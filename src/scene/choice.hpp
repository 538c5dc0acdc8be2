#pragma once

#include <SFML/System/String.hpp>

#include <string>
#include <vector>

namespace orane
{

/// One answer that a scene offers to the player.
struct Choice
{
    /// True when all three texts are non-empty (a text of blanks counts as non-empty).
    [[nodiscard]] bool isValid() const;

    /// One sentence for each empty text (brief, long, next, in that order).
    [[nodiscard]] std::vector<std::string> missingFields() const;

    /// The button label: everything after the first "*" of the choice line, untrimmed.
    sf::String briefDescription;
    /// Written into the notebook when the choice is taken: each other line of the choice,
    /// followed by a line feed.
    sf::String longDescription;
    /// The scene the choice leads to: the text after the first "->", trimmed.
    sf::String nextSceneName;
};

} // namespace orane
