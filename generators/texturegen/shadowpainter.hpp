#pragma once

#include "floatimage.hpp"

namespace orane::texturegen
{

/// The shadow of the spine on a right-hand page (spine on the left edge): dark and soft at the
/// gutter, gone within a tenth of the page width, fully transparent beyond. Mirrored by the game
/// for a left-hand page.
class ShadowPainter
{
public:
    [[nodiscard]] FloatImage paint(int width, int height) const;

    /// Opacity at a distance from the spine, for a page of the given width.
    static float opacityAt(float distance, int width);

    /// Where the shadow has faded out completely, as a fraction of the page width.
    static constexpr float REACH = 0.1f;
};

} // namespace orane::texturegen
