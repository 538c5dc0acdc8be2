#pragma once

#include "floatimage.hpp"

#include <cstdint>

namespace orane::texturegen
{

/// The game's icon: the open notebook on the walnut desk, seen from above as in play, its two
/// pages written in the two inks, on a square with rounded corners. Painted once at a large size;
/// each icon size is an average of that picture, so that small icons keep its colours.
class IconPainter
{
public:
    explicit IconPainter(std::uint64_t seed);

    /// MASTER_SIZE pixels square; transparent outside the rounded square.
    [[nodiscard]] FloatImage paint() const;

    /// `picture` averaged down to size x size, colours weighted by their opacity so that the
    /// transparent corners do not darken the rim.
    static FloatImage reduce(const FloatImage& picture, int size);

    static constexpr int MASTER_SIZE = 1024;

private:
    void writeLines(FloatImage& icon, int pageLeft, int lines, Rgb ink, std::uint64_t seed) const;

    std::uint64_t seed_ = 0;
};

} // namespace orane::texturegen
