#pragma once

#include "scenemanager/scenemap.hpp"
#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orane
{

/// Proves that every "# needs:" of a story is met on every way a player can play it: the facts
/// a reader knows in a state of play are those set on every path from "begin" to it, an
/// intersection over the ways into each state (a forward data flow). States are the play
/// rules' own: the scene, the suspects investigated and whether the hub has been composed, so
/// the hub, the arrest scene (only investigated suspects), FORWARD chains and the choices
/// taken are followed exactly as the game follows them.
class FactFlow
{
public:
    /// Beyond this many states of play the proof stops and says so.
    static constexpr std::size_t DEFAULT_STATE_LIMIT = 4'000'000;

    /// `scenes`: the story as the game stored it; `suspects`: in the game's order (its map's);
    /// `sources`: the story files in the order the game reads them (the first scene of a name
    /// is the one the game keeps, and so are its annotations).
    FactFlow(const SceneMap& scenes, const std::vector<sf::String>& suspects, const std::vector<SourceText>& sources);

    /// Explores every state of play and solves the flow. False when the story has more states
    /// than `stateLimit` (or more than 64 suspects): nothing is then proved.
    bool solve(std::size_t stateLimit = DEFAULT_STATE_LIMIT);

    [[nodiscard]] bool solved() const { return solved_; }
    [[nodiscard]] std::size_t stateCount() const { return nodes_.size(); }

    /// Errors for needs missed on some path (with the shortest such path) and for facts needed
    /// but set nowhere; notes for facts set but never needed, and for a proof that gave up.
    [[nodiscard]] std::vector<StoryFinding> findings() const;

    /// For "end" and "game_over", when play reaches them: the facts known on every path there,
    /// in alphabetical order.
    [[nodiscard]] std::map<sf::String, std::vector<sf::String>> factsAtEndings() const;

    /// True when some annotation of a kept scene names a fact.
    [[nodiscard]] bool hasAnnotations() const { return !factNames_.empty(); }

private:
    using Words = std::vector<std::uint64_t>;
    static constexpr std::uint32_t NONE = 0xFFFFFFFFu;

    struct Need
    {
        std::uint32_t fact = 0;
        SourceText::Fact place;
    };
    struct SceneInfo
    {
        sf::String name;
        const Scene* scene = nullptr;
        std::string file;
        std::vector<std::uint32_t> choiceTargets;
        std::uint32_t forward = NONE;
        Words sets;
        std::vector<Need> needs;
        std::vector<Words> choiceSets;
        std::vector<std::vector<Need>> choiceNeeds;
    };
    enum class EDGE : std::uint8_t
    {
        FORWARD,
        CHOICE,
        HUB_SUSPECT,
        HUB_ARREST,
        RETREAT,
        ACCUSE,
    };
    struct Edge
    {
        std::uint32_t from = 0;
        std::uint32_t to = 0;
        EDGE kind = EDGE::FORWARD;
        /// The choice's index, or the suspect's.
        std::uint32_t index = 0;
    };
    struct Node
    {
        std::uint32_t scene = 0;
        bool hubPending = true;
        std::uint64_t investigated = 0;
        std::uint32_t firstEdge = 0;
        std::uint32_t edgeCount = 0;
    };
    struct Violation
    {
        std::uint32_t scene = 0;
        std::uint32_t choice = NONE;
        Need need;
    };

    void indexScenes(const SceneMap& scenes, const std::vector<SourceText>& sources);
    std::uint32_t factId(const sf::String& name);
    std::uint32_t sceneId(const sf::String& name) const;
    void readAnnotations(SceneInfo& info, const SourceText::Scene& source);
    bool explore(std::size_t stateLimit);
    std::uint32_t enter(std::uint32_t scene, std::uint64_t investigated, bool hubPending, std::size_t stateLimit);
    void flow();
    void findViolations();
    std::vector<sf::String> shortestPathWithout(std::uint32_t fact, const Violation& violation) const;
    sf::String edgeLabel(const Edge& edge) const;
    [[nodiscard]] bool has(const std::uint64_t* words, std::uint32_t fact) const;
    // A story without facts has no words at all: data() stays valid where [0] would not.
    const std::uint64_t* inOf(std::uint32_t node) const { return in_.data() + std::size_t{node} * wordCount_; }
    void outOf(std::uint32_t node, Words& out) const;
    const Words* generated(const Edge& edge) const;

    std::vector<sf::String> suspects_;
    std::vector<SceneInfo> scenes_;
    std::map<sf::String, std::uint32_t> sceneIds_;
    std::uint32_t hub_ = 0, arrest_ = 0, end_ = 0, gameOver_ = 0;
    std::vector<std::uint32_t> suspectBegin_;
    std::vector<std::uint32_t> suspectArrest_;
    /// The suspect that taking the hub's choice for suspect k marks as investigated.
    std::vector<std::uint32_t> suspectMarked_;
    std::vector<sf::String> hubLabels_;
    sf::String arrestLabel_, retreatLabel_;
    std::vector<sf::String> accuseLabels_;

    std::vector<sf::String> factNames_;
    std::map<sf::String, std::uint32_t> factIds_;
    using Place = std::pair<std::string, SourceText::Fact>;
    /// Where each fact is set and where it is needed, over the kept scenes.
    std::vector<std::vector<Place>> setPlaces_;
    std::vector<std::vector<Place>> needPlaces_;
    std::size_t wordCount_ = 0;

    std::vector<Node> nodes_;
    std::vector<Edge> edges_;
    struct StateHash
    {
        std::size_t operator()(const std::pair<std::uint64_t, std::uint64_t>& key) const
        {
            return std::hash<std::uint64_t>()(key.first * 0x9E3779B97F4A7C15ull ^ key.second);
        }
    };
    /// (scene and hub flag, suspects investigated) to node.
    std::unordered_map<std::pair<std::uint64_t, std::uint64_t>, std::uint32_t, StateHash> nodeIds_;
    std::vector<std::uint64_t> in_;
    std::vector<Violation> violations_;
    bool solved_ = false;
    bool gaveUp_ = false;
    std::size_t stateLimit_ = 0;
};

} // namespace orane
