#include "oraneapp.hpp"

#include "oranegraphics.hpp"
#include "oraneguifactory.hpp"
#include "oraneinputprocessor.hpp"
#include "oranepathmanager.hpp"
#include "oraneresourcemanager.hpp"
#include "oranestatemanager.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/focusmanager.hpp>
#include <ryn/core/inputmanager.hpp>

namespace orane
{

const char* const OraneApp::BUTTON_IDS[10] = {"up",    "left",  "down",   "right", "enter",
                                              "erase", "touch", "escape", "debug", "alttouch"};

bool OraneApp::init()
{
    if (!Application::init())
        return false;

    ryn::Components& comp = ryn::components();
    for (const char* id : BUTTON_IDS)
        comp.inputManager()->addButton(id);
    // The graphics component applies the limit again when the window is reopened just below.
    comp.graphics()->setFramerateLimit(FRAMERATE_LIMIT);
    comp.graphics()->createWindow(WINDOW_WIDTH, WINDOW_HEIGHT);
    comp.stateManager()->updateLayout();
    return true;
}

bool OraneApp::createComponents()
{
    auto* stateManager = new OraneStateManager();
    auto* resourceManager = new OraneResourceManager();
    auto* pathManager = new OranePathManager();
    auto* inputProcessor = new OraneInputProcessor();
    auto* inputManager = new ryn::InputManager();
    auto* guiFactory = new OraneGuiFactory();
    auto* graphics = new OraneGraphics();
    auto* focusManager = new ryn::FocusManager();
    return setComponents(this, focusManager, graphics, guiFactory, inputManager, inputProcessor, pathManager,
                         resourceManager, stateManager);
}

} // namespace orane
