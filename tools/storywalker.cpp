#include "storywalker.hpp"

#include "choicelabel.hpp"
#include "scene/diagnosticprinter.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/diskstorysource.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "scenemanager/storyloader.hpp"
#include "suspectsetproof.hpp"
#include "tooltext.hpp"

#include <algorithm>
#include <deque>
#include <numeric>
#include <random>
#include <tuple>
#include <unordered_map>

namespace orane
{

bool StoryWalker::ChoiceRef::operator<(const ChoiceRef& other) const
{
    return std::tie(scene, index) < std::tie(other.scene, other.index);
}

/// One exploration, step by step: the states reached breadth first (so that the first way found
/// to a state is a shortest one), then which of them can still end, then the dead ends grouped.
struct StoryWalker::Search
{
    /// One state met, and how it was first reached.
    struct Node
    {
        PlayPosition position;
        std::size_t parent = 0;
        std::size_t choice = 0;
    };

    Search(const StoryWalker& exploring, Exploration& found)
        : walker(exploring)
        , story(exploring.story_)
        , rules(exploring.story_)
        , result(found)
        , shown(story.sceneCount(), false)
        , taken(story.sceneCount())
    {}

    void reachEveryState(std::size_t stateLimit)
    {
        for (Story::SceneId scene : walker.startShows_)
            shown[scene] = true;
        add(walker.start_, 0, 0);
        for (explored = 0; explored < nodes.size(); ++explored) {
            if (rules.isEnding(nodes[explored].position.scene))
                continue;
            if (nodes.size() >= stateLimit) {
                result.complete = false;
                break;
            }
            takeEveryChoice(explored);
        }
        result.states = nodes.size();
    }

    void takeEveryChoice(std::size_t from)
    {
        const PlayPosition here = nodes[from].position;
        const std::size_t offered = rules.choiceCount(here);
        const bool written = story.findSource(story.sceneName(here.scene)) != nullptr;
        for (std::size_t choice = 0; choice < offered; ++choice) {
            PlayPosition next = here;
            rules.choose(next, choice, [this](const PlayPosition& at) { shown[at.scene] = true; });
            ++result.choicesTaken;
            if (written) {
                taken[here.scene].resize(offered, false);
                taken[here.scene][choice] = true;
            }
            edges.emplace_back(from, add(next, from, choice));
        }
    }

    /// The state's index, added when new.
    std::size_t add(const PlayPosition& position, std::size_t parent, std::size_t choice)
    {
        const auto [found, added] = known.emplace(position, nodes.size());
        if (added)
            nodes.push_back(Node{position, parent, choice});
        return found->second;
    }

    void countEndings()
    {
        for (std::size_t index = 0; index < nodes.size(); ++index) {
            const Story::SceneId scene = nodes[index].position.scene;
            if (!rules.isEnding(scene))
                continue;
            const sf::String& name = story.sceneName(scene);
            ++result.endings[name];
            if (result.shortestPaths.count(name) == 0)
                result.shortestPaths[name] = pathTo(index);
        }
    }

    /// Walks the ways back from every ending state.
    void findWhatCanEnd()
    {
        std::vector<std::size_t> firstIn(nodes.size() + 1, 0);
        for (const auto& edge : edges)
            ++firstIn[edge.second + 1];
        std::partial_sum(firstIn.begin(), firstIn.end(), firstIn.begin());
        std::vector<std::size_t> previous(edges.size());
        std::vector<std::size_t> filled(firstIn.begin(), firstIn.end() - 1);
        for (const auto& edge : edges)
            previous[filled[edge.second]++] = edge.first;

        canEnd.assign(nodes.size(), false);
        std::deque<std::size_t> ends;
        for (std::size_t index = 0; index < nodes.size(); ++index) {
            // A state whose choices were never taken may end for all the walk knows.
            if (rules.isEnding(nodes[index].position.scene) || index >= explored) {
                canEnd[index] = true;
                ends.push_back(index);
            }
        }
        while (!ends.empty()) {
            const std::size_t index = ends.front();
            ends.pop_front();
            for (std::size_t at = firstIn[index]; at < firstIn[index + 1]; ++at) {
                if (!canEnd[previous[at]]) {
                    canEnd[previous[at]] = true;
                    ends.push_back(previous[at]);
                }
            }
        }
    }

    /// Stuck states whose scenes lead into one another form one dead end, whatever suspects
    /// were investigated on the way in: one loop is one finding.
    void groupDeadEnds()
    {
        std::vector<std::size_t> group(story.sceneCount());
        std::iota(group.begin(), group.end(), 0);
        const auto root = [&group](std::size_t scene) {
            while (group[scene] != scene)
                scene = group[scene] = group[group[scene]];
            return scene;
        };
        for (const auto& [from, to] : edges) {
            if (!canEnd[from] && !canEnd[to])
                group[root(nodes[from].position.scene)] = root(nodes[to].position.scene);
        }
        std::map<std::size_t, std::size_t> deadEndOfGroup;
        std::vector<bool> listed(story.sceneCount(), false);
        for (std::size_t index = 0; index < nodes.size(); ++index) {
            if (canEnd[index])
                continue;
            ++result.stuckStates;
            const Story::SceneId scene = nodes[index].position.scene;
            const auto [found, added] = deadEndOfGroup.emplace(root(scene), result.deadEnds.size());
            if (added)
                result.deadEnds.push_back(DeadEnd{{}, 0, nodes[index].position, pathTo(index)});
            DeadEnd& deadEnd = result.deadEnds[found->second];
            ++deadEnd.states;
            if (!listed[scene]) {
                listed[scene] = true;
                deadEnd.scenes.push_back(story.sceneName(scene));
            }
        }
    }

