#include "storywalker.hpp"
#include "suspectsetproof.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <unistd.h>

namespace
{

std::string storyTree(const std::string& name)
{
    return std::string(ORANE_SOURCE_DIR) + "/tests/tools/stories/" + name;
}

TEST(StoryWalker, RandomPlayIsTheSameForTheSameSeedAndEveryPlaythroughIsCounted)
{
    const orane::StoryWalker walker(storyTree("sound"));
    ASSERT_TRUE(walker.loads());
    const auto first = walker.playRandomly(300, 11);
    const auto again = walker.playRandomly(300, 11);
    EXPECT_EQ(first.visits, again.visits);
    EXPECT_EQ(first.endings, again.endings);

    std::size_t ended = 0;
    for (const auto& ending : first.endings)
        ended += ending.second;
    EXPECT_EQ(ended + first.stuck + first.unfinished, 300u);
    EXPECT_EQ(first.visits.at(L"begin"), 300u);
    // Half the players refuse at once; with 300 draws both answers come up.
    EXPECT_GT(first.visits.at(L"briefing"), 0u);
    EXPECT_LT(first.visits.at(L"briefing"), 300u);
    // Refusing ends the story after one choice; the way to "end" takes five.
    EXPECT_EQ(first.fewestChoices, 1u);
    if (first.endings.count(L"end") != 0) {
        EXPECT_GE(first.mostChoices, 5u);
    }
}

TEST(StoryWalker, ACircleWithoutWayOutNeverEndsAndIsReportedWithItsWayIn)
{
    const orane::StoryWalker walker(storyTree("deadend"));
    ASSERT_TRUE(walker.loads());
    const auto found = walker.explore();
    // One loop, one finding: its scenes in the order play meets them.
    EXPECT_EQ(found.stuckStates, 2u);
    ASSERT_EQ(found.deadEnds.size(), 1u);
    EXPECT_EQ(found.deadEnds[0].scenes, (std::vector<sf::String>{L"couloir", L"escalier"}));
    EXPECT_EQ(found.deadEnds[0].states, 2u);
    EXPECT_EQ(walker.nameOf(found.deadEnds[0].first.scene), sf::String(L"couloir"));
    ASSERT_EQ(found.deadEnds[0].path.size(), 1u);
    EXPECT_EQ(found.deadEnds[0].path[0], sf::String(L" Tourner en rond"));

    const auto random = walker.playRandomly(20, 3, 50);
    EXPECT_GT(random.unfinished, 0u);
}

TEST(StoryWalker, ChoicesOfAScenePlayNeverShowsAreNeverTaken)
{
    const orane::StoryWalker walker(storyTree("unreachable"));
    ASSERT_TRUE(walker.loads());
    const auto found = walker.explore();
    EXPECT_EQ(found.scenesShown.count(L"Bruno_cave"), 0u);
    EXPECT_EQ(found.scenesShown.count(L"briefing"), 1u);
    const auto untaken = walker.untakenChoices(found);
    ASSERT_EQ(untaken.size(), 1u);
    EXPECT_EQ(untaken[0].scene, sf::String(L"Bruno_cave"));
}

TEST(StoryWalker, AStoryThatDoesNotLoadIsNotPlayed)
{
    const orane::StoryWalker walker(storyTree("brokenlink"));
    EXPECT_FALSE(walker.loads());
    ASSERT_FALSE(walker.loadReport().empty());
    EXPECT_NE(walker.loadReport()[0].find("nulle_part"), std::string::npos);
}

/// The scene-by-scene proof must reach the walk's verdicts: the same endings reached, the
/// same scenes stuck in as many groups, the same scenes shown and choices taken.
void expectProofAgreesWithWalk(const std::string& directory)
{
    SCOPED_TRACE(directory);
    const orane::StoryWalker walker(directory);
    ASSERT_TRUE(walker.loads());
    const auto walked = walker.explore();
    ASSERT_TRUE(walked.complete);
    const orane::SuspectSetProof proof(walker.story());
    const orane::Story& story = walker.story();
    EXPECT_EQ(proof.reaches(story.endScene()), walked.shortestPaths.count(L"end") == 1);
    EXPECT_EQ(proof.reaches(story.gameOverScene()), walked.shortestPaths.count(L"game_over") == 1);
    std::set<sf::String> walkedStuck;
    for (const auto& deadEnd : walked.deadEnds)
        walkedStuck.insert(deadEnd.scenes.begin(), deadEnd.scenes.end());
    std::set<sf::String> provedStuck;
    for (const auto& deadEnd : proof.deadEnds())
        provedStuck.insert(deadEnd.scenes.begin(), deadEnd.scenes.end());
    EXPECT_EQ(provedStuck, walkedStuck);
    EXPECT_EQ(proof.deadEnds().size(), walked.deadEnds.size());
    EXPECT_EQ(proof.scenesShown(), walked.scenesShown);
    std::set<std::pair<sf::String, std::size_t>> walkedChoices;
    for (const auto& choice : walked.takenChoices)
        walkedChoices.emplace(choice.scene, choice.index);
    EXPECT_EQ(proof.takenChoices(), walkedChoices);
}

TEST(SuspectSetProof, ReachesTheWalksVerdictsOnEveryStoryOfTheTests)
{
    const std::string root(ORANE_SOURCE_DIR);
    std::vector<std::string> directories{root + "/resources/stories/", root + "/tests/e2e/stories/play/",
                                         root + "/tests/reliability/stories/base/"};
    for (const auto& entry : std::filesystem::directory_iterator(root + "/tests/tools/stories"))
        directories.push_back(entry.path().string() + "/");
    for (const std::string& directory : directories)
        if (orane::StoryWalker(directory).loads())
            expectProofAgreesWithWalk(directory);
}

/// A story folder under the system's temporary folder, removed afterwards.
class TemporaryTree
{
public:
    TemporaryTree()
        : path_(std::filesystem::temp_directory_path() / ("orane-walk-" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryTree() { std::filesystem::remove_all(path_); }
    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;

    void write(const std::string& name, const std::string& text) const { std::ofstream(path_ / name) << text; }
    std::string directory() const { return path_.string() + "/"; }

private:
    std::filesystem::path path_;
};

// Where play can go on depends on who was investigated: only Bruno's trail ends the story, so
// once he is investigated the hub, the arrest scene and Adèle's trail lead nowhere (her
// accusation loops, his leads back to the hub), while before him they still can.
TEST(SuspectSetProof, FindsTheHubStuckOnlyForTheSetsThatCannotEnd)
{
    const TemporaryTree tree;
    tree.write("suspects.ini", "Adele\nBruno\n");
    tree.write("story.txt", "SCENE begin\nORANE\nUn homme a disparu.\nNATHAN\nJ'écoute.\n"
                            "* Accepter\nJ'accepte.\n-> hub\n");
    tree.write("Adele.txt", "SCENE Adele_begin\nORANE\nAdèle.\nNATHAN\nBien.\n* Revenir\nJe reviens.\n-> hub\n"
                            "SCENE Adele_arrest\nORANE\nAdèle se tait.\nNATHAN\nEncore.\n"
                            "* Insister\nJ'insiste.\n-> Adele_arrest\n");
    tree.write("Bruno.txt", "SCENE Bruno_begin\nORANE\nBruno.\nNATHAN\nBien.\n* Revenir\nJe reviens.\n-> hub\n"
                            "* Conclure\nC'est fini.\n-> end\n"
                            "SCENE Bruno_arrest\nORANE\nBruno proteste.\nFORWARD hub\n");
    const orane::StoryWalker walker(tree.directory());
    ASSERT_TRUE(walker.loads()) << (walker.loadReport().empty() ? "" : walker.loadReport()[0]);
    expectProofAgreesWithWalk(tree.directory());

    const orane::SuspectSetProof proof(walker.story());
    ASSERT_FALSE(proof.deadEnds().empty());
    std::set<sf::String> stuck;
    for (const auto& deadEnd : proof.deadEnds())
        stuck.insert(deadEnd.scenes.begin(), deadEnd.scenes.end());
    EXPECT_EQ(stuck, (std::set<sf::String>{L"Adele_arrest", L"Adele_begin", L"arrest", L"hub"}));
    EXPECT_TRUE(proof.reaches(walker.story().endScene()));
}

} // namespace
