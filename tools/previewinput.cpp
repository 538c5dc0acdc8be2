#include "previewinput.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/inputmanager.hpp>

namespace orane
{

const char* const PreviewInput::BUTTON_IDS[4] = {"reload", "back", "restart", "screenshot"};

bool PreviewInput::processEvent(const sf::Event& event)
{
    if (event.type == sf::Event::KeyPressed || event.type == sf::Event::KeyReleased) {
        const std::string id = previewButtonOf(event.key.code);
        if (!id.empty()) {
            if (event.type == sf::Event::KeyPressed)
                ryn::components().inputManager()->press(id);
            else
                ryn::components().inputManager()->release(id);
            return true;
        }
    }
    return OraneInputProcessor::processEvent(event);
}

std::string PreviewInput::previewButtonOf(sf::Keyboard::Key key)
{
    switch (key) {
    case sf::Keyboard::F5: return BUTTON_IDS[0];
    case sf::Keyboard::BackSpace: return BUTTON_IDS[1];
    case sf::Keyboard::Home: return BUTTON_IDS[2];
    case sf::Keyboard::F12: return BUTTON_IDS[3];
    default: return {};
    }
}

} // namespace orane
