#include "previewstate.hpp"

#include "resourceids.hpp"
#include "scene/diagnosticprinter.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "stategame.hpp"
#include "storyplaces.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/resourcemanager.hpp>

#include <SFML/Graphics/RenderTexture.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>

#include <ctime>
#include <fstream>

namespace orane
{
namespace
{

const char* const TOUCH = "touch";
const char* const HEADING_WITH_STORY =
    "The story has a fault: the last version that could be played stays below. Save a fix to go on.";
const char* const HEADING_WITHOUT_STORY = "The story has a fault and cannot be played yet. Save a fix to go on.";

std::string utf8(const sf::String& text)
{
    return ryn::console::toUtf8(text.toWideString());
}

std::vector<sf::String> investigatedSuspects(const SceneManager& manager)
{
    std::vector<sf::String> names;
    for (const auto& [name, visited] : manager.suspectsVisited()) {
        if (visited)
            names.push_back(name);
    }
    return names;
}

/// The game's report on the story from its records, each led by the file and line it concerns.
std::vector<std::string> placedReport(const Diagnostics& diagnostics, const std::string& directory)
{
    std::vector<std::string> lines;
    for (const Diagnostic& diagnostic : diagnostics) {
        const std::string place = storyplaces::placeOf(diagnostic, directory);
        std::vector<std::string> printed = DiagnosticPrinter::lines(diagnostic);
        // The game stops at a story file it cannot open without a word; the author needs one.
        if (printed.empty())
            printed.push_back("ERROR : cannot open this story file; the game stops loading here without a word.");
        for (std::size_t index = 0; index < printed.size(); ++index)
            lines.push_back(index == 0 ? place + ": " + printed[0] : printed[index]);
    }
    return lines;
}

std::string screenshotName()
{
    const std::time_t now = std::time(nullptr);
    char stamp[32] = "";
    std::strftime(stamp, sizeof(stamp), "%Y%m%d-%H%M%S", std::localtime(&now));
    const std::string base = std::string("orane-preview-") + stamp;
    std::string name = base + ".png";
    for (int copy = 2; std::ifstream(name).good(); ++copy)
        name = base + "-" + std::to_string(copy) + ".png";
    return name;
}

} // namespace

PreviewState::PreviewState(PreviewOptions options)
    : ryn::AbstractState(nullptr)
    , options_(std::move(options))
    , watcher_(options_.directory)
    , overlay_(ryn::components().resourceManager()->font(FontId::Monofonto))
{}

PreviewState::~PreviewState() = default;

bool PreviewState::spareQuery()
{
    return true;
}

bool PreviewState::init()
{
    desk_.setTexture(ryn::components().resourceManager()->texture(TextureId::GameBackground));
    if (!watcher_.isWatching())
        ryn::console::writeLine("preview: cannot watch " + options_.directory + " for changes; F5 reads it again");
    open(0, options_.start, true);
    if (game_) {
        const auto& suspects = game_->sceneManager().suspectsVisited();
        for (const sf::String& name : options_.start.investigated) {
            if (suspects.count(name) == 0)
                ryn::console::writeLine("preview: --investigated: no suspect \"" + utf8(name) + "\" in suspects.ini");
        }
    }
    refreshTitle();
    return true;
}

void PreviewState::spareAction()
{}

void PreviewState::layout()
{
    if (game_)
        game_->layout();
    // A window opened anew has lost its title.
    shownTitle_.clear();
    refreshTitle();
}

bool PreviewState::needsRedraw() const
{
    return redrawPending_ || (game_ && game_->needsRedraw());
}

void PreviewState::draw(float frameTime, float interpolation)
{
    redrawPending_ = false;
    sf::RenderTarget& target = ryn::components().graphics()->target();
    if (game_)
        game_->draw(frameTime, interpolation);
    else
        target.draw(desk_);
    overlay_.draw(target);
    if (screenshotPending_) {
        screenshotPending_ = false;
        saveScreenshot();
    }
}

void PreviewState::update(float dt)
{
    // The main loop's clock normally handles the files between passes; this covers any other.
    (void)handleFileEvents();
    handleKeys();
    const ryn::InputManager& input = *ryn::components().inputManager();
    overlay_.handlePointer(input.mousePosition(), input.isPressed(TOUCH), input.isReleased(TOUCH));
    if (beginClicked_) {
        beginClicked_ = false;
        restart();
    }
    if (game_)
        game_->update(dt);
    refreshTitle();
}

void PreviewState::handleKeys()
{
    const ryn::InputManager& input = *ryn::components().inputManager();
    if (input.isPressed("reload"))
        reload(true);
    if (input.isPressed("back"))
        goBack();
    if (input.isPressed("restart"))
        restart();
    if (input.isPressed("screenshot")) {
        screenshotPending_ = true;
        redrawPending_ = true;
    }
}

std::optional<sf::Time> PreviewState::handleFileEvents()
{
    if (watcher_.takeChanges())
        timer_.noteChange(clock_.getElapsedTime());
    if (timer_.takeReload(clock_.getElapsedTime()))
        reload(false);
    if (timer_.takeFault(clock_.getElapsedTime()))
        showHeldFault();
    return timer_.untilDue(clock_.getElapsedTime());
}

std::size_t PreviewState::spreadInView() const
{
    return game_ ? game_->book().getCurrentPage() / 2 : 0;
}

sf::String PreviewState::sceneInView() const
{
    if (waiting_)
        return waiting_->second.scene;
    if (trail_.stopCount() == 0)
        return {};
    return trail_.place(trail_.stopOfSpread(spreadInView())).scene;
}

void PreviewState::reload(bool faultAtOnce)
{
    if (waiting_) {
        const auto [stop, place] = *waiting_;
        open(stop, place, faultAtOnce);
    } else if (game_ && trail_.stopCount() > 0) {
        const std::size_t stop = trail_.stopOfSpread(spreadInView());
        open(stop, trail_.place(stop), faultAtOnce);
    } else {
        open(0, options_.start, faultAtOnce);
    }
}

void PreviewState::goBack()
{
    std::size_t stop = 0;
    if (waiting_)
        stop = waiting_->first;
    else if (trail_.stopCount() > 0)
        stop = trail_.stopOfSpread(spreadInView());
    if (stop == 0 || stop > trail_.stopCount())
        return;
    open(stop - 1, trail_.place(stop - 1), true);
}

void PreviewState::restart()
{
    PreviewPlace begin;
    begin.scene = START_SCENE_NAME;
    open(0, begin, true);
}

void PreviewState::open(std::size_t stop, PreviewPlace place, bool faultAtOnce)
{
    redrawPending_ = true;
    switch (openAt(stop, place)) {
    case OPENING::OPENED:
        if (!overlay_.isEmpty() || !lastReport_.empty())
            ryn::console::writeLine("preview: the story reads well again");
        overlay_.clear();
        waiting_.reset();
        heldFault_.clear();
        lastReport_.clear();
        return;
    case OPENING::SCENE_MISSING: {
        const std::string message = "The scene \"" + utf8(place.scene) + "\" is not in the story.";
        waiting_.emplace(stop, std::move(place));
        heldFault_.clear();
        overlay_.showNotice(message, "Start at \"begin\" (Home)", [this] { beginClicked_ = true; });
        if (lastReport_ != std::vector<std::string>{message})
            ryn::console::writeLine("preview: " + message + " Home starts at \"begin\".");
        lastReport_ = {message};
        return;
    }
    case OPENING::FAULTY:
        // With a story to play, the reader may go on in it: the fix is opened wherever the
        // reader is by then. Without one, at the place asked for.
        if (!game_)
            waiting_.emplace(stop, std::move(place));
        if (faultAtOnce)
            showHeldFault();
        else
            timer_.holdFault();
        return;
    }
}

PreviewState::OPENING PreviewState::openAt(std::size_t stop, PreviewPlace place)
{
    auto game = std::make_unique<StateGame>();
    const StateGame* opening = game.get();
    bool sceneMissing = false;
    game->setStoryStart([this, &place, &sceneMissing](SceneManager& manager) {
        if (!manager.readStoryFrom(options_.directory))
            return false;
        if (!SceneManager::isSpecialSceneName(place.scene) && manager.scenes().count(place.scene) == 0) {
            sceneMissing = true;
            return false;
        }
        manager.playFrom(place.scene, place.investigated, place.hubSeen);
        return true;
    });
    game->setSceneShownListener([this, opening](const Scene&) { noteSceneShown(*opening); });

    shownWhileOpening_.clear();
    bool opened = false;
    {
        // What the game prints while loading is shown over the desk instead.
        ryn::console::Capture capture;
        opened = game->init();
    }
    if (sceneMissing)
        return OPENING::SCENE_MISSING;
    if (!opened) {
        heldFault_ = placedReport(game->sceneManager().diagnostics(), options_.directory);
        if (heldFault_.empty())
            heldFault_.push_back("The notebook could not be opened; the terminal says why.");
        return OPENING::FAULTY;
    }
    trail_.openAt(stop, place);
    for (const auto& [scene, investigated] : shownWhileOpening_)
        trail_.sceneShown(scene, investigated);
    shownWhileOpening_.clear();
    game_ = std::move(game);
    return OPENING::OPENED;
}

void PreviewState::noteSceneShown(const StateGame& game)
{
    const SceneManager& manager = game.sceneManager();
    if (&game == game_.get())
        trail_.sceneShown(manager.currentSceneName(), investigatedSuspects(manager));
    else
        shownWhileOpening_.emplace_back(manager.currentSceneName(), investigatedSuspects(manager));
}

void PreviewState::showHeldFault()
{
    // A reading since the fault was held may have found the story sound.
    if (heldFault_.empty())
        return;
    redrawPending_ = true;
    overlay_.showFaults(game_ ? HEADING_WITH_STORY : HEADING_WITHOUT_STORY, heldFault_);
    if (heldFault_ != lastReport_) {
        ryn::console::writeLine("preview: the story has a fault:");
        for (const std::string& line : heldFault_)
            ryn::console::writeLine(line);
    }
    lastReport_ = heldFault_;
}

std::string PreviewState::title() const
{
    std::string folder = options_.directory;
    if (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    std::string text = "Orane preview \xE2\x80\x94 " + folder + " \xE2\x80\x94 scene " + utf8(sceneInView());
    if (!heldFault_.empty() && !overlay_.isEmpty())
        text += " (fault)";
    return text;
}

void PreviewState::refreshTitle()
{
    const std::string text = title();
    if (text == shownTitle_)
        return;
    shownTitle_ = text;
    if (sf::RenderWindow* window = ryn::components().graphics()->window())
        window->setTitle(sf::String::fromUtf8(text.begin(), text.end()));
}

void PreviewState::saveScreenshot()
{
    sf::RenderTarget& target = ryn::components().graphics()->target();
    sf::Image image;
    if (auto* window = dynamic_cast<sf::RenderWindow*>(&target)) {
        sf::Texture texture;
        if (texture.create(window->getSize().x, window->getSize().y)) {
            texture.update(*window);
            image = texture.copyToImage();
        }
    } else if (auto* canvas = dynamic_cast<sf::RenderTexture*>(&target)) {
        canvas->display();
        image = canvas->getTexture().copyToImage();
    }
    const std::string name = screenshotName();
    if (image.getSize().x > 0 && image.saveToFile(name))
        ryn::console::writeLine("preview: screenshot saved to " + name);
    else
        ryn::console::writeLine("preview: the screenshot could not be saved to " + name);
}

} // namespace orane
