#include <ryn/core/floatcolor.hpp>

#include <algorithm>
#include <cmath>

namespace ryn
{
namespace
{
sf::Uint8 toChannel(float value)
{
    return static_cast<sf::Uint8>(std::clamp(std::round(value * 255.f), 0.f, 255.f));
}
} // namespace

sf::Color FloatColor::toColor() const
{
    return sf::Color(toChannel(r), toChannel(g), toChannel(b), toChannel(a));
}

} // namespace ryn
