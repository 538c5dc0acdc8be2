#include "scenemanager/scenemanager.hpp"

#include "scene/storytext.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "scenemanager/sceneindex.hpp"
#include "scenemanager/textfile.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <algorithm>
#include <unordered_set>

namespace orane
{
namespace
{

const sf::String& endName() { return SPECIAL_SCENE_NAMES[0]; }
const sf::String& gameOverName() { return SPECIAL_SCENE_NAMES[1]; }
const sf::String& hubName() { return SPECIAL_SCENE_NAMES[2]; }
const sf::String& arrestName() { return SPECIAL_SCENE_NAMES[3]; }

sf::String quoted(const sf::String& text)
{
    return L"\"" + text + L"\"";
}

sf::String decimal(std::uint64_t number)
{
    return sf::String(std::to_wstring(number));
}

bool isComment(std::string_view line)
{
    return !line.empty() && line[0] == '#';
}

/// Lines open scenes wherever the word SCENE occurs; in UTF-8 an ASCII word is found byte for
/// byte, since no multi-byte sequence holds an ASCII byte.
bool opensScene(std::string_view line)
{
    return line.find("SCENE") != std::string_view::npos;
}

/// The loader's number for the first line that `file` cannot give (its invalid one): comment
/// lines are not counted.
std::uint32_t countedLinesBeforeInvalid(const TextFile& file)
{
    std::uint32_t number = 0;
    std::size_t offset = 0;
    std::string_view line;
    while (file.nextLine(offset, line)) {
        if (!isComment(line))
            ++number;
    }
    return number;
}

void reportInvalidUtf8(const std::string& path, std::uint32_t lineNumber)
{
    ryn::console::writeLine("ERROR : invalid UTF-8 at line " + std::to_string(lineNumber) + " of file "
                            + path + ". Story files must be saved as UTF-8.");
}

void reportTooLarge(const std::string& path, std::uintmax_t byteCount)
{
    ryn::console::writeLine("ERROR : file " + path + " is " + std::to_string(byteCount)
                            + " bytes long. A story file may hold at most "
                            + std::to_string(TextFile::MAX_BYTES) + " bytes.");
}

} // namespace

const std::string SceneManager::DEFAULT_STORIES_DIRECTORY = "resources/stories/";

SceneManager::SceneManager(SceneManagerOwner* owner)
    : currentScene_(START_SCENE_NAME)
    , owner_(owner)
{
}

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
    if (!readSuspects(storiesDirectory))
        return false;
    if (!loadStoryFile(storiesDirectory + "story.txt"))
        return false;
    for (const auto& suspect : suspectsVisited_) {
        const std::string fileName = ryn::console::toUtf8(suspect.first.toWideString()) + ".txt";
        if (!loadStoryFile(storiesDirectory + fileName))
            return false;
    }
    const SceneIndex index(scenes_);
    return checkLinks(index) && checkPlayability(index);
}

void SceneManager::playFrom(const sf::String& sceneName, const std::vector<sf::String>& investigated, bool hubSeen)
{
    for (const sf::String& name : investigated) {
        const auto suspect = suspectsVisited_.find(name);
        if (suspect != suspectsVisited_.end())
            suspect->second = true;
    }
    firstHubPending_ = !hubSeen;
    currentScene_ = sceneName;
    if (isSpecialSceneName(currentScene_))
        composeSpecialScene();
    else
        playCurrentScene();
}

bool SceneManager::readSuspects(const std::string& storiesDirectory)
{
    const std::string path = storiesDirectory + "suspects.ini";
    const TextFile file = TextFile::load(path);
    switch (file.status()) {
    case TextFile::STATUS::CANNOT_OPEN:
        // The message names the game's own path, whichever directory was asked for.
        ryn::console::writeLine(std::string("FATAL ERROR : coudln't open file resources/stories/suspects.ini"));
        return false;
    case TextFile::STATUS::INVALID_UTF8:
        reportInvalidUtf8(path, static_cast<std::uint32_t>(file.invalidLineIndex()));
        return false;
    case TextFile::STATUS::TOO_LARGE:
        reportTooLarge(path, file.byteCount());
        return false;
    case TextFile::STATUS::READ:
        break;
    }
    for (const sf::String& line : file.lines())
        suspectsVisited_.emplace(trimWhitespace(line), false);
    return true;
}

