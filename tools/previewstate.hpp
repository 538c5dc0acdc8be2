#pragma once

#include "previewoptions.hpp"
#include "previewoverlay.hpp"
#include "reloadtimer.hpp"
#include "scenetrail.hpp"
#include "storywatcher.hpp"

#include <ryn/core/abstractstate.hpp>

#include <SFML/Graphics/Sprite.hpp>
#include <SFML/System/Clock.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orane
{

class StateGame;

/// The authors' preview: the game's own play state on a story folder, opened at a chosen place
/// and opened again, at the scene in view, whenever a story file is saved. A save with a fault
/// leaves the last good story playable and shows the game's report over the desk; the next good
/// save clears it. Keys: "reload", "back" (the scene before the one in view), "restart" (from
/// "begin") and "screenshot" (a PNG of the window in the working folder).
class PreviewState : public ryn::AbstractState
{
public:
    explicit PreviewState(PreviewOptions options);
    ~PreviewState() override;

    bool spareQuery() override;
    /// The game's frame, the overlay over it; the desk alone while no story could be read.
    void draw(float frameTime, float interpolation) override;
    /// Opens the story at the place asked for. False only when the notebook cannot be drawn; a
    /// story that does not load is shown as faults, and read again at the next save.
    bool init() override;
    void spareAction() override;
    /// The preview's keys and the overlay's button, then one step of the game.
    void update(float dt) override;
    void layout() override;
    bool needsRedraw() const override;

    /// Reads what the watcher saw and does what is due: a reload, a fault shown. Answers how
    /// long until something else falls due, nothing when only a change can bring more.
    std::optional<sf::Time> handleFileEvents();
    /// Readable when the story folder has changed.
    [[nodiscard]] int watchedDescriptor() const { return watcher_.fileDescriptor(); }

    /// "Orane preview - DIR - scene NAME".
    [[nodiscard]] std::string title() const;
    /// Null while no version of the story could be played.
    [[nodiscard]] const StateGame* game() const { return game_.get(); }
    [[nodiscard]] const PreviewOverlay& overlay() const { return overlay_; }
    /// The scene of the spread in view, or the one the preview waits to show.
    [[nodiscard]] sf::String sceneInView() const;

private:
    enum class OPENING
    {
        OPENED,
        FAULTY,
        SCENE_MISSING,
    };

    /// Builds a new game on the story as it is now, at `place` as stop `stop` of the trail. Only
    /// a game that could be opened replaces the one shown.
    OPENING openAt(std::size_t stop, PreviewPlace place);
    /// A scene reached the notebook of `game`, the one shown or one being opened.
    void noteSceneShown(const StateGame& game);
    /// Opens at `place` and says on the overlay why when it cannot; `faultAtOnce` shows a fault
    /// without waiting for the editor to finish saving.
    void open(std::size_t stop, PreviewPlace place, bool faultAtOnce);
    void reload(bool faultAtOnce);
    void goBack();
    void restart();
    void showHeldFault();
    void handleKeys();
    void refreshTitle();
    void saveScreenshot();
    [[nodiscard]] std::size_t spreadInView() const;

    PreviewOptions options_;
    StoryWatcher watcher_;
    ReloadTimer timer_;
    sf::Clock clock_;
    SceneTrail trail_;
    std::unique_ptr<StateGame> game_;
    PreviewOverlay overlay_;
    sf::Sprite desk_;
    /// The place a missing scene, or a fault before any story could be played, kept the preview
    /// from opening: tried again first.
    std::optional<std::pair<std::size_t, PreviewPlace>> waiting_;
    /// Scenes shown by a game being opened, for the trail once it replaces the one shown.
    std::vector<std::pair<sf::String, std::vector<sf::String>>> shownWhileOpening_;
    std::vector<std::string> heldFault_;
    /// The lines last shown (or printed), so that a fault saved again is not printed again.
    std::vector<std::string> lastReport_;
    std::string shownTitle_;
    bool beginClicked_ = false;
    bool screenshotPending_ = false;
    bool redrawPending_ = true;
};

} // namespace orane
