#include "previewoptions.hpp"
#include "previewoverlay.hpp"
#include "reloadtimer.hpp"
#include "scenemanager/scenemanager.hpp"
#include "scenetrail.hpp"
#include "storywatcher.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using orane::ReloadTimer;

sf::Time ms(int milliseconds)
{
    return sf::milliseconds(milliseconds);
}

std::optional<orane::PreviewOptions> parse(std::vector<std::string> arguments, std::string& error)
{
    return orane::PreviewOptions::parse(arguments, error);
}

TEST(PreviewOptions, ThePlaceToStartAtAndTheMistakesOfTheCommandLine)
{
    std::string error;
    const auto plain = parse({"stories"}, error);
    ASSERT_TRUE(plain.has_value());
    EXPECT_EQ(plain->directory, "stories/");
    EXPECT_EQ(plain->start.scene, sf::String("begin"));
    EXPECT_TRUE(plain->start.investigated.empty());
    EXPECT_FALSE(plain->start.hubSeen);

    const auto placed = parse({"--scene", "hub", "dir/", "--investigated", " Adele , Bruno,", "--hub-seen"}, error);
    ASSERT_TRUE(placed.has_value());
    EXPECT_EQ(placed->directory, "dir/");
    EXPECT_EQ(placed->start.scene, sf::String("hub"));
    EXPECT_EQ(placed->start.investigated, (std::vector<sf::String>{"Adele", "Bruno"}));
    EXPECT_TRUE(placed->start.hubSeen);

    EXPECT_FALSE(parse({}, error).has_value());
    EXPECT_EQ(error, "preview: DIR is missing");
    EXPECT_FALSE(parse({"dir", "--scene"}, error).has_value());
    EXPECT_EQ(error, "preview: --scene needs a value");
    EXPECT_FALSE(parse({"dir", "other"}, error).has_value());
    EXPECT_EQ(error, "preview: unexpected argument other");
    EXPECT_FALSE(parse({"dir", "--seen"}, error).has_value());
    EXPECT_FALSE(parse({"dir", "--scene", ""}, error).has_value());
}

const sf::Time QUIET = sf::microseconds(ReloadTimer::QUIET_MICROSECONDS);
const sf::Time GRACE = sf::microseconds(ReloadTimer::FAULT_GRACE_MICROSECONDS);

TEST(ReloadTimer, ABurstOfChangesGivesOneReadingOnceQuiet)
{
    ReloadTimer timer;
    EXPECT_FALSE(timer.untilDue(ms(0)).has_value());
    timer.noteChange(ms(100));
    timer.noteChange(ms(101));
    EXPECT_FALSE(timer.takeReload(ms(101) + QUIET - ms(1)));
    EXPECT_EQ(timer.untilDue(ms(101)), QUIET);
    EXPECT_TRUE(timer.takeReload(ms(101) + QUIET));
    EXPECT_FALSE(timer.takeReload(ms(500)));
    EXPECT_FALSE(timer.untilDue(ms(500)).has_value());
}

TEST(ReloadTimer, AFaultWaitsForTheEditorToFinishAndAnotherChangeDropsIt)
{
    // Truncate then write: the empty file reads as a fault, the full one does not.
    ReloadTimer timer;
    timer.noteChange(ms(0));
    ASSERT_TRUE(timer.takeReload(QUIET));
    timer.holdFault();
    EXPECT_FALSE(timer.takeFault(GRACE - ms(1)));
    timer.noteChange(GRACE - ms(1));
    EXPECT_FALSE(timer.takeFault(ms(5000)));
    ASSERT_TRUE(timer.takeReload(ms(5000)));

    // A fault that stays: shown once the grace has run out after the last change, and once.
    timer.holdFault();
    EXPECT_EQ(timer.untilDue(ms(5000)), sf::Time::Zero);
    timer.noteChange(ms(6000));
    ASSERT_TRUE(timer.takeReload(ms(6000) + QUIET));
    timer.holdFault();
    EXPECT_EQ(timer.untilDue(ms(6000) + QUIET), GRACE - QUIET);
    EXPECT_FALSE(timer.takeFault(ms(6000) + GRACE - ms(1)));
    EXPECT_TRUE(timer.takeFault(ms(6000) + GRACE));
    EXPECT_FALSE(timer.takeFault(ms(7000)));
}

