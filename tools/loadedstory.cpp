#include "loadedstory.hpp"

#include <ryn/core/console.hpp>

#include <fstream>

namespace orane
{

LoadedStory::LoadedStory(std::string directory)
    : directory_(std::move(directory))
{
    if (!directory_.empty() && directory_.back() != '/')
        directory_ += '/';
    game_.setNewSceneCallback([](const Scene&) {});
    game_.setChoiceAppliedCallback([](const Choice&) {});
    {
        ryn::console::Capture capture;
        loads_ = game_.loadStoryFrom(directory_);
        gameReport_ = capture.lines();
    }
    readEachFile();
}

void LoadedStory::readEachFile()
{
    // Without suspects.ini the game reads no story file at all.
    if (!std::ifstream(suspectsPath()))
        return;
    std::vector<std::string> paths{directory_ + "story.txt"};
    for (const auto& suspect : game_.suspectsVisited())
        paths.push_back(directory_ + ryn::console::toUtf8(suspect.first.toWideString()) + ".txt");

    for (const std::string& path : paths) {
        FileReport report;
        report.path = path;
        if (!std::ifstream(path)) {
            report.status = FileReport::STATUS::CANNOT_OPEN;
        } else {
            // A scene is judged on its own lines only, so reading into a manager that already
            // holds the other files gives the same verdict and messages as the game's reading.
            ryn::console::Capture capture;
            if (!allScenes_.loadStoryFile(path))
                report.status = FileReport::STATUS::FAULTY;
            report.messages = capture.lines();
        }
        files_.push_back(std::move(report));
    }
}

bool LoadedStory::everyFileRead() const
{
    return !files_.empty() && firstFailedFile() == nullptr;
}

bool LoadedStory::anyFileFaulty() const
{
    for (const FileReport& file : files_) {
        if (file.status == FileReport::STATUS::FAULTY)
            return true;
    }
    return false;
}

const LoadedStory::FileReport* LoadedStory::firstFailedFile() const
{
    for (const FileReport& file : files_) {
        if (file.status != FileReport::STATUS::READ)
            return &file;
    }
    return nullptr;
}

} // namespace orane
