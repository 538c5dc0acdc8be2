#pragma once

#include <cstdint>
#include <vector>

namespace orane
{

/// One line of a story file, numbered both ways.
struct SourceLine
{
    /// As the game counts it: from 0, comment lines left out.
    std::uint32_t line = 0;
    /// As editors count it: from 1; 0 when there is no such line.
    std::uint32_t fileLine = 0;
};

/// Where a stored scene and its parts were written.
struct SceneSource
{
    /// Where one choice was written.
    struct ChoiceSource
    {
        /// The "*" line.
        SourceLine label;
        /// The "->" line.
        SourceLine target;
    };

    /// Index of its file in Story::files().
    std::uint32_t file = 0;
    /// The SCENE line.
    SourceLine scene;
    /// The FORWARD line; fileLine 0 when the scene has none.
    SourceLine forward;
    /// In the scene's order of choices.
    std::vector<ChoiceSource> choices;
};

} // namespace orane
