#include "componentset.hpp"
#include "recordedasserts.hpp"

#include <ryn/core/inputmanager.hpp>
#include <ryn/core/inputprocessor.hpp>
#include <ryn/core/texttarget.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Reports = std::vector<std::string>;

sf::Event mouse(sf::Event::EventType type, sf::Mouse::Button button)
{
    sf::Event event;
    event.type = type;
    event.mouseButton = {button, 10, 20};
    return event;
}

sf::Event typed(sf::Uint32 code)
{
    sf::Event event;
    event.type = sf::Event::TextEntered;
    event.text.unicode = code;
    return event;
}

sf::Event keyPressed(sf::Keyboard::Key key)
{
    sf::Event event;
    event.type = sf::Event::KeyPressed;
    event.key = {key, false, false, false, false};
    return event;
}

class InputTest : public ::testing::Test
{
protected:
    InputTest()
        : set_(nullptr, nullptr, new ryn::InputManager)
    {
        EXPECT_TRUE(input().init());
    }

    ryn::InputManager& input() { return *ryn::components().inputManager(); }

    ryn::InputProcessor processor;

private:
    ryn::test::ComponentSet set_;
};

TEST_F(InputTest, ClickPolledInOneStepIsBothPressedAndReleasedUntilTheNextReset)
{
    EXPECT_TRUE(processor.processEvent(mouse(sf::Event::MouseButtonPressed, sf::Mouse::Left)));
    EXPECT_TRUE(processor.processEvent(mouse(sf::Event::MouseButtonReleased, sf::Mouse::Left)));
    EXPECT_TRUE(input().isPressed("touch"));
    EXPECT_TRUE(input().isReleased("touch"));

    input().resetTransitions();
    EXPECT_FALSE(input().isPressed("touch"));
    EXPECT_FALSE(input().isReleased("touch"));
}

TEST_F(InputTest, RegisteringAgainKeepsTheButtonAsItIs)
{
    input().press("touch");
    input().addButton("touch");
    EXPECT_TRUE(input().isPressed("touch"));

    input().addButton("up");
    EXPECT_TRUE(input().isValidButtonId("up"));
    EXPECT_FALSE(input().isValidButtonId("Up")) << "ids are case-sensitive";
}

TEST_F(InputTest, UnknownIdsAreReportedThenIgnored)
{
    ryn::test::RecordedAsserts asserts;

    // The right mouse button is emitted as "alttouch", which nobody registered.
    EXPECT_TRUE(processor.processEvent(mouse(sf::Event::MouseButtonPressed, sf::Mouse::Right)));
    EXPECT_TRUE(processor.processEvent(mouse(sf::Event::MouseButtonReleased, sf::Mouse::Right)));
    EXPECT_EQ(asserts.reported(), (Reports{"false", "false"}));
    EXPECT_FALSE(input().isValidButtonId("alttouch")) << "an unknown id is not registered by using it";

    asserts.clear();
    EXPECT_FALSE(input().isPressed("alttouch"));
    EXPECT_FALSE(input().isReleased("debug"));
    EXPECT_EQ(asserts.reported(), (Reports{"isValidButtonId(id)", "false", "isValidButtonId(id)", "false"}));
}

TEST_F(InputTest, OtherMouseButtonsAndTextWithoutATargetAreNotConsumed)
{
    ryn::test::RecordedAsserts asserts;
    EXPECT_FALSE(processor.processEvent(mouse(sf::Event::MouseButtonPressed, sf::Mouse::Middle)));
    EXPECT_FALSE(processor.processEvent(typed('a')));
    EXPECT_FALSE(processor.processEvent(keyPressed(sf::Keyboard::Right)));
    EXPECT_TRUE(asserts.reported().empty());
}

class RecordingTarget : public ryn::TextTarget
{
public:
    void textTargetLost() override { calls.push_back("lost"); }
    void insertCharacter(std::uint32_t code) override { calls.push_back("insert " + std::to_string(code)); }
    void editCommand(ryn::TextCommand command) override
    {
        calls.push_back("command " + std::to_string(static_cast<int>(command)));
    }

    std::vector<std::string> calls;
};

TEST_F(InputTest, TextTargetReceivesAsciiCharactersAndEditingCommands)
{
    RecordingTarget target;
    processor.setTextTarget(&target);

    EXPECT_TRUE(processor.processEvent(typed('a')));
    EXPECT_FALSE(processor.processEvent(typed(233))) << "é is neither forwarded nor consumed";
    EXPECT_TRUE(processor.processEvent(typed(8)));
    EXPECT_TRUE(processor.processEvent(typed(13)));
    EXPECT_TRUE(processor.processEvent(typed(27)));
    // Editing keys are forwarded but left to the rest of the program as well.
    EXPECT_FALSE(processor.processEvent(keyPressed(sf::Keyboard::Right)));
    EXPECT_FALSE(processor.processEvent(keyPressed(sf::Keyboard::Delete)));
    EXPECT_FALSE(processor.processEvent(keyPressed(sf::Keyboard::Up)));

    EXPECT_EQ(target.calls,
              (std::vector<std::string>{"insert 97", "command 0", "command 6", "command 3", "command 7", "command 2"}));
}

TEST_F(InputTest, ReplacedTargetIsToldOnceAndAStaleReleaseChangesNothing)
{
    RecordingTarget first;
    RecordingTarget second;
    processor.setTextTarget(&first);
    processor.setTextTarget(&second);
    EXPECT_EQ(first.calls, (std::vector<std::string>{"lost"}));

    processor.releaseTextTarget(&first);
    EXPECT_EQ(processor.textTarget(), &second);
    processor.releaseTextTarget(&second);
    EXPECT_FALSE(processor.hasTextTarget());
    EXPECT_TRUE(second.calls.empty());
}

} // namespace
