#pragma once

#include <ryn/core/inputprocessor.hpp>

#include <string>

namespace orane
{

/// Adds the game's keys to the engine's mouse and text handling.
class OraneInputProcessor : public ryn::InputProcessor
{
public:
    /// A press or release of a bound key becomes its button id and is consumed; everything
    /// else goes to the engine's processor.
    bool processEvent(const sf::Event& event) override;

    /// The button id bound to `key`, or an empty string for a key the game does not use.
    [[nodiscard]] static std::string buttonIdOf(sf::Keyboard::Key key);

protected:
    /// The key table `processEvent` reads; a subclass that takes more keys answers its own
    /// first and falls back to the game's.
    [[nodiscard]] virtual std::string boundButtonId(sf::Keyboard::Key key) const;
};

} // namespace orane
