#pragma once

#include <SFML/System/Vector2.hpp>

#include <map>
#include <string>

namespace ryn
{

/// Knows, for every registered button id, whether the button went down or up during the
/// current update step. Only edges are kept: nothing tells whether a button is held.
/// An id that was never registered is reported and then ignored (presses and releases) or
/// answered false (queries), so an unexpected key or mouse button never stops the program.
class InputManager
{
public:
    struct Button
    {
        bool pressed = false;
        bool released = false;
    };

    virtual ~InputManager() = default;

    /// Registers "touch" (the left mouse button).
    [[nodiscard]] bool init();
    /// Registers `id`; an id already registered keeps its flags.
    void addButton(std::string id);
    /// Clears every pressed and released flag; the main loop calls it at the start of a step.
    void resetTransitions();
    void press(const std::string& id);
    void release(const std::string& id);
    [[nodiscard]] bool isPressed(const std::string& id) const;
    [[nodiscard]] bool isReleased(const std::string& id) const;
    [[nodiscard]] bool isValidButtonId(const std::string& id) const;
    /// The pointer relative to the render window, in the units states draw in: whole window
    /// pixels, unless the window is scaled to fit a small desktop (see `Graphics`).
    [[nodiscard]] sf::Vector2f mousePosition() const;

private:
    /// Null, after a report, for an id that is not registered.
    Button* button(const std::string& id);
    [[nodiscard]] const Button* button(const std::string& id) const;

    std::map<std::string, Button> buttons_;
};

} // namespace ryn
