#include "temporarystory.hpp"

#include "oranestorywriter.hpp"
#include "storyplanner.hpp"

#include <cstdlib>
#include <system_error>

namespace orane::bench
{
namespace
{

std::filesystem::path makeTemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "orane-story-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        return {};
    return pattern;
}

} // namespace

TemporaryStory::TemporaryStory(int sceneCount, unsigned seed)
    : root_(makeTemporaryFolder())
    , directory_(root_ / "stories")
{
    if (root_.empty())
        return;
    const StoryPlan plan = StoryPlanner(seed).plan(sceneCount);
    ok_ = OraneStoryWriter().write(plan, directory_.string());
}

TemporaryStory::~TemporaryStory()
{
    std::error_code ignored;
    if (!root_.empty())
        std::filesystem::remove_all(root_, ignored);
}

std::uintmax_t TemporaryStory::totalBytes() const
{
    std::uintmax_t total = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(directory_, error))
        total += entry.file_size(error);
    return total;
}

} // namespace orane::bench
