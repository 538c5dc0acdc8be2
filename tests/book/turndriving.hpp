#pragma once

// Drives a page turn the way a pointer does, for a `Book` or its bare `PageTurn` alike: no
// window, no font.

#include "book/book.hpp"
#include "book/pageturn.hpp"

#include <SFML/System/Vector2.hpp>

namespace turndriving
{

/// The notebook's corners and the ends of its spine, in window pixels.
const sf::Vector2f TOP_LEFT(362.f, 176.f);
const sf::Vector2f TOP_SPINE(802.f, 176.f);
const sf::Vector2f TOP_RIGHT(1242.f, 176.f);
const sf::Vector2f BOTTOM_LEFT(362.f, 856.f);
const sf::Vector2f BOTTOM_SPINE(802.f, 856.f);
const sf::Vector2f BOTTOM_RIGHT(1242.f, 856.f);

inline orane::STATE stateOf(const orane::Book& book)
{
    return book.getState();
}

inline orane::STATE stateOf(const orane::PageTurn& turn)
{
    return turn.state();
}

/// Updates until the turn rests again; the number of frames, or -1 past `limit`.
template <class Turning>
int settle(Turning& turning, int limit = 2000)
{
    for (int frame = 1; frame <= limit; ++frame) {
        turning.update();
        if (stateOf(turning) == orane::STATE::IDLE)
            return frame;
    }
    return -1;
}

/// Grabs at `from`, moves to `to` over 40 frames and lets go there.
template <class Turning>
void drag(Turning& turning, sf::Vector2f from, sf::Vector2f to)
{
    turning.setPointer(from);
    turning.grab(from);
    turning.setPointer(to);
    for (int i = 0; i < 40; ++i)
        turning.update();
    turning.release(to);
}

} // namespace turndriving
