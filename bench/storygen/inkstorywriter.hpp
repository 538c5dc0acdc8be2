#pragma once

#include "storyplan.hpp"

#include <string>

namespace orane::bench
{

/// Writes a planned story in ink, inkle's scripting language, with the same scenes, texts and
/// links: one knot per scene, "* [label] text" then "-> target" per choice, "-> target" for
/// FORWARD.
/// The scenes our game composes (hub, arrest and the two endings) are written out as knots,
/// with ink's once-only choices and read counts standing in for the visited suspects.
class InkStoryWriter
{
public:
    /// False when the file cannot be written.
    [[nodiscard]] bool write(const StoryPlan& plan, const std::string& path) const;

    /// The whole ink source.
    static std::string storyText(const StoryPlan& plan);
};

} // namespace orane::bench
