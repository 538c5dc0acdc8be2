#include "scalarfield.hpp"

#include <algorithm>
#include <cmath>

namespace orane::texturegen
{

ScalarField::ScalarField(int width, int height, float fill)
    : width_(width)
    , height_(height)
    , values_(static_cast<std::size_t>(width) * height, fill)
{}

float ScalarField::sample(float x, float y) const
{
    x = std::clamp(x, 0.f, static_cast<float>(width_ - 1));
    y = std::clamp(y, 0.f, static_cast<float>(height_ - 1));
    const int left = std::min(static_cast<int>(x), width_ - 2);
    const int top = std::min(static_cast<int>(y), height_ - 2);
    const float fx = x - static_cast<float>(left);
    const float fy = y - static_cast<float>(top);
    const float upper = at(left, top) + (at(left + 1, top) - at(left, top)) * fx;
    const float lower = at(left, top + 1) + (at(left + 1, top + 1) - at(left, top + 1)) * fx;
    return upper + (lower - upper) * fy;
}

void ScalarField::add(int x, int y, float amount)
{
    if (x >= 0 && y >= 0 && x < width_ && y < height_)
        values_[index(x, y)] += amount;
}

void ScalarField::addGaussian(float centreX, float centreY, float deviation, float amount)
{
    const int reach = static_cast<int>(std::ceil(deviation * 3.f));
    const int cx = static_cast<int>(std::lround(centreX));
    const int cy = static_cast<int>(std::lround(centreY));
    const float scale = -0.5f / (deviation * deviation);
    for (int y = cy - reach; y <= cy + reach; ++y) {
        for (int x = cx - reach; x <= cx + reach; ++x) {
            const float dx = static_cast<float>(x) - centreX;
            const float dy = static_cast<float>(y) - centreY;
            add(x, y, amount * std::exp((dx * dx + dy * dy) * scale));
        }
    }
}

void ScalarField::raiseDisc(float centreX, float centreY, float radius, float amount)
{
    const int reach = static_cast<int>(std::ceil(radius + 1.f));
    const int cx = static_cast<int>(std::lround(centreX));
    const int cy = static_cast<int>(std::lround(centreY));
    for (int y = std::max(cy - reach, 0); y <= std::min(cy + reach, height_ - 1); ++y) {
        for (int x = std::max(cx - reach, 0); x <= std::min(cx + reach, width_ - 1); ++x) {
            const float distance = std::hypot(static_cast<float>(x) - centreX, static_cast<float>(y) - centreY);
            const float cover = std::clamp(radius + 0.5f - distance, 0.f, 1.f);
            float& value = values_[index(x, y)];
            value = std::max(value, amount * cover);
        }
    }
}

ScalarField ScalarField::distanceInside(float threshold) const
{
    constexpr float far = 1e9f;
    constexpr float straight = 1.f;
    constexpr float diagonal = 1.41421356f;
    ScalarField distance(width_, height_, 0.f);
    for (std::size_t i = 0; i < values_.size(); ++i)
        distance.values_[i] = values_[i] >= threshold ? far : 0.f;

    auto relax = [&](int x, int y, int dx, int dy, float step) {
        const int nx = x + dx;
        const int ny = y + dy;
        // Nothing is known beyond the picture: a shape cut by the edge simply runs on past it.
        if (nx < 0 || ny < 0 || nx >= width_ || ny >= height_)
            return;
        float& own = distance.values_[distance.index(x, y)];
        own = std::min(own, distance.at(nx, ny) + step);
    };
    for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x)
            if (distance.at(x, y) > 0.f) {
                relax(x, y, -1, 0, straight);
                relax(x, y, 0, -1, straight);
                relax(x, y, -1, -1, diagonal);
                relax(x, y, 1, -1, diagonal);
            }
    for (int y = height_ - 1; y >= 0; --y)
        for (int x = width_ - 1; x >= 0; --x)
            if (distance.at(x, y) > 0.f) {
                relax(x, y, 1, 0, straight);
                relax(x, y, 0, 1, straight);
                relax(x, y, 1, 1, diagonal);
                relax(x, y, -1, 1, diagonal);
            }
    return distance;
}

} // namespace orane::texturegen
