#pragma once

#include "rgb.hpp"

#include <SFML/Graphics/Image.hpp>

#include <cstdint>
#include <vector>

namespace orane::texturegen
{

/// An RGBA picture in floats, painted in layers and quantised to 8 bits once at the end.
class FloatImage
{
public:
    FloatImage(int width, int height, Rgb fill, float alpha = 1.f);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] bool contains(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }

    [[nodiscard]] Rgb colour(int x, int y) const { return colours_[index(x, y)]; }
    [[nodiscard]] float alpha(int x, int y) const { return alphas_[index(x, y)]; }
    void set(int x, int y, Rgb colour, float alpha = 1.f);

    /// Paints colour over the pixel with the given opacity; outside the picture nothing happens.
    void blend(int x, int y, Rgb colour, float opacity);

    /// The rectangle of the given size whose top-left corner is (left, top).
    [[nodiscard]] FloatImage crop(int left, int top, int width, int height) const;

    /// 8-bit image; seeded dithering breaks the banding of slow gradients and stays reproducible.
    [[nodiscard]] sf::Image toImage(std::uint64_t ditherSeed) const;

private:
    [[nodiscard]] std::size_t index(int x, int y) const { return static_cast<std::size_t>(y) * width_ + x; }

    int width_ = 0;
    int height_ = 0;
    std::vector<Rgb> colours_;
    std::vector<float> alphas_;
};

} // namespace orane::texturegen
