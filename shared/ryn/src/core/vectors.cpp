#include <ryn/core/vectors.hpp>

#include <cmath>

namespace ryn
{
namespace
{
constexpr float PI = 3.1415927f;

float toRadians(float degrees)
{
    return degrees * PI / 180.f;
}
} // namespace

float lengthOf(sf::Vector2f v)
{
    return std::sqrt(v.x * v.x + v.y * v.y);
}

sf::Vector2f normalized(sf::Vector2f v)
{
    return v / lengthOf(v);
}

sf::Vector2f rotated(sf::Vector2f v, float degrees)
{
    const float a = toRadians(degrees);
    const float c = std::cos(a);
    const float s = std::sin(a);
    return {v.x * c - v.y * s, v.y * c + v.x * s};
}

sf::Vector2f fromAngle(float degrees)
{
    // A non-finite angle would never reach the range below.
    if (!std::isfinite(degrees))
        degrees = 0.f;
    degrees = std::fmod(degrees, 360.f);
    if (degrees < 0.f)
        degrees += 360.f;
    const float a = toRadians(degrees);
    return {std::cos(a), std::sin(a)};
}

float dot(sf::Vector2f a, sf::Vector2f b)
{
    return a.x * b.x + a.y * b.y;
}

bool isPointInCircle(sf::Vector2f point, sf::Vector2f centre, float radius)
{
    return lengthOf(point - centre) <= radius;
}

bool isPointInRectangle(sf::Vector2f point, sf::Vector2f topLeft, sf::Vector2f bottomRight)
{
    const sf::Vector2f offset = point - topLeft;
    const sf::Vector2f size = bottomRight - topLeft;
    return 0.f <= offset.x && offset.x <= size.x && 0.f <= offset.y && offset.y <= size.y;
}

bool isPointInRectangle(sf::Vector2f point, const sf::FloatRect& rectangle)
{
    return isPointInRectangle(point, {rectangle.left, rectangle.top},
                              {rectangle.left + rectangle.width, rectangle.top + rectangle.height});
}

} // namespace ryn
