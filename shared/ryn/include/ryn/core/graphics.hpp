#pragma once

#include <SFML/Graphics/Rect.hpp>
#include <SFML/Graphics/RenderTexture.hpp>
#include <SFML/Graphics/RenderWindow.hpp>

#include <memory>
#include <string>
#include <vector>

namespace ryn
{

class WindowListener;

/// Owns the program's one render window: opens it, reopens it at a new size and keeps its
/// view mapping one unit to one pixel.
/// A window asked for at a size larger than the desktop's work area opens at the largest size
/// of the same proportions that fits instead. States then still draw at the size asked for, on
/// a canvas (`target`) that `display` shows scaled down; `mapPixelToTarget` brings pointer
/// positions back to the canvas's units. When the size asked for fits, states draw on the
/// window itself, unscaled.
class Graphics
{
public:
    Graphics();
    virtual ~Graphics();
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;

    /// Null until `create`.
    [[nodiscard]] virtual sf::RenderWindow* window() const;
    /// Stores the title (UTF-8), creates the window and opens it at 800 x 600; true when the
    /// window exists.
    [[nodiscard]] virtual bool create(std::string title);
    [[nodiscard]] virtual bool isOpen() const;
    /// Gives the window a view showing (0, 0, width, height): one unit per pixel again.
    virtual void resize(unsigned width, unsigned height);
    /// (Re)opens the window with the default style (titlebar, resize, close), at width x height
    /// or smaller to fit the desktop, and tells the listeners.
    virtual void createWindow(unsigned width, unsigned height);
    /// Kept once, in registration order; not owned.
    virtual void addWindowListener(WindowListener* listener);
    virtual void removeWindowListener(WindowListener* listener);

    /// Next pending window event, as the main loop polls them.
    virtual bool pollEvent(sf::Event& event);
    /// Limits the frame rate now and every time the window is reopened (SFML forgets the
    /// limit when a window is recreated). 0 means no limit.
    void setFramerateLimit(unsigned limit);
    [[nodiscard]] unsigned framerateLimit() const { return framerateLimit_; }

    /// Where states draw each frame, at the size last asked of `createWindow`: the window, or
    /// the canvas when the window had to be smaller.
    sf::RenderTarget& target();
    /// Shows the frame drawn on `target`, scaled to the window when drawn on the canvas.
    void display();
    /// A pointer position in window pixels, in the units states draw in: the same whole pixels
    /// when the window has the size asked for.
    [[nodiscard]] sf::Vector2f mapPixelToTarget(sf::Vector2i pixel) const;
    /// True when the window is smaller than the size asked for and the frames are scaled.
    [[nodiscard]] bool isScaled() const { return scaled_; }

protected:
    /// What every `createWindow` does, with the style of the caller's choice: opens at
    /// width x height, 32 bits per pixel, default context, applies the frame-rate limit and
    /// tells the listeners. Too large for the work area, the window opens at the largest size
    /// of the same proportions that fits, centred in it, with a canvas of width x height.
    void openWindow(unsigned width, unsigned height, sf::Uint32 style);
    /// The desktop's work area, which a window and its decorations must fit in.
    [[nodiscard]] virtual sf::IntRect workArea() const;

    std::string title_;

private:
    /// The frame's place in the window, for the scaled window.
    [[nodiscard]] sf::FloatRect pictureArea() const;
    /// Without a canvas the window itself shows the asked size through a view, letterboxed.
    void applyScaledView();

    std::unique_ptr<sf::RenderWindow> window_;
    std::unique_ptr<sf::RenderTexture> canvas_;
    sf::Vector2u drawingSize_;
    bool scaled_ = false;
    std::vector<WindowListener*> listeners_;
    unsigned framerateLimit_ = 0;
};

} // namespace ryn
