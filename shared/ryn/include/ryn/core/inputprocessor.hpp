#pragma once

#include <SFML/Window/Event.hpp>

#include <string>

namespace ryn
{

class TextTarget;

/// Turns window events into button transitions of the input manager ("touch" for the left
/// mouse button, "alttouch" for the right one) and typed text into the text target's calls.
/// A game derives it to handle its keys first and passes the rest to `processEvent`.
class InputProcessor
{
public:
    virtual ~InputProcessor() = default;

    [[nodiscard]] virtual TextTarget* textTarget() const;
    virtual void pressButton(const std::string& id);
    virtual void releaseButton(const std::string& id);
    [[nodiscard]] virtual bool init();
    [[nodiscard]] virtual bool hasTextTarget() const;
    /// True when the event was consumed; the main loop handles closing and resizing itself
    /// for the events that were not.
    virtual bool processEvent(const sf::Event& event);
    /// The previous target, if any, is told it lost its place.
    virtual void setTextTarget(TextTarget* target);
    /// Forgets `target` if it is the current one.
    virtual void releaseTextTarget(TextTarget* target);

private:
    bool processTextEntered(std::uint32_t code);
    bool processKeyPressed(sf::Keyboard::Key key);

    TextTarget* textTarget_ = nullptr;
};

} // namespace ryn
