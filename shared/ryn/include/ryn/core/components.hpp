#pragma once

namespace ryn
{

class Application;
class FocusManager;
class Graphics;
class GuiFactory;
class InputManager;
class InputProcessor;
class PathManager;
class ResourceManager;
class StateManager;

/// The one set of engine components, through which every part of the engine finds its
/// neighbours. It owns every component except the application, which lives in the program entry.
class Components
{
public:
    Components() = default;
    Components(const Components&) = delete;
    Components& operator=(const Components&) = delete;

    Application* application() const { return application_; }
    FocusManager* focusManager() const { return focusManager_; }
    Graphics* graphics() const { return graphics_; }
    GuiFactory* guiFactory() const { return guiFactory_; }
    InputManager* inputManager() const { return inputManager_; }
    InputProcessor* inputProcessor() const { return inputProcessor_; }
    PathManager* pathManager() const { return pathManager_; }
    ResourceManager* resourceManager() const { return resourceManager_; }
    StateManager* stateManager() const { return stateManager_; }

    /// Stores all nine pointers; the set takes ownership of the eight components.
    /// Whatever the set held before is forgotten, not destroyed: clear it first.
    void set(Application* application, FocusManager* focusManager, Graphics* graphics,
             GuiFactory* guiFactory, InputManager* inputManager, InputProcessor* inputProcessor,
             PathManager* pathManager, ResourceManager* resourceManager, StateManager* stateManager);

    /// Forgets the application, then destroys the components in the order of the accessors.
    void clear();

private:
    Application* application_ = nullptr;
    FocusManager* focusManager_ = nullptr;
    Graphics* graphics_ = nullptr;
    GuiFactory* guiFactory_ = nullptr;
    InputManager* inputManager_ = nullptr;
    InputProcessor* inputProcessor_ = nullptr;
    PathManager* pathManager_ = nullptr;
    ResourceManager* resourceManager_ = nullptr;
    StateManager* stateManager_ = nullptr;
};

/// The program's component set, created empty on first use.
Components& components();

} // namespace ryn
