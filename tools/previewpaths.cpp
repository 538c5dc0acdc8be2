#include "previewpaths.hpp"

#include <ryn/core/console.hpp>

#include <fstream>

namespace orane
{

std::vector<std::string> PreviewPaths::candidates(const std::string& executableDirectory)
{
    std::vector<std::string> folders{"resources/"};
    if (!executableDirectory.empty()) {
        folders.push_back(executableDirectory + "/resources/");
        folders.push_back(executableDirectory + "/../share/orane/resources/");
    }
    return folders;
}

PreviewPaths::PreviewPaths(std::vector<std::string> candidates)
    : candidates_(std::move(candidates))
{}

std::string PreviewPaths::resourcesPath() const
{
    return found_;
}

bool PreviewPaths::init()
{
    for (const std::string& folder : candidates_) {
        // The paper and a font stand for the whole tree, which the build and the install lay
        // out in one piece.
        if (std::ifstream(folder + "textures/paper.png") && std::ifstream(folder + "fonts/monofonto.ttf")) {
            found_ = folder;
            return true;
        }
    }
    std::string looked;
    for (const std::string& folder : candidates_)
        looked += (looked.empty() ? "" : ", ") + folder;
    ryn::console::writeLine("preview: cannot find the game's fonts and textures (looked in " + looked + ")");
    return false;
}

} // namespace orane
