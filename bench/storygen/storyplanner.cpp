#include "storyplanner.hpp"

#include "frenchprose.hpp"

#include <algorithm>
#include <cstdio>

namespace orane::bench
{
namespace
{

// Already in code point order, the order in which the game reads their files.
const char* const SUSPECTS[] = {"Dupont", "Fabre", "Girard", "Leroy", "Moreau"};
const char* const CULPRIT = "Girard";

/// The first suspects are the five above; more are named after them, still in code point order.
std::vector<std::string> suspectNames(int count)
{
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        const std::string base = SUSPECTS[i % 5];
        names.push_back(i < 5 ? base : base + "_" + std::to_string(i / 5));
    }
    std::sort(names.begin(), names.end());
    return names;
}
// One scene in this many goes on without a choice, so both ways of moving on are exercised.
constexpr std::size_t FORWARD_EVERY = 8;

std::string numbered(const std::string& prefix, std::size_t number)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "%05zu", number);
    return prefix + digits;
}

PlannedScene writtenScene(const std::string& name, FrenchProse& prose)
{
    PlannedScene scene;
    scene.name = name;
    scene.oraneLines = {prose.observation(), prose.observation()};
    scene.nathanLines = {prose.remark()};
    return scene;
}

PlannedChoice choiceTo(const std::string& target, FrenchProse& prose)
{
    FrenchProse::Answer answer = prose.answer();
    return {answer.label, answer.text, target};
}

// A run of scenes played in order. Each goes on to the next one, either by FORWARD or by a
// first choice, while its second choice skips one scene ahead; the last one leaves through
// the two exits.
void chain(const std::vector<std::string>& names, const std::string& exitA, const std::string& exitB,
           FrenchProse& prose, std::vector<PlannedScene>& scenes)
{
    const std::size_t last = names.size() - 1;
    for (std::size_t i = 0; i <= last; ++i) {
        PlannedScene scene = writtenScene(names[i], prose);
        if (i == last) {
            scene.choices = {choiceTo(exitA, prose), choiceTo(exitB, prose)};
        } else if (i % FORWARD_EVERY == FORWARD_EVERY - 1) {
            scene.forward = names[i + 1];
        } else {
            const std::string& skip = i + 2 <= last ? names[i + 2] : exitA;
            scene.choices = {choiceTo(names[i + 1], prose), choiceTo(skip, prose)};
        }
        scenes.push_back(std::move(scene));
    }
}

PlannedScene arrestScene(const std::string& suspect, FrenchProse& prose)
{
    PlannedScene scene = writtenScene(suspect + "_arrest", prose);
    const std::string ending = suspect == CULPRIT ? "end" : "game_over";
    scene.choices = {choiceTo(ending, prose), choiceTo(ending, prose)};
    return scene;
}

} // namespace

StoryPlanner::StoryPlanner(std::uint32_t seed, int suspects)
    : seed_(seed)
    , suspects_(std::max(1, suspects))
{}

StoryPlan StoryPlanner::plan(int sceneCount) const
{
    sceneCount = std::max(sceneCount, MIN_SCENES);
    const int perSuspect = std::max(2, sceneCount / (suspects_ + 1));
    const int mainCount = std::max(1, sceneCount - suspects_ * perSuspect);

    FrenchProse prose(seed_);
    StoryPlan plan;
    plan.culprit = CULPRIT;

    PlannedFile main{"story.txt", {}};
    std::vector<std::string> mainNames{"begin"};
    for (int i = 1; i < mainCount; ++i)
        mainNames.push_back(numbered("enquete_", static_cast<std::size_t>(i)));
    chain(mainNames, "hub", "hub", prose, main.scenes);
    plan.files.push_back(std::move(main));

    for (const std::string& suspect : suspectNames(suspects_)) {
        plan.suspects.push_back(suspect);
        PlannedFile file{std::string(suspect) + ".txt", {}};
        // The investigation runs from "_begin" back to the hub; "_arrest" is reached only
        // through the arrest scene the game composes.
        std::vector<std::string> names{std::string(suspect) + "_begin"};
        for (int i = 1; i < perSuspect - 1; ++i)
            names.push_back(numbered(std::string(suspect) + "_", static_cast<std::size_t>(i)));
        chain(names, "hub", "arrest", prose, file.scenes);
        file.scenes.push_back(arrestScene(suspect, prose));
        plan.files.push_back(std::move(file));
    }
    return plan;
}

} // namespace orane::bench
