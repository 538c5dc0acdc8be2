#include <ryn/core/desktop.hpp>

#include <SFML/Window/VideoMode.hpp>
#include <SFML/Window/Window.hpp>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <vector>

namespace ryn
{

namespace
{

class DisplayConnection
{
public:
    DisplayConnection()
        : display_(XOpenDisplay(nullptr))
    {}
    ~DisplayConnection()
    {
        if (display_ != nullptr)
            XCloseDisplay(display_);
    }
    DisplayConnection(const DisplayConnection&) = delete;
    DisplayConnection& operator=(const DisplayConnection&) = delete;

    ::Display* get() const { return display_; }

private:
    ::Display* display_ = nullptr;
};

int ignoreError(::Display*, XErrorEvent*)
{
    return 0;
}

/// The 32-bit values of a window property (X hands them out as longs); empty when the window or
/// the property does not exist. A window that has gone away must not end the program, as Xlib's
/// default error handler would.
std::vector<long> propertyValues(::Display* display, ::Window window, const char* name)
{
    const Atom property = XInternAtom(display, name, True);
    if (property == None)
        return {};
    const auto previousHandler = XSetErrorHandler(&ignoreError);
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    const int status = XGetWindowProperty(display, window, property, 0, 64, False, AnyPropertyType, &type, &format,
                                          &count, &remaining, &data);
    XSync(display, False);
    XSetErrorHandler(previousHandler);
    std::vector<long> values;
    if (status == Success && data != nullptr && format == 32) {
        const long* longs = reinterpret_cast<const long*>(data);
        values.assign(longs, longs + count);
    }
    if (data != nullptr)
        XFree(data);
    return values;
}

/// A window manager that has stopped may leave its properties on the root window; the window it
/// names as its own is gone then.
bool windowManagerRuns(::Display* display, ::Window root)
{
    const std::vector<long> check = propertyValues(display, root, "_NET_SUPPORTING_WM_CHECK");
    if (check.size() != 1)
        return false;
    const std::vector<long> own = propertyValues(display, static_cast<::Window>(check[0]), "_NET_SUPPORTING_WM_CHECK");
    return own.size() == 1 && own[0] == check[0];
}

sf::IntRect intersection(const sf::IntRect& a, const sf::IntRect& b)
{
    sf::IntRect common;
    return a.intersects(b, common) ? common : sf::IntRect();
}

} // namespace

sf::IntRect Desktop::workArea()
{
    const sf::VideoMode mode = sf::VideoMode::getDesktopMode();
    const sf::IntRect screen(0, 0, static_cast<int>(mode.width), static_cast<int>(mode.height));
    const DisplayConnection connection;
    ::Display* display = connection.get();
    if (display == nullptr)
        return screen;
    const ::Window root = DefaultRootWindow(display);
    if (!windowManagerRuns(display, root))
        return screen;

    const std::vector<long> areas = propertyValues(display, root, "_NET_WORKAREA");
    const std::vector<long> current = propertyValues(display, root, "_NET_CURRENT_DESKTOP");
    std::size_t first = current.size() == 1 ? static_cast<std::size_t>(current[0]) * 4 : 0;
    if (first + 4 > areas.size())
        first = 0;
    if (areas.size() < 4)
        return screen;
    const sf::IntRect area(static_cast<int>(areas[first]), static_cast<int>(areas[first + 1]),
                           static_cast<int>(areas[first + 2]), static_cast<int>(areas[first + 3]));
    const sf::IntRect onScreen = intersection(area, screen);
    return onScreen.width > 0 && onScreen.height > 0 ? onScreen : screen;
}

FrameExtents Desktop::frameExtents(const sf::Window& window)
{
    FrameExtents extents;
    const DisplayConnection connection;
    if (connection.get() == nullptr || !window.isOpen())
        return extents;
    const std::vector<long> values =
        propertyValues(connection.get(), static_cast<::Window>(window.getSystemHandle()), "_NET_FRAME_EXTENTS");
    if (values.size() == 4) {
        extents.left = static_cast<int>(values[0]);
        extents.right = static_cast<int>(values[1]);
        extents.top = static_cast<int>(values[2]);
        extents.bottom = static_cast<int>(values[3]);
    }
    return extents;
}

} // namespace ryn
