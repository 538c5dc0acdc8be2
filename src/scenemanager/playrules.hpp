#pragma once

#include "scenemanager/playposition.hpp"
#include "scenemanager/story.hpp"

#include <cstddef>
#include <optional>

namespace orane
{

/// How play moves through a Story: which choices each position offers (the stored scene's, or
/// those the game composes at the hub and the arrest scene), where they lead, and how FORWARD
/// links carry play on. Knows nothing of texts or of who watches: SceneManager shows what these
/// rules reach, the story tools explore them.
class PlayRules
{
public:
    /// `story` is not owned and must outlive the rules.
    explicit PlayRules(const Story& story);

    /// Before anything is shown: at "begin" (UNKNOWN_SCENE when the story lacks it), no suspect
    /// investigated, the hub not yet seen.
    [[nodiscard]] PlayPosition start() const;

    /// From the second visit on, the hub offers the arrest.
    [[nodiscard]] static bool hubOffersArrest(const PlayPosition& position) { return position.hubSeen; }
    /// True until the hub is shown for the first time.
    [[nodiscard]] bool isFirstHubPending(const PlayPosition& position) const
    {
        return !position.hubSeen && position.scene != story_.hubScene();
    }

    /// The hub and the arrest scene: the only scenes whose choices read more of the position
    /// than its scene (the suspects investigated, the hub seen). Elsewhere play goes on the same
    /// whatever the suspects, which the story tools' proofs rely on.
    [[nodiscard]] bool readsSuspects(Story::SceneId scene) const
    {
        return scene == story_.hubScene() || scene == story_.arrestScene();
    }

    [[nodiscard]] std::size_t choiceCount(const PlayPosition& position) const;
    /// Where choice `choice` (< choiceCount) leads; UNKNOWN_SCENE for a broken link.
    [[nodiscard]] Story::SceneId target(const PlayPosition& position, std::size_t choice) const;
    /// The suspect that picking `choice` investigates: at the hub, a suspect's choice.
    [[nodiscard]] std::optional<std::size_t> investigatedBy(const PlayPosition& position, std::size_t choice) const;
    /// What taking `choice` changes before play moves on: at the hub, the suspect picked is
    /// investigated and the hub counts as seen.
    void leave(PlayPosition& position, std::size_t choice) const;
    /// "end" and "game_over": play stops there.
    [[nodiscard]] bool isEnding(Story::SceneId scene) const;

    /// Moves play to `scene` and on along FORWARD links, up to a scene with choices or a
    /// special scene. `show(position)` is called for each scene shown, once position.scene
    /// names it. Answers false when play is left at
    /// UNKNOWN_SCENE or stopped in a FORWARD cycle (only stories that were not checked).
    template <typename Show>
    bool enter(PlayPosition& position, Story::SceneId scene, Show&& show) const;

    /// Takes `choice` (< choiceCount): its suspect is investigated, the hub is left behind as
    /// seen, then play enters the choice's target.
    template <typename Show>
    bool choose(PlayPosition& position, std::size_t choice, Show&& show) const;

private:
    /// The `rank`-th suspect (from 0) whose investigated state is `investigated`.
    [[nodiscard]] std::optional<std::size_t> nthSuspect(const PlayPosition& position, std::size_t rank,
                                                        bool investigated) const;

    const Story& story_;
};

template <typename Show>
bool PlayRules::enter(PlayPosition& position, Story::SceneId scene, Show&& show) const
{
    for (std::size_t shown = 0; shown <= story_.sceneCount(); ++shown) {
        position.scene = scene;
        if (scene == Story::UNKNOWN_SCENE)
            return false;
        if (story_.isSpecial(scene)) {
            show(static_cast<const PlayPosition&>(position));
            return true;
        }
        show(static_cast<const PlayPosition&>(position));
        if (!story_.sceneAt(scene)->choices.empty())
            return true;
        scene = story_.linksOf(scene).forward;
    }
    return false;
}

template <typename Show>
bool PlayRules::choose(PlayPosition& position, std::size_t choice, Show&& show) const
{
    const Story::SceneId next = target(position, choice);
    leave(position, choice);
    return enter(position, next, show);
}

} // namespace orane
