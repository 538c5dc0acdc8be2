#pragma once

#include <string>
#include <vector>

namespace orane::bench
{

/// One answer the player can give. All texts are UTF-8.
struct PlannedChoice
{
    std::string label;
    std::string text;
    std::string target;
};

/// One scene, laid out the same way whatever language it is written in.
struct PlannedScene
{
    std::string name;
    std::vector<std::string> oraneLines;
    std::vector<std::string> nathanLines;
    /// Empty when the scene offers choices.
    std::string forward;
    std::vector<PlannedChoice> choices;
};

/// The scenes of one story file, in file order.
struct PlannedFile
{
    /// Name inside the story folder, "story.txt" or the suspect's name followed by ".txt".
    std::string fileName;
    std::vector<PlannedScene> scenes;
};

/// A whole story tree: the main file first, then one file per suspect in suspect order.
struct StoryPlan
{
    /// In the game's order (code point order), which is also the order of their files.
    std::vector<std::string> suspects;
    std::string culprit;
    std::vector<PlannedFile> files;

    [[nodiscard]] std::size_t sceneCount() const
    {
        std::size_t count = 0;
        for (const PlannedFile& file : files)
            count += file.scenes.size();
        return count;
    }
};

} // namespace orane::bench
