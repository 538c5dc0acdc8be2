#pragma once

#include "floatimage.hpp"
#include "scalarfield.hpp"

#include <cstdint>
#include <utility>

namespace orane::texturegen
{

/// Blood on an open notebook: a pool across the spine with its spatter, a smear dragged over the
/// right page, a few stray drops. Painted over the two facing pages at once, so that the left
/// and the right page read as one scene.
class BloodPainter
{
public:
    explicit BloodPainter(std::uint64_t seed);

    /// The left and the right page: each is the given paper with its half of the stain.
    [[nodiscard]] std::pair<FloatImage, FloatImage> paint(const FloatImage& paper) const;

private:
    /// Where the blood lies (0..1, antialiased) and how thickly (0 = a dry film, 1 = pooled).
    struct Stain
    {
        ScalarField cover;
        ScalarField thickness;
    };

    [[nodiscard]] Stain paintStain(int width, int height) const;
    [[nodiscard]] FloatImage colourSpread(const FloatImage& spreadPaper, const Stain& stain) const;

    std::uint64_t seed_ = 0;
};

} // namespace orane::texturegen
