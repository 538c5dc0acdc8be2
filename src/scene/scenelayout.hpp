#pragma once

#include <cstddef>
#include <vector>

namespace orane
{

/// Where the parts of a scene stand among the lines it was read from, as indices into those
/// lines (its SCENE line is 0, so 0 also means "no such line").
struct SceneLayout
{
    /// The lines of one choice.
    struct ChoiceLines
    {
        /// The line with the "*".
        std::size_t label = 0;
        /// The line with the "->"; 0 while the choice has none.
        std::size_t target = 0;
    };

    /// The FORWARD line.
    std::size_t forward = 0;
    /// In the scene's order of choices.
    std::vector<ChoiceLines> choices;
};

} // namespace orane
