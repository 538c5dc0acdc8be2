#pragma once

#include <ryn/core/loopclock.hpp>

#include <memory>

namespace ryn
{

class FocusManager;
class Graphics;
class GuiFactory;
class InputManager;
class InputProcessor;
class PathManager;
class ResourceManager;
class StateManager;

/// Root of the engine: brings the components up and runs the fixed-step main loop.
/// A game derives it and creates its components in `createComponents`.
/// Call order: construct, `init`, and only if that succeeded, `run`; then destroy.
class Application
{
public:
    Application();
    /// Clears the component set, destroying every component.
    virtual ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Creates and brings up the components, opens an 800 x 600 window and initialises the
    /// first state. A failed step is reported and answers false; a resource that cannot be
    /// loaded throws (see `runApplication`).
    [[nodiscard]] virtual bool init();
    /// The main loop: fixed update steps of `gameRate()` seconds, frames at most every
    /// `frameRate()` seconds. Returns true when the window is closed or the state manager
    /// asks to quit.
    virtual bool run();
    /// Closes the render window, which ends the main loop at the end of the pass.
    virtual void close();
    [[nodiscard]] virtual float gameRate() const;
    [[nodiscard]] virtual float frameRate() const;
    /// Must be greater than 0; takes effect at the next test of the update loop.
    virtual void setGameRate(float gameRate);
    virtual void setFrameRate(float frameRate);
    /// Creates the eight components with `new` and registers them (and this application)
    /// through `setComponents`; false stops the start-up without a report.
    [[nodiscard]] virtual bool createComponents() = 0;
    /// Stores the nine pointers in the component set, which owns all but the application.
    virtual bool setComponents(Application* application, FocusManager* focusManager, Graphics* graphics,
                               GuiFactory* guiFactory, InputManager* inputManager, InputProcessor* inputProcessor,
                               PathManager* pathManager, ResourceManager* resourceManager, StateManager* stateManager);

    /// Replaces the real-time clock of the main loop (tests drive their own).
    void setClock(std::unique_ptr<LoopClock> clock);

private:
    /// Time owed to the update steps and to the frames.
    struct LoopLag
    {
        float update = 0.f;
        float frame = 0.f;
    };

    /// Every update step due: the pointer and keys, the window's events, the state's step.
    /// False when the state manager asks to quit.
    bool runDueUpdateSteps(LoopLag& lag);
    /// The window's events of one step; a resize ends the step's share of them.
    void pollEvents();
    /// A frame when one is due and the state has something new to show.
    void drawDueFrame(float dt, LoopLag& lag);
    /// Sleeps until the next update step or frame is due, so that the loop never spins.
    void waitForNextDeadline(float updateLag, float frameLag);

    float gameRate_ = 0.05f;
    float frameRate_ = 1.f / 60.f;
    std::unique_ptr<LoopClock> clock_;
};

} // namespace ryn
