#pragma once

#include <SFML/Graphics/Rect.hpp>
#include <SFML/System/Vector2.hpp>

namespace ryn
{

/// Where a picture drawn at a fixed size lies in a window of another size: scaled by one factor
/// on both axes so that it fits, and centred; the rest of the window stays black.
class Letterbox
{
public:
    Letterbox(sf::Vector2u picture, sf::Vector2u window);

    /// Window pixels per picture unit.
    [[nodiscard]] float scale() const { return scale_; }
    /// The picture's place in the window, in window pixels.
    [[nodiscard]] sf::FloatRect area() const { return area_; }
    /// A window pixel in picture units (outside the picture when the pixel is in a black band).
    [[nodiscard]] sf::Vector2f toPicture(sf::Vector2i pixel) const;

    /// The largest size with the picture's proportions (to the pixel) that fits in `available`;
    /// the picture's own size when it fits already. Never smaller than one pixel.
    static sf::Vector2u fit(sf::Vector2u picture, sf::Vector2u available);

private:
    float scale_ = 1.f;
    sf::FloatRect area_;
};

} // namespace ryn
