#include "scenemanager/storyloader.hpp"

#include "scene/storytext.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "scenemanager/sceneindex.hpp"
#include "scenemanager/storychecks.hpp"

#include <ryn/core/console.hpp>

#include <map>

namespace orane
{
namespace
{

using KIND = Diagnostic::KIND;

/// The one rule for comment lines, everywhere a story is read: a '#' as the line's first byte.
bool isComment(std::string_view line)
{
    return !line.empty() && line[0] == '#';
}

/// Lines open scenes wherever the word SCENE occurs; in UTF-8 an ASCII word is found byte for
/// byte, since no multi-byte sequence holds an ASCII byte.
bool opensScene(std::string_view line)
{
    return line.find("SCENE") != std::string_view::npos;
}

/// The loader's number for the first line that `file` cannot give (its invalid one): comment
/// lines are not counted.
std::uint32_t countedLinesBeforeInvalid(const TextFile& file)
{
    std::uint32_t number = 0;
    std::size_t offset = 0;
    std::string_view line;
    while (file.nextLine(offset, line)) {
        if (!isComment(line))
            ++number;
    }
    return number;
}

Diagnostic fileFault(KIND kind, const std::string& path, std::string message)
{
    Diagnostic diagnostic;
    diagnostic.file = path;
    diagnostic.kind = kind;
    diagnostic.message = std::move(message);
    return diagnostic;
}

/// `gameLine` is the number the message gives, `fileIndex` the 0-based line of the bad byte.
Diagnostic invalidUtf8(const std::string& path, std::uint32_t gameLine, std::size_t fileIndex)
{
    Diagnostic diagnostic = fileFault(KIND::INVALID_UTF8, path,
                                      "invalid UTF-8 at line " + std::to_string(gameLine) + " of file " + path
                                          + ". Story files must be saved as UTF-8.");
    diagnostic.line = gameLine;
    diagnostic.fileLine = static_cast<std::uint32_t>(fileIndex + 1);
    return diagnostic;
}

Diagnostic tooLarge(const std::string& path, std::uintmax_t byteCount)
{
    return fileFault(KIND::FILE_TOO_LARGE, path,
                     "file " + path + " is " + std::to_string(byteCount) + " bytes long. A story file may hold at most "
                         + std::to_string(TextFile::MAX_BYTES) + " bytes.");
}

} // namespace

struct StoryLoader::StoringPlaces
{
    SceneMap::const_iterator scene;
    std::map<sf::String, SceneSource, CodePointLess>::const_iterator source;
};

StoryLoader::StoryLoader(const StorySource& source)
    : source_(source)
{}

StoryLoader::Result StoryLoader::load(const std::string& directory, Options options)
{
    Result result;
    const SUSPECTS suspects = readSuspects(result.story, directory, result.diagnostics);
    if (suspects != SUSPECTS::READ) {
        result.gameDiagnosticCount = result.diagnostics.size();
        // Without a suspects.ini to open there is no story to look at; a faulty one still
        // leaves story.txt for the tools.
        if (options.readPastFaultyFiles && suspects == SUSPECTS::FAULTY)
            readFiles(result.story, directory, options, result);
        result.story.buildIds();
        return result;
    }
    readFiles(result.story, directory, options, result);
    result.story.buildIds();
    return result;
}

StoryLoader::SUSPECTS StoryLoader::readSuspects(Story& story, const std::string& directory, Diagnostics& diagnostics)
{
    const std::string path = directory + "suspects.ini";
    story.suspectsFile_ = path;
    const TextFile file = source_.read(path);
    switch (file.status()) {
    case TextFile::STATUS::CANNOT_OPEN:
        // The message names the game's own path, whichever directory was asked for.
        diagnostics.push_back(
            fileFault(KIND::SUSPECTS_UNREADABLE, path, "coudln't open file resources/stories/suspects.ini"));
        return SUSPECTS::CANNOT_OPEN;
    case TextFile::STATUS::INVALID_UTF8:
        diagnostics.push_back(
            invalidUtf8(path, static_cast<std::uint32_t>(file.invalidLineIndex()), file.invalidLineIndex()));
        return SUSPECTS::FAULTY;
    case TextFile::STATUS::TOO_LARGE: diagnostics.push_back(tooLarge(path, file.byteCount())); return SUSPECTS::FAULTY;
    case TextFile::STATUS::READ: break;
    }
    // sf::String's own order is code-point order; a name met again keeps its first line.
    std::map<sf::String, std::uint32_t> firstLines;
    std::uint32_t fileLine = 0;
    for (const sf::String& line : file.lines())
        firstLines.emplace(trimWhitespace(line), ++fileLine);
    for (const auto& [name, line] : firstLines) {
        story.suspects_.push_back(name);
        story.suspectFileLines_.push_back(line);
    }
    return SUSPECTS::READ;
}

void StoryLoader::readFiles(Story& story, const std::string& directory, Options options, Result& result)
{
    std::vector<std::string> paths{directory + "story.txt"};
    for (const sf::String& suspect : story.suspects_)
        paths.push_back(directory + ryn::console::toUtf8(suspect.toWideString()) + ".txt");
    bool gameGoesOn = result.diagnostics.empty();
    for (const std::string& path : paths) {
        const bool read = readFile(story, path, result.diagnostics);
        if (read || !gameGoesOn)
            continue;
        gameGoesOn = false;
        result.gameDiagnosticCount = result.diagnostics.size();
        if (!options.readPastFaultyFiles)
            return;
    }
    if (!gameGoesOn)
        return;
    const SceneIndex index(story.scenes_);
    result.playable = StoryChecks::checkLinks(story, index, result.diagnostics)
                      && StoryChecks::checkPlayability(story, index, result.diagnostics);
    result.gameDiagnosticCount = result.diagnostics.size();
}

bool StoryLoader::loadFile(Story& story, const std::string& path, Diagnostics& diagnostics)
{
    const bool read = readFile(story, path, diagnostics);
    story.buildIds();
    return read;
}

bool StoryLoader::readFile(Story& story, const std::string& path, Diagnostics& diagnostics)
{
    const auto fileIndex = static_cast<std::uint32_t>(story.files_.size());
    story.files_.push_back(Story::StoryFile{path, Story::StoryFile::STATUS::FAULTY});
    const TextFile file = source_.read(path);
    switch (file.status()) {
    case TextFile::STATUS::CANNOT_OPEN:
        story.files_.back().status = Story::StoryFile::STATUS::CANNOT_OPEN;
        diagnostics.push_back(fileFault(KIND::STORY_FILE_UNREADABLE, path, "cannot open this story file"));
        return false;
    case TextFile::STATUS::INVALID_UTF8:
        diagnostics.push_back(invalidUtf8(path, countedLinesBeforeInvalid(file), file.invalidLineIndex()));
        return false;
    case TextFile::STATUS::TOO_LARGE: diagnostics.push_back(tooLarge(path, file.byteCount())); return false;
    case TextFile::STATUS::READ: break;
    }

    StoringPlaces places{story.scenes_.end(), story.sources_.end()};
    block_.clear();
    blockFileLines_.clear();
    std::uint32_t counter = 0;
    std::uint32_t fileLine = 0;
    std::size_t offset = 0;
    std::string_view line;
    while (file.nextLine(offset, line)) {
        ++fileLine;
        if (isComment(line))
            continue;
        if (opensScene(line)) {
            // Text before the first scene is allowed and dropped, but its lines count.
            if (!block_.empty()) {
                const std::uint32_t firstLine = counter - static_cast<std::uint32_t>(block_.size());
                if (!readBlock(story, firstLine, fileIndex, places, diagnostics)) {
                    Diagnostic notRead =
                        fileFault(KIND::SCENE_NOT_READ, path,
                                  "couldn't deserialize scene starting at line " + std::to_string(firstLine));
                    notRead.line = firstLine;
                    notRead.fileLine = blockFileLines_.front();
                    diagnostics.push_back(std::move(notRead));
                    return false;
                }
                block_.clear();
                blockFileLines_.clear();
            }
            block_.push_back(line);
            blockFileLines_.push_back(fileLine);
        } else if (!block_.empty()) {
            block_.push_back(line);
            blockFileLines_.push_back(fileLine);
        }
        ++counter;
    }

    if (block_.empty()) {
        diagnostics.push_back(
            fileFault(KIND::NO_SCENE_IN_FILE, path,
                      "no scene found in file " + path + ". A story file must hold at least one SCENE line."));
        return false;
    }
    if (!readBlock(story, counter - static_cast<std::uint32_t>(block_.size()), fileIndex, places, diagnostics)) {
        Diagnostic notRead = fileFault(KIND::SCENE_NOT_READ, path,
                                       "couldn't deserialize scene ending at line " + std::to_string(counter));
        notRead.line = counter;
        notRead.fileLine = blockFileLines_.front();
        diagnostics.push_back(std::move(notRead));
        return false;
    }
    story.files_.back().status = Story::StoryFile::STATUS::READ;
    story.scenes_.emplace(GAME_OVER_SCENE_NAME, makeGameOverScene());
    story.scenes_.emplace(END_SCENE_NAME, makeEndScene());
    return true;
}

bool StoryLoader::readBlock(Story& story, std::uint32_t firstLine, std::uint32_t fileIndex, StoringPlaces& places,
                            Diagnostics& diagnostics)
{
    blockLines_.assign(block_);
    const std::size_t reportedBefore = diagnostics.size();
    // The scene is read straight into a map node and the node moved in: sf::String cannot be
    // moved, so copying a whole scene into the map would deep-copy all of its text.
    SceneMap nursery;
    auto node = nursery.extract(nursery.try_emplace(sf::String()).first);
    Scene& scene = node.mapped();
    const bool read = scene.deserialize(blockLines_.views(), firstLine, diagnostics, textBuffers_, &layout_);
    for (std::size_t index = reportedBefore; index < diagnostics.size(); ++index) {
        Diagnostic& found = diagnostics[index];
        found.file = story.files_[fileIndex].path;
        if (found.line >= firstLine && found.line - firstLine < blockFileLines_.size())
            found.fileLine = blockFileLines_[found.line - firstLine];
    }
    if (!read)
        return false;
    node.key() = scene.name;
    // Authors often write scenes in the order of their names: the place after the last scene
    // stored is then the right one, found without a search (any other place costs one).
    const auto position = story.scenes_.insert(places.scene, std::move(node));
    // A node handle is emptied only when it is inserted; one whose name was taken comes back as
    // it was, which is what tells the two apart here.
    // NOLINTBEGIN(bugprone-use-after-move)
    if (node.empty()) {
        places.scene = std::next(position);
        places.source =
            std::next(story.sources_.emplace_hint(places.source, position->first, sourceOf(firstLine, fileIndex)));
    } else {
        story.skippedScenes_.push_back(Story::SkippedScene{
            node.mapped().name, Story::SceneOrigin{story.files_[fileIndex].path, firstLine}, blockFileLines_.front()});
    }
    // NOLINTEND(bugprone-use-after-move)
    return true;
}

SceneSource StoryLoader::sourceOf(std::uint32_t firstLine, std::uint32_t fileIndex) const
{
    SceneSource source;
    source.file = fileIndex;
    source.scene = sourceLine(0, firstLine);
    if (layout_.forward != 0)
        source.forward = sourceLine(layout_.forward, firstLine);
    source.choices.reserve(layout_.choices.size());
    for (const SceneLayout::ChoiceLines& choice : layout_.choices) {
        SceneSource::ChoiceSource lines;
        lines.label = sourceLine(choice.label, firstLine);
        if (choice.target != 0)
            lines.target = sourceLine(choice.target, firstLine);
        source.choices.push_back(lines);
    }
    return source;
}

SourceLine StoryLoader::sourceLine(std::size_t indexInBlock, std::uint32_t firstLine) const
{
    return SourceLine{firstLine + static_cast<std::uint32_t>(indexInBlock), blockFileLines_[indexInBlock]};
}

} // namespace orane
