#pragma once

#include <ryn/core/abstractstate.hpp>
#include <ryn/core/application.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/focusmanager.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/guifactory.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/inputprocessor.hpp>
#include <ryn/core/loopclock.hpp>
#include <ryn/core/pathmanager.hpp>
#include <ryn/core/resourcemanager.hpp>
#include <ryn/core/statemanager.hpp>

#include <deque>
#include <functional>
#include <string>
#include <vector>

// An engine-only application whose components write what happens to them into one log,
// driven by a clock and an event queue that the test controls.
namespace ryn::test
{

using Log = std::vector<std::string>;

/// The shared log; a bring-up step named `failing` answers false.
struct Steps
{
    bool step(const std::string& name)
    {
        log.push_back(name);
        return name != failing;
    }

    Log log;
    std::string failing;
};

/// Logs the destruction of any component.
template <typename Component>
class Logged : public Component
{
public:
    template <typename... Arguments>
    Logged(Steps& steps, std::string name, Arguments&&... arguments)
        : Component(std::forward<Arguments>(arguments)...)
        , steps_(steps)
        , name_(std::move(name))
    {}
    ~Logged() override { steps_.log.push_back("~" + name_); }

private:
    Steps& steps_;
    std::string name_;
};

/// Time passes only when the test says so (scripted pass lengths) or when the loop sleeps.
/// A pass that neither is scripted nor follows a sleep costs a tenth of a millisecond, as a
/// real pass would, so a loop that forgets to sleep still ends, but after many passes.
class ScriptedClock : public LoopClock
{
public:
    explicit ScriptedClock(std::deque<float> passLengths = {})
        : script_(std::move(passLengths))
    {}

    void restart() override { start_ = now_; }
    sf::Time elapsed() override
    {
        ++passes_;
        if (!script_.empty()) {
            now_ += sf::seconds(script_.front());
            script_.pop_front();
        } else if (!slept_) {
            now_ += sf::seconds(0.0001f);
        }
        slept_ = false;
        return now_ - start_;
    }
    void sleep(sf::Time duration) override
    {
        now_ += duration;
        slept_ = duration > sf::Time::Zero;
    }

    int passes() const { return passes_; }

private:
    std::deque<float> script_;
    sf::Time now_;
    sf::Time start_;
    bool slept_ = false;
    int passes_ = 0;
};

/// A real window (tests run under a display); events come from the test's queue, and from the
/// window only when asked.
class StepGraphics : public Graphics
{
public:
    explicit StepGraphics(Steps& steps)
        : steps_(steps)
    {}
    bool create(std::string title) override { return steps_.step("graphics") && Graphics::create(title); }
    bool pollEvent(sf::Event& event) override
    {
        if (events.empty())
            return passesWindowEvents && Graphics::pollEvent(event);
        event = events.front();
        events.pop_front();
        return true;
    }

    std::deque<sf::Event> events;
    bool passesWindowEvents = false;

private:
    Steps& steps_;
};

class StepInputProcessor : public InputProcessor
{
public:
    explicit StepInputProcessor(Steps& steps)
        : steps_(steps)
    {}
    bool init() override { return steps_.step("input processor"); }
    bool processEvent(const sf::Event& event) override
    {
        steps_.log.push_back(std::string("event ") + nameOf(event.type));
        return InputProcessor::processEvent(event);
    }

private:
    static const char* nameOf(sf::Event::EventType type)
    {
        switch (type) {
        case sf::Event::Closed: return "Closed";
        case sf::Event::Resized: return "Resized";
        case sf::Event::KeyPressed: return "KeyPressed";
        default: return "other";
        }
    }

