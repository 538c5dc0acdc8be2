#pragma once

#include "scene/codepoints.hpp"

namespace orane
{

/// Where a scene's texts grow while its lines are read. A loader keeps one from scene to scene,
/// so that a whole story is read with a handful of allocations.
struct SceneTextBuffers
{
    CodePoints oraneText;
    CodePoints nathanText;
    /// The text of the choice being read.
    CodePoints longDescription;
};

} // namespace orane
