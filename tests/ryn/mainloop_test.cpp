#include "testapplication.hpp"

#include <gtest/gtest.h>

namespace
{

using ryn::test::Log;
using ryn::test::ScriptedClock;
using ryn::test::StepApplication;
using ryn::test::Steps;

sf::Event ofType(sf::Event::EventType type)
{
    sf::Event event;
    event.type = type;
    event.size = {1024, 768};
    return event;
}

/// Brings the application up, then hands the loop a clock that runs the given passes first.
void start(StepApplication& app, std::deque<float> passLengths = {})
{
    ASSERT_TRUE(app.init());
    app.setClock(std::make_unique<ScriptedClock>(std::move(passLengths)));
    app.steps.log.clear();
}

TEST(MainLoop, LongPassRunsTwoStepsAndInterpolatesTheRestThenQuitsWithoutDrawing)
{
    Steps steps;
    StepApplication app(steps, 3);
    start(app, {0.12f});

    EXPECT_TRUE(app.run());

    const Log& log = steps.log;
    ASSERT_GE(log.size(), 3u);
    EXPECT_EQ(Log(log.begin(), log.begin() + 3), (Log{"update", "update", "draw"}));
    const auto& firstDraw = app.state().draws.at(0);
    EXPECT_NEAR(firstDraw.first, 0.12f, 1e-6f);
    EXPECT_NEAR(firstDraw.second, 0.4f, 1e-5f);

    // The quit flag is read right after the step that set it: no frame follows.
    EXPECT_EQ(log.back(), "update");
    EXPECT_EQ(app.state().updates, 3);
    EXPECT_FALSE(app.graphics().isOpen());
}

TEST(MainLoop, UnconsumedResizeLaysOutAndLeavesTheNextEventToTheNextStep)
{
    Steps steps;
    StepApplication app(steps, 2);
    start(app, {0.1f});
    app.graphics().events = {ofType(sf::Event::Resized), ofType(sf::Event::KeyPressed)};

    app.run();

    EXPECT_EQ(steps.log, (Log{"event Resized", "layout", "update", "event KeyPressed", "update"}));
    const sf::View& view = app.graphics().window()->getView();
    EXPECT_EQ(view.getSize(), sf::Vector2f(1024.f, 768.f));
    EXPECT_EQ(view.getCenter(), sf::Vector2f(512.f, 384.f));
}

TEST(MainLoop, CloseEventEndsTheLoopWithoutUpdatingTheState)
{
    Steps steps;
    StepApplication app(steps);
    start(app, {0.05f});
    app.graphics().events = {ofType(sf::Event::Closed), ofType(sf::Event::KeyPressed)};

    EXPECT_TRUE(app.run());

    EXPECT_FALSE(app.graphics().isOpen());
    // A close does not end the polling, and the pass still ends with its frame.
    EXPECT_EQ(steps.log, (Log{"event Closed", "event KeyPressed", "draw"}));
}

TEST(MainLoop, WindowClosedBeforehandMeansNothingRuns)
{
    Steps steps;
    StepApplication app(steps);
    start(app, {0.2f});
    app.graphics().events = {ofType(sf::Event::KeyPressed)};
    app.graphics().window()->close();

    EXPECT_TRUE(app.run());

    EXPECT_TRUE(steps.log.empty());
    EXPECT_EQ(app.graphics().events.size(), 1u);
}

TEST(MainLoop, SleepsBetweenDeadlinesAndDrawsAtTheFrameRate)
{
    Steps steps;
    StepApplication app(steps, 20);
    ASSERT_TRUE(app.init());
    auto clock = std::make_unique<ScriptedClock>();
    const ScriptedClock& time = *clock;
    app.setClock(std::move(clock));

    app.run();

    // One second of steps of 0.05 s.
    EXPECT_NEAR(app.state().elapsed(), 1.f, 1e-5f);
    // Sixty frames in that second, not one per pass: a drawn frame uses up its interval.
    EXPECT_NEAR(static_cast<int>(app.state().draws.size()), 60, 2);
    // A loop that spun instead of sleeping would need thousands of passes here.
    EXPECT_LT(time.passes(), 200);
}

TEST(MainLoop, AStateAtRestIsNotRedrawnButStillStepsAndSleeps)
{
    Steps steps;
    StepApplication app(steps, 20);
    ASSERT_TRUE(app.init());
    auto clock = std::make_unique<ScriptedClock>();
    const ScriptedClock& time = *clock;
    app.setClock(std::move(clock));
    app.state().redraw = false;
    auto quitAtTheLastStep = app.state().onStep;
    app.state().onStep = [&app, quitAtTheLastStep](int step) {
        app.state().redraw = (step == 10);
        quitAtTheLastStep(step);
    };

    app.run();

    EXPECT_EQ(app.state().updates, 20);
    // Only the frames due while the state asked for one (the 0.05 s after step 10) are drawn.
    EXPECT_GE(app.state().draws.size(), 1u);
    EXPECT_LE(app.state().draws.size(), 4u);
    EXPECT_LT(time.passes(), 200);
}

} // namespace