    void listShownAndTaken()
    {
        for (Story::SceneId scene = 0; scene < story.sceneCount(); ++scene) {
            // The game's own scenes have no name of their own to show.
            const Scene* stored = story.sceneAt(scene);
            if (shown[scene] && stored != nullptr && !stored->name.isEmpty())
                result.scenesShown.insert(stored->name);
            for (std::size_t choice = 0; choice < taken[scene].size(); ++choice) {
                if (taken[scene][choice])
                    result.takenChoices.insert(ChoiceRef{story.sceneName(scene), choice});
            }
        }
    }

    std::vector<sf::String> pathTo(std::size_t index) const
    {
        std::vector<sf::String> labels;
        for (; index != 0; index = nodes[index].parent)
            labels.push_back(walker.labelOf(nodes[nodes[index].parent].position, nodes[index].choice));
        std::reverse(labels.begin(), labels.end());
        return labels;
    }

    const StoryWalker& walker;
    const Story& story;
    const PlayRules rules;
    Exploration& result;
    std::vector<Node> nodes;
    /// The states before this one had their choices taken.
    std::size_t explored = 0;
    std::unordered_map<PlayPosition, std::size_t, PlayPosition::Hash> known;
    /// Every choice taken: from one state to another.
    std::vector<std::pair<std::size_t, std::size_t>> edges;
    std::vector<bool> canEnd;
    std::vector<bool> shown;
    std::vector<std::vector<bool>> taken;
};

StoryWalker::StoryWalker(const std::string& directory)
    : directory_(directory)
{
    if (!directory_.empty() && directory_.back() != '/')
        directory_ += '/';
    const DiskStorySource disk;
    StoryLoader::Result loaded = StoryLoader(disk).load(directory_);
    loads_ = loaded.playable;
    for (const Diagnostic& diagnostic : loaded.diagnostics) {
        for (std::string& line : DiagnosticPrinter::lines(diagnostic))
            loadReport_.push_back(std::move(line));
    }
    story_ = std::move(loaded.story);
    const PlayRules rules(story_);
    start_ = rules.start();
    if (loads_)
        rules.enter(start_, start_.scene, [this](const PlayPosition& at) { startShows_.push_back(at.scene); });
}

bool StoryWalker::tooManyStates(std::size_t stateLimit) const
{
    const std::size_t suspects = story_.suspects().size();
    if (suspects > SuspectSetProof::MAX_SUSPECTS)
        return false;
    const std::uint64_t bound = std::uint64_t{story_.sceneCount()} * 2 * (std::uint64_t{1} << suspects);
    return bound > stateLimit;
}

StoryWalker::Exploration StoryWalker::explore(std::size_t stateLimit) const
{
    Exploration result;
    if (!loads_)
        return result;
    Search search(*this, result);
    search.reachEveryState(stateLimit);
    search.countEndings();
    search.findWhatCanEnd();
    search.groupDeadEnds();
    search.listShownAndTaken();
    return result;
}

std::vector<StoryWalker::ChoiceRef> StoryWalker::untakenChoices(const Exploration& exploration) const
{
    std::vector<ChoiceRef> untaken;
    for (const auto& [name, scene] : story_.scenes()) {
        if (story_.findSource(name) == nullptr)
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
    if (!loads_)
        return result;
    std::vector<std::size_t> visits(story_.sceneCount(), 0);
    const PlayRules rules(story_);
    const auto countVisit = [&visits](const PlayPosition& at) { ++visits[at.scene]; };
    // The generator's raw output, not a distribution, so that a seed plays the same everywhere.
    std::mt19937_64 generator(seed);
    for (std::size_t playthrough = 0; playthrough < count; ++playthrough) {
        for (Story::SceneId shown : startShows_)
            ++visits[shown];
        PlayPosition position = start_;
        std::size_t choices = 0;
        while (true) {
            if (rules.isEnding(position.scene)) {
                ++result.endings[story_.sceneName(position.scene)];
                break;
            }
            const std::size_t offered = rules.choiceCount(position);
            if (offered == 0) {
                ++result.stuck;
                break;
            }
            if (choices == choiceLimit) {
                ++result.unfinished;
                break;
            }
            rules.choose(position, static_cast<std::size_t>(generator() % offered), countVisit);
            ++choices;
        }
        result.fewestChoices = playthrough == 0 ? choices : std::min(result.fewestChoices, choices);
        result.mostChoices = std::max(result.mostChoices, choices);
        result.totalChoices += choices;
    }
    for (const auto& entry : story_.scenes()) {
        if (story_.findSource(entry.first) != nullptr)
            result.visits[entry.first] = 0;
    }
    for (Story::SceneId scene = 0; scene < story_.sceneCount(); ++scene) {
        const Scene* stored = story_.sceneAt(scene);
        if (visits[scene] > 0 && stored != nullptr && !stored->name.isEmpty())
            result.visits[stored->name] += visits[scene];
    }
    return result;
}

std::string StoryWalker::describe(const PlayPosition& position) const
{
    std::string visited;
    for (std::size_t suspect = 0; suspect < story_.suspects().size(); ++suspect) {
        if (position.investigated.contains(suspect))
            visited += (visited.empty() ? "" : ", ") + utf8(story_.suspects()[suspect]);
    }
    return "at " + quoted(story_.sceneName(position.scene))
           + ", suspects investigated: " + (visited.empty() ? "none" : visited)
           + (PlayRules(story_).isFirstHubPending(position) ? ", hub not yet seen" : "");
}

sf::String StoryWalker::labelOf(const PlayPosition& position, std::size_t choice) const
{
    return choiceLabel(story_, position, choice);
}

} // namespace orane
