#include "virtualdisplay.hpp"

#include <X11/Xlib.h>

#include <cstdlib>
#include <unistd.h>

namespace orane
{

VirtualDisplay::~VirtualDisplay()
{
    // The server ends by itself once its last client, SFML's own context among them, has
    // gone at the end of the process: ending it here would pull the display from under SFML.
    if (connection_ != nullptr)
        XCloseDisplay(connection_);
}

bool VirtualDisplay::isAvailable()
{
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return false;
    XCloseDisplay(display);
    return true;
}

bool VirtualDisplay::ensure()
{
    // The connection stays open until the end: an X server whose last client leaves resets
    // itself, and refuses the connection SFML opens right after for as long as that takes.
    if (connection_ == nullptr)
        connection_ = XOpenDisplay(nullptr);
    if (connection_ != nullptr)
        return true;
    if (!startServer())
        return false;
    connection_ = XOpenDisplay(nullptr);
    if (connection_ != nullptr)
        return true;
    error_ = "the private Xvfb display does not open";
    return false;
}

bool VirtualDisplay::startServer()
{
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) {
        error_ = "no display, and no pipe to start Xvfb";
        return false;
    }
    const pid_t child = fork();
    if (child == 0) {
        close(pipeEnds[0]);
        const std::string fd = std::to_string(pipeEnds[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "640x480x24", "-nolisten", "tcp", "-terminate",
               static_cast<char*>(nullptr));
        _exit(127);
    }
    close(pipeEnds[1]);
    if (child < 0) {
        close(pipeEnds[0]);
        error_ = "no display, and Xvfb could not be started";
        return false;
    }
    // The server writes its display number once it accepts connections.
    std::string number;
    char c = 0;
    while (read(pipeEnds[0], &c, 1) == 1 && c != '\n')
        number += c;
    close(pipeEnds[0]);
    if (number.empty()) {
        error_ = "no display, and Xvfb did not start (install the xvfb package)";
        return false;
    }
    setenv("DISPLAY", (":" + number).c_str(), 1);
    return true;
}

} // namespace orane
