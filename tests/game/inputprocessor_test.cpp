#include "oraneapp.hpp"
#include "oraneinputprocessor.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/inputmanager.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

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
        ASSERT_TRUE(input_->init());
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

/// The buttons the application registers that are down right now.
std::vector<std::string> pressedButtons(const ryn::InputManager& input)
{
    std::vector<std::string> pressed;
    for (const char* id : OraneApp::BUTTON_IDS)
        if (input.isPressed(id))
            pressed.emplace_back(id);
    return pressed;
}

TEST_F(KeyBindings, EveryKeyTheGameTakesPressesAndReleasesOneRegisteredButton)
{
    // Whatever the bindings are, a key the game takes must name a button the application
    // registers (a misspelt one would be pressed nowhere), and its release must free that button.
    ryn::console::Capture capture;
    int taken = 0;
    for (int code = 0; code < sf::Keyboard::KeyCount; ++code) {
        const auto key = static_cast<sf::Keyboard::Key>(code);
        input_->resetTransitions();
        if (!processor_.processEvent(keyEvent(sf::Event::KeyPressed, key))) {
            EXPECT_TRUE(pressedButtons(*input_).empty()) << "key " << code << " is not taken but presses a button";
            continue;
        }
        ++taken;
        const std::vector<std::string> pressed = pressedButtons(*input_);
        ASSERT_EQ(pressed.size(), 1u) << "key " << code;
        input_->resetTransitions();
        EXPECT_TRUE(processor_.processEvent(keyEvent(sf::Event::KeyReleased, key))) << "key " << code;
        EXPECT_TRUE(input_->isReleased(pressed[0]) && !input_->isPressed(pressed[0])) << pressed[0];
    }
    EXPECT_GT(taken, 0);
    // The right button is nobody's business, but must not draw a report either.
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
