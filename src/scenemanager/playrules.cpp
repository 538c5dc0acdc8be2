#include "scenemanager/playrules.hpp"

#include "scenemanager/fixedscenes.hpp"

namespace orane
{

PlayRules::PlayRules(const Story& story)
    : story_(story)
{}

PlayPosition PlayRules::start() const
{
    PlayPosition position;
    position.scene = story_.findSceneId(START_SCENE_NAME);
    return position;
}

std::size_t PlayRules::choiceCount(const PlayPosition& position) const
{
    if (position.scene == Story::UNKNOWN_SCENE)
        return 0;
    const std::size_t suspects = story_.suspects().size();
    const std::size_t investigated = position.investigated.size();
    if (position.scene == story_.hubScene())
        return suspects - investigated + (hubOffersArrest(position) ? 1 : 0);
    if (position.scene == story_.arrestScene())
        return 1 + investigated;
    const Scene* scene = story_.sceneAt(position.scene);
    return scene == nullptr ? 0 : scene->choices.size();
}

Story::SceneId PlayRules::target(const PlayPosition& position, std::size_t choice) const
{
    if (position.scene == story_.hubScene()) {
        const std::optional<std::size_t> suspect = nthSuspect(position, choice, false);
        return suspect.has_value() ? story_.suspectBeginScene(*suspect) : story_.arrestScene();
    }
    if (position.scene == story_.arrestScene()) {
        if (choice == 0)
            return story_.hubScene();
        const std::optional<std::size_t> suspect = nthSuspect(position, choice - 1, true);
        return suspect.has_value() ? story_.suspectArrestScene(*suspect) : Story::UNKNOWN_SCENE;
    }
    return story_.linksOf(position.scene).choices[choice];
}

std::optional<std::size_t> PlayRules::investigatedBy(const PlayPosition& position, std::size_t choice) const
{
    if (position.scene != story_.hubScene())
        return std::nullopt;
    return nthSuspect(position, choice, false);
}

void PlayRules::leave(PlayPosition& position, std::size_t choice) const
{
    if (position.scene != story_.hubScene())
        return;
    if (const std::optional<std::size_t> suspect = investigatedBy(position, choice))
        position.investigated.insert(*suspect);
    position.hubSeen = true;
}

bool PlayRules::isEnding(Story::SceneId scene) const
{
    return scene != Story::UNKNOWN_SCENE && (scene == story_.endScene() || scene == story_.gameOverScene());
}

std::optional<std::size_t> PlayRules::nthSuspect(const PlayPosition& position, std::size_t rank,
                                                 bool investigated) const
{
    for (std::size_t suspect = 0; suspect < story_.suspects().size(); ++suspect) {
        if (position.investigated.contains(suspect) != investigated)
            continue;
        if (rank == 0)
            return suspect;
        --rank;
    }
    return std::nullopt;
}

} // namespace orane