orane::PreviewPlace place(const char* scene, std::vector<sf::String> investigated = {}, bool hubSeen = false)
{
    return orane::PreviewPlace{scene, std::move(investigated), hubSeen};
}

TEST(SceneTrail, ReopeningKeepsTheScenesBeforeAndTheHubOnceSeenStaysSeen)
{
    orane::SceneTrail trail;
    trail.openAt(0, place("briefing", {"Adele"}));
    trail.sceneShown("briefing", {});
    trail.sceneShown("hub", {"Adele"});
    trail.sceneShown("Bruno_begin", {"Adele", "Bruno"});
    trail.sceneShown("Bruno_cave", {"Adele", "Bruno"});
    ASSERT_EQ(trail.stopCount(), 4u);
    // The opening place wins over what the game reports for its first scene.
    EXPECT_EQ(trail.place(0).investigated, std::vector<sf::String>{"Adele"});
    EXPECT_FALSE(trail.place(1).hubSeen);
    EXPECT_TRUE(trail.place(2).hubSeen);
    EXPECT_TRUE(trail.place(3).hubSeen);
    EXPECT_EQ(trail.stopOfSpread(2), 2u);
    EXPECT_EQ(trail.stopOfSpread(9), 3u);

    // Reopened at the third spread: the notebook now starts there.
    trail.openAt(2, trail.place(2));
    EXPECT_EQ(trail.stopCount(), 2u);
    trail.sceneShown("Bruno_begin", {"Adele", "Bruno"});
    EXPECT_EQ(trail.stopOfSpread(0), 2u);
    EXPECT_EQ(trail.place(2).scene, sf::String("Bruno_begin"));
    EXPECT_EQ(trail.place(1).scene, sf::String("hub"));
}

/// A story folder of its own under the system's temporary folder, removed at the end.
class StoryFolder
{
public:
    StoryFolder()
    {
        char pattern[] = "/tmp/orane-preview-XXXXXX";
        path_ = mkdtemp(pattern);
    }
    ~StoryFolder() { fs::remove_all(path_); }
    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }
    void write(const std::string& name, const std::string& text, std::ios::openmode mode = std::ios::trunc) const
    {
        std::ofstream(file(name), std::ios::binary | mode) << text;
    }

private:
    std::string path_;
};

TEST(StoryWatcher, EveryWayEditorsSaveIsSeenAndTheirOwnFilesAreNot)
{
    StoryFolder folder;
    folder.write("story.txt", "SCENE begin\n");
    orane::StoryWatcher watcher(folder.path());
    ASSERT_TRUE(watcher.isWatching());
    EXPECT_FALSE(watcher.takeChanges());

    folder.write("story.txt", "more\n", std::ios::app);
    EXPECT_TRUE(watcher.takeChanges()) << "written in place";
    {
        std::ofstream truncated(folder.file("story.txt"), std::ios::trunc);
    }
    EXPECT_TRUE(watcher.takeChanges()) << "truncated";
    folder.write(".story.txt.swp", "swap");
    folder.write("story.txt~", "backup");
    folder.write("4913", "");
    folder.write("notes.md", "");
    EXPECT_FALSE(watcher.takeChanges()) << "an editor's own files";
    fs::rename(folder.file("story.txt~"), folder.file("story.txt"));
    EXPECT_TRUE(watcher.takeChanges()) << "written aside then renamed over";
    fs::remove(folder.file("story.txt"));
    EXPECT_TRUE(watcher.takeChanges()) << "deleted";
    folder.write("story.txt", "SCENE begin\n");
    EXPECT_TRUE(watcher.takeChanges()) << "created";
    fs::rename(folder.file("story.txt"), folder.path() + "/../" + fs::path(folder.path()).filename().string() + ".out");
    EXPECT_TRUE(watcher.takeChanges()) << "moved away";
    fs::remove(folder.path() + "/../" + fs::path(folder.path()).filename().string() + ".out");
    folder.write("suspects.ini", "Adele\n");
    EXPECT_TRUE(watcher.takeChanges()) << "suspects.ini";
}

