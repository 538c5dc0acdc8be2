#pragma once

#include <SFML/Window/WindowHandle.hpp>

/// Asks the window to close the way a window manager does when the user clicks its close
/// button, so that the program receives a real Closed event.
void requestClose(sf::WindowHandle window);
