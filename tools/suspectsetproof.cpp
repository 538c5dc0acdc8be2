#include "suspectsetproof.hpp"

#include "scenemanager/fixedscenes.hpp"

#include <algorithm>
#include <deque>
#include <map>
#include <numeric>

namespace orane
{

SuspectSetProof::SuspectSetProof(const Story& story)
    : story_(story)
    , suspects_(story.suspects().size())
    , unknown_(static_cast<Node>(story.sceneCount()))
{
    linkScenes();
    endsAlone_ = reachingAny({story_.endScene(), story_.gameOverScene()});
    leadsToHub_ = reachingAny({story_.hubScene(), story_.arrestScene()});
    weighSets();
    reached_.assign(next_.size(), false);
    stuckListed_.assign(next_.size(), false);
    for (const Entry& entry : entries())
        explore(entry);
    groupDeadEnds();
}

bool SuspectSetProof::reaches(Story::SceneId ending) const
{
    return ending != Story::UNKNOWN_SCENE && reached_[ending];
}

void SuspectSetProof::linkScenes()
{
    next_.assign(unknown_ + 1, {});
    const auto node = [this](Story::SceneId scene) { return scene == Story::UNKNOWN_SCENE ? unknown_ : scene; };
    for (Story::SceneId scene = 0; scene < unknown_; ++scene) {
        const Scene* stored = story_.sceneAt(scene);
        // Play stops at the special scenes; the hub's and the arrest scene's ways on are weighed
        // with the sets of suspects, not walked.
        if (story_.isSpecial(scene) || stored == nullptr)
            continue;
        const Story::Links& links = story_.linksOf(scene);
        if (stored->choices.empty())
            next_[scene].push_back(node(links.forward));
        for (const Story::SceneId target : links.choices)
            next_[scene].push_back(node(target));
    }
}

std::vector<bool> SuspectSetProof::reachingAny(const std::vector<Node>& targets) const
{
    std::vector<std::vector<Node>> previous(next_.size());
    for (Node from = 0; from < next_.size(); ++from)
        for (const Node to : next_[from])
            previous[to].push_back(from);
    std::vector<bool> reaching(next_.size(), false);
    std::deque<Node> waiting;
    for (const Node target : targets) {
        if (target < unknown_ && !reaching[target]) {
            reaching[target] = true;
            waiting.push_back(target);
        }
    }
    while (!waiting.empty()) {
        const Node at = waiting.front();
        waiting.pop_front();
        for (const Node from : previous[at]) {
            if (!reaching[from]) {
                reaching[from] = true;
                waiting.push_back(from);
            }
        }
    }
    return reaching;
}

std::vector<SuspectSetProof::Node> SuspectSetProof::region(Node entry) const
{
    std::vector<Node> met{entry};
    std::vector<bool> seen(next_.size(), false);
    seen[entry] = true;
    for (std::size_t at = 0; at < met.size(); ++at) {
        for (const Node to : next_[met[at]]) {
            if (!seen[to]) {
                seen[to] = true;
                met.push_back(to);
            }
        }
    }
    return met;
}

bool SuspectSetProof::canEnd(Node scene, Mask investigated) const
{
    if (scene == story_.hubScene() || scene == story_.arrestScene())
        return hubCanEnd_[investigated];
    return endsAlone_[scene] || (leadsToHub_[scene] && hubCanEnd_[investigated]);
}

void SuspectSetProof::weighSets()
{
    const auto sets = Mask{1} << suspects_;
    const auto node = [this](Story::SceneId scene) { return scene == Story::UNKNOWN_SCENE ? unknown_ : scene; };
    // At the hub (or the arrest scene, which leads back to it) play can end when a suspect not
    // yet investigated leads on to an ending, or an accusation ends by itself; an accusation's
    // way back to the hub adds nothing. Larger sets first: investigating only adds suspects.
    hubCanEnd_.assign(sets, false);
    for (Mask set = sets; set-- > 0;) {
        bool ends = false;
        for (std::size_t suspect = 0; suspect < suspects_ && !ends; ++suspect) {
            const Mask bit = Mask{1} << suspect;
            ends = (set & bit) == 0 ? canEnd(node(story_.suspectBeginScene(suspect)), set | bit)
                                    : endsAlone_[node(story_.suspectArrestScene(suspect))];
        }
        hubCanEnd_[set] = ends;
    }
    // Play comes back to the hub with a set when the last suspect added leads back to it.
    hubReachedBefore_ = story_.findSceneId(START_SCENE_NAME) != Story::UNKNOWN_SCENE
                        && leadsToHub_[story_.findSceneId(START_SCENE_NAME)];
    hubReached_.assign(sets, false);
    for (Mask set = 1; set < sets; ++set) {
        for (std::size_t suspect = 0; suspect < suspects_ && !hubReached_[set]; ++suspect) {
            const Mask bit = Mask{1} << suspect;
            if ((set & bit) == 0 || !leadsToHub_[node(story_.suspectBeginScene(suspect))])
                continue;
            const Mask before = set & ~bit;
            hubReached_[set] = before == 0 ? hubReachedBefore_ : hubReached_[before];
        }
        setsAtHub_ += hubReached_[set] ? 1 : 0;
    }
}

std::vector<SuspectSetProof::Entry> SuspectSetProof::entries() const
{
    const auto node = [this](Story::SceneId scene) { return scene == Story::UNKNOWN_SCENE ? unknown_ : scene; };
    const auto sets = Mask{1} << suspects_;
    std::vector<Entry> found;
    found.push_back(Entry{node(story_.findSceneId(START_SCENE_NAME)), {0}, true});
    if (story_.hubScene() != Story::UNKNOWN_SCENE) {
        Entry hub{story_.hubScene(), {}, false};
        for (Mask set = 1; set < sets; ++set)
            if (hubReached_[set])
                hub.contexts.push_back(set);
        found.push_back(std::move(hub));
    }
    for (std::size_t suspect = 0; suspect < suspects_; ++suspect) {
        const Mask bit = Mask{1} << suspect;
        Entry begin{node(story_.suspectBeginScene(suspect)), {}, false};
        Entry accusation{node(story_.suspectArrestScene(suspect)), {}, false};
        for (Mask set = 0; set < sets; ++set) {
            if ((set & bit) == 0)
                continue;
            const Mask before = set & ~bit;
            if (before == 0 ? hubReachedBefore_ : hubReached_[before])
                begin.contexts.push_back(set);
            if (hubReached_[set])
                accusation.contexts.push_back(set);
        }
        found.push_back(std::move(begin));
        found.push_back(std::move(accusation));
    }
    return found;
}

bool SuspectSetProof::isPause(Node scene) const
{
    if (scene == unknown_ || story_.isSpecial(scene))
        return true;
    const Scene* stored = story_.sceneAt(scene);
    return stored == nullptr || !stored->choices.empty();
}

void SuspectSetProof::explore(const Entry& entry)
{
    if (entry.contexts.empty())
        return;
    Mask stuckSet = entry.contexts.front();
    bool someSetStuck = false;
    for (const Mask set : entry.contexts) {
        if (!hubCanEnd_[set]) {
            stuckSet = set;
            someSetStuck = true;
            break;
        }
    }
    std::vector<Node> met = region(entry.scene);
    // At the hub after its first visit the arrest scene is offered, and it leads back.
    const bool hubMet = std::find(met.begin(), met.end(), story_.hubScene()) != met.end();
    const bool arrestMet = std::find(met.begin(), met.end(), story_.arrestScene()) != met.end();
    if (story_.hubScene() != Story::UNKNOWN_SCENE && arrestMet && !hubMet)
        met.push_back(story_.hubScene());
    if (story_.arrestScene() != Story::UNKNOWN_SCENE && hubMet && !arrestMet && !entry.beforeHub)
        met.push_back(story_.arrestScene());
    for (const Node scene : met) {
        reached_[scene] = true;
        const bool throughHub = scene == story_.hubScene() || scene == story_.arrestScene() || leadsToHub_[scene];
        const bool stuck = !endsAlone_[scene] && (!throughHub || someSetStuck);
        if (!stuck || stuckListed_[scene])
            continue;
        stuckListed_[scene] = true;
        const Mask set = throughHub ? stuckSet : entry.contexts.front();
        stuck_.emplace_back(scene, position(scene, set, !entry.beforeHub));
    }
}

void SuspectSetProof::groupDeadEnds()
{
    for (Node scene = 0; scene < unknown_; ++scene) {
        if (!reached_[scene])
            continue;
        const Scene* stored = story_.sceneAt(scene);
        if (stored == nullptr || stored->name.isEmpty())
            continue;
        scenesShown_.insert(stored->name);
        if (!story_.isSpecial(scene) && story_.findSource(stored->name) != nullptr)
            for (std::size_t choice = 0; choice < stored->choices.size(); ++choice)
                takenChoices_.emplace(stored->name, choice);
    }

    std::vector<Node> group(next_.size());
    std::iota(group.begin(), group.end(), 0);
    const auto root = [&group](Node scene) {
        while (group[scene] != scene)
            scene = group[scene] = group[group[scene]];
        return scene;
    };
    for (Node from = 0; from < next_.size(); ++from)
        for (const Node to : next_[from])
            if (stuckListed_[from] && stuckListed_[to])
                group[root(from)] = root(to);
    const Story::SceneId hub = story_.hubScene();
    const Story::SceneId arrest = story_.arrestScene();
    // The hub's and the arrest scene's ways on are not among the links: join them as play takes them.
    const auto join = [&](Story::SceneId from, Story::SceneId to) {
        if (from != Story::UNKNOWN_SCENE && to != Story::UNKNOWN_SCENE && stuckListed_[from] && stuckListed_[to])
            group[root(from)] = root(to);
    };
    join(hub, arrest);
    for (std::size_t suspect = 0; suspect < suspects_; ++suspect) {
        join(hub, story_.suspectBeginScene(suspect));
        join(arrest, story_.suspectArrestScene(suspect));
    }

    std::map<Node, std::size_t> deadEndOfGroup;
    for (const auto& [scene, example] : stuck_) {
        // Scenes that only pass play on are no state of play: they join groups, they are not listed.
        if (!isPause(scene))
            continue;
        const auto [found, added] = deadEndOfGroup.emplace(root(scene), deadEnds_.size());
        if (added)
            deadEnds_.push_back(DeadEnd{{}, example});
        deadEnds_[found->second].scenes.push_back(scene == unknown_ ? sf::String() : story_.sceneName(scene));
    }
}

PlayPosition SuspectSetProof::position(Node scene, Mask investigated, bool hubSeen) const
{
    PlayPosition at;
    at.scene = scene == unknown_ ? Story::UNKNOWN_SCENE : scene;
    at.hubSeen = hubSeen;
    for (std::size_t suspect = 0; suspect < suspects_; ++suspect)
        if ((investigated & (Mask{1} << suspect)) != 0)
            at.investigated.insert(suspect);
    return at;
}

} // namespace orane
