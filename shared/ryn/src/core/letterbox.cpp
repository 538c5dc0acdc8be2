#include <ryn/core/letterbox.hpp>

#include <algorithm>
#include <cmath>

namespace ryn
{

namespace
{

float ratio(unsigned numerator, unsigned denominator)
{
    return static_cast<float>(numerator) / static_cast<float>(std::max(denominator, 1u));
}

} // namespace

Letterbox::Letterbox(sf::Vector2u picture, sf::Vector2u window)
    : scale_(std::min(ratio(window.x, picture.x), ratio(window.y, picture.y)))
{
    const float width = static_cast<float>(picture.x) * scale_;
    const float height = static_cast<float>(picture.y) * scale_;
    area_ = sf::FloatRect((static_cast<float>(window.x) - width) / 2.f, (static_cast<float>(window.y) - height) / 2.f,
                          width, height);
}

sf::Vector2f Letterbox::toPicture(sf::Vector2i pixel) const
{
    return {(static_cast<float>(pixel.x) - area_.left) / scale_, (static_cast<float>(pixel.y) - area_.top) / scale_};
}

sf::Vector2u Letterbox::fit(sf::Vector2u picture, sf::Vector2u available)
{
    if (picture.x <= available.x && picture.y <= available.y)
        return picture;
    // Whichever side limits keeps its full length; the other is cut to the nearest whole pixel
    // not beyond the available room.
    const double byWidth = static_cast<double>(available.x) / picture.x;
    const double byHeight = static_cast<double>(available.y) / picture.y;
    sf::Vector2u size = available;
    if (byWidth < byHeight)
        size.y = static_cast<unsigned>(std::min<double>(available.y, std::floor(picture.y * byWidth + 0.5)));
    else
        size.x = static_cast<unsigned>(std::min<double>(available.x, std::floor(picture.x * byHeight + 0.5)));
    return {std::max(size.x, 1u), std::max(size.y, 1u)};
}

} // namespace ryn
