#pragma once

#include "scenemanager/scenemanager.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace orane
{

/// Plays a story with the game's own scene manager, in every way it can be played or in random
/// ways. A state of play is what the scene manager remembers: the current scene, which suspects
/// have been investigated and whether the hub is still to be seen for the first time.
class StoryWalker
{
public:
    struct State
    {
        sf::String scene;
        std::vector<bool> suspectsVisited; ///< in the order of suspects()
        bool firstHubPending = true;

        bool operator<(const State& other) const;
    };

    /// A choice written in a story file.
    struct ChoiceRef
    {
        sf::String scene;
        std::size_t index = 0;
        bool operator<(const ChoiceRef& other) const;
    };

    struct Exploration
    {
        std::size_t states = 0;
        std::size_t choicesTaken = 0;
        /// "end" and "game_over": in how many states play has reached them.
        std::map<sf::String, std::size_t> endings;
        /// For each ending reached, the fewest labels to pick from the start to get there.
        std::map<sf::String, std::vector<sf::String>> shortestPaths;
        /// Reachable states from which no ending can be reached, each with a way to get there.
        std::vector<std::pair<State, std::vector<sf::String>>> stuck;
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

    /// Loads `directory` as the game does, capturing what it prints.
    explicit StoryWalker(const std::string& directory);

    bool loads() const { return loads_; }
    const std::vector<std::string>& loadReport() const { return loadReport_; }
    const SceneManager& started() const { return started_; }
    /// The suspects in the order of State::suspectsVisited.
    std::vector<sf::String> suspects() const;

    /// Takes every choice of every reachable state once.
    Exploration explore() const;
    /// `count` playthroughs, each choice drawn from a generator seeded with `seed`; a
    /// playthrough gives up after `choiceLimit` choices.
    RandomPlay playRandomly(std::size_t count, std::uint64_t seed, std::size_t choiceLimit = 10000) const;

    /// The choices written in story files that `exploration` never took.
    std::vector<ChoiceRef> untakenChoices(const Exploration& exploration) const;

private:
    State stateOf(const SceneManager& manager) const;
    static bool isEnding(const sf::String& scene);

    bool loads_ = false;
    std::vector<std::string> loadReport_;
    SceneManager started_{nullptr};
    /// What the start of play shows, up to the first scene with choices.
    std::vector<sf::String> startShows_;
};

} // namespace orane
