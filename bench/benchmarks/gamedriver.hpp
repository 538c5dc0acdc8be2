#pragma once

#include <SFML/System/Vector2.hpp>

#include <memory>

namespace sf
{
class RenderWindow;
}

namespace orane
{
class OraneApp;
class StateGame;
} // namespace orane

namespace orane::bench
{

/// The game brought up as the program entry does (without audio), in the build folder, with
/// its real story, and driven one update step or one frame at a time with a pointer warped on
/// the (virtual) display. The frame-rate limit is lifted so that a frame costs what it costs.
class GameDriver
{
public:
    GameDriver();
    ~GameDriver();
    GameDriver(const GameDriver&) = delete;
    GameDriver& operator=(const GameDriver&) = delete;

    /// False, after the game's own report, when the game could not start.
    [[nodiscard]] bool ok() const { return ok_; }
    StateGame& state();

    /// One update step as the main loop runs it: transitions cleared, events polled, then the
    /// state updated, with "touch" pressed or released in that step if asked.
    void step(bool press = false, bool release = false);
    /// One frame as the main loop draws it: clear, draw the state, display.
    void frame();
    /// Moves the pointer, in window pixels.
    void pointAt(sf::Vector2f position);

    /// Frames until the notebook lies flat (at most `limit`); true when it does.
    bool settle(int limit = 2000);
    /// Drags the bottom right corner to the left side and lets go: the next spread opens.
    bool turnForward();
    /// Clicks the first choice button; false when no button is offered.
    bool clickFirstChoice();
    /// Grabs the bottom right corner and holds it half-way over the spread.
    bool holdPageHalfTurned();

private:
    sf::RenderWindow& window();

    std::unique_ptr<OraneApp> application_;
    bool ok_ = false;
};

} // namespace orane::bench
