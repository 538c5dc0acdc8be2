// The play state on the real story: one update step and one drawn frame, at rest and during a
// page turn, and the work a clicked choice sets off. Needs a display (Xvfb will do). Timed by the
// wall clock: with software rendering under Xvfb much of a frame is spent outside the process.

#include "gamedriver.hpp"
#include "stategame.hpp"

#include <benchmark/benchmark.h>

#include <memory>
#include <sys/resource.h>

namespace orane::bench
{

// One game for every benchmark, brought up at first use; closed by the program's main.
std::unique_ptr<GameDriver>& sharedGame()
{
    static std::unique_ptr<GameDriver> game;
    return game;
}

} // namespace orane::bench

namespace
{

using orane::bench::GameDriver;

// CPU time of the whole process, rendering threads included, in milliseconds. On a busy
// machine a frame's wall time grows with the wait for a core; its CPU time does not.
double processCpuMs()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto ms = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

// Steps and draws frames for the whole measurement; reports the process's CPU per frame.
void measureFrames(benchmark::State& state, GameDriver& driver)
{
    const double cpuBefore = processCpuMs();
    for (auto _ : state) {
        driver.step();
        driver.frame();
    }
    if (state.iterations() > 0)
        state.counters["process_cpu_ms"] = (processCpuMs() - cpuBefore) / static_cast<double>(state.iterations());
}

GameDriver* game(benchmark::State& state)
{
    auto& shared = orane::bench::sharedGame();
    if (!shared)
        shared = std::make_unique<GameDriver>();
    if (!shared->ok()) {
        state.SkipWithError("the game does not start: is there a story in the build's resources?");
        return nullptr;
    }
    return shared.get();
}

void FrameIdle(benchmark::State& state)
{
    GameDriver* driver = game(state);
    if (driver == nullptr)
        return;
    driver->pointAt(sf::Vector2f(1.f, 1.f));
    if (!driver->settle()) {
        state.SkipWithError("the notebook does not come to rest");
        return;
    }
    measureFrames(state, *driver);
}

void FrameTurning(benchmark::State& state)
{
    GameDriver* driver = game(state);
    if (driver == nullptr)
        return;
    // A page can only be turned towards a spread that exists: answer first if need be.
    if (driver->state().book().isOnLastSpread() && !driver->clickFirstChoice()) {
        state.SkipWithError("the story offers no choice to open a next spread");
        return;
    }
    if (!driver->settle() || !driver->holdPageHalfTurned()) {
        state.SkipWithError("the page corner cannot be taken");
        return;
    }
    // Let the corner reach the pointer, so that every measured frame draws the same fold.
    for (int i = 0; i < 300; ++i) {
        driver->step();
        driver->frame();
    }
    measureFrames(state, *driver);
    driver->step(false, true);
    driver->pointAt(sf::Vector2f(1.f, 1.f));
    driver->settle();
}

// Timed: the step that applies the first choice of the opening scene (the answer appended and
// re-broken, the next scenes written as spreads, their buttons built). Not timed: starting the
// game again before each click, since turning to the new spread takes a few hundred frames.
void NewScene(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        orane::bench::sharedGame().reset();
        GameDriver* driver = game(state);
        if (driver == nullptr)
            return;
        driver->pointAt(sf::Vector2f(1.f, 1.f));
        driver->settle();
        state.ResumeTiming();
        if (!driver->clickFirstChoice()) {
            state.SkipWithError("no choice button is offered");
            return;
        }
    }
}

} // namespace

BENCHMARK(FrameIdle)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();
BENCHMARK(FrameTurning)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();
BENCHMARK(NewScene)->Unit(benchmark::kMillisecond)->Iterations(20)->UseRealTime();
