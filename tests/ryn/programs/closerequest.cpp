#include "closerequest.hpp"

// Kept apart: Xlib's macros (None, Bool, Status) clash with SFML's headers.
#include <X11/Xlib.h>

void requestClose(sf::WindowHandle window)
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, window, False, NoEventMask, &event);
    XFlush(display);
    XCloseDisplay(display);
}
