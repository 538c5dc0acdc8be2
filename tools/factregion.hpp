#pragma once

#include "factannotations.hpp"
#include "factbits.hpp"
#include "scenemanager/playrules.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace orane
{

/// Play from one scene on, up to the hub, the arrest scene or an ending: a stretch the suspects
/// investigated cannot change (only the hub and the arrest scene read them), so it is followed
/// once, whatever set of suspects enters it. What it teaches the reader is counted from its
/// entry: a reader who entered knowing K knows K and what the stretch taught.
class FactRegion
{
public:
    static constexpr std::uint32_t NONE = 0xFFFFFFFFu;
    static constexpr std::uint32_t FAR = 0xFFFFFFFFu;

    /// The fewest clicks from the entry to each node without ever learning one fact.
    struct Routes
    {
        /// FAR where every way learns the fact first.
        std::vector<std::uint32_t> clicks;
        /// The step each node is reached by; NONE for the entry and nodes never reached.
        std::vector<std::uint32_t> via;
    };

    /// `entry` is a scene of the story's own (neither special nor unknown). The story, rules and
    /// facts must outlive the region.
    FactRegion(const Story& story, const PlayRules& rules, const FactAnnotations& facts, Story::SceneId entry);

    /// Node 0 is the entry; the others are the scenes shown after it, each once.
    [[nodiscard]] std::size_t size() const { return nodes_.size(); }
    [[nodiscard]] Story::SceneId sceneOf(std::uint32_t node) const { return nodes_[node].scene; }
    /// The facts learnt on every way from the entry to `node`, before `node` is shown.
    [[nodiscard]] const FactBits& learntBefore(std::uint32_t node) const { return learnt_[node]; }
    /// The nodes where play leaves the stretch: the hub, the arrest scene and the endings.
    [[nodiscard]] const std::vector<std::uint32_t>& exits() const { return exits_; }

    [[nodiscard]] Routes routesWithout(std::uint32_t fact) const;
    /// The labels a player clicks from the entry to `node` along `routes`.
    [[nodiscard]] std::vector<sf::String> labelsTo(const Routes& routes, std::uint32_t node) const;

private:
    /// A FORWARD link (no choice, no click) or a choice taken.
    struct Step
    {
        std::uint32_t from = 0;
        std::uint32_t to = 0;
        std::uint32_t choice = NONE;
    };
    struct Node
    {
        Story::SceneId scene = 0;
        bool forwardLinked = false;
        std::vector<std::uint32_t> steps;
    };

    void follow();
    /// Adds the scenes one move showed, in order, after `from` (NONE: the entry's own).
    void link(std::uint32_t from, std::uint32_t choice, const std::vector<Story::SceneId>& shown);
    std::uint32_t nodeFor(Story::SceneId scene);
    [[nodiscard]] bool endsStretch(Story::SceneId scene) const;
    void addStep(std::uint32_t from, std::uint32_t to, std::uint32_t choice);
    void learn();

    const Story& story_;
    const PlayRules& rules_;
    const FactAnnotations& facts_;
    std::vector<Node> nodes_;
    std::vector<Step> steps_;
    std::unordered_map<Story::SceneId, std::uint32_t> nodeOf_;
    std::vector<std::uint32_t> exits_;
    std::vector<FactBits> learnt_;
};

} // namespace orane
