#pragma once

#include <SFML/Graphics/RenderWindow.hpp>

#include <memory>
#include <string>
#include <vector>

namespace ryn
{

class WindowListener;

/// Owns the program's one render window: opens it, reopens it at a new size and keeps its
/// view mapping one unit to one pixel.
class Graphics
{
public:
    Graphics();
    virtual ~Graphics();
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;

    /// Null until `create`.
    virtual sf::RenderWindow* window() const;
    /// Stores the title (UTF-8), creates the window and opens it at 800 x 600; true when the
    /// window exists.
    virtual bool create(std::string title);
    virtual bool isOpen() const;
    /// Gives the window a view showing (0, 0, width, height): one unit per pixel again.
    virtual void resize(unsigned width, unsigned height);
    /// (Re)opens the window with the default style (titlebar, resize, close) and tells the
    /// listeners.
    virtual void createWindow(unsigned width, unsigned height);
    /// Kept once, in registration order; not owned.
    virtual void addWindowListener(WindowListener* listener);
    virtual void removeWindowListener(WindowListener* listener);

    /// Next pending window event, as the main loop polls them.
    virtual bool pollEvent(sf::Event& event);
    /// Limits the frame rate now and every time the window is reopened (SFML forgets the
    /// limit when a window is recreated). 0 means no limit.
    void setFramerateLimit(unsigned limit);
    unsigned framerateLimit() const { return framerateLimit_; }

protected:
    /// What every `createWindow` does, with the style of the caller's choice: opens at
    /// width x height, 32 bits per pixel, default context, applies the frame-rate limit and
    /// tells the listeners.
    void openWindow(unsigned width, unsigned height, sf::Uint32 style);

    std::string title_;

private:
    std::unique_ptr<sf::RenderWindow> window_;
    std::vector<WindowListener*> listeners_;
    unsigned framerateLimit_ = 0;
};

} // namespace ryn