struct SceneManager::StoringPlaces
{
    SceneMap::const_iterator scene;
    std::map<sf::String, StoredOrigin, CodePointLess>::const_iterator origin;
};

bool SceneManager::loadStoryFile(std::string path)
{
    const TextFile file = TextFile::load(path);
    if (file.status() == TextFile::STATUS::CANNOT_OPEN)
        return false;
    if (file.status() == TextFile::STATUS::INVALID_UTF8) {
        reportInvalidUtf8(path, countedLinesBeforeInvalid(file));
        return false;
    }
    if (file.status() == TextFile::STATUS::TOO_LARGE) {
        reportTooLarge(path, file.byteCount());
        return false;
    }

    const std::uint32_t fileIndex = static_cast<std::uint32_t>(storyFiles_.size());
    storyFiles_.push_back(path);
    StoringPlaces places{scenes_.end(), origins_.end()};
    std::vector<std::string_view> block;
    std::uint32_t counter = 0;
    std::size_t offset = 0;
    std::string_view line;
    while (file.nextLine(offset, line)) {
        if (isComment(line))
            continue;
        if (opensScene(line)) {
            // Text before the first scene is allowed and dropped, but its lines count.
            if (!block.empty()) {
                const std::uint32_t firstLine = counter - static_cast<std::uint32_t>(block.size());
                if (!parseBlock(block, firstLine, fileIndex, places)) {
                    ryn::console::writeLine(L"ERROR : couldn't deserialize scene starting at line "
                                            + std::to_wstring(firstLine));
                    return false;
                }
                block.clear();
            }
            block.push_back(line);
        } else if (!block.empty()) {
            block.push_back(line);
        }
        ++counter;
    }

    if (block.empty()) {
        ryn::console::writeLine("ERROR : no scene found in file " + path
                                + ". A story file must hold at least one SCENE line.");
        return false;
    }
    if (!parseBlock(block, counter - static_cast<std::uint32_t>(block.size()), fileIndex, places)) {
        ryn::console::writeLine(L"ERROR : couldn't deserialize scene ending at line "
                                + std::to_wstring(counter));
        return false;
    }
    scenes_.emplace(gameOverName(), makeGameOverScene());
    scenes_.emplace(endName(), makeEndScene());
    return true;
}

bool SceneManager::parseBlock(const std::vector<std::string_view>& block, std::uint32_t firstLine,
                              std::uint32_t fileIndex, StoringPlaces& places)
{
    blockLines_.assign(block);
    // The scene is read straight into a map node and the node moved in: sf::String cannot be
    // moved, so copying a whole scene into the map would deep-copy all of its text.
    SceneMap nursery;
    auto node = nursery.extract(nursery.try_emplace(sf::String()).first);
    Scene& scene = node.mapped();
    if (!scene.deserialize(blockLines_.views(), firstLine))
        return false;
    node.key() = scene.name;
    // Authors often write scenes in the order of their names: the place after the last scene
    // stored is then the right one, found without a search (any other place costs one).
    const auto position = scenes_.insert(places.scene, std::move(node));
    if (node.empty()) {
        places.scene = std::next(position);
        places.origin = std::next(origins_.emplace_hint(places.origin, position->first, StoredOrigin{fileIndex, firstLine}));
    } else {
        skippedScenes_.push_back(SkippedScene{node.mapped().name, SceneOrigin{storyFiles_[fileIndex], firstLine}});
    }
    return true;
}

void SceneManager::applyChoice(std::int32_t choiceNb)
{
    const Scene& current = scenes_[currentScene_];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wsign-compare" // choiceNb is known to be positive there
    RYN_ASSERT(!current.choices.empty() && (choiceNb >= 0 ) && (choiceNb < current.choices.size()));
    const bool inRange = choiceNb >= 0 && choiceNb < current.choices.size();
#pragma GCC diagnostic pop
    if (!inRange)
        return;
    const Choice& choice = current.choices[static_cast<std::size_t>(choiceNb)];

    if (currentScene_ == hubName() && containsToken(choice.nextSceneName, SUSPECT_BEGIN_SUFFIX))
        markSuspectVisited(choice.nextSceneName);

    RYN_ASSERT(choiceAppliedCallback_);
    if (choiceAppliedCallback_)
        choiceAppliedCallback_(choice);

    currentScene_ = choice.nextSceneName;
    if (isSpecialSceneName(currentScene_)) {
        composeSpecialScene();
        return;
    }
    RYN_ASSERT(scenes_.find(currentScene_) != scenes_.end());
    if (scenes_.find(currentScene_) != scenes_.end())
        playCurrentScene();
}

