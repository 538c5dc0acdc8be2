#include "stategame.hpp"

#include "audio.hpp"
#include "choicebuttonlook.hpp"
#include "oraneguifactory.hpp"
#include "resourceids.hpp"

#include <ryn/core/application.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/inputmanager.hpp>
#include <ryn/core/resourcemanager.hpp>
#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

namespace orane
{

namespace
{

constexpr float GAME_RATE = 0.05f;
const char* const TOUCH = "touch";
/// A pointer position far from every widget.
const sf::Vector2f NOWHERE(-1.e6f, -1.e6f);

} // namespace

StateGame::StateGame()
    : ryn::AbstractState(nullptr)
    , sceneManager_(this)
{
    setMusicLoop(MUSIC::WHISKY_AND_REVOLVER, true);
}

StateGame::~StateGame() = default;

bool StateGame::spareQuery()
{
    return true;
}

void StateGame::draw(float, float)
{
    // Cleared before the book moves: a turn that completes here asks for the next frame.
    redrawPending_ = false;
    sinceLastDraw_.restart();
    book_.update();
    sf::RenderTarget& window = ryn::components().graphics()->target();
    const auto paintDeskAndSpread = [this](sf::RenderTarget& target) {
        // The desk is opaque and covers the window: no blending needed under it.
        target.draw(background_, sf::BlendNone);
        book_.drawSpread(target);
    };
    if (!snapshot_.draw(window, book_.getSpreadRevision(), paintDeskAndSpread))
        paintDeskAndSpread(window);
    book_.drawTurn(window);
    window.draw(sceneGraph_);
}

bool StateGame::init()
{
    ryn::Components& comp = ryn::components();
    comp.application()->setGameRate(GAME_RATE);
    sceneManager_.setNewSceneCallback([this](const Scene& scene) { onNewScene(scene); });
    sceneManager_.setChoiceAppliedCallback([this](const Choice& choice) { onChoiceApplied(choice); });
    book_.setPageTurnedCallback([this] { refreshChoices(); });
    choicesNode_ = sceneGraph_.root().createChild();
    background_.setTexture(comp.resourceManager()->texture(TextureId::GameBackground));

    if (!book_.loadResources() || !storyStart_(sceneManager_))
        return false;
    refreshChoices();
    playMusic(MUSIC::WHISKY_AND_REVOLVER);
    return true;
}

void StateGame::resetTime()
{}

void StateGame::spareAction()
{}

void StateGame::updateLayout()
{}

void StateGame::update(float)
{
    ryn::Components& comp = ryn::components();
    const ryn::InputManager& input = *comp.inputManager();
    const sf::Vector2f pointer = input.mousePosition();
    const bool pressed = input.isPressed(TOUCH);
    const bool released = input.isReleased(TOUCH);
    // Both edges in one step keep no order. While the button was down, the release must have
    // come first: the end of one click and the start of the next (a quick double click).
    const bool releasedFirst = pressed && released && touchHeld_;

    if (pointer != lastPointer_ || pressed || released)
        redrawPending_ = true;
    lastPointer_ = pointer;

    book_.setPointer(pointer);
    if (releasedFirst) {
        book_.release(pointer);
        book_.grab(pointer);
    } else if (pressed) {
        book_.grab(pointer);
    } else if (released) {
        book_.release(pointer);
    }

    sceneGraph_.updateHover(pointer);
    if (releasedFirst) {
        sceneGraph_.touchUp(pointer);
        sceneGraph_.touchDown(pointer);
    } else {
        if (pressed)
            sceneGraph_.touchDown(pointer);
        if (released)
            sceneGraph_.touchUp(pointer);
    }
    touchHeld_ = releasedFirst || (pressed && !released) || (touchHeld_ && !released);

    if (selectedChoice_ != -1)
        applySelectedChoice();
}

void StateGame::layout()
{
    const sf::Vector2f margin = book_.getMargin();
    const sf::Vector2f padding = book_.getTextPadding();
    const sf::Vector2f page = book_.getPageSize();
    choicesNode_->setPosition(margin.x + padding.x + page.x, margin.y + padding.y + book_.getLastTextHeight());
}

bool StateGame::needsRedraw() const
{
    constexpr float REPAINT_INTERVAL = 0.5f;
    return redrawPending_ || book_.getState() != STATE::IDLE
           || sinceLastDraw_.getElapsedTime().asSeconds() >= REPAINT_INTERVAL;
}

void StateGame::refreshChoices()
{
    redrawPending_ = true;
    layout();
    const STATE state = book_.getState();
    const bool shown = book_.isOnLastSpread() && (state == STATE::IDLE || state == STATE::PEEKING);
    if (!shown && choicesNode_->isVisible() && choicesNode_->isEnabled()) {
        // Hidden buttons keep their hover and press flags until shown again; a press begun
        // during the turn that hides them would then be found still pending. Let the pointer
        // leave them first, which cancels it.
        sceneGraph_.updateHover(NOWHERE);
    }
    choicesNode_->setEnabled(shown);
    choicesNode_->setVisible(shown);
}

void StateGame::onGameOver()
{
    book_.setBloody();
}

void StateGame::onNewScene(const Scene& scene)
{
    redrawPending_ = true;
    book_.addScene(scene);
    hideChoices();

    auto& factory = static_cast<OraneGuiFactory&>(*ryn::components().guiFactory());
    const std::vector<Choice>& choices = sceneManager_.getCurrentScene().choices;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        ryn::ShapeShifterPushButtonNode* button = factory.createChoiceButton(choicesNode_);
        // UTF-8 end to end: a conversion through the locale would lose letters such as "œ".
        button->setString(ryn::console::toUtf8(choices[i].briefDescription.toWideString()));
        button->setPosition(0.f, ChoiceButtonLook::SPACING * static_cast<float>(i));
        const auto index = static_cast<std::int32_t>(i);
        button->setCallback([this, index] { selectedChoice_ = index; });
    }
    if (sceneShown_)
        sceneShown_(scene);
}

void StateGame::onChoiceApplied(const Choice& choice)
{
    book_.appendChoice(choice);
}

void StateGame::hideChoices()
{
    choicesNode_->setEnabled(false);
    choicesNode_->setVisible(false);
    choicesNode_->detachAllChildren();
}

void StateGame::applySelectedChoice()
{
    const std::int32_t choice = selectedChoice_;
    hideChoices();
    sceneManager_.applyChoice(choice);
    selectedChoice_ = -1;
}

} // namespace orane
