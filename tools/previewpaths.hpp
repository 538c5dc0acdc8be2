#pragma once

#include <ryn/core/pathmanager.hpp>

#include <string>
#include <vector>

namespace orane
{

/// The game's resource tree for the preview, which runs from any folder: the first of the
/// candidate folders that holds the game's fonts and textures.
class PreviewPaths : public ryn::PathManager
{
public:
    /// resources/ under the working folder, then next to the tool (a build), then where an
    /// installation puts the game's data.
    static std::vector<std::string> candidates(const std::string& executableDirectory);

    explicit PreviewPaths(std::vector<std::string> candidates);

    /// The folder found by init, ending with '/'.
    [[nodiscard]] std::string resourcesPath() const override;
    /// False, after saying where it looked, when no candidate holds the game's resources.
    bool init() override;

private:
    std::vector<std::string> candidates_;
    std::string found_;
};

} // namespace orane
