#include "audio.hpp"
#include "gametree.hpp"
#include "oraneapp.hpp"
#include "stategame.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/runapplication.hpp>
#include <ryn/core/statemanager.hpp>
#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

#include <SFML/Graphics/Texture.hpp>
#include <SFML/Window/Mouse.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <regex>

namespace orane
{
namespace
{

ryn::AssertHandler installReportOnly()
{
    return ryn::setAssertHandler(&ryn::reportOnlyAssertHandler);
}

/// The game started on a story of the test's, driven step by step as the main loop would.
class PlayState : public ::testing::Test
{
protected:
    void start(const std::map<std::string, std::string>& story)
    {
        tree_ = std::make_unique<test::GameTree>(story);
        app_ = std::make_unique<OraneApp>();
        ASSERT_TRUE(app_->init());
        state_ = dynamic_cast<StateGame*>(ryn::components().stateManager()->currentState());
        ASSERT_NE(state_, nullptr);
    }
    void TearDown() override
    {
        app_.reset();
        tree_.reset();
        ryn::setAssertHandler(previousHandler_);
    }

    enum class Touch
    {
        NONE,
        PRESS,
        RELEASE,
        BOTH
    };

    /// One update step with the pointer at `point` (window pixels).
    void step(sf::Vector2f point, Touch touch = Touch::NONE)
    {
        sf::RenderWindow& window = *ryn::components().graphics()->window();
        sf::Mouse::setPosition(sf::Vector2i(point), window);
        ryn::InputManager& input = *ryn::components().inputManager();
        input.resetTransitions();
        if (touch == Touch::PRESS || touch == Touch::BOTH)
            input.press("touch");
        if (touch == Touch::RELEASE || touch == Touch::BOTH)
            input.release("touch");
        state_->update(0.05f);
    }

    /// Animation frames of the notebook; drawing them would only cost time under a software
    /// renderer.
    void frames(int count)
    {
        for (int i = 0; i < count; ++i)
            state_->book().update();
    }

    [[nodiscard]] std::vector<ryn::ShapeShifterPushButtonNode*> buttons() const
    {
        std::vector<ryn::ShapeShifterPushButtonNode*> found;
        for (ryn::SceneNode* node : state_->choicesNode().children())
            found.push_back(dynamic_cast<ryn::ShapeShifterPushButtonNode*>(node));
        return found;
    }

    /// Pixels of the spread shown that are clearly red, in a frame drawn as the main loop would.
    int bloodOnTheSpreadShown()
    {
        sf::RenderWindow& window = *ryn::components().graphics()->window();
        window.clear();
        state_->draw(0.f, 0.f);
        sf::Texture frame;
        frame.create(1600, 900);
        frame.update(window);
        const sf::Image image = frame.copyToImage();
        int red = 0;
        for (unsigned y = 176; y < 856; y += 2)
            for (unsigned x = 362; x < 1242; x += 2) {
                const sf::Color c = image.getPixel(x, y);
                red += c.r > 90 && c.r > c.g + 50 && c.r > c.b + 50;
            }
        return red;
    }

    [[nodiscard]] bool choicesShown() const
    {
        return state_->choicesNode().isVisible() && state_->choicesNode().isEnabled();
    }

    void click(const ryn::ShapeShifterPushButtonNode& button)
    {
        const sf::FloatRect area = button.bounds();
        const sf::Vector2f centre(area.left + area.width / 2.f, area.top + area.height / 2.f);
        step(centre);
        step(centre, Touch::PRESS);
        step(centre, Touch::RELEASE);
    }

    /// Drags the bottom-left corner across the spine and lets go; the page is still turning.
    void releaseBackwardTurn()
    {
        step({370.f, 850.f});
        frames(5);
        step({370.f, 850.f}, Touch::PRESS);
        for (float x = 500.f; x < 1100.f; x += 150.f) {
            step({x, 850.f});
            frames(5);
        }
        step({1100.f, 850.f}, Touch::RELEASE);
    }

    void finishTurn()
    {
        for (int i = 0; i < 2000 && state_->book().getState() != STATE::IDLE; ++i)
            frames(1);
    }

