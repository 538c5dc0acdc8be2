#include "previewinput.hpp"

namespace orane
{

const char* const PreviewInput::BUTTON_IDS[4] = {"reload", "back", "restart", "screenshot"};

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

std::string PreviewInput::boundButtonId(sf::Keyboard::Key key) const
{
    std::string id = previewButtonOf(key);
    return id.empty() ? OraneInputProcessor::boundButtonId(key) : id;
}

} // namespace orane
