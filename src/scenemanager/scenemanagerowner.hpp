#pragma once

namespace orane
{

/// What the scene manager tells the one that owns it (the play state in the game).
class SceneManagerOwner
{
public:
    virtual ~SceneManagerOwner() = default;

    /// Play has reached "game_over"; called before that scene is handed over.
    virtual void onGameOver() = 0;
};

} // namespace orane
