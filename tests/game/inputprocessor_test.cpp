#include "oraneapp.hpp"
#include "oraneinputprocessor.hpp"

#include "ryn/core/assert.hpp"
#include "ryn/core/components.hpp"
#include "ryn/core/console.hpp"
#include "ryn/core/inputmanager.hpp"

#include <gtest/gtest.h>

namespace orane
{
namespace
{

sf::Event keyEvent(sf::Event::EventType type, sf::Keyboard::Key key)
{
    sf::Event event;
    event.type = type;
    event.key = sf::Event::KeyEvent{key, false, false, false, false};
    return event;
}

class KeyBindings : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previousHandler_ = ryn::setAssertHandler(&ryn::reportOnlyAssertHandler);
        ryn::components().clear();
        input_ = new ryn::InputManager();
        ryn::components().set(nullptr, nullptr, nullptr, nullptr, input_, nullptr, nullptr, nullptr, nullptr);
        input_->init();
        for (const char* id : OraneApp::BUTTON_IDS)
            input_->addButton(id);
    }
    void TearDown() override
    {
        ryn::components().clear();
        ryn::setAssertHandler(previousHandler_);
    }

    ryn::InputManager* input_ = nullptr;
    OraneInputProcessor processor_;

private:
    ryn::AssertHandler previousHandler_ = nullptr;
};

TEST_F(KeyBindings, EachBoundKeyGivesItsButtonOnePressAndOneRelease)
{
    const std::vector<std::pair<sf::Keyboard::Key, std::string>> bindings = {
        {sf::Keyboard::Up, "up"},         {sf::Keyboard::Right, "right"},   {sf::Keyboard::Down, "down"},
        {sf::Keyboard::Left, "left"},     {sf::Keyboard::Return, "enter"}, {sf::Keyboard::Escape, "escape"},
        {sf::Keyboard::Tab, "debug"}};
    ryn::console::Capture capture;
    for (const auto& [key, id] : bindings) {
        input_->resetTransitions();
        EXPECT_TRUE(processor_.processEvent(keyEvent(sf::Event::KeyPressed, key))) << id;
        EXPECT_TRUE(input_->isPressed(id) && !input_->isReleased(id)) << id;
        input_->resetTransitions();
        EXPECT_TRUE(processor_.processEvent(keyEvent(sf::Event::KeyReleased, key))) << id;
        EXPECT_TRUE(!input_->isPressed(id) && input_->isReleased(id)) << id;
    }
    // Tab and the right button are nobody's business, but must not draw a report either.
    sf::Event right;
    right.type = sf::Event::MouseButtonPressed;
    right.mouseButton = sf::Event::MouseButtonEvent{sf::Mouse::Right, 0, 0};
    EXPECT_TRUE(processor_.processEvent(right));
    EXPECT_EQ(capture.text(), "");
}

TEST_F(KeyBindings, OtherKeysGoToTheEngineAndAreNotConsumed)
{
    EXPECT_FALSE(processor_.processEvent(keyEvent(sf::Event::KeyPressed, sf::Keyboard::Space)));
    EXPECT_FALSE(processor_.processEvent(keyEvent(sf::Event::KeyPressed, sf::Keyboard::BackSpace)));
    for (const char* id : OraneApp::BUTTON_IDS)
        EXPECT_FALSE(input_->isPressed(id)) << id;
}

} // namespace
} // namespace orane
