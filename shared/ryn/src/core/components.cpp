#include "ryn/core/components.hpp"

#include "ryn/core/focusmanager.hpp"
#include "ryn/core/graphics.hpp"
#include "ryn/core/guifactory.hpp"
#include "ryn/core/inputmanager.hpp"
#include "ryn/core/inputprocessor.hpp"
#include "ryn/core/pathmanager.hpp"
#include "ryn/core/resourcemanager.hpp"
#include "ryn/core/statemanager.hpp"

namespace ryn
{
namespace
{

template <typename Component>
void destroy(Component*& component)
{
    delete component;
    component = nullptr;
}

} // namespace

void Components::set(Application* application, FocusManager* focusManager, Graphics* graphics,
                     GuiFactory* guiFactory, InputManager* inputManager,
                     InputProcessor* inputProcessor, PathManager* pathManager,
                     ResourceManager* resourceManager, StateManager* stateManager)
{
    application_ = application;
    focusManager_ = focusManager;
    graphics_ = graphics;
    guiFactory_ = guiFactory;
    inputManager_ = inputManager;
    inputProcessor_ = inputProcessor;
    pathManager_ = pathManager;
    resourceManager_ = resourceManager;
    stateManager_ = stateManager;
}

void Components::clear()
{
    application_ = nullptr;
    destroy(focusManager_);
    destroy(graphics_);
    destroy(guiFactory_);
    destroy(inputManager_);
    destroy(inputProcessor_);
    destroy(pathManager_);
    destroy(resourceManager_);
    destroy(stateManager_);
}

Components& components()
{
    static Components set;
    return set;
}

} // namespace ryn
