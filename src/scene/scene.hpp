#pragma once

#include "scene/choice.hpp"
#include "scene/codepoints.hpp"
#include "scene/diagnostic.hpp"
#include "scene/scenelayout.hpp"
#include "scene/scenetextbuffers.hpp"
#include "scene/tokens.hpp"

#include <SFML/System/String.hpp>

#include <cstdint>
#include <vector>

namespace orane
{

/// Prints "ERROR (line N - name) : message" on the console; the " - name" part is left out
/// when `sceneName` is empty.
void logError(const sf::String& message, const sf::String& sceneName, std::uint32_t line);

/// One scene of the story, as read from a story file or composed by the program.
struct Scene
{
    /// Reads the lines of one scene (its SCENE line first; the k-th line has the number
    /// `firstLine` + k) into this default-constructed scene. Every fault is reported on the
    /// console when its line is read; answers false at the first fatal fault, otherwise the
    /// verdict of checkGameLogic. Safe for any input, an empty vector included.
    bool deserialize(const std::vector<sf::String>& lines, std::uint32_t firstLine);
    /// The same, over lines held elsewhere, so that a loader need not copy them.
    bool deserialize(const std::vector<CodePointView>& lines, std::uint32_t firstLine);
    /// The same, printing nothing: every fault goes into `diagnostics` (with `line` set, `file`
    /// and `fileLine` left for the caller), the texts grow in `buffers`, and `layout`, when
    /// given, receives where the FORWARD and choice lines stand among `lines`.
    bool deserialize(const std::vector<CodePointView>& lines, std::uint32_t firstLine, Diagnostics& diagnostics,
                     SceneTextBuffers& buffers, SceneLayout* layout = nullptr);

    /// logError with this scene's current name.
    void logError(const sf::String& message, std::uint32_t line) const;

    /// True when the scene can be played: it has text, and either a forward link and no
    /// choices, or valid choices and no forward link. Otherwise prints every problem at once
    /// under a head line that carries `firstLine`, and answers false.
    [[nodiscard]] bool checkGameLogic(std::uint32_t firstLine) const;
    /// The same, adding the GAME_LOGIC record to `diagnostics` instead of printing it.
    bool checkGameLogic(std::uint32_t firstLine, Diagnostics& diagnostics) const;

    /// The second word of the SCENE line.
    sf::String name;
    /// Orane's text lines, each followed by a line feed.
    sf::String oraneText;
    /// Nathan's text lines, each followed by a line feed.
    sf::String nathanText;
    /// The scene that follows without a choice; empty when the scene offers choices.
    sf::String forward;
    /// In file order; a choice is addressed by its index.
    std::vector<Choice> choices;
};

} // namespace orane
