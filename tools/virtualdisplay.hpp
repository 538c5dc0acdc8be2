#pragma once

#include <X11/Xlib.h>

#include <string>

namespace orane
{

/// Glyphs are rendered through OpenGL, which under X11 needs a display. When there is none,
/// this starts a private Xvfb server (which picks a free display number itself, so tools running
/// side by side never race for one) and points DISPLAY at it. The server ends by itself when its
/// last client leaves, at the end of the process at the latest.
class VirtualDisplay
{
public:
    VirtualDisplay() = default;
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// True when a display can be opened, after starting a private one if needed; otherwise
    /// false with the reason in error().
    bool ensure();
    [[nodiscard]] const std::string& error() const { return error_; }

    /// True when DISPLAY names a display that opens.
    static bool isAvailable();

private:
    bool startServer();

    /// Keeps the private server up until SFML has connected to it.
    Display* connection_ = nullptr;
    std::string error_;
};

} // namespace orane