TEST(StoryWatcher, AFolderRemovedAndMadeAgainIsWatchedAgain)
{
    StoryFolder folder;
    orane::StoryWatcher watcher(folder.path());
    fs::remove_all(folder.path());
    EXPECT_TRUE(watcher.takeChanges());
    EXPECT_FALSE(watcher.isWatching());
    EXPECT_FALSE(watcher.takeChanges());
    fs::create_directory(folder.path());
    EXPECT_TRUE(watcher.takeChanges()) << "back";
    ASSERT_TRUE(watcher.isWatching());
    folder.write("story.txt", "SCENE begin\n");
    EXPECT_TRUE(watcher.takeChanges());
}

TEST(SceneManagerPlayFrom, PlayStartsAtAnyPlaceWithTheSuspectsAndTheHubAsGiven)
{
    const std::string story = std::string(ORANE_SOURCE_DIR) + "/tests/tools/stories/sound/";
    orane::SceneManager manager(nullptr);
    std::vector<sf::String> shown;
    manager.setNewSceneCallback([&](const orane::Scene&) { shown.push_back(manager.currentSceneName()); });
    manager.setChoiceAppliedCallback([](const orane::Choice&) {});
    ASSERT_TRUE(manager.readStoryFrom(story));
    EXPECT_TRUE(shown.empty());

    manager.playFrom("hub", {"Bruno", "Nobody"}, true);
    ASSERT_EQ(shown, std::vector<sf::String>{"hub"});
    EXPECT_FALSE(manager.isFirstHubPending());
    EXPECT_TRUE(manager.suspectsVisited().at("Bruno"));
    EXPECT_FALSE(manager.suspectsVisited().at("Adele"));
    // The hub offers only the suspect not yet investigated, and the arrest once one was.
    std::vector<sf::String> labels;
    for (const orane::Choice& choice : manager.getCurrentScene().choices)
        labels.push_back(choice.nextSceneName);
    EXPECT_NE(std::find(labels.begin(), labels.end(), sf::String("Adele_begin")), labels.end());
    EXPECT_EQ(std::find(labels.begin(), labels.end(), sf::String("Bruno_begin")), labels.end());

    shown.clear();
    manager.playFrom("briefing", {}, false);
    EXPECT_EQ(shown, (std::vector<sf::String>{"briefing", "hub"})) << "forward links are followed";
}

TEST(PreviewOverlay, LongReportsWrapAtBlanksAndTooManyLinesAreCountedForTheTerminal)
{
    sf::Font font;
    ASSERT_TRUE(font.loadFromFile(std::string(ORANE_BINARY_DIR) + "/resources/fonts/monofonto.ttf"));
    orane::PreviewOverlay overlay(font);
    std::string longLine = "histoire/Dupont.txt:9: ERROR :";
    for (int word = 0; word < 60; ++word)
        longLine += " mot" + std::to_string(word);
    overlay.showFaults("Heading", {longLine, "short"});
    const std::vector<std::string>& lines = overlay.lines();
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines.front(), "Heading");
    EXPECT_EQ(lines.back(), "short");
    // Between the heading and "short": the pieces of the long line.
    const std::size_t last = lines.size() - 2;
    std::string joined;
    for (std::size_t index = 1; index <= last; ++index) {
        const std::string& piece = lines[index];
        EXPECT_LE(piece.size(), lines[1].size() + 4) << "no piece wider than the first";
        if (index > 1) {
            ASSERT_EQ(piece.substr(0, 4), "    ") << "continuations are indented";
            EXPECT_NE(piece[4], ' ');
        }
        if (index < last) {
            EXPECT_EQ(piece.back(), ' ') << "cut after a blank, not inside a word: " << piece;
        }
        joined += index > 1 ? piece.substr(4) : piece;
    }
    EXPECT_EQ(joined, longLine);

    std::vector<std::string> many;
    for (int line = 0; line < 50; ++line)
        many.push_back("line " + std::to_string(line));
    overlay.showFaults("Heading", many);
    ASSERT_EQ(overlay.lines().size(), orane::PreviewOverlay::MOST_LINES);
    EXPECT_EQ(overlay.lines()[orane::PreviewOverlay::MOST_LINES - 2], "line 21");
    EXPECT_EQ(overlay.lines().back(), "... 28 more lines in the terminal");
    overlay.clear();
    EXPECT_TRUE(overlay.isEmpty());
}

} // namespace
