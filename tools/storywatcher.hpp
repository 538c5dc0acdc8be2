#pragma once

#include <string>

namespace orane
{

/// Watches a story folder with inotify for changes to the files a story is made of (suspects.ini
/// and the .txt files), however an editor saves them: written in place, truncated then written,
/// written to a temporary file then renamed over, deleted then created again. Other files (an
/// editor's swap and backup files) are ignored. Never blocks.
class StoryWatcher
{
public:
    /// `directory` may omit its final '/'. Check `isWatching`.
    explicit StoryWatcher(std::string directory);
    ~StoryWatcher();
    StoryWatcher(const StoryWatcher&) = delete;
    StoryWatcher& operator=(const StoryWatcher&) = delete;

    /// False when the folder cannot be watched (it does not exist, or inotify is out of watches);
    /// `takeChanges` keeps trying to watch it again.
    [[nodiscard]] bool isWatching() const { return watch_ >= 0; }
    /// Readable when events are waiting; -1 without inotify.
    [[nodiscard]] int fileDescriptor() const { return inotify_; }

    /// Reads every waiting event; true when one concerns a story file, or when the folder itself
    /// was removed, moved, or has come back.
    [[nodiscard]] bool takeChanges();

    /// Whether a change to a file of this name can change the story.
    [[nodiscard]] static bool isStoryFileName(const std::string& name);

private:
    void watch();

    std::string directory_;
    int inotify_ = -1;
    int watch_ = -1;
};

} // namespace orane
