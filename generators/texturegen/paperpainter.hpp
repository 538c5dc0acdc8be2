#pragma once

#include "floatimage.hpp"

#include <cstdint>

namespace orane::texturegen
{

/// Aged writing paper: warm off-white with cloudy formation, grain, fibres, a little foxing and
/// edges browned by handling. Light enough everywhere for dark ink to read at 20 px.
class PaperPainter
{
public:
    explicit PaperPainter(std::uint64_t seed);

    [[nodiscard]] FloatImage paint(int width, int height) const;

    /// The colour of clean paper before any ageing.
    static constexpr Rgb BASE = Rgb::bytes(238, 229, 207);

private:
    std::uint64_t seed_ = 0;
};

} // namespace orane::texturegen
