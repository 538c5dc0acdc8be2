#pragma once

#include "scene/scene.hpp"
#include "scenemanager/sceneindex.hpp"
#include "scenemanager/scenemap.hpp"
#include "scenemanager/scenesource.hpp"

#include <SFML/System/String.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orane
{

/// A loaded story: its scenes, its suspects and where each scene and line came from. Built by
/// StoryLoader, read only afterwards; play goes on elsewhere (PlayPosition).
class Story
{
public:
    /// A scene play can be at: every stored scene, in name order, then each special scene that
    /// no file defines (composed by the game). Valid for the story that gave it.
    using SceneId = std::uint32_t;
    static constexpr SceneId UNKNOWN_SCENE = ~SceneId{0};

    /// A scene's links, resolved once: UNKNOWN_SCENE where a name leads nowhere.
    struct Links
    {
        /// UNKNOWN_SCENE also when the scene has no FORWARD.
        SceneId forward = UNKNOWN_SCENE;
        std::vector<SceneId> choices;
    };

    Story() = default;
    /// A copy has ids of its own for the same scenes.
    Story(const Story& other);
    Story& operator=(const Story& other);
    Story(Story&&) = default;
    Story& operator=(Story&&) = default;
    ~Story() = default;

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
        /// Its SCENE line in the file, from 1.
        std::uint32_t fileLine = 0;
    };

    /// How far the loader got through one story file.
    struct StoryFile
    {
        enum class STATUS
        {
            READ,
            CANNOT_OPEN,
            /// Opened, then stopped at a fault: its scenes before the fault are stored.
            FAULTY,
        };
        std::string path;
        STATUS status = STATUS::READ;
    };

    /// Every stored scene by name: the files' scenes, then "game_over" and "end" unless a file
    /// defined them first. The hub and the arrest scene are stored only when a file defines them.
    [[nodiscard]] const SceneMap& scenes() const { return scenes_; }
    /// Null when no scene has that name.
    [[nodiscard]] const Scene* findScene(const sf::String& name) const;

    /// The suspects, trimmed, each once, in code-point order (the order the hub offers them).
    [[nodiscard]] const std::vector<sf::String>& suspects() const { return suspects_; }
    /// Index in suspects(), or empty for a name that is no suspect.
    [[nodiscard]] std::optional<std::size_t> suspectIndex(const sf::String& name) const;
    /// The path of suspects.ini as the loader named it.
    [[nodiscard]] const std::string& suspectsFile() const { return suspectsFile_; }
    /// The first line of suspects.ini (from 1) that names `suspect` once trimmed; 0 when none.
    [[nodiscard]] std::uint32_t suspectFileLine(const sf::String& suspect) const;

    /// The story files in the order they were read (story.txt, then the suspects' files).
    [[nodiscard]] const std::vector<StoryFile>& files() const { return files_; }

    /// Empty for a scene that no story file defined.
    [[nodiscard]] std::optional<SceneOrigin> findOrigin(const sf::String& sceneName) const;
    /// Where the scene's lines stand in its file; null for a scene no story file defined.
    [[nodiscard]] const SceneSource* findSource(const sf::String& sceneName) const;
    /// The path of a SceneSource's file.
    [[nodiscard]] const std::string& pathOf(const SceneSource& source) const { return files_[source.file].path; }
    /// Scenes dropped because their name was taken, in the order they were met.
    [[nodiscard]] const std::vector<SkippedScene>& skippedScenes() const { return skippedScenes_; }

    [[nodiscard]] std::size_t sceneCount() const { return names_.size(); }
    /// UNKNOWN_SCENE for a name that is neither stored nor special.
    [[nodiscard]] SceneId findSceneId(const sf::String& name) const;
    [[nodiscard]] const sf::String& sceneName(SceneId scene) const { return *names_[scene]; }
    /// Null for a special scene that only the game composes.
    [[nodiscard]] const Scene* sceneAt(SceneId scene) const { return scenesById_[scene]; }
    [[nodiscard]] const Links& linksOf(SceneId scene) const { return links_[scene]; }
    [[nodiscard]] bool isSpecial(SceneId scene) const { return scene >= firstSpecialOnly_ || specialStored(scene); }
    [[nodiscard]] SceneId endScene() const { return endScene_; }
    [[nodiscard]] SceneId gameOverScene() const { return gameOverScene_; }
    [[nodiscard]] SceneId hubScene() const { return hubScene_; }
    [[nodiscard]] SceneId arrestScene() const { return arrestScene_; }
    /// The scene a suspect's investigation starts at, and the one accusing the suspect leads to.
    [[nodiscard]] SceneId suspectBeginScene(std::size_t suspect) const { return suspectBegin_[suspect]; }
    [[nodiscard]] SceneId suspectArrestScene(std::size_t suspect) const { return suspectArrest_[suspect]; }

private:
    friend class StoryLoader;

    /// Gives every scene its id and resolves the links; called whenever the scenes change.
    void buildIds();
    [[nodiscard]] bool specialStored(SceneId scene) const;

    SceneMap scenes_;
    std::vector<sf::String> suspects_;
    std::vector<std::uint32_t> suspectFileLines_;
    std::string suspectsFile_;
    std::vector<StoryFile> files_;
    std::map<sf::String, SceneSource, CodePointLess> sources_;
    std::vector<SkippedScene> skippedScenes_;

    // Derived by buildIds.
    std::vector<const sf::String*> names_;
    std::vector<const Scene*> scenesById_;
    std::vector<Links> links_;
    std::vector<sf::String> specialNamesNotStored_;
    SceneId firstSpecialOnly_ = 0;
    SceneId endScene_ = UNKNOWN_SCENE;
    SceneId gameOverScene_ = UNKNOWN_SCENE;
    SceneId hubScene_ = UNKNOWN_SCENE;
    SceneId arrestScene_ = UNKNOWN_SCENE;
    std::vector<SceneId> suspectBegin_;
    std::vector<SceneId> suspectArrest_;
    std::optional<SceneIndex> index_;
};

} // namespace orane
