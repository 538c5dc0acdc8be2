#include "factregion.hpp"

#include "choicelabel.hpp"

#include <algorithm>
#include <deque>

namespace orane
{
namespace
{

/// Inside a stretch no suspect matters: any position with the scene in it plays the same.
PlayPosition positionAt(Story::SceneId scene)
{
    PlayPosition position;
    position.scene = scene;
    position.hubSeen = true;
    return position;
}

} // namespace

FactRegion::FactRegion(const Story& story, const PlayRules& rules, const FactAnnotations& facts, Story::SceneId entry)
    : story_(story)
    , rules_(rules)
    , facts_(facts)
{
    std::vector<Story::SceneId> shown;
    PlayPosition position = positionAt(entry);
    rules_.enter(position, entry, [&shown](const PlayPosition& at) { shown.push_back(at.scene); });
    link(NONE, NONE, shown);
    follow();
    learn();
}

void FactRegion::follow()
{
    std::vector<Story::SceneId> shown;
    for (std::uint32_t node = 0; node < nodes_.size(); ++node) {
        const Story::SceneId scene = nodes_[node].scene;
        if (endsStretch(scene))
            continue;
        const PlayPosition here = positionAt(scene);
        const std::size_t offered = rules_.choiceCount(here);
        for (std::size_t choice = 0; choice < offered; ++choice) {
            shown.clear();
            PlayPosition next = here;
            rules_.choose(next, choice, [&shown](const PlayPosition& at) { shown.push_back(at.scene); });
            link(node, static_cast<std::uint32_t>(choice), shown);
        }
    }
}

void FactRegion::link(std::uint32_t from, std::uint32_t choice, const std::vector<Story::SceneId>& shown)
{
    std::uint32_t previous = from;
    for (std::size_t index = 0; index < shown.size(); ++index) {
        // A FORWARD chain is followed the same way each time: once linked, its rest is too.
        if (index > 0 && nodes_[previous].forwardLinked)
            return;
        const std::uint32_t node = nodeFor(shown[index]);
        if (index > 0) {
            addStep(previous, node, NONE);
            nodes_[previous].forwardLinked = true;
        } else if (from != NONE) {
            addStep(from, node, choice);
        }
        previous = node;
    }
}

std::uint32_t FactRegion::nodeFor(Story::SceneId scene)
{
    const auto [found, added] = nodeOf_.emplace(scene, static_cast<std::uint32_t>(nodes_.size()));
    if (added) {
        nodes_.push_back(Node{scene, false, {}});
        if (endsStretch(scene))
            exits_.push_back(found->second);
    }
    return found->second;
}

bool FactRegion::endsStretch(Story::SceneId scene) const
{
    // Play stops at the game's own scenes; those that read the suspects are told apart by them.
    return story_.isSpecial(scene) || rules_.readsSuspects(scene);
}

void FactRegion::addStep(std::uint32_t from, std::uint32_t to, std::uint32_t choice)
{
    nodes_[from].steps.push_back(static_cast<std::uint32_t>(steps_.size()));
    steps_.push_back(Step{from, to, choice});
}

void FactRegion::learn()
{
    // An intersection over the ways in: every fact until a way in lacks it, none at the entry.
    // Sets only ever shrink, so the work list empties.
    learnt_.assign(nodes_.size(), FactBits(facts_.factCount(), true));
    std::vector<bool> reached(nodes_.size(), false);
    std::vector<bool> queued(nodes_.size(), false);
    learnt_[0] = facts_.none();
    reached[0] = queued[0] = true;
    std::deque<std::uint32_t> work{0};
    while (!work.empty()) {
        const std::uint32_t node = work.front();
        work.pop_front();
        queued[node] = false;
        FactBits after = learnt_[node];
        after.unite(facts_.setBy(nodes_[node].scene));
        for (const std::uint32_t index : nodes_[node].steps) {
            const Step& step = steps_[index];
            FactBits arriving = after;
            if (step.choice != NONE)
                arriving.unite(facts_.setBy(nodes_[node].scene, step.choice));
            const bool changed = learnt_[step.to].intersect(arriving) || !reached[step.to];
            reached[step.to] = true;
            if (changed && !queued[step.to]) {
                queued[step.to] = true;
                work.push_back(step.to);
            }
        }
    }
}

FactRegion::Routes FactRegion::routesWithout(std::uint32_t fact) const
{
    // Fewest clicks first (a FORWARD link costs none); a node that sets the fact can be reached
    // but not gone through.
    Routes routes{std::vector<std::uint32_t>(nodes_.size(), FAR), std::vector<std::uint32_t>(nodes_.size(), NONE)};
    routes.clicks[0] = 0;
    std::deque<std::uint32_t> work{0};
    while (!work.empty()) {
        const std::uint32_t node = work.front();
        work.pop_front();
        const Story::SceneId scene = nodes_[node].scene;
        if (facts_.setBy(scene).contains(fact))
            continue;
        for (const std::uint32_t index : nodes_[node].steps) {
            const Step& step = steps_[index];
            if (step.choice != NONE && facts_.setBy(scene, step.choice).contains(fact))
                continue;
            const std::uint32_t cost = step.choice == NONE ? 0 : 1;
            if (routes.clicks[node] + cost >= routes.clicks[step.to])
                continue;
            routes.clicks[step.to] = routes.clicks[node] + cost;
            routes.via[step.to] = index;
            if (cost == 0)
                work.push_front(step.to);
            else
                work.push_back(step.to);
        }
    }
    return routes;
}

std::vector<sf::String> FactRegion::labelsTo(const Routes& routes, std::uint32_t node) const
{
    std::vector<sf::String> labels;
    for (std::uint32_t at = node; routes.via[at] != NONE; at = steps_[routes.via[at]].from) {
        const Step& step = steps_[routes.via[at]];
        if (step.choice != NONE)
            labels.push_back(choiceLabel(story_, positionAt(nodes_[step.from].scene), step.choice));
    }
    std::reverse(labels.begin(), labels.end());
    return labels;
}

} // namespace orane
