#include "storywalker.hpp"

#include "scene/tokens.hpp"

#include <ryn/core/console.hpp>

#include <deque>
#include <random>
#include <tuple>

namespace orane
{
namespace
{

const sf::String& endName() { return SPECIAL_SCENE_NAMES[0]; }
const sf::String& gameOverName() { return SPECIAL_SCENE_NAMES[1]; }

/// One state met while exploring, and how it was first reached.
struct Node
{
    StoryWalker::State state;
    std::size_t parent = 0;
    sf::String label;
    std::vector<std::size_t> next;
};

std::vector<sf::String> pathTo(const std::vector<Node>& nodes, std::size_t index)
{
    std::vector<sf::String> labels;
    for (; index != 0; index = nodes[index].parent)
        labels.insert(labels.begin(), nodes[index].label);
    return labels;
}

} // namespace

bool StoryWalker::State::operator<(const State& other) const
{
    return std::tie(scene, suspectsVisited, firstHubPending)
           < std::tie(other.scene, other.suspectsVisited, other.firstHubPending);
}

bool StoryWalker::ChoiceRef::operator<(const ChoiceRef& other) const
{
    return std::tie(scene, index) < std::tie(other.scene, other.index);
}

StoryWalker::StoryWalker(const std::string& directory)
{
    std::string path = directory;
    if (!path.empty() && path.back() != '/')
        path += '/';
    started_.setNewSceneCallback([this](const Scene& scene) { startShows_.push_back(scene.name); });
    started_.setChoiceAppliedCallback([](const Choice&) {});
    ryn::console::Capture capture;
    loads_ = started_.loadStoryFrom(path);
    loadReport_ = capture.lines();
    started_.setNewSceneCallback([](const Scene&) {});
}

std::vector<sf::String> StoryWalker::suspects() const
{
    std::vector<sf::String> names;
    for (const auto& suspect : started_.suspectsVisited())
        names.push_back(suspect.first);
    return names;
}

StoryWalker::State StoryWalker::stateOf(const SceneManager& manager) const
{
    State state{manager.currentSceneName(), {}, manager.isFirstHubPending()};
    for (const auto& suspect : manager.suspectsVisited())
        state.suspectsVisited.push_back(suspect.second);
    return state;
}

bool StoryWalker::isEnding(const sf::String& scene)
{
    return scene == endName() || scene == gameOverName();
}

StoryWalker::Exploration StoryWalker::explore() const
{
    Exploration result;
    result.scenesShown.insert(startShows_.begin(), startShows_.end());
    std::vector<Node> nodes{Node{stateOf(started_), 0, {}, {}}};
    std::map<State, std::size_t> known{{nodes[0].state, 0}};
    // Breadth first, so that the first way found to a state is a shortest one. Each state
    // waiting in the queue keeps its own scene manager, the one play would have by then.
    std::deque<std::pair<std::size_t, SceneManager>> queue;
    queue.emplace_back(0, started_);
    while (!queue.empty()) {
        auto [index, manager] = std::move(queue.front());
        queue.pop_front();
        const sf::String current = manager.currentSceneName();
        const Scene& scene = manager.getCurrentScene();
        const bool written = manager.findOrigin(current).has_value();
        for (std::size_t choice = 0; choice < scene.choices.size(); ++choice) {
            SceneManager next = manager;
            next.setNewSceneCallback([&result](const Scene& shown) { result.scenesShown.insert(shown.name); });
            next.applyChoice(static_cast<std::int32_t>(choice));
            ++result.choicesTaken;
            if (written)
                result.takenChoices.insert(ChoiceRef{current, choice});
            const State state = stateOf(next);
            auto found = known.find(state);
            if (found == known.end()) {
                found = known.emplace(state, nodes.size()).first;
                nodes.push_back(Node{state, index, scene.choices[choice].briefDescription, {}});
                if (!isEnding(state.scene))
                    queue.emplace_back(found->second, std::move(next));
            }
            nodes[index].next.push_back(found->second);
        }
    }
    result.states = nodes.size();

    // Which states can still end: walk the ways back from every ending state.
    std::vector<std::vector<std::size_t>> previous(nodes.size());
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        for (std::size_t next : nodes[index].next)
            previous[next].push_back(index);
    }
    std::vector<bool> canEnd(nodes.size(), false);
    std::deque<std::size_t> ends;
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        const sf::String& scene = nodes[index].state.scene;
        if (!isEnding(scene))
            continue;
        ++result.endings[scene];
        if (result.shortestPaths.count(scene) == 0)
            result.shortestPaths[scene] = pathTo(nodes, index);
        canEnd[index] = true;
        ends.push_back(index);
    }
    while (!ends.empty()) {
        const std::size_t index = ends.front();
        ends.pop_front();
        for (std::size_t before : previous[index]) {
            if (!canEnd[before]) {
                canEnd[before] = true;
                ends.push_back(before);
            }
        }
    }
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        if (!canEnd[index])
            result.stuck.emplace_back(nodes[index].state, pathTo(nodes, index));
    }
    result.scenesShown.erase(sf::String());
    return result;
}

std::vector<StoryWalker::ChoiceRef> StoryWalker::untakenChoices(const Exploration& exploration) const
{
    std::vector<ChoiceRef> untaken;
    for (const auto& [name, scene] : started_.scenes()) {
        if (!started_.findOrigin(name).has_value())
            continue;
        for (std::size_t index = 0; index < scene.choices.size(); ++index) {
            if (exploration.takenChoices.count(ChoiceRef{name, index}) == 0)
                untaken.push_back(ChoiceRef{name, index});
        }
    }
    return untaken;
}

StoryWalker::RandomPlay StoryWalker::playRandomly(std::size_t count, std::uint64_t seed, std::size_t choiceLimit) const
{
    RandomPlay result;
    result.playthroughs = count;
    for (const auto& entry : started_.scenes()) {
        if (started_.findOrigin(entry.first).has_value())
            result.visits[entry.first] = 0;
    }
    const auto countVisit = [&result](const Scene& shown) {
        if (!shown.name.isEmpty())
            ++result.visits[shown.name];
    };
    // The generator's raw output, not a distribution, so that a seed plays the same everywhere.
    std::mt19937_64 generator(seed);
    for (std::size_t playthrough = 0; playthrough < count; ++playthrough) {
        for (const sf::String& shown : startShows_) {
            if (!shown.isEmpty())
                ++result.visits[shown];
        }
        SceneManager manager = started_;
        manager.setNewSceneCallback(countVisit);
        std::size_t choices = 0;
        while (true) {
            const sf::String current = manager.currentSceneName();
            if (isEnding(current)) {
                ++result.endings[current];
                break;
            }
            const std::size_t offered = manager.getCurrentScene().choices.size();
            if (offered == 0) {
                ++result.stuck;
                break;
            }
            if (choices == choiceLimit) {
                ++result.unfinished;
                break;
            }
            manager.applyChoice(static_cast<std::int32_t>(generator() % offered));
            ++choices;
        }
        result.fewestChoices = playthrough == 0 ? choices : std::min(result.fewestChoices, choices);
        result.mostChoices = std::max(result.mostChoices, choices);
        result.totalChoices += choices;
    }
    return result;
}

} // namespace orane
