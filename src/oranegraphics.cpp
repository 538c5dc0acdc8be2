#include "oranegraphics.hpp"

#include <SFML/Window/VideoMode.hpp>

namespace orane
{

void OraneGraphics::createWindow(unsigned width, unsigned height)
{
    openWindow(width, height, sf::Style::Titlebar | sf::Style::Close);
    // A window scaled to a small desktop is placed in its work area already.
    if (isScaled())
        return;
    // Reopened at a larger size, the window would keep the small one's placement and hang off
    // the bottom of the screen.
    const sf::VideoMode desktop = sf::VideoMode::getDesktopMode();
    const int left = (static_cast<int>(desktop.width) - static_cast<int>(width)) / 2;
    const int top = (static_cast<int>(desktop.height) - static_cast<int>(height)) / 2;
    window()->setPosition(sf::Vector2i(left > 0 ? left : 0, top > 0 ? top : 0));
}

} // namespace orane
