#pragma once

#include "scenemanager/diskstorysource.hpp"
#include "scenemanager/storysource.hpp"

#include <map>
#include <string>

namespace orane
{

/// Story files held in memory, each one taking the place of the file at its path; every other
/// path is read from `fallback` (the disk unless told otherwise). Paths name the same file when
/// they are equal once made lexically normal ("a/./b" is "a/b"; links are not followed).
class BufferedStorySource : public StorySource
{
public:
    /// `fallback` is not owned and must outlive this source; null means the disk.
    explicit BufferedStorySource(const StorySource* fallback = nullptr);

    /// From now on, `path` reads as `bytes` (UTF-8, checked as a file's would be).
    void setBuffer(const std::string& path, std::string bytes);
    /// `path` reads from the fallback again.
    void removeBuffer(const std::string& path);
    [[nodiscard]] bool holdsBuffer(const std::string& path) const;

    [[nodiscard]] TextFile read(const std::string& path) const override;

private:
    static std::string keyOf(const std::string& path);

    DiskStorySource disk_;
    const StorySource* fallback_ = nullptr;
    std::map<std::string, std::string> buffers_;
};

} // namespace orane
