#pragma once

#include <SFML/System/String.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orane
{

/// Turns the game's line numbers (counted from 0, comment lines left out) into the places an
/// editor shows: "file:line" with lines counted from 1 as they stand in the file.
class SourcePlaces
{
public:
    /// "path:line" for the line the game numbers `countedLine` in `path`; "path" alone when
    /// the file cannot be read or is shorter.
    std::string place(const std::string& path, std::uint32_t countedLine);

    /// The place of choice `choiceIndex` of the scene whose SCENE line the game numbers
    /// `sceneLine`: its "*" line. Falls back to the scene's own place.
    std::string choicePlace(const std::string& path, std::uint32_t sceneLine, std::size_t choiceIndex);

    /// The place of the first line of suspects.ini that names `suspect` once trimmed.
    std::string suspectPlace(const std::string& suspectsPath, const sf::String& suspect);

private:
    /// 1-based editor line of the counted line, 0 when there is none.
    std::size_t physicalLine(const std::string& path, std::uint32_t countedLine);
    const std::vector<sf::String>& linesOf(const std::string& path);

    std::map<std::string, std::vector<sf::String>> files_;
};

} // namespace orane
