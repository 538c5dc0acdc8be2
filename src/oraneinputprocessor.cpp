#include "oraneinputprocessor.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/inputmanager.hpp>

namespace orane
{

bool OraneInputProcessor::processEvent(const sf::Event& event)
{
    if (event.type == sf::Event::KeyPressed || event.type == sf::Event::KeyReleased) {
        const std::string id = boundButtonId(event.key.code);
        if (!id.empty()) {
            if (event.type == sf::Event::KeyPressed)
                ryn::components().inputManager()->press(id);
            else
                ryn::components().inputManager()->release(id);
            return true;
        }
    }
    return InputProcessor::processEvent(event);
}

std::string OraneInputProcessor::buttonIdOf(sf::Keyboard::Key key)
{
    switch (key) {
    case sf::Keyboard::Up: return "up";
    case sf::Keyboard::Right: return "right";
    case sf::Keyboard::Down: return "down";
    case sf::Keyboard::Left: return "left";
    case sf::Keyboard::Return: return "enter";
    case sf::Keyboard::Escape: return "escape";
    case sf::Keyboard::Tab: return "debug";
    default: return {};
    }
}

std::string OraneInputProcessor::boundButtonId(sf::Keyboard::Key key) const
{
    return buttonIdOf(key);
}

} // namespace orane
