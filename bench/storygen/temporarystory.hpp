#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace orane::bench
{

/// A generated story tree in a fresh temporary folder, removed with the object.
class TemporaryStory
{
public:
    /// Writes a story of `sceneCount` scenes; `ok()` tells whether it could be written.
    explicit TemporaryStory(int sceneCount, unsigned seed = 1);
    ~TemporaryStory();
    TemporaryStory(const TemporaryStory&) = delete;
    TemporaryStory& operator=(const TemporaryStory&) = delete;

    [[nodiscard]] bool ok() const { return ok_; }
    /// The stories folder, ending with '/', as the scene manager takes it.
    [[nodiscard]] std::string directory() const { return directory_.string() + '/'; }
    /// What the story files weigh together, in bytes.
    [[nodiscard]] std::uintmax_t totalBytes() const;

private:
    std::filesystem::path root_;
    std::filesystem::path directory_;
    bool ok_ = false;
};

} // namespace orane::bench
