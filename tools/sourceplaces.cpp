#include "sourceplaces.hpp"

#include "scene/storytext.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/textfile.hpp"

namespace orane
{
namespace
{

bool isComment(const sf::String& line)
{
    return !line.isEmpty() && line[0] == U'#';
}

/// What the scene parser takes for a choice line once FORWARD, ORANE and NATHAN are ruled out.
bool isChoiceLine(const sf::String& line)
{
    return containsToken(line, TOKEN_CHOICE) && !containsToken(line, TOKEN_FORWARD)
           && !containsToken(line, TOKEN_ORANE) && !containsToken(line, TOKEN_NATHAN);
}

} // namespace

std::string SourcePlaces::place(const std::string& path, std::uint32_t countedLine)
{
    const std::size_t line = physicalLine(path, countedLine);
    return line == 0 ? path : path + ":" + std::to_string(line);
}

std::string SourcePlaces::choicePlace(const std::string& path, std::uint32_t sceneLine, std::size_t choiceIndex)
{
    const std::size_t sceneStart = physicalLine(path, sceneLine);
    if (sceneStart == 0)
        return path;
    const std::vector<sf::String>& lines = linesOf(path);
    std::size_t choicesSeen = 0;
    for (std::size_t index = sceneStart; index < lines.size(); ++index) {
        const sf::String& line = lines[index];
        if (isComment(line))
            continue;
        if (containsToken(line, TOKEN_SCENE))
            break;
        if (isChoiceLine(line) && choicesSeen++ == choiceIndex)
            return path + ":" + std::to_string(index + 1);
    }
    return place(path, sceneLine);
}

std::string SourcePlaces::suspectPlace(const std::string& suspectsPath, const sf::String& suspect)
{
    const std::vector<sf::String>& lines = linesOf(suspectsPath);
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (trimWhitespace(lines[index]) == suspect)
            return suspectsPath + ":" + std::to_string(index + 1);
    }
    return suspectsPath;
}

std::size_t SourcePlaces::physicalLine(const std::string& path, std::uint32_t countedLine)
{
    const std::vector<sf::String>& lines = linesOf(path);
    std::uint32_t counted = 0;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (isComment(lines[index]))
            continue;
        if (counted == countedLine)
            return index + 1;
        ++counted;
    }
    return 0;
}

const std::vector<sf::String>& SourcePlaces::linesOf(const std::string& path)
{
    auto found = files_.find(path);
    if (found == files_.end())
        found = files_.emplace(path, TextFile::load(path).lines()).first;
    return found->second;
}

} // namespace orane
