#include "scenemanager/sceneindex.hpp"
#include "scenemanager/textfile.hpp"
#include "storytesting.hpp"

using namespace storytesting;

namespace
{

/// The scenes a suspect needs, back to the hub and, when accused, to the end.
std::string suspectFile(const std::string& name)
{
    return "SCENE " + name + "_begin\nORANE\nSur " + name + ".\nFORWARD hub\nSCENE " + name + "_arrest\nNATHAN\nC'est "
           + name + ".\nFORWARD end\n";
}

const std::string BEGIN = "SCENE begin\nORANE\nBonjour Monsieur N.\nFORWARD hub\n";

Player load(const std::string& suspects, const std::string& story,
            const std::vector<std::pair<std::string, std::string>>& otherFiles = {})
{
    StoryTree tree;
    tree.write("suspects.ini", suspects);
    if (!story.empty()) // no story.txt at all
        tree.write("story.txt", story);
    for (const auto& [name, content] : otherFiles)
        tree.write(name, content);
    return Player(tree);
}

TEST(StoryLoader, ReadsSuspectsTrimmedOnceEachInCodePointOrderAndKeepsTheFirstSceneOfAName)
{
    StoryTree tree;
    tree.write("suspects.ini", "Moreau\n  Dupont\t\nMoreau\nalice");
    tree.write("story.txt", "SCENE end\nORANE\nMa propre fin.\nFORWARD begin\n" + BEGIN);
    tree.write("Dupont.txt", suspectFile("Dupont"));
    tree.write("Moreau.txt", suspectFile("Moreau") + "SCENE commun\nORANE\nDe Moreau.\nFORWARD end\n");
    tree.write("alice.txt", "SCENE commun\nORANE\nD'alice.\nFORWARD end\nSCENE begin\nORANE\nAutre.\nFORWARD end\n"
                                + suspectFile("alice"));

    const Player player(tree);
    ASSERT_TRUE(player.loaded) << ::testing::PrintToString(player.report);
    EXPECT_TRUE(player.report.empty());
    EXPECT_EQ(player.events, (Lines{"scene begin", "scene hub"}));
    Lines suspects;
    for (const auto& [name, visited] : player.manager().suspectsVisited())
        suspects.push_back(utf8(name) + (visited ? " visited" : ""));
    EXPECT_EQ(suspects, (Lines{"Dupont", "Moreau", "alice"}));

    const auto& scenes = player.manager().scenes();
    EXPECT_EQ(describe(scenes.at(u8("commun"))), "commun|De Moreau.\n||end");
    EXPECT_EQ(describe(scenes.at(u8("end"))), "end|Ma propre fin.\n||begin");
    EXPECT_EQ(player.manager().findOrigin(u8("commun"))->file, tree.directory() + "Moreau.txt");
    EXPECT_EQ(player.manager().findOrigin(u8("commun"))->line, 8u);
    Lines skipped;
    for (const auto& scene : player.manager().skippedScenes())
        skipped.push_back(utf8(scene.name) + " " + scene.origin.file.substr(tree.directory().size()) + ":"
                          + std::to_string(scene.origin.line));
    EXPECT_EQ(skipped, (Lines{"commun alice.txt:0", "begin alice.txt:4"}));
}

TEST(StoryLoader, FailsOnMissingFilesWithOnlyTheSuspectListReported)
{
    StoryTree noSuspects;
    // The message names the game's own folder whatever folder was read.
    EXPECT_EQ(Player(noSuspects).report, Lines{"FATAL ERROR : coudln't open file resources/stories/suspects.ini"});

    // No story.txt; a blank line naming the suspect ""; a byte-order mark starting the first name.
    const std::vector<std::pair<std::string, std::string>> cases = {{"Dupont\n", ""},
                                                                    {"Dupont\n\n", BEGIN},
                                                                    {"\xEF\xBB\xBF"
                                                                     "Dupont\n",
                                                                     BEGIN}};
    for (const auto& [suspects, story] : cases) {
        const Player player = load(suspects, story, {{"Dupont.txt", suspectFile("Dupont")}});
        EXPECT_FALSE(player.loaded);
        EXPECT_TRUE(player.report.empty()) << ::testing::PrintToString(player.report);
        EXPECT_TRUE(player.events.empty());
    }
}

TEST(StoryLoader, TakesFoldersAndNamesWithANulForFilesThatCannotBeOpened)
{
    // A folder opens but cannot be read; a NUL in a suspect's name would cut the path to the
    // stories folder itself ("\0.txt") or to another file ("Du\0pont.txt" to "Du").
    StoryTree folders;
    std::filesystem::create_directory(folders.directory() + "suspects.ini");
    EXPECT_EQ(Player(folders).report, Lines{"FATAL ERROR : coudln't open file resources/stories/suspects.ini"});

    for (const std::string& suspects : {std::string("\0\n", 2), std::string("Du\0pont\n", 8)}) {
        const Player player = load(suspects, BEGIN, {{"Du", suspectFile("Du")}});
        EXPECT_FALSE(player.loaded);
        EXPECT_TRUE(player.report.empty()) << ::testing::PrintToString(player.report);
    }

    StoryTree storyFolder;
    storyFolder.write("suspects.ini", "");
    std::filesystem::create_directory(storyFolder.directory() + "story.txt");
    const Player player(storyFolder);
    EXPECT_FALSE(player.loaded);
    EXPECT_TRUE(player.report.empty()) << ::testing::PrintToString(player.report);
}

TEST(StoryLoader, RefusesUnreadAFileLargerThanAnyStory)
{
    // A story padded with comments to exactly the limit still loads; one byte more is refused,
    // in any of the files, before the notebook could choke on it.
    const std::uintmax_t limit = orane::TextFile::MAX_BYTES;
    const std::string story = "SCENE begin\nORANE\nB.\nFORWARD end\n#";
    const std::string atLimit = story + std::string(limit - story.size() - 1, 'x') + "\n";
    ASSERT_EQ(atLimit.size(), limit);
    EXPECT_TRUE(load("", atLimit).loaded);

    StoryTree tree;
    tree.write("suspects.ini", "Dupont\n");
    tree.write("story.txt", BEGIN);
    tree.write("Dupont.txt", atLimit + "#");
    const Player player(tree);
    EXPECT_FALSE(player.loaded);
    EXPECT_EQ(player.report, Lines{"ERROR : file " + tree.directory()
                                   + "Dupont.txt is 1048577 bytes long. "
                                     "A story file may hold at most 1048576 bytes."});
}

TEST(StoryLoader, NumbersLinesFromZeroWithoutCommentsAndStopsAtTheFirstBadScene)
{
    const Player middle = load("", "Préambule\nSCENE begin\nORANE\nBonjour.\n# c\n# c\nFORWARD cave\n"
                                   "SCENE cave\nORANE\n #pas un commentaire\nNoir.\nORANE\nSCENE jamais_lue\n");
    EXPECT_FALSE(middle.loaded);
    EXPECT_EQ(middle.report, (Lines{"ERROR (line 9 - cave) : Found more than one ORANE token. There can be only "
                                    "one text for orane per scene.",
                                    "ERROR : couldn't deserialize scene starting at line 5"}));
    EXPECT_EQ(middle.manager().scenes().size(), 1u); // begin, without the fixed scenes

    const Player last = load("", "SCENE begin\r\nORANE\r\n# c\r\nBonjour.\r\n\r\n");
    EXPECT_EQ(last.report, (Lines{"ERROR (line 0 - begin) : Found the following game logic errors :",
                                  "---- No choices were found, and no FORWARD was found. The scene must contain "
                                  "exactly one of the two, or the game can't know where to go next",
                                  "ERROR : couldn't deserialize scene ending at line 4"}));
}

TEST(StoryLoader, ReportsEveryBrokenLinkInSceneNameOrder)
{
    const Player player =
        load("", BEGIN
                     + "SCENE zebre\nORANE\nZ.\n* a\nA.\n-> nulle_part\n"
                       "SCENE cave\nORANE\nC.\n* a\nA.\n-> Begin\n* b\nB.\n-> begin\n* c\nC.\n-> puits\n"
                       "SCENE allee\nORANE\nA.\n* a\nA.\n-> arrest\n* b\nB.\n-> game_over\n"
                       "* c\nC.\n-> end\n* d\nD.\n-> hub\n"
                       "SCENE porte\nNATHAN\nP.\nFORWARD Cave\n");
    EXPECT_FALSE(player.loaded);
    EXPECT_EQ(player.report, (Lines{"ERROR : Scene \"cave\" choice 0 points to non-existing scene \"Begin\".",
                                    "ERROR : Scene \"cave\" choice 2 points to non-existing scene \"puits\".",
                                    "ERROR : Scene \"porte\" forwards to non-existing scene \"Cave\".",
                                    "ERROR : Scene \"zebre\" choice 0 points to non-existing scene \"nulle_part\"."}));
    EXPECT_TRUE(player.events.empty());
}

TEST(StoryLoader, NeedsTheSuspectsScenesOnlyWhenTheHubCanBeReached)
{
    const Player player = load("Dupont\n", "SCENE begin\nORANE\nB.\nFORWARD end\n",
                               {{"Dupont.txt", "SCENE x\nORANE\nX.\nFORWARD end\n"}});
    EXPECT_TRUE(player.loaded) << ::testing::PrintToString(player.report);
    EXPECT_EQ(player.events, (Lines{"scene begin", "scene end"}));
}

TEST(StoryLoader, RefusesStoriesThatCouldNotBePlayedToTheEnd)
{
    struct Case
    {
        std::string suspects;
        std::string story;
        Lines report; // {dir} stands for the story folder
        std::vector<std::pair<std::string, std::string>> otherFiles = {};
    };
    const std::string noScene =
        "ERROR : no scene found in file {dir}story.txt. A story file must hold at least one SCENE line.";
    const std::vector<Case> cases = {
        {"",
         "SCENE begin\n# c\nORANE\nBonjour\xE9 !\nFORWARD end\n",
         {"ERROR : invalid UTF-8 at line 2 of file {dir}story.txt. Story files must be saved as UTF-8."}},
        {"Dupont\nL\xC3\n",
         BEGIN,
         {"ERROR : invalid UTF-8 at line 1 of file {dir}suspects.ini. Story files must be saved as UTF-8."}},
        {"", "# rien\nORANE\n", {noScene}},
        {"", "", {noScene}},
        {"",
         "SCENE debut\nORANE\nB.\nFORWARD end\n",
         {"ERROR : No scene named \"begin\" was found. The story starts with that scene."}},
        {"Leroy\nDupont\n",
         BEGIN,
         {"ERROR : Suspect \"Dupont\" has no scene \"Dupont_arrest\".",
          "ERROR : Suspect \"Leroy\" has no scene \"Leroy_begin\".",
          "ERROR : Suspect \"Leroy\" has no scene \"Leroy_arrest\"."},
         {{"Dupont.txt", "SCENE Dupont_begin\nORANE\nD.\nFORWARD hub\n"},
          {"Leroy.txt", "SCENE x\nORANE\nL.\nFORWARD hub\n"}}},
        {"Du_begin\n",
         BEGIN,
         {"ERROR : Suspect \"Du_begin\" has \"_begin\" in its name, so the hub can't tell which suspect is picked."},
         {{"Du_begin.txt", suspectFile("Du_begin")}}},
        {"",
         "SCENE begin\nORANE\nB.\nFORWARD c\nSCENE a\nORANE\nA.\nFORWARD b\nSCENE b\nORANE\nB.\nFORWARD a\n"
         "SCENE c\nNATHAN\nC.\nFORWARD b\nSCENE moi\nORANE\nM.\nFORWARD moi\n"
         "SCENE sortie\nORANE\nS.\nFORWARD a2\nSCENE a2\nORANE\nA.\n* Sortir\nOui.\n-> sortie\n",
         {"ERROR : Scenes \"a\" -> \"b\" -> \"a\" forward to one another without any choice, so play would never stop.",
          "ERROR : Scenes \"moi\" -> \"moi\" forward to one another without any choice, so play would never stop."}},
    };
    for (const Case& c : cases) {
        StoryTree tree;
        tree.write("suspects.ini", c.suspects);
        tree.write("story.txt", c.story);
        for (const auto& [name, content] : c.otherFiles)
            tree.write(name, content);
        Lines expected = c.report;
        for (std::string& line : expected) {
            if (const auto at = line.find("{dir}"); at != std::string::npos)
                line.replace(at, 5, tree.directory());
        }
        const Player player(tree);
        EXPECT_FALSE(player.loaded);
        EXPECT_EQ(player.report, expected);
        EXPECT_TRUE(player.events.empty());
    }
}

} // namespace

