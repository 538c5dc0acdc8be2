#include "terminalplayer.hpp"

#include "scene/tokens.hpp"
#include "tooltext.hpp"

#include <ryn/core/console.hpp>

namespace orane
{
namespace
{

bool isEnding(const sf::String& scene)
{
    return scene == END_SCENE_NAME || scene == GAME_OVER_SCENE_NAME;
}

/// The writer's text as it stands in the notebook, each line indented under its writer's name.
void printWriting(const std::string& writer, const sf::String& text)
{
    if (text.isEmpty())
        return;
    ryn::console::writeLine(writer);
    std::string line;
    for (char c : utf8(text) + "\n") {
        if (c != '\n') {
            line += c;
            continue;
        }
        ryn::console::writeLine("    " + line);
        line.clear();
    }
}

} // namespace

TerminalPlayer::TerminalPlayer(std::istream& input)
    : input_(input)
{
    sceneManager_.setNewSceneCallback([this](const Scene& scene) { showScene(scene); });
    sceneManager_.setChoiceAppliedCallback([this](const Choice& choice) { showChoiceTaken(choice); });
}

int TerminalPlayer::play(const std::string& directory)
{
    std::string path = directory;
    if (!path.empty() && path.back() != '/')
        path += '/';
    if (!sceneManager_.loadStoryFrom(path)) {
        ryn::console::writeLine("The story does not load; orane-story check " + directory + " tells why.");
        return 1;
    }
    while (!isEnding(sceneManager_.currentSceneName())) {
        const Scene& scene = sceneManager_.getCurrentScene();
        if (scene.choices.empty()) {
            ryn::console::writeLine("(Nothing to choose here: play cannot go on.)");
            return 0;
        }
        const int choice = askChoice(scene);
        if (choice < 0) {
            ryn::console::writeLine("");
            ryn::console::writeLine("(End of input: the notebook closes.)");
            return 0;
        }
        sceneManager_.applyChoice(choice);
    }
    ryn::console::writeLine("(The end.)");
    return 0;
}

void TerminalPlayer::onGameOver()
{
    ryn::console::writeLine("(The last pages are stained with blood.)");
}

void TerminalPlayer::showScene(const Scene& scene)
{
    ryn::console::writeLine("");
    ryn::console::writeLine("======== "
                            + (scene.name.isEmpty() ? utf8(sceneManager_.currentSceneName()) : utf8(scene.name)));
    printWriting("Orane:", scene.oraneText);
    printWriting("Nathan:", scene.nathanText);
}

void TerminalPlayer::showChoiceTaken(const Choice& choice)
{
    printWriting("Nathan writes:", choice.longDescription);
}

int TerminalPlayer::askChoice(const Scene& scene)
{
    const std::size_t count = scene.choices.size();
    for (std::size_t index = 0; index < count; ++index)
        ryn::console::writeLine("  " + std::to_string(index + 1) + ". "
                                + oneLine(scene.choices[index].briefDescription));
    while (true) {
        ryn::console::write("> ");
        std::string answer;
        if (!std::getline(input_, answer))
            return -1;
        try {
            std::size_t used = 0;
            const long number = std::stol(answer, &used);
            if (number >= 1 && static_cast<std::size_t>(number) <= count)
                return static_cast<int>(number - 1);
        } catch (const std::exception&) {
            // not a number: asked again below
        }
        ryn::console::writeLine("Type a number from 1 to " + std::to_string(count) + ".");
    }
}

} // namespace orane
