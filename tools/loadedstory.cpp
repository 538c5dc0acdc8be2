#include "loadedstory.hpp"

#include "scenemanager/diskstorysource.hpp"
#include "scenemanager/storyloader.hpp"

#include <algorithm>

namespace orane
{

LoadedStory::LoadedStory(std::string directory)
    : LoadedStory(std::move(directory), DiskStorySource())
{}

LoadedStory::LoadedStory(std::string directory, const StorySource& source)
    : directory_(std::move(directory))
{
    if (!directory_.empty() && directory_.back() != '/')
        directory_ += '/';
    StoryLoader::Options options;
    options.readPastFaultyFiles = true;
    StoryLoader::Result loaded = StoryLoader(source).load(directory_, options);
    loads_ = loaded.playable;
    diagnostics_ = std::move(loaded.diagnostics);
    gameDiagnosticCount_ = loaded.gameDiagnosticCount;
    story_ = std::move(loaded.story);
}

bool LoadedStory::everyFileRead() const
{
    const auto read = [](const Story::StoryFile& file) { return file.status == Story::StoryFile::STATUS::READ; };
    return !files().empty() && std::all_of(files().begin(), files().end(), read);
}

bool LoadedStory::anyFileFaulty() const
{
    const auto faulty = [](const Story::StoryFile& file) { return file.status == Story::StoryFile::STATUS::FAULTY; };
    return std::any_of(files().begin(), files().end(), faulty);
}

} // namespace orane
