// The parser of one scene, fed the lines of any file as the story loader would cut them.

#include "fuzzing.hpp"
#include "scene/scene.hpp"
#include "scene/storytext.hpp"
#include "scenemanager/textfile.hpp"

#include <cstddef>
#include <cstdint>
#include <string>

namespace
{

/// A scene the parser accepted must be playable as it stands: the game relies on it without
/// checking again.
void requirePlayable(const orane::Scene& scene)
{
    fuzzing::require(!scene.oraneText.isEmpty() || !scene.nathanText.isEmpty(), "an accepted scene has text");
    if (!scene.forward.isEmpty()) {
        fuzzing::require(scene.choices.empty(), "an accepted scene has a forward link or choices, not both");
        return;
    }
    fuzzing::require(!scene.choices.empty(), "an accepted scene without a forward link has choices");
    for (const orane::Choice& choice : scene.choices) {
        fuzzing::require(choice.isValid(), "every choice of an accepted scene is complete");
        fuzzing::require(orane::splitWords(choice.nextSceneName).size() == 1, "a choice leads to one name");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzzing::installAbortingAssertHandler();
    // The loader hands over only decoded lines: a file with a bad byte gives its lines up to it.
    const orane::TextFile file = orane::TextFile::decode(std::string(reinterpret_cast<const char*>(data), size));

    ryn::console::Capture quiet;
    orane::Scene scene;
    const bool accepted = scene.deserialize(file.lines(), 7);
    if (accepted) {
        quiet.clear();
        fuzzing::require(scene.checkGameLogic(7), "an accepted scene passes the game-logic check");
        fuzzing::require(quiet.text().empty(), "the game-logic check of an accepted scene is silent");
        requirePlayable(scene);
    }
    return 0;
}
