#include "storywatcher.hpp"

#include <array>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace orane
{
namespace
{

/// Every way a file's contents or its presence under a name can change. IN_MODIFY alone would
/// miss renames and deletions; IN_CLOSE_WRITE alone would miss writers that keep the file open.
constexpr std::uint32_t FILE_EVENTS = IN_MODIFY | IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr std::uint32_t FOLDER_EVENTS = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED;

bool endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

} // namespace

StoryWatcher::StoryWatcher(std::string directory)
    : directory_(std::move(directory))
    , inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    watch();
}

StoryWatcher::~StoryWatcher()
{
    if (inotify_ >= 0)
        close(inotify_);
}

void StoryWatcher::watch()
{
    if (inotify_ >= 0)
        watch_ = inotify_add_watch(inotify_, directory_.c_str(), FILE_EVENTS | FOLDER_EVENTS | IN_ONLYDIR);
}

bool StoryWatcher::isStoryFileName(const std::string& name)
{
    // A dot file ending in .txt is an editor's lock or swap file (emacs's ".#story.txt").
    return name == "suspects.ini" || (endsWith(name, ".txt") && name[0] != '.');
}

bool StoryWatcher::takeChanges()
{
    if (inotify_ < 0)
        return false;
    if (watch_ < 0) {
        // A folder removed and made again (a checkout, a restore) is watched anew.
        watch();
        return isWatching();
    }
    bool changed = false;
    alignas(inotify_event) std::array<char, 16 * 1024> buffer{};
    for (;;) {
        const ssize_t length = read(inotify_, buffer.data(), buffer.size());
        if (length <= 0)
            return changed;
        for (ssize_t offset = 0; offset < length;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + offset, sizeof(event));
            const char* name = buffer.data() + offset + static_cast<ssize_t>(sizeof(event));
            if ((event.mask & IN_Q_OVERFLOW) != 0) {
                // Events were lost: assume the worst.
                changed = true;
            } else if ((event.mask & FOLDER_EVENTS) != 0) {
                if ((event.mask & IN_IGNORED) == 0)
                    inotify_rm_watch(inotify_, watch_);
                watch_ = -1;
                changed = true;
            } else if (event.len > 0 && isStoryFileName(name)) {
                changed = true;
            }
            offset += static_cast<ssize_t>(sizeof(event) + event.len);
        }
    }
}

} // namespace orane
