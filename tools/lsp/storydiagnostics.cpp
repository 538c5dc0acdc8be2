#include "storydiagnostics.hpp"

#include "loadedstory.hpp"
#include "pagemeasure.hpp"
#include "storychecker.hpp"

#include <ryn/core/console.hpp>

#include <algorithm>

namespace orane::lsp
{
namespace
{

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::vector<std::string> quotedNames(const std::string& message)
{
    std::vector<std::string> names;
    for (std::size_t open = message.find('"'); open != std::string::npos;) {
        const std::size_t close = message.find('"', open + 1);
        if (close == std::string::npos)
            break;
        names.push_back(message.substr(open + 1, close - open - 1));
        open = message.find('"', close + 1);
    }
    return names;
}

/// The number after "choice " in a message, or -2 when there is none.
int choiceNumber(const std::string& message)
{
    const std::size_t at = message.find("choice ");
    if (at == std::string::npos)
        return -2;
    std::size_t end = at + 7;
    while (end < message.size() && message[end] >= '0' && message[end] <= '9')
        ++end;
    return end == at + 7 ? -2 : std::stoi(message.substr(at + 7, end - at - 7));
}

} // namespace

StoryDiagnostics::StoryDiagnostics(PageMeasure* measure, std::string unmeasuredReason)
    : measure_(measure)
    , unmeasuredReason_(std::move(unmeasuredReason))
{}

std::map<std::string, std::vector<Diagnostic>> StoryDiagnostics::run(Workspace& workspace, const StoryIndex& index)
{
    std::map<std::string, std::vector<Diagnostic>> found;
    for (const std::string& path : workspace.storyFiles()) {
        const std::size_t size = workspace.document(path).text().size();
        if (size <= MAX_FILE_BYTES)
            continue;
        found[path].push_back(Diagnostic{Span{path, 0, 0}, Diagnostic::SEVERITY::WARNING,
                                         "this file holds " + std::to_string(size >> 20U)
                                             + " MB, too much to check as you type: orane-story check checks it"});
    }
    if (!found.empty())
        return found;
    const std::string directory = staged_.stage(workspace);
    if (directory.empty())
        return found;
    std::vector<std::string> report;
    {
        ryn::console::Capture capture;
        const LoadedStory story(directory);
        StoryChecker checker(story, measure_, unmeasuredReason_);
        static_cast<void>(checker.run());
        report = capture.lines();
    }
    // Edits come a few characters at a time: what a run forgets, the next may need again.
    if (measure_ != nullptr && ++runs_ % RUNS_BETWEEN_FORGETTING == 0)
        measure_->forgetUnused();
    Diagnostic* last = nullptr;
    for (const std::string& line : report) {
        if (!startsWith(line, directory)) {
            // The lines that detail a report ("---- ...") belong to it; notes and the summary
            // are about the run, not about a place.
            if (last != nullptr && !startsWith(line, "note: ") && !startsWith(line, "orane-story check:"))
                last->message += "\n" + line;
            else
                last = nullptr;
            continue;
        }
        const std::string rest = line.substr(directory.size());
        const std::size_t separator = rest.find(": ");
        if (separator == std::string::npos)
            continue;
        std::string head = rest.substr(0, separator);
        std::string message = rest.substr(separator + 2);
        // "file:line" or, for the prose and continuity checks, "file:line:column".
        std::vector<std::size_t> numbers;
        for (std::size_t colon = head.rfind(':');
             numbers.size() < 2 && colon != std::string::npos && colon + 1 < head.size()
             && std::all_of(head.begin() + static_cast<std::ptrdiff_t>(colon) + 1, head.end(),
                            [](char c) { return c >= '0' && c <= '9'; });
             colon = head.rfind(':')) {
            numbers.insert(numbers.begin(), std::stoul(head.substr(colon + 1)));
            head.resize(colon);
        }
        std::size_t lineNumber = numbers.empty() || numbers.front() == 0 ? 0 : numbers.front() - 1;
        if (startsWith(message, "ERROR : couldn't deserialize") && last != nullptr) {
            last->message += "\n" + message;
            continue;
        }
        Diagnostic diagnostic;
        diagnostic.severity = Diagnostic::SEVERITY::ERROR;
        if (startsWith(message, "warning: ")) {
            diagnostic.severity = Diagnostic::SEVERITY::WARNING;
            message.erase(0, 9);
        } else if (startsWith(message, "note: ")) {
            diagnostic.severity = Diagnostic::SEVERITY::INFORMATION;
            message.erase(0, 6);
        } else if (startsWith(message, "error: ")) {
            message.erase(0, 7);
        }
        std::string path = workspace.directory() + head;
        if (head.empty() || !workspace.exists(path)) {
            // A missing suspect's file is shown where the suspect is named.
            const std::string suspect = head.size() > 4 ? head.substr(0, head.size() - 4) : std::string();
            path = workspace.suspectsPath();
            lineNumber = 0;
            for (std::size_t k = 0; k < index.suspectLines().size(); ++k) {
                if (!head.empty() && index.suspectLines()[k].name == suspect) {
                    lineNumber = k;
                    break;
                }
            }
        }
        diagnostic.message = message;
        diagnostic.span = placeOnLine(path, lineNumber, message, workspace, index);
        std::vector<Diagnostic>& list = found[path];
        list.push_back(std::move(diagnostic));
        last = &list.back();
    }
    return found;
}

Span StoryDiagnostics::placeOnLine(const std::string& path, std::size_t line, const std::string& message,
                                   Workspace& workspace, const StoryIndex& index)
{
    const TextDocument& document = workspace.document(path);
    const std::size_t start = document.lineStart(line);
    const std::vector<std::string> names = quotedNames(message);
    if (const StoryIndex::File* file = index.file(path)) {
        const StoryIndex::Scene* scene = index.sceneAt(*file, line);
        const int choice = choiceNumber(message);
        for (const StoryIndex::Link& link : file->links) {
            if (scene == nullptr || &file->scenes[link.scene] != scene)
                continue;
            const bool named = std::find(names.begin(), names.end(), link.target) != names.end();
            if (named && (choice == -2 || link.choice == choice))
                return link.span;
        }
    }
    const std::string_view text = document.line(line);
    for (const std::string& name : names) {
        const std::size_t at = name.empty() ? std::string_view::npos : text.find(name);
        if (at != std::string_view::npos)
            return Span{path, start + at, start + at + name.size()};
    }
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return Span{path, start, start + text.size()};
    return Span{path, start + first, start + text.find_last_not_of(" \t") + 1};
}

} // namespace orane::lsp
