#include "inkstorywriter.hpp"
#include "oranestorywriter.hpp"
#include "scenemanager/scenemanager.hpp"
#include "storyplanner.hpp"
#include "temporarystory.hpp"

#include <ryn/core/console.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using orane::bench::PlannedFile;
using orane::bench::PlannedScene;
using orane::bench::StoryPlan;
using orane::bench::StoryPlanner;

std::string utf8(const sf::String& text)
{
    return ryn::console::toUtf8(text.toWideString());
}

TEST(StoryGenerator, WritesExactlyTheScenesAskedForAndTheSameForASeed)
{
    for (int scenes : {StoryPlanner::MIN_SCENES, 12, 17, 1000, 10000})
        EXPECT_EQ(StoryPlanner().plan(scenes).sceneCount(), static_cast<std::size_t>(scenes));

    const StoryPlan first = StoryPlanner(3).plan(200);
    EXPECT_EQ(orane::bench::InkStoryWriter::storyText(first),
              orane::bench::InkStoryWriter::storyText(StoryPlanner(3).plan(200)));
    EXPECT_NE(orane::bench::InkStoryWriter::storyText(first),
              orane::bench::InkStoryWriter::storyText(StoryPlanner(4).plan(200)));
}

TEST(StoryGenerator, StoriesOfEverySizeLoadWithoutAWord)
{
    for (int scenes : {StoryPlanner::MIN_SCENES, 12, 50, 1000}) {
        SCOPED_TRACE(scenes);
        orane::bench::TemporaryStory story(scenes);
        ASSERT_TRUE(story.ok());
        orane::SceneManager manager(nullptr);
        std::vector<std::string> shown;
        manager.setNewSceneCallback([&](const orane::Scene& scene) { shown.push_back(utf8(scene.name)); });
        manager.setChoiceAppliedCallback([](const orane::Choice&) {});

        ryn::console::Capture console;
        EXPECT_TRUE(manager.loadStoryFrom(story.directory()));
        EXPECT_EQ(console.text(), "");
        // Every story scene, plus the two endings the loader adds.
        EXPECT_EQ(manager.scenes().size(), static_cast<std::size_t>(scenes) + 2);
        EXPECT_EQ(manager.suspectsVisited().size(), 5u);
        ASSERT_FALSE(shown.empty());
        EXPECT_EQ(shown.front(), "begin");
    }
}

// Plays as a reader who always takes the first answer, investigates every suspect in turn and
// accuses the culprit once nobody is left: the story must end well, through FORWARD links, the
// hub and the arrest scene.
TEST(StoryGenerator, APlaythroughVisitsEverySuspectAndEndsWell)
{
    const StoryPlan plan = StoryPlanner().plan(300);
    orane::bench::TemporaryStory story(300);
    ASSERT_TRUE(story.ok());
    orane::SceneManager manager(nullptr);
    std::string lastShown;
    manager.setNewSceneCallback([&](const orane::Scene& scene) {
        lastShown = scene.oraneText.isEmpty() ? utf8(scene.nathanText) : utf8(scene.oraneText);
    });
    manager.setChoiceAppliedCallback([](const orane::Choice&) {});
    ASSERT_TRUE(manager.loadStoryFrom(story.directory()));

    for (int step = 0; step < 2000 && manager.currentSceneName() != "end"; ++step) {
        const orane::Scene& scene = manager.getCurrentScene();
        ASSERT_FALSE(scene.choices.empty()) << utf8(manager.currentSceneName());
        std::int32_t answer = 0;
        if (manager.currentSceneName() == "arrest") {
            const bool everyoneSeen = std::all_of(manager.suspectsVisited().begin(), manager.suspectsVisited().end(),
                                                  [](const auto& suspect) { return suspect.second; });
            if (everyoneSeen) {
                for (std::size_t i = 0; i < scene.choices.size(); ++i)
                    if (utf8(scene.choices[i].nextSceneName) == plan.culprit + "_arrest")
                        answer = static_cast<std::int32_t>(i);
            }
        }
        manager.applyChoice(answer);
    }
    EXPECT_EQ(manager.currentSceneName(), "end");
    for (const auto& suspect : manager.suspectsVisited())
        EXPECT_TRUE(suspect.second) << utf8(suspect.first);
    EXPECT_NE(lastShown.find("Agent O"), std::string::npos);
}

void expectSafeText(const std::string& text)
{
    for (const char* forbidden :
         {"SCENE", "ORANE", "NATHAN", "FORWARD", "*", "->", "{", "}", "[", "]", "|", "#", "~", "/", "<", ">", "\n"})
        EXPECT_EQ(text.find(forbidden), std::string::npos) << '"' << forbidden << "\" in: " << text;
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(std::string("-=+ ").find(text.front()), std::string::npos) << text;
}

TEST(StoryGenerator, TextsHoldNoMarkupOfEitherLanguage)
{
    const StoryPlan plan = StoryPlanner(11).plan(3000);
    for (const PlannedFile& file : plan.files) {
        for (const PlannedScene& scene : file.scenes) {
            for (const std::string& line : scene.oraneLines)
                expectSafeText(line);
            for (const std::string& line : scene.nathanLines)
                expectSafeText(line);
            for (const auto& choice : scene.choices) {
                expectSafeText(choice.label);
                expectSafeText(choice.text);
            }
        }
    }
}

// Reads the ink back: every knot with the diverts found in it, in order.
std::map<std::string, std::vector<std::string>> inkDiverts(const std::string& ink)
{
    std::map<std::string, std::vector<std::string>> knots;
    std::vector<std::string>* current = nullptr;
    std::istringstream lines(ink);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("=== ", 0) == 0) {
            current = &knots[line.substr(4, line.size() - 8)];
        } else if (current != nullptr && line.find("-> ") != std::string::npos) {
            current->push_back(line.substr(line.find("-> ") + 3));
        }
    }
    return knots;
}

TEST(StoryGenerator, TheInkStoryHasTheSameScenesAndLinks)
{
    const StoryPlan plan = StoryPlanner().plan(100);
    const auto knots = inkDiverts(orane::bench::InkStoryWriter::storyText(plan));
    EXPECT_EQ(knots.size(), plan.sceneCount() + 4);
    for (const PlannedFile& file : plan.files) {
        for (const PlannedScene& scene : file.scenes) {
            std::vector<std::string> links;
            if (!scene.forward.empty())
                links.push_back(scene.forward);
            for (const auto& choice : scene.choices)
                links.push_back(choice.target);
            const auto knot = knots.find(scene.name);
            ASSERT_NE(knot, knots.end()) << scene.name;
            EXPECT_EQ(knot->second, links) << scene.name;
        }
    }
    for (const char* composed : {"hub", "arrest", "end", "game_over"})
        EXPECT_EQ(knots.count(composed), 1u) << composed;
}

} // namespace
