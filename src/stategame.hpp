#pragma once

#include "book/book.hpp"
#include "scenemanager/scenemanager.hpp"
#include "scenemanager/scenemanagerowner.hpp"
#include "spreadsnapshot.hpp"

#include <ryn/core/abstractstate.hpp>
#include <ryn/gui/scenegraph.hpp>

#include <SFML/Graphics/Sprite.hpp>
#include <SFML/System/Clock.hpp>

#include <cstdint>
#include <functional>

namespace orane
{

/// The play state: shows every scene of the story in the notebook, offers the current scene's
/// choices as buttons under Nathan's text once the reader has turned to the last spread, and
/// applies the choice clicked.
class StateGame : public ryn::AbstractState, public SceneManagerOwner
{
public:
    StateGame();
    ~StateGame() override;

    bool spareQuery() override;
    /// Advances the page turn by one frame, then draws background, notebook and buttons.
    void draw(float frameTime, float interpolation) override;
    /// Sets the update step, loads the notebook's resources and the story, shows the first
    /// choices and starts the music. False when the notebook or the story cannot be loaded
    /// (already reported).
    [[nodiscard]] bool init() override;
    /// The elapsed time is never reset.
    void resetTime() override;
    void spareAction() override;
    /// The window's size does not move the buttons.
    void updateLayout() override;
    /// Hands the pointer and the "touch" edges to the notebook and the buttons; a choice
    /// clicked is applied at the end of the step, once no button callback is running. A press
    /// and a release in the same step count as a click, or, while "touch" was held, as the end
    /// of one click and the start of the next.
    void update(float dt) override;
    /// Puts the buttons under the last text of Nathan's page.
    void layout() override;
    /// True when the pointer moved, a button went down or up, a scene arrived, a page is
    /// moving, or half a second went by (so a window uncovered by another one is repainted).
    bool needsRedraw() const override;

    /// Loads the story into the scene manager and shows where play begins; answers whether the
    /// story can be played. The game's reads its own story and starts at "begin".
    using StoryStart = std::function<bool(SceneManager&)>;
    /// Before init: another story or another place to begin (the authors' preview).
    void setStoryStart(StoryStart start) { storyStart_ = std::move(start); }
    /// Told of every scene once its spread is written and its buttons made.
    void setSceneShownListener(std::function<void(const Scene&)> listener) { sceneShown_ = std::move(listener); }

    /// Shows the buttons only while the last spread is open and the notebook at rest.
    void refreshChoices();
    /// The last spread goes on blood-stained paper.
    void onGameOver() override;

    const Book& book() const { return book_; }
    /// For tests that step the notebook's animation without paying for the drawing.
    Book& book() { return book_; }
    const SceneManager& sceneManager() const { return sceneManager_; }
    /// Parent of the choice buttons, one per choice of the current scene, in order.
    const ryn::SceneNode& choicesNode() const { return *choicesNode_; }

private:
    void onNewScene(const Scene& scene);
    void onChoiceApplied(const Choice& choice);
    void hideChoices();
    void applySelectedChoice();

    sf::Sprite background_;
    SpreadSnapshot snapshot_;
    ryn::SceneGraph sceneGraph_;
    ryn::SceneNode* choicesNode_ = nullptr;
    std::int32_t selectedChoice_ = -1;
    /// "touch" went down in an earlier step and has not come up since.
    bool touchHeld_ = false;
    bool redrawPending_ = true;
    sf::Vector2f lastPointer_{-1.f, -1.f};
    sf::Clock sinceLastDraw_;
    Book book_;
    SceneManager sceneManager_;
    StoryStart storyStart_ = [](SceneManager& manager) { return manager.loadStory(); };
    std::function<void(const Scene&)> sceneShown_;
};

} // namespace orane
