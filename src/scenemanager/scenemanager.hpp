#pragma once

#include "scene/scene.hpp"
#include "scenemanager/scenemanagerowner.hpp"
#include "scenemanager/sceneindex.hpp"
#include "scenemanager/scenelines.hpp"
#include "scenemanager/scenemap.hpp"

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

    /// Where a stored scene was read from (the fixed and composed scenes have no origin).
    struct SceneOrigin
    {
        std::string file;
        /// The number of its SCENE line, counted from 0 with comment lines left out.
        std::uint32_t line = 0;
    };

    /// A scene dropped because an earlier one already had its name.
    struct SkippedScene
    {
        sf::String name;
        SceneOrigin origin;
    };

    /// `owner` is not owned and may be null (tools); it is told about game over.
    explicit SceneManager(SceneManagerOwner* owner);

    /// Called with every scene to show, in the order of play.
    void setNewSceneCallback(std::function<void(const Scene&)> callback);
    /// Called with every choice taken, before play moves on.
    void setChoiceAppliedCallback(std::function<void(const Choice&)> callback);

    /// Reads the story from DEFAULT_STORIES_DIRECTORY, checks it and shows the start scene.
    /// Every fault is reported on the console; answers false when the game cannot be played.
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
    bool loadStoryFile(std::string path);

    /// Takes choice `choiceNb` of the current scene (which must offer it) and moves play on.
    void applyChoice(std::int32_t choiceNb);

    /// Shows the current scene and the chain of FORWARD links that follows it, up to a scene
    /// with choices or a special scene.
    void playCurrentScene();

    /// Composes the current scene, which must be special, and shows it.
    void composeSpecialScene();

    /// The scene stored under the current name; it must exist.
    const Scene& getCurrentScene() const;

    /// Reports every FORWARD link and choice that names neither a stored nor a special scene,
    /// in the order of scene names; answers true when there is none.
    bool checkLinks() const;

    /// Reports what would stop play later: no start scene; when some link leads to the hub or
    /// the arrest scene, a suspect without its "_begin" or "_arrest" scene or whose name the hub
    /// cannot tell apart; FORWARD cycles among scenes without choices. Answers true when there
    /// is none.
    bool checkPlayability() const;

    static bool isSpecialSceneName(const sf::String& name);

    const SceneMap& scenes() const { return scenes_; }
    const std::map<sf::String, bool>& suspectsVisited() const { return suspectsVisited_; }
    const sf::String& currentSceneName() const { return currentScene_; }
    bool isFirstHubPending() const { return firstHubPending_; }
    /// Empty for a scene that no story file defined.
    std::optional<SceneOrigin> findOrigin(const sf::String& sceneName) const;
    /// In the order they were met.
    const std::vector<SkippedScene>& skippedScenes() const { return skippedScenes_; }

private:
    bool readSuspects(const std::string& storiesDirectory);
    /// The checks over an index of scenes_ as they stand.
    bool checkLinks(const SceneIndex& index) const;
    bool checkPlayability(const SceneIndex& index) const;
    /// Where the last scene of a file went in each map: the next one most often follows it.
    struct StoringPlaces;
    bool parseBlock(const std::vector<std::string_view>& block, std::uint32_t firstLine,
                    std::uint32_t fileIndex, StoringPlaces& places);
    bool checkStartScene() const;
    bool canReachHub(const SceneIndex& index) const;
    bool checkSuspectScenes(const SceneIndex& index) const;
    bool checkForwardCycles(const SceneIndex& index) const;
    void markSuspectVisited(const sf::String& suspectBeginScene);

    std::function<void(const Scene&)> newSceneCallback_;
    std::function<void(const Choice&)> choiceAppliedCallback_;
    sf::String currentScene_;
    SceneManagerOwner* owner_ = nullptr;
    SceneMap scenes_;
    bool firstHubPending_ = true;
    std::map<sf::String, bool> suspectsVisited_;
    /// A scene's origin names its file by index in storyFiles_: one path per file, not per scene.
    struct StoredOrigin
    {
        std::uint32_t fileIndex = 0;
        std::uint32_t line = 0;
    };
    std::vector<std::string> storyFiles_;
    std::map<sf::String, StoredOrigin, CodePointLess> origins_;
    SceneLines blockLines_;
    std::vector<SkippedScene> skippedScenes_;
};

} // namespace orane
