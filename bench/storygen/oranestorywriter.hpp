#pragma once

#include "storyplan.hpp"

#include <string>

namespace orane::bench
{

/// Writes a planned story as the game reads it: "suspects.ini", "story.txt" and one file per
/// suspect, in UTF-8 with LF line ends.
class OraneStoryWriter
{
public:
    /// Creates `directory` if needed and replaces the story files in it. False when a file
    /// cannot be written.
    [[nodiscard]] bool write(const StoryPlan& plan, const std::string& directory) const;

    /// One story file's text: its scenes, a blank line between two.
    static std::string fileText(const PlannedFile& file);
};

} // namespace orane::bench
