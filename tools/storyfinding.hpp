#pragma once

#include <SFML/System/String.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orane
{

/// One thing the authors' checks found in a story: where it is, what kind it is, and what to
/// say about it. Lines and columns count from 1 as editors show them (0: the whole file or
/// line); columns count code points.
struct StoryFinding
{
    enum class SEVERITY
    {
        ERROR,
        WARNING,
        NOTE,
    };

    SEVERITY severity = SEVERITY::WARNING;
    /// A short stable name for scripts: "continuity", "fact", "annotation", "spelling",
    /// "typography", "glyph", "slip".
    std::string kind;
    std::string file;
    std::size_t line = 0;
    std::size_t column = 0;
    /// The scene concerned; empty when none.
    sf::String scene;
    std::optional<std::size_t> choice;
    /// The fact concerned by a continuity finding.
    sf::String fact;
    std::string message;
    /// Spelling suggestions, best first.
    std::vector<std::string> suggestions;
    /// For a continuity finding: the labels a player clicks from "begin" to get there.
    std::vector<sf::String> path;
};

/// "file:line:column: severity: message" (line and column left out when 0).
std::string formatFinding(const StoryFinding& finding);

/// "error", "warning" or "note".
std::string severityName(StoryFinding::SEVERITY severity);

/// Orders findings by file, line and column, the way an author reads them; stable otherwise.
void sortFindings(std::vector<StoryFinding>& findings);

} // namespace orane
