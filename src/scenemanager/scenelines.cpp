#include "scenemanager/scenelines.hpp"

#include "scenemanager/textfile.hpp"

namespace orane
{

void SceneLines::assign(const std::vector<std::string_view>& utf8Lines)
{
    codePoints_.clear();
    ends_.clear();
    for (std::string_view line : utf8Lines) {
        TextFile::appendCodePoints(line, codePoints_);
        ends_.push_back(codePoints_.size());
    }
    // Views are taken once the buffer has stopped growing.
    views_.clear();
    std::size_t begin = 0;
    for (std::size_t end : ends_) {
        views_.emplace_back(codePoints_.data() + begin, end - begin);
        begin = end;
    }
}

} // namespace orane
