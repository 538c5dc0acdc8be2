#pragma once

#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <SFML/System/String.hpp>

#include <string>
#include <vector>

namespace orane
{

/// Help for the usual slips of a story author, each a warning at its place: a link to a
/// missing scene names the closest existing ones; a suspect's file that cannot be opened names
/// a file that differs only by letter case or by Unicode normalisation (an "é" saved as "e" and
/// a combining accent looks the same and is another name); a "*" inside a sentence, which the
/// game takes for the start of the choices.
class SlipCheck
{
public:
    /// `directory` ends with '/'; `suspects` in the game's order.
    SlipCheck(const std::vector<SourceText>& sources, std::string directory, std::vector<sf::String> suspects);

    [[nodiscard]] std::vector<StoryFinding> findings() const;

    /// The existing names closest to `missing` (case and accents count for little), best first;
    /// none when nothing is close.
    [[nodiscard]] std::vector<sf::String> closestNames(const sf::String& missing) const;

    /// `name` with accents decomposed and letters in lower case: two names with the same fold
    /// differ only by case or normalisation.
    static std::u32string fold(const sf::String& name, bool keepCase);

private:
    void checkLinks(std::vector<StoryFinding>& found) const;
    void checkSuspectFiles(std::vector<StoryFinding>& found) const;
    void checkStars(std::vector<StoryFinding>& found) const;

    const std::vector<SourceText>& sources_;
    std::string directory_;
    std::vector<sf::String> suspects_;
    std::vector<sf::String> names_;
};

} // namespace orane