    Steps& steps_;
};

class StepPathManager : public PathManager
{
public:
    explicit StepPathManager(Steps& steps)
        : steps_(steps)
    {}
    bool init() override { return steps_.step("paths"); }

private:
    Steps& steps_;
};

/// Loads nothing, or a texture that is not there, as a game with a missing file would.
class StepResources : public ResourceManager
{
public:
    explicit StepResources(Steps& steps)
        : steps_(steps)
    {}
    bool init() override { return true; }
    bool load() override
    {
        if (loadsMissingTexture)
            loadTexture(7, PathManager().texturesPath() + "missing.png");
        return steps_.step("resources");
    }

    bool loadsMissingTexture = false;

private:
    Steps& steps_;
};

/// Logs its steps and frames; `onStep` runs after each update step with the step count.
class StepState : public AbstractState
{
public:
    explicit StepState(Steps& steps)
        : AbstractState(nullptr)
        , steps_(steps)
    {}

    bool spareQuery() override { return true; }
    void draw(float frameTime, float interpolation) override
    {
        steps_.log.push_back("draw");
        draws.emplace_back(frameTime, interpolation);
        if (onDraw)
            onDraw();
    }
    bool init() override { return true; }
    void spareAction() override {}
    void update(float dt) override
    {
        AbstractState::update(dt);
        steps_.log.push_back("update");
        if (onStep)
            onStep(++updates);
    }
    void layout() override { steps_.log.push_back("layout"); }
    bool needsRedraw() const override { return redraw; }

    int updates = 0;
    bool redraw = true;
    /// (frame time, interpolation) of every drawn frame.
    std::vector<std::pair<float, float>> draws;
    std::function<void(int step)> onStep;
    std::function<void()> onDraw;

private:
    Steps& steps_;
};

class StepStateManager : public StateManager
{
public:
    explicit StepStateManager(Steps& steps)
        : steps_(steps)
        , state_(steps)
    {}

    bool init() override { return steps_.step("states") && state_.init(); }
    AbstractState* currentState() override { return &state_; }
    AbstractState* spareState() override { return nullptr; }
    void spareAction() override {}
    void updateLayout() override { state_.updateLayout(); }
    void spareActionWith(int) override {}

    void quit() { quitRequested_ = true; }
    StepState& state() { return state_; }

private:
    Steps& steps_;
    StepState state_;
};

/// Engine components around a logging state; the state quits after `quitAfterSteps` update
/// steps (never with 0). The log outlives the application, which destroys the components.
class StepApplication : public Application
{
public:
    explicit StepApplication(Steps& log, int quitAfterSteps = 0)
        : steps(log)
        , quitAfterSteps_(quitAfterSteps)
    {}

    bool createComponents() override
    {
        if (!createsComponents)
            return false;
        graphics_ = new Logged<StepGraphics>(steps, "graphics", steps);
        resources_ = new Logged<StepResources>(steps, "resources", steps);
        resources_->loadsMissingTexture = loadsMissingTexture;
        stateManager_ = new Logged<StepStateManager>(steps, "states", steps);
        if (quitAfterSteps_ > 0) {
            stateManager_->state().onStep = [this](int step) {
                if (step == quitAfterSteps_)
                    stateManager_->quit();
            };
        }
        return setComponents(this, new Logged<FocusManager>(steps, "focus"), graphics_,
                             withGuiFactory ? new Logged<GuiFactory>(steps, "gui") : nullptr,
                             new Logged<InputManager>(steps, "input manager"),
                             new Logged<StepInputProcessor>(steps, "input processor", steps),
                             new Logged<StepPathManager>(steps, "paths", steps), resources_, stateManager_);
    }

    StepGraphics& graphics() { return *graphics_; }
    StepStateManager& stateManager() { return *stateManager_; }
    StepState& state() { return stateManager_->state(); }

    Steps& steps;
    bool createsComponents = true;
    bool withGuiFactory = true;
    bool loadsMissingTexture = false;

private:
    int quitAfterSteps_ = 0;
    StepGraphics* graphics_ = nullptr;
    StepResources* resources_ = nullptr;
    StepStateManager* stateManager_ = nullptr;
};

} // namespace ryn::test
