#include <ryn/core/abstractstate.hpp>
#include <ryn/core/application.hpp>
#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/inputprocessor.hpp>
#include <ryn/core/pathmanager.hpp>
#include <ryn/core/resourcemanager.hpp>
#include <ryn/core/statemanager.hpp>
#include <ryn/core/systemclock.hpp>

#include <algorithm>
#include <cmath>

namespace ryn
{

Application::Application()
    : clock_(std::make_unique<SystemClock>())
{}

Application::~Application()
{
    components().clear();
}

bool Application::init()
{
    if (!createComponents())
        return false;

    const Components& comp = components();
    if (!RYN_CHECK(comp.application() && comp.focusManager() && comp.graphics() && comp.guiFactory()
                   && comp.inputManager() && comp.inputProcessor() && comp.pathManager() && comp.resourceManager()
                   && comp.stateManager()))
        return false;

    // Data files can make these fail (a story that does not load fails the state's init), so
    // they report and end the start-up in order instead of stopping in the debugger.
    if (!comp.pathManager()->init() || !comp.resourceManager()->load() || !comp.graphics()->create("")
        || !comp.inputManager()->init() || !comp.inputProcessor()->init() || !comp.stateManager()->init()) {
        RYN_CHECK(false);
        return false;
    }
    return true;
}

bool Application::run()
{
    clock_->restart();
    if (!components().graphics()->isOpen())
        return true;

    LoopLag lag;
    sf::Time previous = sf::Time::Zero;
    for (;;) {
        const sf::Time now = clock_->elapsed();
        const float dt = (now - previous).asSeconds();
        previous = now;
        lag.update += dt;
        lag.frame += dt;

        if (!runDueUpdateSteps(lag)) {
            close();
            return true;
        }
        drawDueFrame(dt, lag);
        if (!components().graphics()->isOpen())
            return true;
        waitForNextDeadline(lag.update, lag.frame);
    }
}

bool Application::runDueUpdateSteps(LoopLag& lag)
{
    StateManager* stateManager = components().stateManager();
    while (lag.update >= gameRate_) {
        lag.update -= gameRate_;
        components().inputManager()->resetTransitions();
        pollEvents();
        if (components().graphics()->window()->isOpen()) {
            stateManager->currentState()->update(gameRate_);
            if (stateManager->quitRequested())
                return false;
        }
    }
    return true;
}

void Application::pollEvents()
{
    Graphics* graphics = components().graphics();
    InputProcessor* inputProcessor = components().inputProcessor();
    sf::Event event;
    while (graphics->pollEvent(event)) {
        if (inputProcessor->processEvent(event))
            continue;
        if (event.type == sf::Event::Closed) {
            graphics->window()->close();
        } else if (event.type == sf::Event::Resized) {
            graphics->resize(event.size.width, event.size.height);
            components().stateManager()->updateLayout();
            // The events behind a resize wait for the next step, laid out anew.
            break;
        }
    }
}

void Application::drawDueFrame(float dt, LoopLag& lag)
{
    if (lag.frame < frameRate_)
        return;
    Graphics* graphics = components().graphics();
    AbstractState* state = components().stateManager()->currentState();
    if (state->needsRedraw()) {
        graphics->target().clear(sf::Color(0, 0, 0, 255));
        state->draw(dt, lag.update / gameRate_);
        graphics->display();
    }
    // The frame just drawn uses up its interval; beyond that, keep at most one interval of
    // backlog so that a stall is not followed by a burst of frames.
    lag.frame -= frameRate_;
    while (lag.frame >= 2.f * frameRate_)
        lag.frame -= frameRate_;
}

void Application::waitForNextDeadline(float updateLag, float frameLag)
{
    const float untilStep = gameRate_ - updateLag;
    const float untilFrame = frameRate_ - frameLag;
    const float wait = std::min(untilStep, untilFrame);
    // Rounded up: a sleep cut to whole microseconds would wake just before the deadline.
    if (wait > 0.f)
        clock_->sleep(sf::microseconds(static_cast<sf::Int64>(std::ceil(wait * 1e6f))));
}

void Application::close()
{
    components().graphics()->window()->close();
}

float Application::gameRate() const
{
    return gameRate_;
}

float Application::frameRate() const
{
    return frameRate_;
}

void Application::setGameRate(float gameRate)
{
    RYN_ASSERT(gameRate > 0.f);
    gameRate_ = gameRate;
}

void Application::setFrameRate(float frameRate)
{
    frameRate_ = frameRate;
}

bool Application::setComponents(Application* application, FocusManager* focusManager, Graphics* graphics,
                                GuiFactory* guiFactory, InputManager* inputManager, InputProcessor* inputProcessor,
                                PathManager* pathManager, ResourceManager* resourceManager, StateManager* stateManager)
{
    components().set(application, focusManager, graphics, guiFactory, inputManager, inputProcessor, pathManager,
                     resourceManager, stateManager);
    return true;
}

void Application::setClock(std::unique_ptr<LoopClock> clock)
{
    clock_ = std::move(clock);
}

} // namespace ryn
