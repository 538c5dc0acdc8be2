#include "scenemanager/story.hpp"

#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"

#include <algorithm>

namespace orane
{

Story::Story(const Story& other)
    : scenes_(other.scenes_)
    , suspects_(other.suspects_)
    , suspectFileLines_(other.suspectFileLines_)
    , suspectsFile_(other.suspectsFile_)
    , files_(other.files_)
    , sources_(other.sources_)
    , skippedScenes_(other.skippedScenes_)
{
    buildIds();
}

Story& Story::operator=(const Story& other)
{
    if (this != &other) {
        Story copy(other);
        *this = std::move(copy);
    }
    return *this;
}

void Story::buildIds()
{
    index_.emplace(scenes_);
    const std::vector<const SceneIndex::Entry*>& entries = index_->entries();
    names_.clear();
    scenesById_.clear();
    for (const SceneIndex::Entry* entry : entries) {
        names_.push_back(&entry->first);
        scenesById_.push_back(&entry->second);
    }
    firstSpecialOnly_ = static_cast<SceneId>(names_.size());
    specialNamesNotStored_.clear();
    for (const sf::String& special : SPECIAL_SCENE_NAMES) {
        if (scenes_.count(special) == 0)
            specialNamesNotStored_.push_back(special);
    }
    // The list is complete before any of its names is pointed at.
    for (const sf::String& special : specialNamesNotStored_) {
        names_.push_back(&special);
        scenesById_.push_back(nullptr);
    }
    endScene_ = findSceneId(END_SCENE_NAME);
    gameOverScene_ = findSceneId(GAME_OVER_SCENE_NAME);
    hubScene_ = findSceneId(HUB_SCENE_NAME);
    arrestScene_ = findSceneId(ARREST_SCENE_NAME);

    links_.assign(names_.size(), Links());
    for (SceneId scene = 0; scene < firstSpecialOnly_; ++scene) {
        const Scene& stored = *scenesById_[scene];
        Links& links = links_[scene];
        if (!stored.forward.isEmpty())
            links.forward = findSceneId(stored.forward);
        links.choices.reserve(stored.choices.size());
        for (const Choice& choice : stored.choices)
            links.choices.push_back(findSceneId(choice.nextSceneName));
    }
    suspectBegin_.clear();
    suspectArrest_.clear();
    for (const sf::String& suspect : suspects_) {
        suspectBegin_.push_back(findSceneId(suspect + SUSPECT_BEGIN_SUFFIX));
        suspectArrest_.push_back(findSceneId(suspect + SUSPECT_ARREST_SUFFIX));
    }
}

Story::SceneId Story::findSceneId(const sf::String& name) const
{
    if (index_.has_value()) {
        const std::optional<std::size_t> stored = index_->findPosition(viewOf(name));
        if (stored.has_value())
            return static_cast<SceneId>(*stored);
    }
    for (std::size_t extra = 0; extra < specialNamesNotStored_.size(); ++extra) {
        if (specialNamesNotStored_[extra] == name)
            return firstSpecialOnly_ + static_cast<SceneId>(extra);
    }
    return UNKNOWN_SCENE;
}

bool Story::specialStored(SceneId scene) const
{
    return scene == endScene_ || scene == gameOverScene_ || scene == hubScene_ || scene == arrestScene_;
}

const Scene* Story::findScene(const sf::String& name) const
{
    const auto found = scenes_.find(name);
    return found == scenes_.end() ? nullptr : &found->second;
}

std::optional<std::size_t> Story::suspectIndex(const sf::String& name) const
{
    const auto found = std::lower_bound(suspects_.begin(), suspects_.end(), name, CodePointLess());
    if (found == suspects_.end() || *found != name)
        return std::nullopt;
    return static_cast<std::size_t>(found - suspects_.begin());
}

std::uint32_t Story::suspectFileLine(const sf::String& suspect) const
{
    const std::optional<std::size_t> index = suspectIndex(suspect);
    return index.has_value() ? suspectFileLines_[*index] : 0;
}

std::optional<Story::SceneOrigin> Story::findOrigin(const sf::String& sceneName) const
{
    const SceneSource* source = findSource(sceneName);
    if (source == nullptr)
        return std::nullopt;
    return SceneOrigin{pathOf(*source), source->scene.line};
}

const SceneSource* Story::findSource(const sf::String& sceneName) const
{
    const auto found = sources_.find(sceneName);
    return found == sources_.end() ? nullptr : &found->second;
}

} // namespace orane
