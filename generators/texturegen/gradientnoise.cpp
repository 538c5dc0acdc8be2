#include "gradientnoise.hpp"

#include "../common/random.hpp"

#include <cmath>

namespace orane::texturegen
{

namespace
{

float fade(float t)
{
    return t * t * t * (t * (t * 6.f - 15.f) + 10.f);
}

float lerp(float a, float b, float t)
{
    return a + (b - a) * t;
}

/// 256 evenly spread unit gradients: a table look-up instead of a sine and a cosine per corner.
struct GradientTable
{
    float x[256];
    float y[256];

    GradientTable()
    {
        for (int i = 0; i < 256; ++i) {
            x[i] = std::cos(static_cast<float>(i) * 6.2831853f / 256.f);
            y[i] = std::sin(static_cast<float>(i) * 6.2831853f / 256.f);
        }
    }
};

const GradientTable GRADIENTS;

} // namespace

GradientNoise::GradientNoise(std::uint64_t seed)
    : seed_(assetgen::hashBits(seed))
{}

float GradientNoise::gradientDot(int cellX, int cellY, float dx, float dy) const
{
    const auto key =
        (static_cast<std::uint64_t>(static_cast<std::uint32_t>(cellX)) << 32) ^ static_cast<std::uint32_t>(cellY);
    const auto index = static_cast<std::size_t>(assetgen::hashBits(key ^ seed_) >> 56);
    return GRADIENTS.x[index] * dx + GRADIENTS.y[index] * dy;
}

float GradientNoise::at(float x, float y) const
{
    const float floorX = std::floor(x);
    const float floorY = std::floor(y);
    const int cellX = static_cast<int>(floorX);
    const int cellY = static_cast<int>(floorY);
    const float dx = x - floorX;
    const float dy = y - floorY;
    const float top = lerp(gradientDot(cellX, cellY, dx, dy), gradientDot(cellX + 1, cellY, dx - 1.f, dy), fade(dx));
    const float bottom = lerp(gradientDot(cellX, cellY + 1, dx, dy - 1.f),
                              gradientDot(cellX + 1, cellY + 1, dx - 1.f, dy - 1.f), fade(dx));
    // Plain 2D gradient noise stays within about +-0.7; scale it to fill -1..1.
    return lerp(top, bottom, fade(dy)) * 1.41f;
}

float GradientNoise::fractal(float x, float y, int octaves) const
{
    float sum = 0.f;
    float weight = 1.f;
    float total = 0.f;
    float frequency = 1.f;
    for (int octave = 0; octave < octaves; ++octave) {
        // Each octave is shifted so that the lattice points of the octaves do not line up.
        sum += weight
               * at(x * frequency + 17.3f * static_cast<float>(octave),
                    y * frequency - 31.7f * static_cast<float>(octave));
        total += weight;
        weight *= 0.5f;
        frequency *= 2.f;
    }
    return sum / total;
}

} // namespace orane::texturegen
