#pragma once

namespace sf
{
class RenderWindow;
}

namespace ryn
{

/// Told every time the graphics component (re)opens the render window.
class WindowListener
{
public:
    virtual ~WindowListener() = default;
    virtual void windowCreated(sf::RenderWindow* window) = 0;
};

} // namespace ryn
