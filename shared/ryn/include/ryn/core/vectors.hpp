#pragma once

#include <SFML/Graphics/Rect.hpp>
#include <SFML/System/Vector2.hpp>

namespace ryn
{

float lengthOf(sf::Vector2f v);
/// `v` divided by its length; the zero vector has no direction and gives NaN components.
sf::Vector2f normalized(sf::Vector2f v);
/// Rotated by `degrees` (positive turns x towards y, that is clockwise on screen).
sf::Vector2f rotated(sf::Vector2f v, float degrees);
/// The unit vector at `degrees`, after bringing the angle into [0, 360].
sf::Vector2f fromAngle(float degrees);
float dot(sf::Vector2f a, sf::Vector2f b);

bool isPointInCircle(sf::Vector2f point, sf::Vector2f centre, float radius);
/// Both edges count as inside.
bool isPointInRectangle(sf::Vector2f point, sf::Vector2f topLeft, sf::Vector2f bottomRight);
/// Both edges count as inside: left <= x <= left + width, top <= y <= top + height.
bool isPointInRectangle(sf::Vector2f point, const sf::FloatRect& rectangle);

} // namespace ryn
