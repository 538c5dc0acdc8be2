#include "factflow.hpp"

#include "scene/storytext.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "tooltext.hpp"

#include <algorithm>
#include <deque>
#include <limits>
#include <set>

namespace orane
{
namespace
{

constexpr std::size_t MAX_SUSPECTS = 64;
/// The facts known in every state take states x facts bits: at most 512 MB of them.
constexpr std::size_t MAX_FACT_WORDS = std::size_t{1} << 26;

std::string labelsOf(const std::vector<sf::String>& path)
{
    std::string text;
    for (const sf::String& label : path)
        text += (text.empty() ? "" : " > ") + quoted(oneLine(label));
    return text.empty() ? "at once, without a choice" : text;
}

} // namespace

FactFlow::FactFlow(const SceneMap& scenes, const std::vector<sf::String>& suspects,
                   const std::vector<SourceText>& sources)
    : suspects_(suspects)
{
    indexScenes(scenes, sources);
}

std::uint32_t FactFlow::factId(const sf::String& name)
{
    const auto found = factIds_.find(name);
    if (found != factIds_.end())
        return found->second;
    const auto id = static_cast<std::uint32_t>(factNames_.size());
    factIds_.emplace(name, id);
    factNames_.push_back(name);
    setPlaces_.emplace_back();
    needPlaces_.emplace_back();
    return id;
}

std::uint32_t FactFlow::sceneId(const sf::String& name) const
{
    const auto found = sceneIds_.find(name);
    return found == sceneIds_.end() ? NONE : found->second;
}

void FactFlow::indexScenes(const SceneMap& scenes, const std::vector<SourceText>& sources)
{
    for (const auto& [name, scene] : scenes) {
        if (isSpecialSceneName(name))
            continue;
        sceneIds_.emplace(name, static_cast<std::uint32_t>(scenes_.size()));
        SceneInfo info;
        info.name = name;
        info.scene = &scene;
        scenes_.push_back(std::move(info));
    }
    const auto special = [this](std::size_t index) {
        const auto id = static_cast<std::uint32_t>(scenes_.size());
        sceneIds_.emplace(SPECIAL_SCENE_NAMES[index], id);
        SceneInfo info;
        info.name = SPECIAL_SCENE_NAMES[index];
        scenes_.push_back(std::move(info));
        return id;
    };
    end_ = special(0);
    gameOver_ = special(1);
    hub_ = special(2);
    arrest_ = special(3);

    // The first scene of a name is the one the game keeps: so are its annotations.
    std::set<sf::String> annotated;
    for (const SourceText& source : sources) {
        for (const SourceText::Scene& scene : source.scenes()) {
            const std::uint32_t id = sceneId(scene.name);
            if (id == NONE || id >= end_ || !annotated.insert(scene.name).second)
                continue;
            scenes_[id].file = source.path();
            readAnnotations(scenes_[id], scene);
        }
    }
    wordCount_ = (factNames_.size() + 63) / 64;
    for (SceneInfo& info : scenes_) {
        info.sets.resize(wordCount_, 0);
        for (Words& words : info.choiceSets)
            words.resize(wordCount_, 0);
        if (info.scene == nullptr)
            continue;
        info.choiceSets.resize(info.scene->choices.size(), Words(wordCount_, 0));
        info.choiceNeeds.resize(info.scene->choices.size());
        for (const Choice& choice : info.scene->choices)
            info.choiceTargets.push_back(sceneId(choice.nextSceneName));
        if (!info.scene->forward.isEmpty())
            info.forward = sceneId(info.scene->forward);
    }
    // Re-read the sets now that the words are sized (ids were handed out above).
    annotated.clear();
    for (const SourceText& source : sources) {
        for (const SourceText::Scene& scene : source.scenes()) {
            const std::uint32_t id = sceneId(scene.name);
            if (id == NONE || id >= end_ || !annotated.insert(scene.name).second)
                continue;
            SceneInfo& info = scenes_[id];
            for (const SourceText::Fact& fact : scene.facts.sets) {
                const std::uint32_t f = factIds_.at(fact.name);
                info.sets[f / 64] |= std::uint64_t{1} << (f % 64);
            }
            for (std::size_t c = 0; c < scene.choices.size() && c < info.choiceSets.size(); ++c) {
                for (const SourceText::Fact& fact : scene.choices[c].facts.sets) {
                    const std::uint32_t f = factIds_.at(fact.name);
                    info.choiceSets[c][f / 64] |= std::uint64_t{1} << (f % 64);
                }
            }
        }
    }

    std::map<sf::String, bool> none;
    for (const sf::String& name : suspects_)
        none.emplace(name, false);
    Scene hub;
    composeHub(hub, none, true);
    for (std::size_t k = 0; k < suspects_.size(); ++k) {
        const sf::String begin = suspects_[k] + SUSPECT_BEGIN_SUFFIX;
        suspectBegin_.push_back(sceneId(begin));
        suspectArrest_.push_back(sceneId(suspects_[k] + SUSPECT_ARREST_SUFFIX));
        // The game marks the name before the first "_begin" of the target.
        const sf::String marked = begin.substring(0, begin.find(SUSPECT_BEGIN_SUFFIX));
        const auto at = std::find(suspects_.begin(), suspects_.end(), marked);
        suspectMarked_.push_back(at == suspects_.end() ? NONE : static_cast<std::uint32_t>(at - suspects_.begin()));
        hubLabels_.push_back(hub.choices[k].briefDescription);
    }
    arrestLabel_ = hub.choices.back().briefDescription;
    std::map<sf::String, bool> all = none;
    for (auto& suspect : all)
        suspect.second = true;
    Scene arrest;
    composeArrest(arrest, all);
    retreatLabel_ = arrest.choices.front().briefDescription;
    for (std::size_t k = 0; k < suspects_.size(); ++k)
        accuseLabels_.push_back(arrest.choices[k + 1].briefDescription);
}

void FactFlow::readAnnotations(SceneInfo& info, const SourceText::Scene& source)
{
    const auto note = [this, &info](const std::vector<SourceText::Fact>& facts, std::vector<Need>* needs, bool sets) {
        for (const SourceText::Fact& fact : facts) {
            const std::uint32_t id = factId(fact.name);
            (sets ? setPlaces_ : needPlaces_)[id].emplace_back(info.file, fact);
            if (needs != nullptr)
                needs->push_back(Need{id, fact});
        }
    };
    note(source.facts.sets, nullptr, true);
    note(source.facts.needs, &info.needs, false);
    info.choiceNeeds.resize(info.scene->choices.size());
    for (std::size_t c = 0; c < source.choices.size() && c < info.scene->choices.size(); ++c) {
        note(source.choices[c].facts.sets, nullptr, true);
        note(source.choices[c].facts.needs, &info.choiceNeeds[c], false);
    }
}

bool FactFlow::solve(std::size_t stateLimit)
{
    stateLimit_ = std::min(stateLimit, MAX_FACT_WORDS / std::max<std::size_t>(1, wordCount_));
    stateLimit = stateLimit_;
    nodes_.clear();
    edges_.clear();
    nodeIds_.clear();
    violations_.clear();
    gaveUp_ = suspects_.size() > MAX_SUSPECTS || !explore(stateLimit);
    solved_ = !gaveUp_;
    if (solved_) {
        flow();
        findViolations();
    }
    return solved_;
}

std::uint32_t FactFlow::enter(std::uint32_t scene, std::uint64_t investigated, bool hubPending, std::size_t stateLimit)
{
    if (scene == NONE)
        return NONE;
    const std::pair<std::uint64_t, std::uint64_t> key{(std::uint64_t{scene} << 1) | (hubPending ? 1u : 0u),
                                                      investigated};
    const auto found = nodeIds_.find(key);
    if (found != nodeIds_.end())
        return found->second;
    if (nodes_.size() >= stateLimit)
        return NONE;
    const auto id = static_cast<std::uint32_t>(nodes_.size());
    nodes_.push_back(Node{scene, hubPending, investigated, 0, 0});
    nodeIds_.emplace(key, id);
    return id;
}

bool FactFlow::explore(std::size_t stateLimit)
{
    const std::uint32_t start = enter(sceneId(START_SCENE_NAME), 0, true, stateLimit);
    if (start == NONE)
        return true; // no start scene: the game's own check says so, and nothing is played
    bool complete = true;
    // Breadth first: nodes are numbered in the order they are met, and each node's edges
    // are stored together when it is expanded.
    for (std::uint32_t u = 0; u < nodes_.size(); ++u) {
        const Node node = nodes_[u];
        nodes_[u].firstEdge = static_cast<std::uint32_t>(edges_.size());
        const auto link = [&](std::uint32_t scene, std::uint64_t investigated, bool pending, EDGE kind,
                              std::size_t index) {
            const std::uint32_t v = enter(scene, investigated, pending, stateLimit);
            if (v == NONE && scene != NONE)
                complete = false;
            if (v != NONE)
                edges_.push_back(Edge{u, v, kind, static_cast<std::uint32_t>(index)});
        };
        if (node.scene == hub_) {
            for (std::size_t k = 0; k < suspects_.size(); ++k) {
                if ((node.investigated >> k) & 1u)
                    continue;
                const std::uint32_t marked = suspectMarked_[k];
                const std::uint64_t after =
                    marked == NONE ? node.investigated : node.investigated | (std::uint64_t{1} << marked);
                link(suspectBegin_[k], after, false, EDGE::HUB_SUSPECT, k);
            }
            if (!node.hubPending)
                link(arrest_, node.investigated, false, EDGE::HUB_ARREST, 0);
        } else if (node.scene == arrest_) {
            link(hub_, node.investigated, node.hubPending, EDGE::RETREAT, 0);
            for (std::size_t k = 0; k < suspects_.size(); ++k) {
                if ((node.investigated >> k) & 1u)
                    link(suspectArrest_[k], node.investigated, node.hubPending, EDGE::ACCUSE, k);
            }
        } else if (node.scene < end_) {
            const SceneInfo& info = scenes_[node.scene];
            if (info.choiceTargets.empty()) {
                link(info.forward, node.investigated, node.hubPending, EDGE::FORWARD, 0);
            } else {
                for (std::size_t c = 0; c < info.choiceTargets.size(); ++c)
                    link(info.choiceTargets[c], node.investigated, node.hubPending, EDGE::CHOICE, c);
            }
        }
        nodes_[u].edgeCount = static_cast<std::uint32_t>(edges_.size()) - nodes_[u].firstEdge;
        if (!complete)
            return false;
    }
    return true;
}

const FactFlow::Words* FactFlow::generated(const Edge& edge) const
{
    if (edge.kind != EDGE::CHOICE)
        return nullptr;
    return &scenes_[nodes_[edge.from].scene].choiceSets[edge.index];
}

void FactFlow::outOf(std::uint32_t node, Words& out) const
{
    const std::uint64_t* in = inOf(node);
    const Words& sets = scenes_[nodes_[node].scene].sets;
    for (std::size_t w = 0; w < wordCount_; ++w)
        out[w] = in[w] | sets[w];
}

bool FactFlow::has(const std::uint64_t* words, std::uint32_t fact) const
{
    return ((words[fact / 64] >> (fact % 64)) & 1u) != 0;
}

void FactFlow::flow()
{
    // Facts known on entering each state: all of them until a way in says otherwise, none at
    // the start. Only ever shrinks, so the work list empties.
    in_.assign(nodes_.size() * wordCount_, ~std::uint64_t{0});
    if (nodes_.empty() || wordCount_ == 0)
        return;
    std::fill(in_.begin(), in_.begin() + static_cast<std::ptrdiff_t>(wordCount_), 0);
    std::vector<bool> reached(nodes_.size(), false);
    std::vector<bool> queued(nodes_.size(), false);
    reached[0] = true;
    std::deque<std::uint32_t> work{0};
    queued[0] = true;
    Words out(wordCount_);
    while (!work.empty()) {
        const std::uint32_t u = work.front();
        work.pop_front();
        queued[u] = false;
        outOf(u, out);
        for (std::uint32_t e = nodes_[u].firstEdge; e < nodes_[u].firstEdge + nodes_[u].edgeCount; ++e) {
            const Edge& edge = edges_[e];
            const Words* gen = generated(edge);
            std::uint64_t* in = &in_[edge.to * wordCount_];
            bool changed = !reached[edge.to];
            for (std::size_t w = 0; w < wordCount_; ++w) {
                const std::uint64_t arriving = out[w] | (gen != nullptr ? (*gen)[w] : 0);
                const std::uint64_t meet = reached[edge.to] ? (in[w] & arriving) : arriving;
                changed = changed || meet != in[w];
                in[w] = meet;
            }
            reached[edge.to] = true;
            if (changed && !queued[edge.to]) {
                queued[edge.to] = true;
                work.push_back(edge.to);
            }
        }
    }
}

void FactFlow::findViolations()
{
    std::set<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::size_t>> seen;
    Words out(wordCount_);
    const auto isSetSomewhere = [this](std::uint32_t fact) { return !setPlaces_[fact].empty(); };
    for (std::uint32_t u = 0; u < nodes_.size(); ++u) {
        const std::uint32_t scene = nodes_[u].scene;
        if (scene >= end_)
            continue;
        const SceneInfo& info = scenes_[scene];
        for (const Need& need : info.needs) {
            if (isSetSomewhere(need.fact) && !has(inOf(u), need.fact)
                && seen.emplace(scene, NONE, need.fact, need.place.line * 100000 + need.place.column).second)
                violations_.push_back(Violation{scene, NONE, need});
        }
        outOf(u, out);
        for (std::size_t c = 0; c < info.choiceNeeds.size(); ++c) {
            for (const Need& need : info.choiceNeeds[c]) {
                if (isSetSomewhere(need.fact) && !has(out.data(), need.fact)
                    && seen.emplace(scene, static_cast<std::uint32_t>(c), need.fact,
                                    need.place.line * 100000 + need.place.column)
                           .second)
                    violations_.push_back(Violation{scene, static_cast<std::uint32_t>(c), need});
            }
        }
    }
}

sf::String FactFlow::edgeLabel(const Edge& edge) const
{
    switch (edge.kind) {
    case EDGE::FORWARD: return {};
    case EDGE::CHOICE: return scenes_[nodes_[edge.from].scene].scene->choices[edge.index].briefDescription;
    case EDGE::HUB_SUSPECT: return hubLabels_[edge.index];
    case EDGE::HUB_ARREST: return arrestLabel_;
    case EDGE::RETREAT: return retreatLabel_;
    case EDGE::ACCUSE: return accuseLabels_[edge.index];
    }
    return {};
}

std::vector<sf::String> FactFlow::shortestPathWithout(std::uint32_t fact, const Violation& violation) const
{
    // Fewest clicks first (a FORWARD link costs none), through states whose scenes and the
    // choices taken never set the fact.
    constexpr std::uint32_t FAR = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> distance(nodes_.size(), FAR);
    std::vector<std::uint32_t> via(nodes_.size(), NONE);
    std::deque<std::uint32_t> work{0};
    distance[0] = 0;
    std::uint32_t best = NONE;
    while (!work.empty()) {
        const std::uint32_t u = work.front();
        work.pop_front();
        const SceneInfo& info = scenes_[nodes_[u].scene];
        const bool setsHere = has(info.sets.data(), fact);
        if (nodes_[u].scene == violation.scene && (violation.choice == NONE || !setsHere)) {
            if (best == NONE || distance[u] < distance[best])
                best = u;
        }
        if (setsHere)
            continue;
        for (std::uint32_t e = nodes_[u].firstEdge; e < nodes_[u].firstEdge + nodes_[u].edgeCount; ++e) {
            const Edge& edge = edges_[e];
            const Words* gen = generated(edge);
            if (gen != nullptr && has(gen->data(), fact))
                continue;
            const std::uint32_t weight = edge.kind == EDGE::FORWARD ? 0 : 1;
            if (distance[u] + weight < distance[edge.to]) {
                distance[edge.to] = distance[u] + weight;
                via[edge.to] = e;
                if (weight == 0)
                    work.push_front(edge.to);
                else
                    work.push_back(edge.to);
            }
        }
    }
    std::vector<sf::String> labels;
    for (std::uint32_t node = best; node != NONE && via[node] != NONE; node = edges_[via[node]].from) {
        const Edge& edge = edges_[via[node]];
        if (edge.kind != EDGE::FORWARD)
            labels.insert(labels.begin(), edgeLabel(edge));
    }
    return labels;
}

std::vector<StoryFinding> FactFlow::findings() const
{
    std::vector<StoryFinding> found;
    for (std::uint32_t fact = 0; fact < factNames_.size(); ++fact) {
        if (setPlaces_[fact].empty()) {
            for (const Place& place : needPlaces_[fact]) {
                StoryFinding finding;
                finding.severity = StoryFinding::SEVERITY::ERROR;
                finding.kind = "fact";
                finding.file = place.first;
                finding.line = place.second.line;
                finding.column = place.second.column;
                finding.fact = factNames_[fact];
                finding.message =
                    "the fact " + quoted(factNames_[fact]) + " is needed here, but no scene or choice sets it";
                found.push_back(std::move(finding));
            }
        } else if (needPlaces_[fact].empty()) {
            const Place& place = setPlaces_[fact].front();
            StoryFinding finding;
            finding.severity = StoryFinding::SEVERITY::NOTE;
            finding.kind = "fact";
            finding.file = place.first;
            finding.line = place.second.line;
            finding.column = place.second.column;
            finding.fact = factNames_[fact];
            finding.message = "the fact " + quoted(factNames_[fact]) + " is set here but never needed";
            found.push_back(std::move(finding));
        }
    }
    if (gaveUp_) {
        StoryFinding finding;
        finding.severity = StoryFinding::SEVERITY::WARNING;
        finding.kind = "continuity";
        finding.message = suspects_.size() > MAX_SUSPECTS
                              ? "the facts' continuity was not proved: the proof follows at most 64 suspects"
                              : "the facts' continuity was not proved: play has more than "
                                    + std::to_string(stateLimit_) + " states (scene, suspects investigated, hub seen)";
        found.push_back(std::move(finding));
        return found;
    }
    std::map<std::uint32_t, std::vector<const Violation*>> byFact;
    for (const Violation& violation : violations_)
        byFact[violation.need.fact].push_back(&violation);
    for (const auto& [fact, violations] : byFact) {
        for (const Violation* violation : violations) {
            const SceneInfo& info = scenes_[violation->scene];
            StoryFinding finding;
            finding.severity = StoryFinding::SEVERITY::ERROR;
            finding.kind = "continuity";
            finding.file = info.file;
            finding.line = violation->need.place.line;
            finding.column = violation->need.place.column;
            finding.scene = info.name;
            finding.fact = factNames_[fact];
            finding.path = shortestPathWithout(fact, *violation);
            if (violation->choice == NONE) {
                finding.message = "scene " + quoted(info.name) + " needs the fact " + quoted(factNames_[fact])
                                  + ", but a player can reach it without it: " + labelsOf(finding.path);
            } else {
                finding.choice = violation->choice;
                finding.message = "choice " + std::to_string(violation->choice) + " "
                                  + quoted(oneLine(info.scene->choices[violation->choice].briefDescription))
                                  + " of scene " + quoted(info.name) + " needs the fact " + quoted(factNames_[fact])
                                  + ", but a player can be offered it without it: " + labelsOf(finding.path);
            }
            found.push_back(std::move(finding));
        }
    }
    return found;
}

std::map<sf::String, std::vector<sf::String>> FactFlow::factsAtEndings() const
{
    std::map<sf::String, std::vector<sf::String>> endings;
    if (!solved_)
        return endings;
    for (const std::uint32_t ending : {end_, gameOver_}) {
        Words known(wordCount_, ~std::uint64_t{0});
        bool reached = false;
        for (std::uint32_t u = 0; u < nodes_.size(); ++u) {
            if (nodes_[u].scene != ending)
                continue;
            reached = true;
            for (std::size_t w = 0; w < wordCount_; ++w)
                known[w] &= inOf(u)[w];
        }
        if (!reached)
            continue;
        std::vector<sf::String> names;
        for (std::uint32_t fact = 0; fact < factNames_.size(); ++fact) {
            if (has(known.data(), fact))
                names.push_back(factNames_[fact]);
        }
        std::sort(names.begin(), names.end());
        endings[scenes_[ending].name] = std::move(names);
    }
    return endings;
}

} // namespace orane