namespace
{

TEST(StoryLoader, StoresScenesWrittenInAnyOrderEachWithItsOwnLine)
{
    // Names rising, falling, then back before them, with a repeat: the loader guesses that each
    // scene goes after the last one, and the repeat must still be found and dropped.
    const std::vector<std::string> names = {"c10", "c11", "c12", "b9", "b3", "d1", "a0", "c11", "c13", "e"};
    std::string story = BEGIN;
    for (const std::string& name : names)
        story += "SCENE " + name + "\nORANE\n" + name + " ici.\nFORWARD end\n";
    const Player player = load("", story);
    ASSERT_TRUE(player.loaded) << ::testing::PrintToString(player.report);

    const orane::SceneManager& manager = player.manager();
    for (std::size_t index = 0; index < names.size(); ++index) {
        const auto origin = manager.findOrigin(u8(names[index]));
        ASSERT_TRUE(origin.has_value()) << names[index];
        const std::uint32_t firstWritten = index == 7 ? 8u : 4u + 4u * static_cast<std::uint32_t>(index);
        EXPECT_EQ(origin->line, firstWritten) << names[index];
    }
    EXPECT_EQ(describe(manager.scenes().at(u8("c11"))), "c11|c11 ici.\n||end");
    Lines stored;
    for (const auto& entry : manager.scenes())
        stored.push_back(utf8(entry.first));
    // The hub shown at the start is composed apart: the story stays as it was read.
    EXPECT_EQ(stored, (Lines{"a0", "b3", "b9", "begin", "c10", "c11", "c12", "c13", "d1", "e", "end", "game_over"}));
    ASSERT_EQ(manager.skippedScenes().size(), 1u);
    EXPECT_EQ(manager.skippedScenes()[0].origin.line, 32u);
}

TEST(SceneIndex, FindsEveryStoredNameAndNothingElse)
{
    // Enough names that runs of slots meet, names that are prefixes of one another, and code
    // points beyond U+FFFF.
    orane::SceneMap scenes;
    for (int number = 0; number < 3000; ++number)
        scenes.try_emplace(u8("scène_" + std::to_string(number) + (number % 7 == 0 ? "𝄞" : "")));
    scenes.try_emplace(sf::String());
    const orane::SceneIndex index(scenes);

    ASSERT_EQ(index.entries().size(), scenes.size());
    auto entry = index.entries().begin();
    for (const auto& stored : scenes) {
        EXPECT_EQ(*entry++, &stored);
        EXPECT_EQ(index.find(orane::viewOf(stored.first)), &stored);
    }
    for (const std::string absent : {"scène_7", "scène_3000", "scène_", "scène_12𝄞", "scene_1", "scène_10 "})
        EXPECT_EQ(index.find(orane::viewOf(u8(absent))), nullptr) << absent;
}

} // namespace