    /// Drags the bottom-right corner across the spine and lets the page turn to its end.
    void turnForward()
    {
        step({1235.f, 850.f});
        frames(5);
        step({1235.f, 850.f}, Touch::PRESS);
        for (float x = 1100.f; x > 500.f; x -= 150.f) {
            step({x, 850.f});
            frames(5);
        }
        step({500.f, 850.f}, Touch::RELEASE);
        step({60.f, 60.f});
        for (int i = 0; i < 2000 && state_->book().getState() != STATE::IDLE; ++i)
            frames(1);
    }

    ryn::AssertHandler previousHandler_ = installReportOnly();
    std::unique_ptr<test::GameTree> tree_;
    std::unique_ptr<OraneApp> app_;
    StateGame* state_ = nullptr;
};

TEST_F(PlayState, StartsOnTheFirstSpreadWithItsChoicesUnderNathansTextAndTheFinalWindow)
{
    start(test::storyWithChoices({" Entrer", " Déjà vu à l'œil nu", " Où êtes-vous ?", " Fuir"}));

    const sf::RenderWindow& window = *ryn::components().graphics()->window();
    EXPECT_EQ(window.getSize(), sf::Vector2u(1600, 900));
    EXPECT_EQ(ryn::components().graphics()->framerateLimit(), 60u);
    for (const char* id : OraneApp::BUTTON_IDS)
        EXPECT_TRUE(ryn::components().inputManager()->isValidButtonId(id)) << id;

    EXPECT_TRUE(state_->book().isOnLastSpread());
    EXPECT_TRUE(choicesShown());
    const sf::Vector2f origin = state_->choicesNode().getPosition();
    EXPECT_FLOAT_EQ(origin.x, 842.f);
    EXPECT_FLOAT_EQ(origin.y, 216.f + state_->book().getLastTextHeight());

    const std::vector<std::string> labels = {" Entrer", " Déjà vu à l'œil nu", " Où êtes-vous ?", " Fuir"};
    const auto shown = buttons();
    ASSERT_EQ(shown.size(), 4u);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i]->getPosition(), sf::Vector2f(0.f, 40.f * static_cast<float>(i)));
        EXPECT_EQ(shown[i]->text()->getString(), sf::String::fromUtf8(labels[i].begin(), labels[i].end()));
        // The frame is fitted around the label, left edge at the button's origin.
        const sf::FloatRect frame = shown[i]->bounds();
        EXPECT_NEAR(frame.left, origin.x, 1.5f);
        EXPECT_GT(frame.width, shown[i]->text()->getGlobalBounds().width + 9.f);
    }
}

TEST_F(PlayState, AClickedChoiceIsWrittenAndItsSceneWaitsBehindTheSpreadShown)
{
    start(test::storyWithChoices({" Entrer", " Fuir"}));
    ryn::console::Capture capture;

    // A press outside every button and a release on one is no click.
    step({100.f, 100.f}, Touch::PRESS);
    step({100.f, 100.f});
    const auto before = buttons();
    const sf::FloatRect second = before[1]->bounds();
    step({second.left + 10.f, second.top + 10.f}, Touch::RELEASE);
    EXPECT_EQ(buttons().size(), 2u);

    click(*before[1]);
    EXPECT_EQ(state_->sceneManager().currentSceneName(), "suite");
    const std::vector<Page>& pages = state_->book().getPages();
    ASSERT_EQ(pages.size(), 4u);
    // Nathan's page of the spread shown ends with the answer, on a line of its own.
    std::wstring nathan = pages[1].text.toWideString();
    std::replace(nathan.begin(), nathan.end(), L'\n', L' ');
    EXPECT_EQ(nathan.rfind(L"Je vous écoute.", 0), 0u) << pages[1].text.toAnsiString();
    EXPECT_NE(pages[1].text.find(L"\nRéponse numéro 1."), sf::String::InvalidPos);
    EXPECT_FALSE(state_->book().isOnLastSpread());
    EXPECT_EQ(buttons().size(), 2u);
    EXPECT_FALSE(choicesShown());
    EXPECT_EQ(capture.text(), "");
}

