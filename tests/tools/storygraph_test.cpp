#include "storygraph.hpp"

#include <gtest/gtest.h>

namespace
{

orane::Scene sceneWith(const sf::String& name, const sf::String& forward, std::vector<sf::String> targets = {})
{
    orane::Scene scene;
    scene.name = name;
    scene.oraneText = L"texte\n";
    scene.forward = forward;
    for (const sf::String& target : targets)
        scene.choices.push_back(orane::Choice{L" aller", L"j'y vais\n", target});
    return scene;
}

orane::SceneMap storyOf(std::vector<orane::Scene> scenes)
{
    orane::SceneMap story;
    for (orane::Scene& scene : scenes)
        story.emplace(scene.name, scene);
    story.emplace(L"end", orane::Scene());
    story.emplace(L"game_over", orane::Scene());
    return story;
}

TEST(StoryGraph, TheHubLeadsToEverySuspectAndTheArrestToTheirEndings)
{
    const auto story = storyOf({sceneWith(L"begin", L"hub"), sceneWith(L"Adele_begin", {}, {L"hub"}),
                                sceneWith(L"Adele_arrest", L"end"), sceneWith(L"Bruno_begin", {}, {L"hub"}),
                                sceneWith(L"Bruno_arrest", L"game_over"), sceneWith(L"cave", L"end")});
    const orane::StoryGraph graph(story, {{L"Adele", false}, {L"Bruno", false}});

    const auto reached = graph.reachableFrom(L"begin");
    for (const char* name : {"hub", "arrest", "Adele_begin", "Adele_arrest", "Bruno_arrest", "end", "game_over"})
        EXPECT_EQ(reached.count(sf::String(name)), 1u) << name;
    EXPECT_EQ(reached.count(L"cave"), 0u);

    const auto ending = graph.reachingAnEnding();
    EXPECT_EQ(ending.count(L"begin"), 1u);
    EXPECT_EQ(ending.count(L"cave"), 1u);
}

TEST(StoryGraph, WithoutALinkToTheHubNoSuspectIsOffered)
{
    const auto story = storyOf({sceneWith(L"begin", L"end"), sceneWith(L"Adele_begin", L"end")});
    const orane::StoryGraph graph(story, {{L"Adele", false}});
    EXPECT_EQ(graph.scenes().count(L"hub"), 0u);
    EXPECT_EQ(graph.reachableFrom(L"begin").count(L"Adele_begin"), 0u);
    EXPECT_TRUE(graph.reachableFrom(L"nowhere").empty());
}

TEST(StoryGraph, ACircleOfChoicesAndABrokenLinkReachNoEnding)
{
    const auto story = storyOf({sceneWith(L"begin", {}, {L"a", L"end"}), sceneWith(L"a", {}, {L"b"}),
                                sceneWith(L"b", {}, {L"a", L"missing"})});
    const orane::StoryGraph graph(story, {});
    const auto ending = graph.reachingAnEnding();
    EXPECT_EQ(ending.count(L"begin"), 1u);
    EXPECT_EQ(ending.count(L"a"), 0u);
    EXPECT_EQ(ending.count(L"b"), 0u);

    std::size_t broken = 0;
    for (const auto& edge : graph.edges())
        broken += graph.isBroken(edge) ? 1 : 0;
    EXPECT_EQ(broken, 1u);
}

} // namespace
