#pragma once

#include <memory>

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

    [[nodiscard]] Application* application() const { return application_; }
    [[nodiscard]] FocusManager* focusManager() const { return focusManager_.get(); }
    [[nodiscard]] Graphics* graphics() const { return graphics_.get(); }
    [[nodiscard]] GuiFactory* guiFactory() const { return guiFactory_.get(); }
    [[nodiscard]] InputManager* inputManager() const { return inputManager_.get(); }
    [[nodiscard]] InputProcessor* inputProcessor() const { return inputProcessor_.get(); }
    [[nodiscard]] PathManager* pathManager() const { return pathManager_.get(); }
    [[nodiscard]] ResourceManager* resourceManager() const { return resourceManager_.get(); }
    [[nodiscard]] StateManager* stateManager() const { return stateManager_.get(); }

    /// Stores all nine pointers; the set takes ownership of the eight components (null ones
    /// included). Whatever the set held before is destroyed first, as by clear.
    void set(Application* application, FocusManager* focusManager, Graphics* graphics, GuiFactory* guiFactory,
             InputManager* inputManager, InputProcessor* inputProcessor, PathManager* pathManager,
             ResourceManager* resourceManager, StateManager* stateManager);

    /// Forgets the application, then destroys the components in the order of the accessors.
    void clear();

private:
    Application* application_ = nullptr;
    std::unique_ptr<FocusManager> focusManager_;
    std::unique_ptr<Graphics> graphics_;
    std::unique_ptr<GuiFactory> guiFactory_;
    std::unique_ptr<InputManager> inputManager_;
    std::unique_ptr<InputProcessor> inputProcessor_;
    std::unique_ptr<PathManager> pathManager_;
    std::unique_ptr<ResourceManager> resourceManager_;
    std::unique_ptr<StateManager> stateManager_;
};

/// The program's component set, created empty on first use.
Components& components();

} // namespace ryn
