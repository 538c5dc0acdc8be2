#pragma once

#include <cstdint>

namespace orane::texturegen
{

/// Seeded 2D gradient noise: smooth, about -1..1, one lattice cell per unit.
class GradientNoise
{
public:
    explicit GradientNoise(std::uint64_t seed);

    [[nodiscard]] float at(float x, float y) const;

    /// Sum of octaves, each at twice the frequency and half the weight of the one before,
    /// rescaled to about -1..1.
    [[nodiscard]] float fractal(float x, float y, int octaves) const;

private:
    [[nodiscard]] float gradientDot(int cellX, int cellY, float dx, float dy) const;

    std::uint64_t seed_ = 0;
};

} // namespace orane::texturegen
