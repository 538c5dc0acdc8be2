#pragma once

#include <SFML/Graphics/Color.hpp>

namespace ryn
{

/// A colour with RGBA channels in 0..1.
struct FloatColor
{
    float r = 0.f;
    float g = 0.f;
    float b = 0.f;
    float a = 1.f;

    constexpr FloatColor() = default;
    constexpr FloatColor(float red, float green, float blue, float alpha = 1.f)
        : r(red)
        , g(green)
        , b(blue)
        , a(alpha)
    {}

    /// Each channel times 255, rounded to the nearest integer, halves away from zero.
    [[nodiscard]] sf::Color toColor() const;
    operator sf::Color() const { return toColor(); }
};

} // namespace ryn
