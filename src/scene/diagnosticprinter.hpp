#pragma once

#include "scene/diagnostic.hpp"

#include <string>
#include <vector>

namespace orane
{

/// Writes diagnostics as the game prints them on its console, line for line.
class DiagnosticPrinter
{
public:
    /// The console lines of one record (UTF-8, without line feeds): none for
    /// STORY_FILE_UNREADABLE, a head line then one line per detail for GAME_LOGIC, else one.
    [[nodiscard]] static std::vector<std::string> lines(const Diagnostic& diagnostic);

    /// The first of lines(), or empty when there is none.
    [[nodiscard]] static std::string headLine(const Diagnostic& diagnostic);

    /// Writes lines() of each record on the console, in order.
    static void print(const Diagnostics& diagnostics);
    static void print(const Diagnostic& diagnostic);
};

} // namespace orane
