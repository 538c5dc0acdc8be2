#pragma once

#include "scenemanager/playposition.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace orane
{

/// What walking every state of play proves (every state can still end, "end" can be reached,
/// which scenes and choices play meets), proved scene by scene instead. Only the hub and the
/// arrest scene look at the suspects investigated: the rest of the story is explored once from
/// each place play enters it (the start, a suspect's first scene, an accusation's scene), and
/// the sets of suspects are then weighed at those two scenes alone. So a story of 16 suspects
/// (65,536 sets) is proved in about the time its scenes take to walk once.
class SuspectSetProof
{
public:
    /// Scenes that play can enter but never leave for an ending, joined when they lead into one
    /// another.
    struct DeadEnd
    {
        /// In the order the proof first meets them.
        std::vector<sf::String> scenes;
        /// One state of play in which the first of them is stuck.
        PlayPosition example;
    };

    /// Suspects beyond this many are more sets than the proof weighs.
    static constexpr std::size_t MAX_SUSPECTS = 24;

    /// `story` must load and outlive the proof; it holds at most MAX_SUSPECTS suspects.
    explicit SuspectSetProof(const Story& story);

    /// Sets of suspects with which play reaches the hub after its first visit (the first visit,
    /// with none investigated, is not counted).
    [[nodiscard]] std::uint64_t setsAtHub() const { return setsAtHub_; }
    [[nodiscard]] bool reaches(Story::SceneId ending) const;
    [[nodiscard]] const std::vector<DeadEnd>& deadEnds() const { return deadEnds_; }
    /// The scenes written in story files that play shows, and their choices that play takes.
    [[nodiscard]] const std::set<sf::String>& scenesShown() const { return scenesShown_; }
    [[nodiscard]] const std::set<std::pair<sf::String, std::size_t>>& takenChoices() const { return takenChoices_; }

private:
    using Mask = std::uint32_t;
    using Node = Story::SceneId;

    /// A place where play enters the story's scenes, and the sets of suspects it enters with.
    struct Entry
    {
        Node scene = 0;
        std::vector<Mask> contexts;
        bool beforeHub = false;
    };

    void linkScenes();
    /// Which scenes can reach one of `targets` without passing the hub or the arrest scene.
    std::vector<bool> reachingAny(const std::vector<Node>& targets) const;
    std::vector<Node> region(Node entry) const;
    void weighSets();
    std::vector<Entry> entries() const;
    void explore(const Entry& entry);
    void groupDeadEnds();
    [[nodiscard]] bool canEnd(Node scene, Mask investigated) const;
    [[nodiscard]] bool isPause(Node scene) const;
    PlayPosition position(Node scene, Mask investigated, bool hubSeen) const;

    const Story& story_;
    std::size_t suspects_ = 0;
    /// One node per scene, and a last one for a name the story lacks.
    Node unknown_ = 0;
    std::vector<std::vector<Node>> next_;
    std::vector<bool> endsAlone_;
    std::vector<bool> leadsToHub_;
    /// Whether play at the hub (or the arrest scene) with a set can still end, and whether play
    /// reaches the hub with it; the set before the first visit is hubBefore_.
    std::vector<bool> hubCanEnd_;
    std::vector<bool> hubReached_;
    bool hubReachedBefore_ = false;
    std::uint64_t setsAtHub_ = 0;
    std::vector<bool> reached_;
    /// Stuck scenes, in the order met, each with the state it was found stuck in.
    std::vector<std::pair<Node, PlayPosition>> stuck_;
    std::vector<bool> stuckListed_;
    std::vector<DeadEnd> deadEnds_;
    std::set<sf::String> scenesShown_;
    std::set<std::pair<sf::String, std::size_t>> takenChoices_;
};

} // namespace orane
