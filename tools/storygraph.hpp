#pragma once

#include "scene/scene.hpp"
#include "scenemanager/scenemap.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <map>
#include <set>
#include <vector>

namespace orane
{

/// The story as a map of scenes and the ways from one to the next: FORWARD links, written
/// choices, and what the hub and the arrest scene will offer (every suspect's "_begin" and
/// "_arrest" scene, the arrest scene and the way back to the hub). Which suspects the hub
/// offers at a given moment is left out: this is every way that some play could take.
class StoryGraph
{
public:
    struct Edge
    {
        enum class KIND
        {
            FORWARD,
            CHOICE,   ///< written in a story file
            COMPOSED, ///< offered by the hub or the arrest scene
        };
        sf::String from;
        sf::String to;
        KIND kind = KIND::CHOICE;
        /// The choice's label; empty for a FORWARD link.
        sf::String label;
        /// Position in the scene's choices; 0 for a FORWARD link.
        std::size_t choiceIndex = 0;
    };

    StoryGraph(const SceneMap& scenes, const std::map<sf::String, bool>& suspects);
    /// The graph of a loaded story, with its suspects.
    explicit StoryGraph(const Story& story);

    /// Every scene stored, plus the hub and the arrest scene when something leads to them.
    [[nodiscard]] const std::set<sf::String>& scenes() const { return nodes_; }
    [[nodiscard]] const std::vector<Edge>& edges() const { return edges_; }
    /// Edges that lead to a name that is neither stored nor special.
    [[nodiscard]] bool isBroken(const Edge& edge) const { return nodes_.count(edge.to) == 0; }

    /// Every scene some path from `start` reaches, `start` included when it exists.
    [[nodiscard]] std::set<sf::String> reachableFrom(const sf::String& start) const;
    /// Every scene from which some path reaches "end" or "game_over".
    [[nodiscard]] std::set<sf::String> reachingAnEnding() const;
    /// `names` in the order a breadth-first walk from "begin" meets them; those it never
    /// meets after, in name order.
    [[nodiscard]] std::vector<sf::String> inPlayOrder(const std::set<sf::String>& names) const;

private:
    void addEdge(Edge edge);
    void composeSpecialEdges(const std::map<sf::String, bool>& suspects);

    std::set<sf::String> nodes_;
    std::vector<Edge> edges_;
    std::map<sf::String, std::vector<std::size_t>> outgoing_;
    std::map<sf::String, std::vector<std::size_t>> incoming_;
};

} // namespace orane
