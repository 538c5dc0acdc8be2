#include "gamedriver.hpp"

#include "oraneapp.hpp"
#include "stategame.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/inputprocessor.hpp>
#include <ryn/core/statemanager.hpp>
#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Window/Mouse.hpp>

#include <codecvt>
#include <locale>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace orane::bench
{
namespace
{

constexpr float GAME_RATE = 0.05f;
const char* const TOUCH = "touch";

// Whatever scope the notebook's state enumeration ends up in.
using BookState = decltype(std::declval<const Book&>().getState());

} // namespace

GameDriver::GameDriver()
{
    // The game reads its resources relative to the working directory, as the program does.
    if (chdir(ORANE_BINARY_DIR) != 0)
        return;
    std::locale::global(std::locale(std::locale(), new std::codecvt_utf8<wchar_t, 0x10FFFF>()));
    ryn::setAssertHandler(&ryn::reportOnlyAssertHandler);
    application_ = std::make_unique<OraneApp>();
    try {
        ok_ = application_->init();
    } catch (const std::runtime_error& error) {
        // A missing texture or font: reported like the program does, and no game to measure.
        ryn::console::writeLine(error.what());
        ok_ = false;
    }
    if (!ok_)
        return;
    ryn::components().graphics()->setFramerateLimit(0);
    window().setVerticalSyncEnabled(false);
    settle();
}

GameDriver::~GameDriver() = default;

StateGame& GameDriver::state()
{
    return static_cast<StateGame&>(*ryn::components().stateManager()->currentState());
}

sf::RenderWindow& GameDriver::window()
{
    return *ryn::components().graphics()->window();
}

void GameDriver::step(bool press, bool release)
{
    ryn::Components& comp = ryn::components();
    comp.inputManager()->resetTransitions();
    sf::Event event;
    while (comp.graphics()->pollEvent(event))
        comp.inputProcessor()->processEvent(event);
    if (press)
        comp.inputManager()->press(TOUCH);
    if (release)
        comp.inputManager()->release(TOUCH);
    state().update(GAME_RATE);
}

void GameDriver::frame()
{
    window().clear(sf::Color::Black);
    state().draw(0.f, 0.f);
    window().display();
}

void GameDriver::pointAt(sf::Vector2f position)
{
    sf::Mouse::setPosition(sf::Vector2i(static_cast<int>(position.x), static_cast<int>(position.y)), window());
}

bool GameDriver::settle(int limit)
{
    for (int i = 0; i < limit; ++i) {
        if (state().book().getState() == BookState::IDLE)
            return true;
        step();
        frame();
    }
    return state().book().getState() == BookState::IDLE;
}

bool GameDriver::turnForward()
{
    const Book& book = state().book();
    if (book.isOnLastSpread())
        return false;
    const sf::Vector2f margin = book.getMargin();
    const sf::Vector2f page = book.getPageSize();
    const sf::Vector2f corner(margin.x + 2.f * page.x - 10.f, margin.y + page.y - 10.f);
    pointAt(corner);
    step();
    frame();
    step(true);
    frame();
    pointAt(sf::Vector2f(margin.x + 10.f, margin.y + page.y - 10.f));
    for (int i = 0; i < 20; ++i) {
        step();
        frame();
    }
    step(false, true);
    // Off the hooks, so that the page does not lift again once flat.
    pointAt(sf::Vector2f(1.f, 1.f));
    return settle() && state().book().getCurrentPage() > 0;
}

bool GameDriver::clickFirstChoice()
{
    const ryn::SceneNode& choices = state().choicesNode();
    const std::vector<ryn::SceneNode*> buttons = choices.children();
    if (buttons.empty() || !choices.isVisible())
        return false;
    const auto* button = dynamic_cast<const ryn::ShapeShifterPushButtonNode*>(buttons.front());
    if (button == nullptr)
        return false;
    const sf::FloatRect area = button->bounds();
    pointAt(sf::Vector2f(area.left + area.width / 2.f, area.top + area.height / 2.f));
    step(true);
    step(false, true);
    return true;
}

bool GameDriver::holdPageHalfTurned()
{
    const Book& book = state().book();
    const sf::Vector2f margin = book.getMargin();
    const sf::Vector2f page = book.getPageSize();
    pointAt(sf::Vector2f(margin.x + 2.f * page.x - 10.f, margin.y + page.y - 10.f));
    step();
    frame();
    step(true);
    frame();
    pointAt(sf::Vector2f(margin.x + 1.5f * page.x, margin.y + 0.6f * page.y));
    return state().book().getState() == BookState::DRAGGING;
}

} // namespace orane::bench
