#include "scenemanager/scenemanager.hpp"

#include "scene/diagnosticprinter.hpp"
#include "scenemanager/diskstorysource.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "scenemanager/playrules.hpp"
#include "scenemanager/sceneindex.hpp"
#include "scenemanager/storychecks.hpp"
#include "scenemanager/storyloader.hpp"

#include <ryn/core/assert.hpp>

namespace orane
{

const std::string SceneManager::DEFAULT_STORIES_DIRECTORY = "resources/stories/";

SceneManager::SceneManager(SceneManagerOwner* owner)
    : owner_(owner)
    , unknownScene_(START_SCENE_NAME)
{}

void SceneManager::setNewSceneCallback(std::function<void(const Scene&)> callback)
{
    newSceneCallback_ = std::move(callback);
}

void SceneManager::setChoiceAppliedCallback(std::function<void(const Choice&)> callback)
{
    choiceAppliedCallback_ = std::move(callback);
}

bool SceneManager::loadStory()
{
    return loadStoryFrom(DEFAULT_STORIES_DIRECTORY);
}

bool SceneManager::loadStoryFrom(const std::string& storiesDirectory)
{
    if (!readStoryFrom(storiesDirectory))
        return false;
    playCurrentScene();
    return true;
}

bool SceneManager::readStoryFrom(const std::string& storiesDirectory)
{
    const DiskStorySource disk;
    StoryLoader::Result loaded = StoryLoader(disk).load(storiesDirectory);
    story_ = std::move(loaded.story);
    diagnostics_ = std::move(loaded.diagnostics);
    position_ = PlayRules(story_).start();
    refreshSuspectsVisited();
    DiagnosticPrinter::print(diagnostics_);
    return loaded.playable;
}

void SceneManager::playFrom(const sf::String& sceneName, const std::vector<sf::String>& investigated, bool hubSeen)
{
    for (const sf::String& name : investigated) {
        if (const std::optional<std::size_t> suspect = story_.suspectIndex(name))
            position_.investigated.insert(*suspect);
    }
    refreshSuspectsVisited();
    position_.hubSeen = hubSeen;
    position_.scene = story_.findSceneId(sceneName);
    unknownScene_ = sceneName;
    if (position_.scene != Story::UNKNOWN_SCENE && story_.isSpecial(position_.scene))
        composeSpecialScene();
    else
        playCurrentScene();
}

bool SceneManager::loadStoryFile(const std::string& path)
{
    // Scene ids are given anew: play stays at the scene of the same name.
    const sf::String current = currentSceneName();
    const DiskStorySource disk;
    Diagnostics found;
    const bool read = StoryLoader(disk).loadFile(story_, path, found);
    position_.scene = story_.findSceneId(current);
    unknownScene_ = current;
    DiagnosticPrinter::print(found);
    diagnostics_.insert(diagnostics_.end(), found.begin(), found.end());
    return read;
}

void SceneManager::applyChoice(std::int32_t choiceNb)
{
    const Scene& current = getCurrentScene();
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wsign-compare" // choiceNb is known to be positive there
    RYN_ASSERT(!current.choices.empty() && (choiceNb >= 0) && (choiceNb < current.choices.size()));
    const bool inRange = choiceNb >= 0 && choiceNb < current.choices.size();
#pragma GCC diagnostic pop
    if (!inRange)
        return;
    const auto index = static_cast<std::size_t>(choiceNb);
    // Copied: composing the next scene may rewrite the one that offered it.
    const Choice choice = current.choices[index];
    const PlayRules rules(story_);
    const Story::SceneId next = rules.target(position_, index);
    rules.leave(position_, index);
    refreshSuspectsVisited();

    RYN_ASSERT(choiceAppliedCallback_);
    if (choiceAppliedCallback_)
        choiceAppliedCallback_(choice);
    enter(next, choice.nextSceneName);
}

void SceneManager::playCurrentScene()
{
    enter(position_.scene, currentSceneName());
}

void SceneManager::enter(Story::SceneId scene, const sf::String& name)
{
    RYN_ASSERT(newSceneCallback_);
    if (!newSceneCallback_)
        return;
    const Scene* lastShown = nullptr;
    const bool arrived = PlayRules(story_).enter(position_, scene, [this, &lastShown](const PlayPosition& at) {
        lastShown = story_.sceneAt(at.scene);
        show(at.scene);
    });
    if (position_.scene == Story::UNKNOWN_SCENE)
        unknownScene_ = lastShown != nullptr ? lastShown->forward : name;
    // Only a story that skipped the checks can lead nowhere or forward in a circle.
    RYN_ASSERT(arrived);
}

void SceneManager::composeSpecialScene()
{
    RYN_ASSERT(story_.isSpecial(position_.scene) && position_.scene != Story::UNKNOWN_SCENE);
    if (position_.scene == Story::UNKNOWN_SCENE || !story_.isSpecial(position_.scene))
        return;
    show(position_.scene);
}

void SceneManager::show(Story::SceneId scene)
{
    const Scene* stored = story_.sceneAt(scene);
    if (scene == story_.hubScene()) {
        hub_ = stored != nullptr ? *stored : Scene();
        composeHub(hub_, suspectsVisited_, PlayRules::hubOffersArrest(position_));
    } else if (scene == story_.gameOverScene()) {
        if (owner_)
            owner_->onGameOver();
    } else if (scene == story_.arrestScene()) {
        arrest_ = stored != nullptr ? *stored : Scene();
        composeArrest(arrest_, suspectsVisited_);
    }
    RYN_ASSERT(newSceneCallback_);
    if (newSceneCallback_)
        newSceneCallback_(getCurrentScene());
}

const Scene& SceneManager::getCurrentScene() const
{
    static const Scene noScene;
    const Story::SceneId scene = position_.scene;
    RYN_ASSERT(scene != Story::UNKNOWN_SCENE);
    if (scene == Story::UNKNOWN_SCENE)
        return noScene;
    if (scene == story_.hubScene())
        return hub_;
    if (scene == story_.arrestScene())
        return arrest_;
    const Scene* stored = story_.sceneAt(scene);
    return stored != nullptr ? *stored : noScene;
}

const sf::String& SceneManager::currentSceneName() const
{
    return position_.scene == Story::UNKNOWN_SCENE ? unknownScene_ : story_.sceneName(position_.scene);
}

void SceneManager::refreshSuspectsVisited()
{
    suspectsVisited_.clear();
    const std::vector<sf::String>& suspects = story_.suspects();
    for (std::size_t suspect = 0; suspect < suspects.size(); ++suspect)
        suspectsVisited_.emplace_hint(suspectsVisited_.end(), suspects[suspect],
                                      position_.investigated.contains(suspect));
}

bool SceneManager::checkLinks() const
{
    Diagnostics found;
    const bool sound = StoryChecks::checkLinks(story_, SceneIndex(story_.scenes()), found);
    DiagnosticPrinter::print(found);
    return sound;
}

bool SceneManager::checkPlayability() const
{
    Diagnostics found;
    const bool sound = StoryChecks::checkPlayability(story_, SceneIndex(story_.scenes()), found);
    DiagnosticPrinter::print(found);
    return sound;
}

bool SceneManager::isSpecialSceneName(const sf::String& name)
{
    return orane::isSpecialSceneName(name);
}

} // namespace orane
