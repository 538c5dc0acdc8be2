#pragma once

#include "scene/diagnostic.hpp"
#include "scenemanager/story.hpp"
#include "scenemanager/storysource.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace orane
{

/// A story directory read once as the tools need it: every file is read, past a faulty one, so
/// that every scene that can be read is there to look at, and the game's own report and verdict
/// stand apart from what only the tools see.
class LoadedStory
{
public:
    /// `directory` may omit its final '/'. Prints nothing.
    explicit LoadedStory(std::string directory);
    /// The same, with the files read from `source` (an editor's buffers over the disk).
    LoadedStory(std::string directory, const StorySource& source);

    [[nodiscard]] const std::string& directory() const { return directory_; }
    [[nodiscard]] std::string suspectsPath() const { return directory_ + "suspects.ini"; }

    /// True when the game would start with this story.
    [[nodiscard]] bool loads() const { return loads_; }
    /// What the game reports, in its order, then what the files it never reaches hold.
    [[nodiscard]] const Diagnostics& diagnostics() const { return diagnostics_; }
    /// How many of diagnostics() the game itself reports.
    [[nodiscard]] std::size_t gameDiagnosticCount() const { return gameDiagnosticCount_; }

    /// Every scene of every file up to that file's first fault, with the fixed scenes; the
    /// scenes the game keeps when a name is taken twice, and the ones it drops.
    [[nodiscard]] const Story& story() const { return story_; }
    /// story.txt then the suspects' files, in the order the game reads them; empty when
    /// suspects.ini could not be opened.
    [[nodiscard]] const std::vector<Story::StoryFile>& files() const { return story_.files(); }
    /// True when every file was opened and read without a fault (links may still be broken).
    [[nodiscard]] bool everyFileRead() const;
    /// True when some file that opened holds a fault (a file that cannot be opened is not one).
    [[nodiscard]] bool anyFileFaulty() const;

private:
    std::string directory_;
    bool loads_ = false;
    Diagnostics diagnostics_;
    std::size_t gameDiagnosticCount_ = 0;
    Story story_;
};

} // namespace orane
