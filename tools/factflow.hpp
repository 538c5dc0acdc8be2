#pragma once

#include "factannotations.hpp"
#include "factbits.hpp"
#include "factregion.hpp"
#include "scenemanager/playposition.hpp"
#include "scenemanager/playrules.hpp"
#include "scenemanager/story.hpp"
#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace orane
{

/// Proves that every "# needs:" of a story is met on every way a player can play it, by the
/// game's own PlayRules: the facts a reader knows at a scene are those set on every path from
/// "begin" to it, an intersection over the ways in (a forward data flow).
///
/// Only the hub and the arrest scene read the suspects investigated, so play is cut there: the
/// stretches between (FactRegion) are followed once each, and only the stops at the hub, the
/// arrest scene and the endings are told apart by the suspects investigated and whether the
/// hub has been seen. Exact, and as many stops as sets of suspects rather than scenes times sets.
class FactFlow
{
public:
    /// Beyond this many stops (hub or arrest scene, suspects investigated, hub seen) the proof
    /// keeps what it found and says what it could not prove: 2^18 sets of suspects fit.
    static constexpr std::size_t DEFAULT_STATE_LIMIT = 1'000'000;

    /// `sources`: the story files in the order the game reads them. `story` must outlive this.
    FactFlow(const Story& story, const std::vector<SourceText>& sources);
    ~FactFlow();
    FactFlow(const FactFlow&) = delete;
    FactFlow& operator=(const FactFlow&) = delete;

    /// Follows every way of playing and solves the flow. False when play has more stops than
    /// `stateLimit`: the needs found missed are still missed on real paths, the others unproved.
    bool solve(std::size_t stateLimit = DEFAULT_STATE_LIMIT);

    [[nodiscard]] bool solved() const { return solved_; }
    /// Stops and scenes of the stretches, together.
    [[nodiscard]] std::size_t stateCount() const;

    /// Errors for needs missed on some path (with the shortest such path) and for facts needed
    /// but set nowhere; notes for facts set but never needed; a warning for a proof cut short.
    [[nodiscard]] std::vector<StoryFinding> findings() const;

    /// For "end" and "game_over", when play reaches them: the facts known on every path there,
    /// in alphabetical order. Empty unless solved.
    [[nodiscard]] std::map<sf::String, std::vector<sf::String>> factsAtEndings() const;

    /// True when some annotation of a kept scene names a fact.
    [[nodiscard]] bool hasAnnotations() const { return facts_.factCount() > 0; }

private:
    static constexpr std::uint32_t NONE = FactRegion::NONE;

    /// A place where play leaves a stretch. Stop 0 stands before "begin".
    struct Stop
    {
        PlayPosition position;
        std::uint32_t firstLeg = 0;
        std::uint32_t legCount = 0;
        /// Its ways into stretches, exits or none (a stretch may never end).
        std::uint32_t firstEntry = 0;
        std::uint32_t entryCount = 0;
    };
    /// From a stop, by one of its choices (none from stop 0), through a stretch to its exit,
    /// or straight to another stop when the choice leads to the hub, the arrest scene or an end.
    struct Leg
    {
        std::uint32_t from = 0;
        std::uint32_t to = 0;
        std::uint32_t choice = NONE;
        std::uint32_t region = NONE;
        std::uint32_t exit = NONE;
    };
    struct Violation
    {
        Story::SceneId scene = 0;
        std::uint32_t choice = NONE;
        FactAnnotations::Need need;
    };

    bool explore(std::size_t stateLimit);
    /// Legs from `from` into `target`, with `after` the position the choice left; false when
    /// the limit of stops kept some out.
    bool legsInto(std::uint32_t from, Story::SceneId target, const PlayPosition& after, std::uint32_t choice,
                  std::size_t stateLimit);
    std::uint32_t stopFor(Story::SceneId scene, const PlayPosition& after, std::size_t stateLimit);
    std::uint32_t regionFor(Story::SceneId entry);
    void flow();
    void knowAtScenes();
    void findViolations();
    [[nodiscard]] StoryFinding describe(const Violation& violation) const;
    [[nodiscard]] StoryFinding unproved() const;

    const Story& story_;
    PlayRules rules_;
    FactAnnotations facts_;

    std::vector<Stop> stops_;
    std::vector<Leg> legs_;
    /// Legs cut at the entry of their stretch (no exit), one for each way in.
    std::vector<Leg> entries_;
    std::unordered_map<PlayPosition, std::uint32_t, PlayPosition::Hash> stopOf_;
    std::vector<std::unique_ptr<FactRegion>> regions_;
    std::vector<std::uint32_t> regionOf_;
    /// Known on arriving at each stop, on entering each stretch, on showing each scene.
    std::vector<FactBits> atStop_;
    std::vector<FactBits> atEntry_;
    std::vector<FactBits> atScene_;
    std::vector<bool> sceneShown_;
    std::vector<Violation> violations_;
    bool solved_ = false;
    bool gaveUp_ = false;
    std::size_t stateLimit_ = 0;

    /// Reads the stops, legs and stretches to find the shortest paths.
    friend class FactRoutes;
};

} // namespace orane
