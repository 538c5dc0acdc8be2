#include "storygraph.hpp"

#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"

#include <deque>

namespace orane
{
namespace
{

/// Breadth-first closure of `start` along `links` (edge indices per scene), taking the edge's
/// `next` end.
template <typename Next>
std::set<sf::String> closure(const std::vector<sf::String>& start,
                             const std::map<sf::String, std::vector<std::size_t>>& links, Next next)
{
    std::set<sf::String> seen(start.begin(), start.end());
    std::deque<sf::String> queue(start.begin(), start.end());
    while (!queue.empty()) {
        const sf::String name = queue.front();
        queue.pop_front();
        const auto found = links.find(name);
        if (found == links.end())
            continue;
        for (std::size_t edge : found->second) {
            const sf::String& other = next(edge);
            if (seen.insert(other).second)
                queue.push_back(other);
        }
    }
    return seen;
}

} // namespace

StoryGraph::StoryGraph(const SceneMap& scenes, const std::map<sf::String, bool>& suspects)
{
    for (const auto& entry : scenes)
        nodes_.insert(entry.first);
    for (const auto& [name, scene] : scenes) {
        if (!scene.forward.isEmpty())
            addEdge(Edge{name, scene.forward, Edge::KIND::FORWARD, {}, 0});
        for (std::size_t index = 0; index < scene.choices.size(); ++index) {
            const Choice& choice = scene.choices[index];
            addEdge(Edge{name, choice.nextSceneName, Edge::KIND::CHOICE, choice.briefDescription, index});
        }
    }
    composeSpecialEdges(suspects);
}

namespace
{

std::map<sf::String, bool> noneInvestigated(const Story& story)
{
    std::map<sf::String, bool> suspects;
    for (const sf::String& suspect : story.suspects())
        suspects.emplace(suspect, false);
    return suspects;
}

} // namespace

StoryGraph::StoryGraph(const Story& story)
    : StoryGraph(story.scenes(), noneInvestigated(story))
{}

std::vector<sf::String> StoryGraph::inPlayOrder(const std::set<sf::String>& names) const
{
    std::vector<sf::String> ordered;
    std::set<sf::String> seen;
    std::deque<sf::String> queue;
    if (nodes_.count(START_SCENE_NAME) > 0) {
        queue.push_back(START_SCENE_NAME);
        seen.insert(START_SCENE_NAME);
    }
    while (!queue.empty()) {
        const sf::String name = queue.front();
        queue.pop_front();
        if (names.count(name) > 0)
            ordered.push_back(name);
        const auto found = outgoing_.find(name);
        if (found == outgoing_.end())
            continue;
        for (std::size_t edge : found->second) {
            const sf::String& next = edges_[edge].to;
            if (seen.insert(next).second)
                queue.push_back(next);
        }
    }
    for (const sf::String& name : names) {
        if (seen.count(name) == 0)
            ordered.push_back(name);
    }
    return ordered;
}

void StoryGraph::composeSpecialEdges(const std::map<sf::String, bool>& suspects)
{
    const bool hubReached = !incoming_[HUB_SCENE_NAME].empty() || !incoming_[ARREST_SCENE_NAME].empty();
    if (!hubReached)
        return;
    nodes_.insert(HUB_SCENE_NAME);
    nodes_.insert(ARREST_SCENE_NAME);
    // The labels are the ones the game composes.
    std::size_t index = 0;
    for (const auto& suspect : suspects)
        addEdge(Edge{HUB_SCENE_NAME, suspect.first + SUSPECT_BEGIN_SUFFIX, Edge::KIND::COMPOSED, L"le " + suspect.first,
                     index++});
    addEdge(Edge{HUB_SCENE_NAME, ARREST_SCENE_NAME, Edge::KIND::COMPOSED, L"Je pense avoir mon coupable.", index});
    addEdge(Edge{ARREST_SCENE_NAME, HUB_SCENE_NAME, Edge::KIND::COMPOSED, L"Je ne sais pas encore.", 0});
    index = 1;
    for (const auto& suspect : suspects)
        addEdge(Edge{ARREST_SCENE_NAME, suspect.first + SUSPECT_ARREST_SUFFIX, Edge::KIND::COMPOSED,
                     L"le " + suspect.first, index++});
}

void StoryGraph::addEdge(Edge edge)
{
    outgoing_[edge.from].push_back(edges_.size());
    incoming_[edge.to].push_back(edges_.size());
    edges_.push_back(std::move(edge));
}

std::set<sf::String> StoryGraph::reachableFrom(const sf::String& start) const
{
    if (nodes_.count(start) == 0)
        return {};
    return closure({start}, outgoing_, [this](std::size_t edge) -> const sf::String& { return edges_[edge].to; });
}

std::set<sf::String> StoryGraph::reachingAnEnding() const
{
    std::vector<sf::String> endings;
    for (const sf::String& ending : {END_SCENE_NAME, GAME_OVER_SCENE_NAME}) {
        if (nodes_.count(ending) > 0)
            endings.push_back(ending);
    }
    return closure(endings, incoming_, [this](std::size_t edge) -> const sf::String& { return edges_[edge].from; });
}

} // namespace orane
