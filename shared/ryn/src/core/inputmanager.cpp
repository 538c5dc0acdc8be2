#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>

#include <SFML/Window/Mouse.hpp>

namespace ryn
{

bool InputManager::init()
{
    addButton("touch");
    return true;
}

void InputManager::addButton(std::string id)
{
    buttons_.emplace(std::move(id), Button());
}

void InputManager::resetTransitions()
{
    for (auto& entry : buttons_)
        entry.second = Button();
}

void InputManager::press(const std::string& id)
{
    if (Button* found = button(id))
        found->pressed = true;
}

void InputManager::release(const std::string& id)
{
    if (Button* found = button(id))
        found->released = true;
}

bool InputManager::isPressed(const std::string& id) const
{
    RYN_CHECK(isValidButtonId(id));
    const Button* found = button(id);
    return found && found->pressed;
}

bool InputManager::isReleased(const std::string& id) const
{
    RYN_CHECK(isValidButtonId(id));
    const Button* found = button(id);
    return found && found->released;
}

bool InputManager::isValidButtonId(const std::string& id) const
{
    return buttons_.count(id) > 0;
}

sf::Vector2f InputManager::mousePosition() const
{
    const Graphics& graphics = *components().graphics();
    return graphics.mapPixelToTarget(sf::Mouse::getPosition(*graphics.window()));
}

InputManager::Button* InputManager::button(const std::string& id)
{
    const auto found = buttons_.find(id);
    if (found == buttons_.end()) {
        RYN_CHECK(false);
        return nullptr;
    }
    return &found->second;
}

const InputManager::Button* InputManager::button(const std::string& id) const
{
    const auto found = buttons_.find(id);
    if (found == buttons_.end()) {
        RYN_CHECK(false);
        return nullptr;
    }
    return &found->second;
}

} // namespace ryn
