#pragma once

#include "scenemanager/scenemanager.hpp"
#include "scenemanager/scenemanagerowner.hpp"

#include <istream>
#include <string>

namespace orane
{

/// The story played in a terminal with the game's own scene manager: every scene shown prints
/// Orane's and Nathan's texts, the choices are numbered and the player types a number. The hub,
/// the arrest scene and the endings come as in the game. End of input ends the game.
class TerminalPlayer : public SceneManagerOwner
{
public:
    /// Reads the player's answers from `input`.
    explicit TerminalPlayer(std::istream& input);

    /// Loads `directory` and plays until an ending or the end of input. Answers the exit
    /// status: 0 after an ending or the end of input, 1 when the story does not load.
    int play(const std::string& directory);

    void onGameOver() override;

private:
    void showScene(const Scene& scene);
    void showChoiceTaken(const Choice& choice);
    /// Prints the choices and reads an answer; -1 at the end of input.
    int askChoice(const Scene& scene);

    std::istream& input_;
    SceneManager sceneManager_{this};
};

} // namespace orane
