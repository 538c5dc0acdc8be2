#include "scenemanager/scenelines.hpp"

#include "scenemanager/textfile.hpp"

namespace orane
{

void SceneLines::assign(const std::vector<std::string_view>& utf8Lines)
{
    std::size_t byteCount = 0;
    for (std::string_view line : utf8Lines)
        byteCount += line.size();
    // A line never has more code points than bytes.
    if (codePoints_.size() < byteCount)
        codePoints_.resize(byteCount);
    views_.clear();
    sf::Uint32* const buffer = codePoints_.data();
    std::size_t used = 0;
    for (std::string_view line : utf8Lines) {
        const std::size_t count = TextFile::decodeLine(line, buffer + used);
        views_.emplace_back(buffer + used, count);
        used += count;
    }
}

} // namespace orane
