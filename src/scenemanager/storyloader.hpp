#pragma once

#include "scene/diagnostic.hpp"
#include "scene/scenelayout.hpp"
#include "scene/scenetextbuffers.hpp"
#include "scenemanager/scenelines.hpp"
#include "scenemanager/story.hpp"
#include "scenemanager/storysource.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orane
{

/// Reads a stories directory into a Story, as the game does: suspects.ini, then story.txt, then
/// each suspect's file, then the checks of the whole story. Prints nothing: every fault comes
/// back as a Diagnostic, which DiagnosticPrinter writes exactly as the game's console shows it.
class StoryLoader
{
public:
    struct Options
    {
        /// The game stops at the first file it cannot get through. Tools read on, to look at
        /// every scene that can be read; the game's own report is then a prefix of theirs.
        bool readPastFaultyFiles = false;
    };

    struct Result
    {
        Story story;
        /// In the order the game prints them.
        Diagnostics diagnostics;
        /// How many of `diagnostics` the game itself reports: the others come from files it
        /// never reaches (only with Options::readPastFaultyFiles).
        std::size_t gameDiagnosticCount = 0;
        /// True when the game would start with this story.
        bool playable = false;
    };

    /// `source` is not owned and must outlive the loader.
    explicit StoryLoader(const StorySource& source);

    /// Reads `directory`, which ends with '/'.
    [[nodiscard]] Result load(const std::string& directory, Options options);
    [[nodiscard]] Result load(const std::string& directory) { return load(directory, Options()); }

    /// Reads one story file into `story`: its scenes (a name already taken keeps its first
    /// scene), then the fixed scenes "game_over" and "end" unless already stored. Answers false
    /// at the first faulty scene, after adding its records; false with a record the game never
    /// prints (STORY_FILE_UNREADABLE) when the file cannot be opened.
    bool loadFile(Story& story, const std::string& path, Diagnostics& diagnostics);

private:
    /// Where the last scene of a file went in each map: the next one most often follows it.
    struct StoringPlaces;

    enum class SUSPECTS
    {
        READ,
        CANNOT_OPEN,
        FAULTY,
    };
    SUSPECTS readSuspects(Story& story, const std::string& directory, Diagnostics& diagnostics);
    bool readFile(Story& story, const std::string& path, Diagnostics& diagnostics);
    void readFiles(Story& story, const std::string& directory, Options options, Result& result);
    bool readBlock(Story& story, std::uint32_t firstLine, std::uint32_t fileIndex, StoringPlaces& places,
                   Diagnostics& diagnostics);
    /// Where the scene just read stands, from layout_ and the block's file lines.
    [[nodiscard]] SceneSource sourceOf(std::uint32_t firstLine, std::uint32_t fileIndex) const;
    [[nodiscard]] SourceLine sourceLine(std::size_t indexInBlock, std::uint32_t firstLine) const;

    const StorySource& source_;
    /// The current scene's lines, as read from the file, and the file line of each.
    std::vector<std::string_view> block_;
    std::vector<std::uint32_t> blockFileLines_;
    SceneLines blockLines_;
    SceneTextBuffers textBuffers_;
    SceneLayout layout_;
};

} // namespace orane
