#include "scene/diagnosticprinter.hpp"

#include <ryn/core/console.hpp>

namespace orane
{
namespace
{

using KIND = Diagnostic::KIND;

/// Faults of one scene carry the line the game counts, and the scene's name when it has one.
bool isSceneFault(KIND kind)
{
    return kind <= KIND::MISSING_CHOICE_TOKEN;
}

std::string utf8(const sf::String& text)
{
    return ryn::console::toUtf8(text.toWideString());
}

std::string frame(const Diagnostic& diagnostic)
{
    if (isSceneFault(diagnostic.kind)) {
        std::string text = "ERROR (line " + std::to_string(diagnostic.line);
        if (!diagnostic.scene.isEmpty())
            text += " - " + utf8(diagnostic.scene);
        return text + ") : ";
    }
    if (diagnostic.kind == KIND::SUSPECTS_UNREADABLE)
        return "FATAL ERROR : ";
    return "ERROR : ";
}

} // namespace

std::vector<std::string> DiagnosticPrinter::lines(const Diagnostic& diagnostic)
{
    if (diagnostic.kind == KIND::STORY_FILE_UNREADABLE)
        return {};
    std::vector<std::string> printed{frame(diagnostic) + diagnostic.message};
    for (const Diagnostic::Detail& detail : diagnostic.details)
        printed.push_back(std::string(4 * detail.depth, '-') + " " + detail.text);
    return printed;
}

std::string DiagnosticPrinter::headLine(const Diagnostic& diagnostic)
{
    if (diagnostic.kind == KIND::STORY_FILE_UNREADABLE)
        return {};
    return frame(diagnostic) + diagnostic.message;
}

void DiagnosticPrinter::print(const Diagnostics& diagnostics)
{
    for (const Diagnostic& diagnostic : diagnostics)
        print(diagnostic);
}

void DiagnosticPrinter::print(const Diagnostic& diagnostic)
{
    for (const std::string& line : lines(diagnostic))
        ryn::console::writeLine(line);
}

} // namespace orane
