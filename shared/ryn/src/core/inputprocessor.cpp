#include <ryn/core/components.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/inputprocessor.hpp>
#include <ryn/core/texttarget.hpp>

namespace ryn
{

TextTarget* InputProcessor::textTarget() const
{
    return textTarget_;
}

void InputProcessor::pressButton(const std::string& id)
{
    components().inputManager()->press(id);
}

void InputProcessor::releaseButton(const std::string& id)
{
    components().inputManager()->release(id);
}

bool InputProcessor::init()
{
    return true;
}

bool InputProcessor::hasTextTarget() const
{
    return textTarget_ != nullptr;
}

bool InputProcessor::processEvent(const sf::Event& event)
{
    if (event.type == sf::Event::MouseButtonPressed || event.type == sf::Event::MouseButtonReleased) {
        std::string id;
        if (event.mouseButton.button == sf::Mouse::Left)
            id = "touch";
        else if (event.mouseButton.button == sf::Mouse::Right)
            id = "alttouch";
        else
            return false;
        if (event.type == sf::Event::MouseButtonPressed)
            components().inputManager()->press(id);
        else
            components().inputManager()->release(id);
        return true;
    }
    if (!hasTextTarget())
        return false;
    if (event.type == sf::Event::TextEntered)
        return processTextEntered(event.text.unicode);
    if (event.type == sf::Event::KeyPressed)
        return processKeyPressed(event.key.code);
    return false;
}

void InputProcessor::setTextTarget(TextTarget* target)
{
    if (textTarget_)
        textTarget_->textTargetLost();
    textTarget_ = target;
}

void InputProcessor::releaseTextTarget(TextTarget* target)
{
    if (textTarget_ == target)
        textTarget_ = nullptr;
}

bool InputProcessor::processTextEntered(std::uint32_t code)
{
    // Targets take plain ASCII only; anything else is left to whoever comes next.
    if (code >= 128)
        return false;
    switch (code) {
    case 8: textTarget_->editCommand(TextCommand::BACKSPACE); break;
    case 13: textTarget_->editCommand(TextCommand::ENTER); break;
    case 27: textTarget_->editCommand(TextCommand::ESCAPE); break;
    default: textTarget_->insertCharacter(code); break;
    }
    return true;
}

bool InputProcessor::processKeyPressed(sf::Keyboard::Key key)
{
    switch (key) {
    case sf::Keyboard::End: textTarget_->editCommand(TextCommand::END); break;
    case sf::Keyboard::Home: textTarget_->editCommand(TextCommand::HOME); break;
    case sf::Keyboard::Delete: textTarget_->editCommand(TextCommand::DELETE); break;
    case sf::Keyboard::Left: textTarget_->editCommand(TextCommand::LEFT); break;
    case sf::Keyboard::Right: textTarget_->editCommand(TextCommand::RIGHT); break;
    default: break;
    }
    // Forwarded, yet counted as not consumed, so that a game still sees its keys.
    return false;
}

} // namespace ryn
