#include "previewapp.hpp"

#include "eventwaiter.hpp"
#include "oranegraphics.hpp"
#include "oraneguifactory.hpp"
#include "oraneresourcemanager.hpp"
#include "previewinput.hpp"
#include "previewpaths.hpp"
#include "previewstate.hpp"
#include "previewstates.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/focusmanager.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/runapplication.hpp>

// Last: Xlib defines words that SFML uses as names.
#include "virtualdisplay.hpp"

namespace orane
{

PreviewApp::PreviewApp(PreviewOptions options, std::string executableDirectory)
    : options_(std::move(options))
    , executableDirectory_(std::move(executableDirectory))
{}

bool PreviewApp::init()
{
    if (!OraneApp::init())
        return false;
    for (const char* id : PreviewInput::BUTTON_IDS)
        ryn::components().inputManager()->addButton(id);
    PreviewState* state = states_->preview();
    setClock(std::make_unique<EventWaiter>(state->watchedDescriptor(), [state] { return state->handleFileEvents(); }));
    return true;
}

bool PreviewApp::createComponents()
{
    states_ = new PreviewStates(options_);
    auto* resourceManager = new OraneResourceManager();
    auto* pathManager = new PreviewPaths(PreviewPaths::candidates(executableDirectory_));
    auto* inputProcessor = new PreviewInput();
    auto* inputManager = new ryn::InputManager();
    auto* guiFactory = new OraneGuiFactory();
    auto* graphics = new OraneGraphics();
    auto* focusManager = new ryn::FocusManager();
    return setComponents(this, focusManager, graphics, guiFactory, inputManager, inputProcessor, pathManager,
                         resourceManager, states_);
}

int runPreview(const PreviewOptions& options, const std::string& executableDirectory)
{
    if (!VirtualDisplay::isAvailable()) {
        ryn::console::writeLine("preview: no display to open a window on (is DISPLAY set?)");
        return 1;
    }
    ryn::console::writeLine("orane-story preview: " + options.directory
                            + " is watched; F5 reloads, Backspace goes back a scene, Home starts again at \"begin\","
                              " F12 saves a screenshot");
    PreviewApp application(options, executableDirectory);
    return ryn::runApplication(application);
}

} // namespace orane