void SceneManager::markSuspectVisited(const sf::String& suspectBeginScene)
{
    const std::size_t found = suspectBeginScene.find(SUSPECT_BEGIN_SUFFIX);
    const long pos = found == sf::String::InvalidPos ? -1 : static_cast<long>(found);
    RYN_ASSERT(pos != -1);
    if (pos == -1)
        return;
    const sf::String name = suspectBeginScene.substring(0, found);
    RYN_ASSERT(suspectsVisited_.find(name) != suspectsVisited_.end());
    const auto suspect = suspectsVisited_.find(name);
    if (suspect != suspectsVisited_.end())
        suspect->second = true;
}

void SceneManager::playCurrentScene()
{
    // Only a story that skipped checkPlayability can forward in a circle; stop rather than hang.
    for (std::size_t shown = 0;; ++shown) {
        if (!RYN_CHECK(shown <= scenes_.size()))
            return;
        const Scene& scene = scenes_[currentScene_];
        RYN_ASSERT(newSceneCallback_);
        if (!newSceneCallback_)
            return;
        newSceneCallback_(scene);
        if (!scene.choices.empty())
            return;
        currentScene_ = scene.forward;
        if (isSpecialSceneName(currentScene_)) {
            composeSpecialScene();
            return;
        }
        RYN_ASSERT(scenes_.find(currentScene_) != scenes_.end());
        if (scenes_.find(currentScene_) == scenes_.end())
            return;
    }
}

void SceneManager::composeSpecialScene()
{
    RYN_ASSERT(isSpecialSceneName(currentScene_));
    if (!isSpecialSceneName(currentScene_))
        return;
    Scene& scene = scenes_[currentScene_];
    if (currentScene_ == hubName()) {
        composeHub(scene, suspectsVisited_, !firstHubPending_);
        firstHubPending_ = false;
    } else if (currentScene_ == gameOverName()) {
        if (owner_)
            owner_->onGameOver();
    } else if (currentScene_ == arrestName()) {
        composeArrest(scene, suspectsVisited_);
    }
    RYN_ASSERT(newSceneCallback_);
    if (newSceneCallback_)
        newSceneCallback_(scene);
}

const Scene& SceneManager::getCurrentScene() const
{
    RYN_ASSERT(scenes_.find(currentScene_) != scenes_.end());
    const auto found = scenes_.find(currentScene_);
    if (found != scenes_.end())
        return found->second;
    static const Scene noScene;
    return noScene;
}

bool SceneManager::checkLinks() const
{
    return checkLinks(SceneIndex(scenes_));
}

bool SceneManager::checkLinks(const SceneIndex& index) const
{
    bool allFound = true;
    const auto leadsSomewhere = [&index](const sf::String& target) {
        return isSpecialSceneName(target) || index.find(viewOf(target)) != nullptr;
    };
    for (const SceneIndex::Entry* entry : index.entries()) {
        const auto& [key, scene] = *entry;
        if (!scene.forward.isEmpty() && !leadsSomewhere(scene.forward)) {
            ryn::console::writeLine(L"ERROR : Scene " + quoted(key) + L" forwards to non-existing scene "
                                    + quoted(scene.forward) + L".");
            allFound = false;
        }
        for (std::size_t choice = 0; choice < scene.choices.size(); ++choice) {
            const sf::String& target = scene.choices[choice].nextSceneName;
            if (!leadsSomewhere(target)) {
                ryn::console::writeLine(L"ERROR : Scene " + quoted(key) + L" choice " + decimal(choice)
                                        + L" points to non-existing scene " + quoted(target) + L".");
                allFound = false;
            }
        }
    }
    return allFound;
}

bool SceneManager::checkPlayability() const
{
    return checkPlayability(SceneIndex(scenes_));
}