TEST_F(PlayState, AQuickDoubleClickEndsOneClickAndStartsTheNextWithoutAReport)
{
    start(test::storyWithChoices({" Entrer", " Fuir"}));
    ryn::console::Capture capture;
    const sf::FloatRect first = buttons()[0]->bounds();
    const sf::Vector2f inside(first.left + 10.f, first.top + 10.f);
    step(inside);
    step(inside, Touch::PRESS);
    step(inside, Touch::BOTH); // the first release, then the second press
    EXPECT_EQ(state_->sceneManager().currentSceneName(), "suite");
    step(inside, Touch::RELEASE);
    // Both edges of a click in one step still make a click.
    EXPECT_EQ(state_->sceneManager().currentSceneName(), "suite");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(PlayState, PressAndReleaseInOneStepClickAButton)
{
    start(test::storyWithChoices({" Entrer", " Fuir"}));
    const sf::FloatRect second = buttons()[1]->bounds();
    step({second.left + 10.f, second.top + 10.f}, Touch::BOTH);
    EXPECT_EQ(state_->sceneManager().currentSceneName(), "suite");
    EXPECT_NE(state_->book().getPages()[1].text.find(L"Réponse numéro 1."), sf::String::InvalidPos);
}

TEST_F(PlayState, APressOnAButtonHiddenByATurnIsNotFoundPendingWhenItComesBack)
{
    start(test::storyWithChoices({" Entrer"}));
    click(*buttons()[0]);
    turnForward();
    ASSERT_TRUE(choicesShown());
    ryn::console::Capture capture;

    // The buttons stay until the backward turn completes: a press on one of them meanwhile,
    // released once they are hidden, clicks nothing.
    releaseBackwardTurn();
    ASSERT_EQ(state_->book().getState(), STATE::TURNING);
    ASSERT_TRUE(choicesShown());
    const sf::FloatRect first = buttons()[0]->bounds();
    const sf::Vector2f onFirst(first.left + 10.f, first.top + 10.f);
    step(onFirst, Touch::PRESS);
    finishTurn();
    EXPECT_FALSE(choicesShown());
    step(onFirst, Touch::RELEASE);

    turnForward();
    ASSERT_TRUE(choicesShown());
    click(*buttons()[0]);
    EXPECT_EQ(state_->sceneManager().currentSceneName(), "game_over");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(PlayState, TurningToTheLastSpreadShowsItsChoicesAndGameOverStainsIt)
{
    start(test::storyWithChoices({" Entrer"}));
    click(*buttons()[0]);
    ASSERT_FALSE(choicesShown());

    turnForward();
    ASSERT_TRUE(state_->book().isOnLastSpread());
    EXPECT_TRUE(choicesShown());
    ASSERT_EQ(buttons().size(), 2u);

    EXPECT_EQ(bloodOnTheSpreadShown(), 0);
    click(*buttons()[0]); // "Abandonner" leads to game over
    EXPECT_EQ(state_->sceneManager().currentSceneName(), "game_over");
    EXPECT_TRUE(state_->choicesNode().children().empty());
    EXPECT_EQ(bloodOnTheSpreadShown(), 0);
    turnForward();
    ASSERT_TRUE(state_->book().isOnLastSpread());
    EXPECT_TRUE(buttons().empty());
    EXPECT_GT(bloodOnTheSpreadShown(), 1000);
}

TEST(GameStartUp, AStoryThatDoesNotLoadEndsStartUpWithTheEnginesReportAndNoMusic)
{
    const ryn::AssertHandler previous = installReportOnly();
    test::GameTree tree(std::map<std::string, std::string>{{"suspects.ini", ""}});
    loadAudio();
    {
        ryn::console::Capture capture;
        OraneApp app;
        EXPECT_FALSE(app.init());
        ASSERT_EQ(capture.lines().size(), 1u) << capture.text();
        EXPECT_TRUE(std::regex_match(capture.lines()[0], std::regex(R"(\S+\(\d+\): Assert Failure: 'false' )")))
            << capture.lines()[0];
        EXPECT_EQ(ryn::components().graphics()->window()->getSize(), sf::Vector2u(800, 600));
        for (const auto& music : musics)
            EXPECT_NE(music->getStatus(), sf::SoundSource::Playing);
    }
    releaseAudio();
    ryn::setAssertHandler(previous);
}

TEST(GameStartUp, ATextureThatCannotBeLoadedEndsWithTheHoldersMessageAndAFailureStatus)
{
    test::GameTree tree(test::storyWithChoices({" Entrer"}), {"textures/shadow.png"});
    ryn::console::Capture capture;
    OraneApp app;
    EXPECT_EQ(ryn::runApplication(app), EXIT_FAILURE);
    ASSERT_FALSE(capture.lines().empty());
    EXPECT_EQ(capture.lines().back(), "ResourceHolder::load - Failed to load resources/textures/shadow.png");
}

} // namespace
} // namespace orane
