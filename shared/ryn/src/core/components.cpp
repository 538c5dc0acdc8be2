#include <ryn/core/components.hpp>
#include <ryn/core/focusmanager.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/guifactory.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/inputprocessor.hpp>
#include <ryn/core/pathmanager.hpp>
#include <ryn/core/resourcemanager.hpp>
#include <ryn/core/statemanager.hpp>

namespace ryn
{

void Components::set(Application* application, FocusManager* focusManager, Graphics* graphics, GuiFactory* guiFactory,
                     InputManager* inputManager, InputProcessor* inputProcessor, PathManager* pathManager,
                     ResourceManager* resourceManager, StateManager* stateManager)
{
    clear();
    application_ = application;
    focusManager_.reset(focusManager);
    graphics_.reset(graphics);
    guiFactory_.reset(guiFactory);
    inputManager_.reset(inputManager);
    inputProcessor_.reset(inputProcessor);
    pathManager_.reset(pathManager);
    resourceManager_.reset(resourceManager);
    stateManager_.reset(stateManager);
}

void Components::clear()
{
    application_ = nullptr;
    focusManager_.reset();
    graphics_.reset();
    guiFactory_.reset();
    inputManager_.reset();
    inputProcessor_.reset();
    pathManager_.reset();
    resourceManager_.reset();
    stateManager_.reset();
}

Components& components()
{
    // Never destroyed: what is still held at exit is left to the operating system, since SFML's
    // own globals may be gone by then. The application clears the set before that.
    static Components* const set = new Components();
    return *set;
}

} // namespace ryn
