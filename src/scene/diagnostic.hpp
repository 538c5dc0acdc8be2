#pragma once

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orane
{

/// One thing the story loader or its checks found, as data: DiagnosticPrinter turns it into the
/// console lines the game has always printed, tools place it with `file` and `fileLine`.
struct Diagnostic
{
    /// What was found; it decides how the record is printed.
    enum class KIND
    {
        // Faults of one scene, found while its lines are read ("ERROR (line N - scene) : ...").
        MISSING_SCENE_TOKEN,
        BAD_SCENE_LINE,
        SECOND_FORWARD,
        FORWARD_AFTER_CHOICE,
        BAD_FORWARD_LINE,
        SECOND_WRITER,
        WRITER_AFTER_CHOICE,
        CHOICE_AFTER_INVALID_CHOICE,
        BAD_NEXT_SCENE_NAME,
        TEXT_WITHOUT_WRITER,
        GAME_LOGIC,
        MISSING_CHOICE_TOKEN,
        // Faults of a file, found by the loader ("ERROR : ...").
        SCENE_NOT_READ,
        INVALID_UTF8,
        FILE_TOO_LARGE,
        NO_SCENE_IN_FILE,
        SUSPECTS_UNREADABLE,
        /// The game stops there without a word: printed as nothing.
        STORY_FILE_UNREADABLE,
        // Faults of the whole story, found by the checks after loading.
        BROKEN_FORWARD,
        BROKEN_CHOICE,
        NO_START_SCENE,
        SUSPECT_NAME_HOLDS_BEGIN,
        SUSPECT_SCENE_MISSING,
        FORWARD_CYCLE,
    };

    enum class SEVERITY
    {
        /// Play cannot start.
        ERROR,
        /// Reported, and loading goes on (the line is passed over).
        WARNING,
    };

    /// A line under a record's head line, indented by `depth` runs of four dashes.
    struct Detail
    {
        std::size_t depth = 1;
        std::string text;
    };

    /// The file as the loader named it (directory + name); empty for faults of the whole story.
    std::string file;
    /// The line as the game counts it: from 0, comment lines left out. Meaningful with a scene
    /// fault (the number the game prints) and with SCENE_NOT_READ.
    std::uint32_t line = 0;
    /// The line in the file as editors count it, from 1; 0 when the record has no line.
    std::uint32_t fileLine = 0;
    /// The scene concerned; empty when none (or when its SCENE line has no name yet).
    sf::String scene;
    /// The choice concerned, counted from 0 in the scene's order.
    std::optional<std::size_t> choice;
    KIND kind = KIND::GAME_LOGIC;
    SEVERITY severity = SEVERITY::ERROR;
    /// The words after the printed frame ("ERROR (line N - scene) : ", "ERROR : "), UTF-8.
    std::string message;
    /// Only GAME_LOGIC has these: every problem of the scene, in the game's order.
    std::vector<Detail> details;
};

using Diagnostics = std::vector<Diagnostic>;

/// True when `diagnostics` holds a record of SEVERITY::ERROR.
[[nodiscard]] bool holdsError(const Diagnostics& diagnostics);

} // namespace orane
