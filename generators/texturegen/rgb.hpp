#pragma once

#include <algorithm>

namespace orane::texturegen
{

/// A linear colour with channels in 0..1 (values outside are clamped only when written out).
struct Rgb
{
    float r = 0.f;
    float g = 0.f;
    float b = 0.f;

    constexpr Rgb() = default;
    constexpr Rgb(float red, float green, float blue)
        : r(red)
        , g(green)
        , b(blue)
    {}

    /// From 8-bit channels.
    static constexpr Rgb bytes(int red, int green, int blue)
    {
        return {static_cast<float>(red) / 255.f, static_cast<float>(green) / 255.f, static_cast<float>(blue) / 255.f};
    }

    [[nodiscard]] float luminance() const { return 0.2126f * r + 0.7152f * g + 0.0722f * b; }
};

constexpr Rgb operator+(Rgb a, Rgb b)
{
    return {a.r + b.r, a.g + b.g, a.b + b.b};
}
constexpr Rgb operator-(Rgb a, Rgb b)
{
    return {a.r - b.r, a.g - b.g, a.b - b.b};
}
constexpr Rgb operator*(Rgb a, float k)
{
    return {a.r * k, a.g * k, a.b * k};
}
constexpr Rgb operator*(Rgb a, Rgb b)
{
    return {a.r * b.r, a.g * b.g, a.b * b.b};
}

/// a when t = 0, b when t = 1.
constexpr Rgb mix(Rgb a, Rgb b, float t)
{
    return a + (b - a) * t;
}

inline float clamp01(float value)
{
    return std::clamp(value, 0.f, 1.f);
}

/// Hermite step from 0 at edge0 to 1 at edge1.
inline float smoothstep(float edge0, float edge1, float x)
{
    const float t = clamp01((x - edge0) / (edge1 - edge0));
    return t * t * (3.f - 2.f * t);
}

} // namespace orane::texturegen
