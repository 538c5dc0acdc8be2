#pragma once

#include <SFML/Graphics/Rect.hpp>

namespace sf
{
class Window;
}

namespace ryn
{

/// Room taken by a window manager's decorations on each side of a window's client area.
struct FrameExtents
{
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
};

/// What the desktop leaves to windows, as the window manager publishes it.
class Desktop
{
public:
    /// The area windows may use on the current desktop, without panels and docks: the window
    /// manager's work area when one runs, else the whole screen.
    static sf::IntRect workArea();
    /// The decorations that the window manager has put around `window`; none without a window
    /// manager, or before it has framed the window.
    static FrameExtents frameExtents(const sf::Window& window);
};

} // namespace ryn
