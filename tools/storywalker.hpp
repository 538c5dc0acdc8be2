#pragma once

#include "scenemanager/playposition.hpp"
#include "scenemanager/playrules.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace orane
{

/// Plays a story by the game's own rules, in every way it can be played or in random ways. A
/// state of play is a PlayPosition: exploring copies nothing else.
class StoryWalker
{
public:
    /// A choice written in a story file.
    struct ChoiceRef
    {
        sf::String scene;
        std::size_t index = 0;
        bool operator<(const ChoiceRef& other) const;
    };

    /// Scenes that play can enter but never leave for an ending, found as one group however
    /// many sets of suspects reach them.
    struct DeadEnd
    {
        /// In the order play first meets them.
        std::vector<sf::String> scenes;
        /// How many states (scene, suspects investigated, hub seen) lie in the group.
        std::size_t states = 0;
        /// The first of them met, and the fewest labels to pick from the start to get there.
        PlayPosition first;
        std::vector<sf::String> path;
    };

    struct Exploration
    {
        std::size_t states = 0;
        std::size_t choicesTaken = 0;
        /// False when the walk stopped at its limit of states: what follows holds for the
        /// states seen, and more may lie beyond.
        bool complete = true;
        /// "end" and "game_over": in how many states play has reached them.
        std::map<sf::String, std::size_t> endings;
        /// For each ending reached, the fewest labels to pick from the start to get there.
        std::map<sf::String, std::vector<sf::String>> shortestPaths;
        /// How many reachable states cannot reach an ending, and in which groups of scenes.
        std::size_t stuckStates = 0;
        std::vector<DeadEnd> deadEnds;
        /// Every scene some play shows (FORWARD chains included).
        std::set<sf::String> scenesShown;
        /// The choices written in story files that some play takes.
        std::set<ChoiceRef> takenChoices;
    };

    struct RandomPlay
    {
        std::size_t playthroughs = 0;
        /// How many playthroughs ended at "end", at "game_over".
        std::map<sf::String, std::size_t> endings;
        /// Stopped at a scene without any choice that is no ending.
        std::size_t stuck = 0;
        /// Still going after the choice limit.
        std::size_t unfinished = 0;
        std::size_t fewestChoices = 0;
        std::size_t mostChoices = 0;
        std::size_t totalChoices = 0;
        /// How many times each story scene was shown over all playthroughs (0 for those never shown).
        std::map<sf::String, std::size_t> visits;
    };

    /// Far more than any story written by hand reaches; a few seconds and half a gigabyte.
    static constexpr std::size_t DEFAULT_STATE_LIMIT = 2'000'000;

    /// Loads `directory` as the game does; prints nothing.
    explicit StoryWalker(const std::string& directory);

    [[nodiscard]] bool loads() const { return loads_; }
    /// Ends with '/'.
    const std::string& directory() const { return directory_; }
    /// What the game prints while loading.
    const std::vector<std::string>& loadReport() const { return loadReport_; }
    const Story& story() const { return story_; }

    /// True when the states of play could be more than `stateLimit` (a state per scene, set of
    /// suspects investigated and visit of the hub): SuspectSetProof proves what explore would.
    [[nodiscard]] bool tooManyStates(std::size_t stateLimit = DEFAULT_STATE_LIMIT) const;
    /// Takes every choice of every reachable state once, or of the first `stateLimit` states.
    Exploration explore(std::size_t stateLimit = DEFAULT_STATE_LIMIT) const;
    /// `count` playthroughs, each choice drawn from a generator seeded with `seed`; a
    /// playthrough gives up after `choiceLimit` choices.
    RandomPlay playRandomly(std::size_t count, std::uint64_t seed, std::size_t choiceLimit = 10000) const;

    /// The choices written in story files that `exploration` never took.
    std::vector<ChoiceRef> untakenChoices(const Exploration& exploration) const;

    /// "at "scene", suspects investigated: ..., hub not yet seen".
    std::string describe(const PlayPosition& position) const;
    /// The label play shows for `choice` at `position` (composed at the hub and the arrest scene).
    sf::String labelOf(const PlayPosition& position, std::size_t choice) const;
    const sf::String& nameOf(Story::SceneId scene) const { return story_.sceneName(scene); }

private:
    struct Search;

    std::string directory_;
    bool loads_ = false;
    std::vector<std::string> loadReport_;
    Story story_;
    PlayPosition start_;
    /// What the start of play shows, up to the first scene with choices.
    std::vector<Story::SceneId> startShows_;
};

} // namespace orane
