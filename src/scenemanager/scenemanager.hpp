#pragma once

#include "scene/diagnostic.hpp"
#include "scene/scene.hpp"
#include "scenemanager/playposition.hpp"
#include "scenemanager/scenemanagerowner.hpp"
#include "scenemanager/scenemap.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orane
{

/// The story's runtime: owns every scene, knows the one being played, follows FORWARD links,
/// applies the player's choices and composes the hub, arrest, game-over and end scenes.
/// Draws nothing and reads no input; what is to be shown goes out through two callbacks.
class SceneManager
{
public:
    /// Where the game always reads its story.
    static const std::string DEFAULT_STORIES_DIRECTORY;

    using SceneOrigin = Story::SceneOrigin;
    using SkippedScene = Story::SkippedScene;

    /// `owner` is not owned and may be null (tools); it is told about game over.
    explicit SceneManager(SceneManagerOwner* owner);

    /// Called with every scene to show, in the order of play.
    void setNewSceneCallback(std::function<void(const Scene&)> callback);
    /// Called with every choice taken, before play moves on.
    void setChoiceAppliedCallback(std::function<void(const Choice&)> callback);

    /// Reads the story from DEFAULT_STORIES_DIRECTORY, checks it and shows the start scene.
    /// Every fault is reported on the console (and kept: diagnostics()); answers false when the
    /// game cannot be played.
    /// The scene callback must be installed. Called once.
    bool loadStory();
    /// The same from another directory (ending with '/'), for tools and tests.
    bool loadStoryFrom(const std::string& storiesDirectory);
    /// loadStoryFrom without showing anything: play stands before "begin".
    bool readStoryFrom(const std::string& storiesDirectory);
    /// Puts play at `sceneName` (stored or special) with the suspects named in `investigated`
    /// (others are ignored) investigated and the hub seen or not, then shows it as play would.
    void playFrom(const sf::String& sceneName, const std::vector<sf::String>& investigated, bool hubSeen);

    /// Reads one story file, stores its scenes (a name already taken keeps its first scene),
    /// then the fixed scenes "game_over" and "end". Answers false, after reporting, at the
    /// first faulty scene; false without a word when the file cannot be opened.
    [[nodiscard]] bool loadStoryFile(const std::string& path);

    /// Takes choice `choiceNb` of the current scene (which must offer it) and moves play on.
    void applyChoice(std::int32_t choiceNb);

    /// Shows the current scene and the chain of FORWARD links that follows it, up to a scene
    /// with choices or a special scene.
    void playCurrentScene();

    /// Composes the current scene, which must be special, and shows it.
    void composeSpecialScene();

    /// The scene stored under the current name; it must exist.
    [[nodiscard]] const Scene& getCurrentScene() const;

    /// Reports every FORWARD link and choice that names neither a stored nor a special scene,
    /// in the order of scene names; answers true when there is none.
    [[nodiscard]] bool checkLinks() const;

    /// Reports what would stop play later: no start scene; when some link leads to the hub or
    /// the arrest scene, a suspect without its "_begin" or "_arrest" scene or whose name the hub
    /// cannot tell apart; FORWARD cycles among scenes without choices. Answers true when there
    /// is none.
    [[nodiscard]] bool checkPlayability() const;

    static bool isSpecialSceneName(const sf::String& name);

    /// The story as loaded: read only once loading is over.
    [[nodiscard]] const Story& story() const { return story_; }
    /// Where play stands in story().
    [[nodiscard]] const PlayPosition& position() const { return position_; }
    /// What loading found, in the order it was printed.
    [[nodiscard]] const Diagnostics& diagnostics() const { return diagnostics_; }

    [[nodiscard]] const SceneMap& scenes() const { return story_.scenes(); }
    /// Every suspect, in code-point order, and whether the hub has sent play to it.
    [[nodiscard]] const std::map<sf::String, bool>& suspectsVisited() const { return suspectsVisited_; }
    [[nodiscard]] const sf::String& currentSceneName() const;
    [[nodiscard]] bool isFirstHubPending() const { return !position_.hubSeen && position_.scene != story_.hubScene(); }
    /// Empty for a scene that no story file defined.
    [[nodiscard]] std::optional<SceneOrigin> findOrigin(const sf::String& sceneName) const
    {
        return story_.findOrigin(sceneName);
    }
    /// In the order they were met.
    [[nodiscard]] const std::vector<SkippedScene>& skippedScenes() const { return story_.skippedScenes(); }

private:
    /// Moves play to `scene` and along its FORWARD links, showing each scene reached.
    void enter(Story::SceneId scene, const sf::String& name);
    /// Composes the scene at `scene` when it is the hub or the arrest scene, tells the owner
    /// about game over, then hands the scene over.
    void show(Story::SceneId scene);
    void refreshSuspectsVisited();

    std::function<void(const Scene&)> newSceneCallback_;
    std::function<void(const Choice&)> choiceAppliedCallback_;
    SceneManagerOwner* owner_ = nullptr;
    Story story_;
    Diagnostics diagnostics_;
    PlayPosition position_;
    /// The name play was sent to when the story has no such scene (before loading: "begin").
    sf::String unknownScene_;
    std::map<sf::String, bool> suspectsVisited_;
    /// The hub and the arrest scene as last composed: the stored scene (if any) rewritten.
    Scene hub_;
    Scene arrest_;
};

} // namespace orane
