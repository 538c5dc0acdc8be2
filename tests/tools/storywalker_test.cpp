#include "storywalker.hpp"

#include <gtest/gtest.h>

#include <string>

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

} // namespace
