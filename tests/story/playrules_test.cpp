#include "scenemanager/bufferedstorysource.hpp"
#include "scenemanager/playrules.hpp"
#include "scenemanager/storyloader.hpp"
#include "storytesting.hpp"

using namespace storytesting;

namespace
{

std::string suspectFile(const std::string& name)
{
    return "SCENE " + name + "_begin\nORANE\nSur " + name + ".\n* Revenir\nRetour.\n-> hub\nSCENE " + name
           + "_arrest\nNATHAN\nC'est " + name + ".\nFORWARD end\n";
}

orane::Story loadStory()
{
    orane::BufferedStorySource source;
    source.setBuffer("/s/suspects.ini", "Moreau\nDupont\n");
    source.setBuffer("/s/story.txt", "SCENE begin\nORANE\nBonjour.\nFORWARD couloir\nSCENE couloir\nNATHAN\nQui ?\n"
                                     "* Enquêter\nAllons-y.\n-> hub\n* Partir\nAdieu.\n-> game_over\n");
    source.setBuffer("/s/Dupont.txt", suspectFile("Dupont"));
    source.setBuffer("/s/Moreau.txt", suspectFile("Moreau"));
    orane::StoryLoader::Result loaded = orane::StoryLoader(source).load("/s/");
    EXPECT_TRUE(loaded.playable);
    return std::move(loaded.story);
}

Lines targets(const orane::Story& story, const orane::PlayRules& rules, const orane::PlayPosition& position)
{
    Lines names;
    for (std::size_t choice = 0; choice < rules.choiceCount(position); ++choice)
        names.push_back(utf8(story.sceneName(rules.target(position, choice))));
    return names;
}

TEST(PlayRules, MoveAPositionThroughForwardLinksTheHubAndTheArrestScene)
{
    const orane::Story story = loadStory();
    const orane::PlayRules rules(story);
    orane::PlayPosition position = rules.start();
    Lines shown;
    const auto show = [&](const orane::PlayPosition& at) { shown.push_back(utf8(story.sceneName(at.scene))); };
    ASSERT_TRUE(rules.enter(position, position.scene, show));
    EXPECT_EQ(shown, (Lines{"begin", "couloir"}));
    EXPECT_FALSE(position.hubSeen);

    ASSERT_TRUE(rules.choose(position, 0, show));
    EXPECT_FALSE(rules.isFirstHubPending(position));
    // Suspects in code-point order, no arrest before one is investigated.
    EXPECT_EQ(targets(story, rules, position), (Lines{"Dupont_begin", "Moreau_begin"}));

    const orane::PlayPosition atHub = position;
    ASSERT_TRUE(rules.choose(position, 1, show));
    EXPECT_EQ(utf8(story.sceneName(position.scene)), "Moreau_begin");
    EXPECT_TRUE(position.investigated.contains(*story.suspectIndex(u8("Moreau"))));
    EXPECT_TRUE(atHub.investigated.empty()) << "a copied position is a value of its own";

    ASSERT_TRUE(rules.choose(position, 0, show));
    EXPECT_EQ(targets(story, rules, position), (Lines{"Dupont_begin", "arrest"}));
    ASSERT_TRUE(rules.choose(position, 1, show));
    EXPECT_EQ(targets(story, rules, position), (Lines{"hub", "Moreau_arrest"}));
    EXPECT_FALSE(rules.investigatedBy(position, 1).has_value());
    ASSERT_TRUE(rules.choose(position, 1, show));
    EXPECT_TRUE(rules.isEnding(position.scene));
    EXPECT_EQ(shown.back(), "end");
}

TEST(PlayRules, PositionsReachedByDifferentWaysAreEqualAndHashAlike)
{
    const orane::Story story = loadStory();
    const orane::PlayRules rules(story);
    const auto none = [](const orane::PlayPosition&) {};
    orane::PlayPosition start = rules.start();
    rules.enter(start, start.scene, none);
    rules.choose(start, 0, none);

    // Dupont then Moreau, and Moreau then Dupont, both back at the hub.
    orane::PlayPosition first = start;
    orane::PlayPosition second = start;
    for (std::size_t pick : {0u, 0u}) {
        rules.choose(first, pick, none);
        rules.choose(first, 0, none);
    }
    for (std::size_t pick : {1u, 0u}) {
        rules.choose(second, pick, none);
        rules.choose(second, 0, none);
    }
    EXPECT_EQ(first, second);
    EXPECT_EQ(orane::PlayPosition::Hash()(first), orane::PlayPosition::Hash()(second));
    EXPECT_NE(first, start);
    EXPECT_EQ(rules.choiceCount(first), 1u) << "only the arrest is left";
}

TEST(SuspectSet, HoldsSuspectsBeyondTheFirstSixtyFour)
{
    orane::SuspectSet set;
    EXPECT_TRUE(set.empty());
    for (std::size_t suspect : {0u, 63u, 64u, 200u})
        set.insert(suspect);
    EXPECT_EQ(set.size(), 4u);
    for (std::size_t suspect : {0u, 63u, 64u, 200u})
        EXPECT_TRUE(set.contains(suspect)) << suspect;
    for (std::size_t suspect : {1u, 65u, 199u, 1000u})
        EXPECT_FALSE(set.contains(suspect)) << suspect;
    orane::SuspectSet other;
    for (std::size_t suspect : {200u, 64u, 63u, 0u})
        other.insert(suspect);
    EXPECT_EQ(set, other);
    EXPECT_EQ(set.hash(), other.hash());
    other.insert(5);
    EXPECT_NE(set, other);
}

} // namespace
