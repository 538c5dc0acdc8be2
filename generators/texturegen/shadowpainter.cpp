#include "shadowpainter.hpp"

#include <cmath>

namespace orane::texturegen
{

namespace
{

// Not quite black: a warm brown keeps the gutter from looking like a hole in the paper.
constexpr Rgb SHADE = Rgb::bytes(24, 16, 10);

} // namespace

float ShadowPainter::opacityAt(float distance, int width)
{
    const float reach = REACH * static_cast<float>(width);
    if (distance >= reach)
        return 0.f;
    const float t = distance / reach;
    // A broad falloff for the page curving into the gutter, and a tight crease at the fold.
    const float curve = 0.55f * std::pow(1.f - t, 2.4f);
    const float crease = 0.30f * std::exp(-distance / 2.2f) * (1.f - t);
    return std::min(curve + crease, 1.f);
}

FloatImage ShadowPainter::paint(int width, int height) const
{
    FloatImage shadow(width, height, SHADE, 0.f);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            shadow.set(x, y, SHADE, opacityAt(static_cast<float>(x) + 0.5f, width));
    return shadow;
}

} // namespace orane::texturegen
