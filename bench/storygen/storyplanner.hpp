#pragma once

#include "storyplan.hpp"

#include <cstdint>

namespace orane::bench
{

/// Lays out a playable story of a given number of scenes, spread over "story.txt" and the files
/// of its suspects (five unless told otherwise). Every check of the game passes: "begin" exists, every link leads to a
/// scene or a special scene, every suspect has its "_begin" and "_arrest" scenes, FORWARD links
/// only go ahead (no cycle), and every scene can be reached from "begin".
class StoryPlanner
{
public:
    /// The smallest story: "begin", then "_begin" and "_arrest" for each suspect.
    static constexpr int MIN_SCENES = 11;

    explicit StoryPlanner(std::uint32_t seed = 1, int suspects = 5);

    /// `sceneCount` (at least MIN_SCENES) story scenes; the program's own scenes ("hub",
    /// "arrest", "end", "game_over") come on top.
    [[nodiscard]] StoryPlan plan(int sceneCount) const;

private:
    std::uint32_t seed_ = 1;
    int suspects_ = 5;
};

} // namespace orane::bench
