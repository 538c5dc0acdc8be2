#include "factflow.hpp"

#include "factroutes.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "tooltext.hpp"

#include <algorithm>
#include <deque>

namespace orane
{
namespace
{

/// The facts known at every stop take stops x facts bits: at most 512 MB of them.
constexpr std::size_t MAX_FACT_WORDS = std::size_t{1} << 26;

std::string labelsOf(const std::vector<sf::String>& path)
{
    std::string text;
    for (const sf::String& label : path)
        text += (text.empty() ? "" : " > ") + quoted(oneLine(label));
    return text.empty() ? "at once, without a choice" : text;
}

} // namespace

FactFlow::FactFlow(const Story& story, const std::vector<SourceText>& sources)
    : story_(story)
    , rules_(story)
    , facts_(story, sources)
{}

FactFlow::~FactFlow() = default;

std::size_t FactFlow::stateCount() const
{
    std::size_t count = stops_.size();
    for (const auto& region : regions_)
        count += region->size();
    return count;
}

bool FactFlow::solve(std::size_t stateLimit)
{
    stateLimit_ = std::min(stateLimit, MAX_FACT_WORDS / std::max<std::size_t>(1, (facts_.factCount() + 63) / 64));
    stops_.clear();
    legs_.clear();
    entries_.clear();
    stopOf_.clear();
    regions_.clear();
    regionOf_.assign(story_.sceneCount(), NONE);
    violations_.clear();
    gaveUp_ = !explore(stateLimit_);
    solved_ = !gaveUp_;
    flow();
    knowAtScenes();
    findViolations();
    return solved_;
}

bool FactFlow::explore(std::size_t stateLimit)
{
    const PlayPosition start = rules_.start();
    if (start.scene == Story::UNKNOWN_SCENE)
        return true; // no start scene: the game's own check says so, and nothing is played
    stops_.push_back(Stop{start, 0, 0, 0, 0});
    bool complete = true;
    // Breadth first, each stop's legs stored together when it is expanded.
    for (std::uint32_t stop = 0; stop < stops_.size(); ++stop) {
        stops_[stop].firstLeg = static_cast<std::uint32_t>(legs_.size());
        stops_[stop].firstEntry = static_cast<std::uint32_t>(entries_.size());
        const PlayPosition here = stops_[stop].position;
        if (stop == 0) {
            complete = legsInto(stop, here.scene, here, NONE, stateLimit) && complete;
        } else if (rules_.readsSuspects(here.scene)) {
            for (std::size_t choice = 0; choice < rules_.choiceCount(here); ++choice) {
                PlayPosition after = here;
                rules_.leave(after, choice);
                complete =
                    legsInto(stop, rules_.target(here, choice), after, static_cast<std::uint32_t>(choice), stateLimit)
                    && complete;
            }
        }
        stops_[stop].legCount = static_cast<std::uint32_t>(legs_.size()) - stops_[stop].firstLeg;
        stops_[stop].entryCount = static_cast<std::uint32_t>(entries_.size()) - stops_[stop].firstEntry;
    }
    return complete;
}

bool FactFlow::legsInto(std::uint32_t from, Story::SceneId target, const PlayPosition& after, std::uint32_t choice,
                        std::size_t stateLimit)
{
    if (target == Story::UNKNOWN_SCENE)
        return true;
    bool complete = true;
    const auto leg = [&](Story::SceneId scene, std::uint32_t region, std::uint32_t exit) {
        const std::uint32_t to = stopFor(scene, after, stateLimit);
        if (to == NONE)
            complete = false;
        else
            legs_.push_back(Leg{from, to, choice, region, exit});
    };
    if (story_.isSpecial(target) || rules_.readsSuspects(target)) {
        leg(target, NONE, NONE);
        return complete;
    }
    const std::uint32_t region = regionFor(target);
    entries_.push_back(Leg{from, from, choice, region, NONE});
    for (const std::uint32_t exit : regions_[region]->exits())
        leg(regions_[region]->sceneOf(exit), region, exit);
    return complete;
}

std::uint32_t FactFlow::stopFor(Story::SceneId scene, const PlayPosition& after, std::size_t stateLimit)
{
    PlayPosition position = after;
    position.scene = scene;
    if (rules_.isEnding(scene))
        position = PlayPosition{scene, {}, false}; // nothing follows an ending: one stop each
    const auto found = stopOf_.find(position);
    if (found != stopOf_.end())
        return found->second;
    if (stops_.size() >= stateLimit)
        return NONE;
    const auto stop = static_cast<std::uint32_t>(stops_.size());
    stops_.push_back(Stop{position, 0, 0, 0, 0});
    stopOf_.emplace(position, stop);
    return stop;
}

std::uint32_t FactFlow::regionFor(Story::SceneId entry)
{
    if (regionOf_[entry] == NONE) {
        regionOf_[entry] = static_cast<std::uint32_t>(regions_.size());
        regions_.push_back(std::make_unique<FactRegion>(story_, rules_, facts_, entry));
    }
    return regionOf_[entry];
}

void FactFlow::flow()
{
    // Known on arriving at each stop: all until a way in lacks it, nothing before "begin".
    atStop_.assign(stops_.size(), FactBits(facts_.factCount(), true));
    if (stops_.empty())
        return;
    std::vector<bool> reached(stops_.size(), false);
    std::vector<bool> queued(stops_.size(), false);
    atStop_[0] = facts_.none();
    reached[0] = queued[0] = true;
    std::deque<std::uint32_t> work{0};
    while (!work.empty()) {
        const std::uint32_t stop = work.front();
        work.pop_front();
        queued[stop] = false;
        for (std::uint32_t index = stops_[stop].firstLeg; index < stops_[stop].firstLeg + stops_[stop].legCount;
             ++index) {
            const Leg& leg = legs_[index];
            FactBits arriving = atStop_[stop];
            if (leg.region != NONE)
                arriving.unite(regions_[leg.region]->learntBefore(leg.exit));
            const bool changed = atStop_[leg.to].intersect(arriving) || !reached[leg.to];
            reached[leg.to] = true;
            if (changed && !queued[leg.to]) {
                queued[leg.to] = true;
                work.push_back(leg.to);
            }
        }
    }
}

void FactFlow::knowAtScenes()
{
    // A stretch is the same whoever enters it, so what a scene in it knows is what every way
    // into the stretch knew, with what every way through it to the scene taught.
    atEntry_.assign(regions_.size(), FactBits(facts_.factCount(), true));
    for (const Leg& entry : entries_)
        atEntry_[entry.region].intersect(atStop_[entry.from]);
    atScene_.assign(story_.sceneCount(), FactBits(facts_.factCount(), true));
    sceneShown_.assign(story_.sceneCount(), false);
    for (std::uint32_t region = 0; region < regions_.size(); ++region) {
        for (std::uint32_t node = 0; node < regions_[region]->size(); ++node) {
            FactBits known = atEntry_[region];
            known.unite(regions_[region]->learntBefore(node));
            const Story::SceneId scene = regions_[region]->sceneOf(node);
            atScene_[scene].intersect(known);
            sceneShown_[scene] = true;
        }
    }
}

void FactFlow::findViolations()
{
    for (Story::SceneId scene = 0; scene < story_.sceneCount(); ++scene) {
        if (!sceneShown_[scene])
            continue;
        for (const FactAnnotations::Need& need : facts_.neededBy(scene)) {
            if (facts_.isSetSomewhere(need.fact) && !atScene_[scene].contains(need.fact))
                violations_.push_back(Violation{scene, NONE, need});
        }
        FactBits after = atScene_[scene];
        after.unite(facts_.setBy(scene));
        for (std::uint32_t choice = 0; choice < facts_.choiceCount(scene); ++choice) {
            for (const FactAnnotations::Need& need : facts_.neededBy(scene, choice)) {
                if (facts_.isSetSomewhere(need.fact) && !after.contains(need.fact))
                    violations_.push_back(Violation{scene, choice, need});
            }
        }
    }
}

std::vector<StoryFinding> FactFlow::findings() const
{
    std::vector<StoryFinding> found;
    const auto factFinding = [&](std::uint32_t fact, const FactAnnotations::Place& place,
                                 StoryFinding::SEVERITY severity, const std::string& message) {
        StoryFinding finding;
        finding.severity = severity;
        finding.kind = "fact";
        finding.file = place.first;
        finding.line = place.second.line;
        finding.column = place.second.column;
        finding.fact = facts_.factName(fact);
        finding.message = "the fact " + quoted(facts_.factName(fact)) + message;
        found.push_back(std::move(finding));
    };
    for (std::uint32_t fact = 0; fact < facts_.factCount(); ++fact) {
        if (!facts_.isSetSomewhere(fact)) {
            for (const FactAnnotations::Place& place : facts_.needPlaces(fact))
                factFinding(fact, place, StoryFinding::SEVERITY::ERROR,
                            " is needed here, but no scene or choice sets it");
        } else if (facts_.needPlaces(fact).empty()) {
            factFinding(fact, facts_.setPlaces(fact).front(), StoryFinding::SEVERITY::NOTE,
                        " is set here but never needed");
        }
    }
    if (gaveUp_)
        found.push_back(unproved());
    std::map<std::uint32_t, std::vector<const Violation*>> byFact;
    for (const Violation& violation : violations_)
        byFact[violation.need.fact].push_back(&violation);
    for (const auto& [fact, violations] : byFact) {
        const FactRoutes routes(*this, fact);
        for (const Violation* violation : violations) {
            StoryFinding finding = describe(*violation);
            finding.path = routes.shortestTo(violation->scene, violation->choice != NONE);
            finding.message += labelsOf(finding.path);
            found.push_back(std::move(finding));
        }
    }
    return found;
}

StoryFinding FactFlow::describe(const Violation& violation) const
{
    const sf::String& scene = story_.sceneName(violation.scene);
    const sf::String& fact = facts_.factName(violation.need.fact);
    StoryFinding finding;
    finding.severity = StoryFinding::SEVERITY::ERROR;
    finding.kind = "continuity";
    finding.file = facts_.fileOf(violation.scene);
    finding.line = violation.need.place.line;
    finding.column = violation.need.place.column;
    finding.scene = scene;
    finding.fact = fact;
    if (violation.choice == NONE) {
        finding.message =
            "scene " + quoted(scene) + " needs the fact " + quoted(fact) + ", but a player can reach it without it: ";
    } else {
        finding.choice = violation.choice;
        finding.message = "choice " + std::to_string(violation.choice) + " "
                          + quoted(oneLine(story_.sceneAt(violation.scene)->choices[violation.choice].briefDescription))
                          + " of scene " + quoted(scene) + " needs the fact " + quoted(fact)
                          + ", but a player can be offered it without it: ";
    }
    return finding;
}

StoryFinding FactFlow::unproved() const
{
    std::size_t needs = 0;
    for (std::uint32_t fact = 0; fact < facts_.factCount(); ++fact)
        needs += facts_.isSetSomewhere(fact) ? facts_.needPlaces(fact).size() : 0;
    StoryFinding finding;
    finding.severity = StoryFinding::SEVERITY::WARNING;
    finding.kind = "continuity";
    finding.message =
        "the facts' continuity was proved only in part: play has more than " + std::to_string(stateLimit_)
        + " stops at the hub or the arrest scene (one for each set of suspects investigated); the "
        + std::to_string(violations_.size()) + " needs reported missed are missed on real paths, but the other "
        + std::to_string(needs - violations_.size()) + " were proved only on the ways of playing followed, not on all";
    return finding;
}

std::map<sf::String, std::vector<sf::String>> FactFlow::factsAtEndings() const
{
    std::map<sf::String, std::vector<sf::String>> endings;
    if (!solved_)
        return endings;
    for (std::uint32_t stop = 0; stop < stops_.size(); ++stop) {
        const Story::SceneId scene = stops_[stop].position.scene;
        if (stop == 0 || !rules_.isEnding(scene))
            continue;
        std::vector<sf::String> names;
        for (std::uint32_t fact = 0; fact < facts_.factCount(); ++fact) {
            if (atStop_[stop].contains(fact))
                names.push_back(facts_.factName(fact));
        }
        std::sort(names.begin(), names.end());
        endings[story_.sceneName(scene)] = std::move(names);
    }
    return endings;
}

} // namespace orane
