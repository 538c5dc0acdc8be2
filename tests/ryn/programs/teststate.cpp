// The smallest program on the engine: one state that draws nothing on the black frame.
// "close": after three steps the window is asked to close, as by its close button.
// "quit": after three steps the state manager asks to quit.
// Prints what it saw, one fact per line.
#include "../testapplication.hpp"
#include "closerequest.hpp"

#include <ryn/core/console.hpp>

#include <SFML/Graphics/Texture.hpp>

namespace
{

constexpr int STEPS_BEFORE_ENDING = 3;
// Far more than a close request needs to come back as an event.
constexpr int STEPS_BEFORE_GIVING_UP = 200;

std::string centrePixelOf(const sf::RenderWindow& window)
{
    sf::Texture frame;
    frame.create(window.getSize().x, window.getSize().y);
    frame.update(window);
    const sf::Color pixel = frame.copyToImage().getPixel(window.getSize().x / 2, window.getSize().y / 2);
    return std::to_string(pixel.r) + " " + std::to_string(pixel.g) + " " + std::to_string(pixel.b) + " "
           + std::to_string(pixel.a);
}

void say(const std::string& what, const std::string& value)
{
    ryn::console::writeLine(what + " " + value);
}

} // namespace

int main(int argc, char** argv)
{
    const bool quits = argc > 1 && std::string(argv[1]) == "quit";
    ryn::test::Steps steps;
    ryn::test::StepApplication app(steps);
    if (!app.init())
        return 1;
    app.setGameRate(0.05f);
    app.graphics().passesWindowEvents = true;
    sf::RenderWindow& window = *app.graphics().window();
    say("window", std::to_string(window.getSize().x) + "x" + std::to_string(window.getSize().y));
    say("step", std::to_string(app.gameRate()));

    ryn::test::StepState& state = app.state();
    state.onStep = [&](int step) {
        if (step == STEPS_BEFORE_GIVING_UP) {
            ryn::console::writeLine("the close request never arrived");
            app.stateManager().quit();
        } else if (step == STEPS_BEFORE_ENDING) {
            if (quits)
                app.stateManager().quit();
            else
                requestClose(window.getSystemHandle());
        }
    };
    std::string firstFrame;
    int framesAfterEnding = 0;
    state.onDraw = [&] {
        if (firstFrame.empty())
            firstFrame = centrePixelOf(window);
        if (state.updates >= STEPS_BEFORE_ENDING)
            ++framesAfterEnding;
    };

    const bool ended = app.run();

    say("ended", ended ? "yes" : "no");
    say("open", app.graphics().isOpen() ? "yes" : "no");
    say("steps", std::to_string(state.updates));
    say("first frame", firstFrame);
    say("frames after the third step", std::to_string(framesAfterEnding));
    return 0;
}