bool SceneManager::checkPlayability(const SceneIndex& index) const
{
    const bool startFound = checkStartScene();
    const bool suspectsPlayable = checkSuspectScenes(index);
    const bool forwardsEnd = checkForwardCycles(index);
    return startFound && suspectsPlayable && forwardsEnd;
}

bool SceneManager::checkStartScene() const
{
    if (scenes_.count(START_SCENE_NAME) > 0)
        return true;
    ryn::console::writeLine(L"ERROR : No scene named " + quoted(START_SCENE_NAME)
                            + L" was found. The story starts with that scene.");
    return false;
}

bool SceneManager::canReachHub(const SceneIndex& index) const
{
    const CodePointView hub = viewOf(hubName());
    const CodePointView arrest = viewOf(arrestName());
    const auto leadsToHub = [hub, arrest](const sf::String& target) {
        const CodePointView name = viewOf(target);
        return name == hub || name == arrest;
    };
    for (const SceneIndex::Entry* entry : index.entries()) {
        const Scene& scene = entry->second;
        if (leadsToHub(scene.forward))
            return true;
        for (const Choice& choice : scene.choices) {
            if (leadsToHub(choice.nextSceneName))
                return true;
        }
    }
    return false;
}

bool SceneManager::checkSuspectScenes(const SceneIndex& index) const
{
    // Suspects are only ever offered by the hub (the arrest scene leads back to it).
    if (!canReachHub(index))
        return true;
    bool playable = true;
    for (const auto& suspect : suspectsVisited_) {
        const sf::String& name = suspect.first;
        if (containsToken(name, SUSPECT_BEGIN_SUFFIX)) {
            ryn::console::writeLine(L"ERROR : Suspect " + quoted(name) + L" has "
                                    + quoted(SUSPECT_BEGIN_SUFFIX)
                                    + L" in its name, so the hub can't tell which suspect is picked.");
            playable = false;
        }
        for (const sf::String& suffix : {SUSPECT_BEGIN_SUFFIX, SUSPECT_ARREST_SUFFIX}) {
            if (scenes_.count(name + suffix) == 0) {
                ryn::console::writeLine(L"ERROR : Suspect " + quoted(name) + L" has no scene "
                                        + quoted(name + suffix) + L".");
                playable = false;
            }
        }
    }
    return playable;
}

bool SceneManager::checkForwardCycles(const SceneIndex& index) const
{
    // Each scene without choices has one successor, so every walk ends at a scene with choices,
    // at a special scene, or in a cycle; each cycle is reported once, from where it is entered.
    using Entry = SceneIndex::Entry;
    const auto successor = [&index](const Entry& entry) -> const Entry* {
        const Scene& scene = entry.second;
        if (!scene.choices.empty() || scene.forward.isEmpty() || isSpecialSceneName(scene.forward))
            return nullptr;
        return index.find(viewOf(scene.forward));
    };
    std::unordered_set<const Entry*> done;
    bool noCycle = true;
    for (const Entry* start : index.entries()) {
        const Entry& entry = *start;
        if (successor(entry) == nullptr)
            continue;
        std::vector<const Entry*> path;
        std::unordered_set<const Entry*> onPath;
        const Entry* step = &entry;
        for (const Entry* next = successor(*step); next != nullptr && done.count(step) == 0 && onPath.count(step) == 0;
             next = successor(*step)) {
            path.push_back(step);
            onPath.insert(step);
            step = next;
        }
        if (onPath.count(step) > 0) {
            sf::String cycle;
            for (auto member = std::find(path.begin(), path.end(), step); member != path.end(); ++member)
                cycle += quoted((*member)->first) + L" -> ";
            ryn::console::writeLine(L"ERROR : Scenes " + cycle + quoted(step->first)
                                    + L" forward to one another without any choice, so play would "
                                      L"never stop.");
            noCycle = false;
        }
        done.insert(path.begin(), path.end());
        done.insert(&entry);
    }
    return noCycle;
}

std::optional<SceneManager::SceneOrigin> SceneManager::findOrigin(const sf::String& sceneName) const
{
    const auto found = origins_.find(sceneName);
    if (found == origins_.end())
        return std::nullopt;
    return SceneOrigin{storyFiles_[found->second.fileIndex], found->second.line};
}

bool SceneManager::isSpecialSceneName(const sf::String& name)
{
    return orane::isSpecialSceneName(name);
}

} // namespace orane
