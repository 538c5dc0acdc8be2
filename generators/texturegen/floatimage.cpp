#include "floatimage.hpp"

#include "../common/random.hpp"

#include <cmath>

namespace orane::texturegen
{

namespace
{

sf::Uint8 quantise(float value, float dither)
{
    return static_cast<sf::Uint8>(std::clamp(std::floor(value * 255.f + dither), 0.f, 255.f));
}

} // namespace

FloatImage::FloatImage(int width, int height, Rgb fill, float alpha)
    : width_(width)
    , height_(height)
    , colours_(static_cast<std::size_t>(width) * height, fill)
    , alphas_(static_cast<std::size_t>(width) * height, alpha)
{}

void FloatImage::set(int x, int y, Rgb colour, float alpha)
{
    colours_[index(x, y)] = colour;
    alphas_[index(x, y)] = alpha;
}

void FloatImage::blend(int x, int y, Rgb colour, float opacity)
{
    if (!contains(x, y) || opacity <= 0.f)
        return;
    Rgb& target = colours_[index(x, y)];
    target = mix(target, colour, clamp01(opacity));
}

FloatImage FloatImage::crop(int left, int top, int width, int height) const
{
    FloatImage part(width, height, Rgb{});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            part.set(x, y, colour(left + x, top + y), alpha(left + x, top + y));
    return part;
}

sf::Image FloatImage::toImage(std::uint64_t ditherSeed) const
{
    assetgen::Random random(ditherSeed);
    sf::Image image;
    image.create(static_cast<unsigned>(width_), static_cast<unsigned>(height_));
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            // One dither value per pixel, shared by the channels, so that grey stays grey.
            const float dither = static_cast<float>(random.uniform());
            const Rgb c = colours_[index(x, y)];
            const float a = alphas_[index(x, y)];
            image.setPixel(
                static_cast<unsigned>(x), static_cast<unsigned>(y),
                sf::Color(quantise(c.r, dither), quantise(c.g, dither), quantise(c.b, dither), quantise(a, dither)));
        }
    }
    return image;
}

} // namespace orane::texturegen
