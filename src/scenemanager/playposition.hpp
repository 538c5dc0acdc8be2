#pragma once

#include "scenemanager/story.hpp"
#include "scenemanager/suspectset.hpp"

#include <cstddef>

namespace orane
{

/// Where play stands in a Story: all that play remembers from one choice to the next. A small
/// value, copied and compared freely (PlayRules moves it on).
struct PlayPosition
{
    /// The scene being played; Story::UNKNOWN_SCENE when play was sent to a name the story lacks.
    Story::SceneId scene = Story::UNKNOWN_SCENE;
    /// The suspects picked at the hub.
    SuspectSet investigated;
    /// True once play has left the hub, which then offers the arrest on every later visit.
    bool hubSeen = false;

    bool operator==(const PlayPosition& other) const
    {
        return scene == other.scene && hubSeen == other.hubSeen && investigated == other.investigated;
    }
    bool operator!=(const PlayPosition& other) const { return !(*this == other); }

    /// For hash tables of positions.
    struct Hash
    {
        std::size_t operator()(const PlayPosition& position) const
        {
            return (position.investigated.hash() * 31 + position.scene) * 2 + (position.hubSeen ? 1 : 0);
        }
    };
};

} // namespace orane
