#pragma once

#include "floatimage.hpp"

#include <SFML/Graphics/Rect.hpp>

#include <cstdint>

namespace orane::texturegen
{

/// The play screen's background: a dark walnut desk in the pool of a lamp, with the notebook's
/// leather cover, the edges of its stacked pages and its shadow painted where the open pages lie,
/// so that the pages drawn on top sit in a book rather than float.
class DeskPainter
{
public:
    /// spread: where the two open pages are drawn, in pixels of the picture.
    DeskPainter(std::uint64_t seed, sf::IntRect spread);

    [[nodiscard]] FloatImage paint(int width, int height) const;

private:
    [[nodiscard]] Rgb woodAt(int x, int y) const;
    [[nodiscard]] float lampAt(float x, float y, int width, int height) const;

    std::uint64_t seed_ = 0;
    sf::IntRect spread_;
};

} // namespace orane::texturegen
