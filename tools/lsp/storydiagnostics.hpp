#pragma once

#include "stagedstory.hpp"
#include "storyindex.hpp"
#include "workspace.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orane
{
class PageMeasure;
}

namespace orane::lsp
{

/// One finding of `orane-story check`, placed on the words it is about.
struct Diagnostic
{
    enum class SEVERITY
    {
        ERROR = 1,
        WARNING = 2,
        INFORMATION = 3,
    };
    Span span;
    SEVERITY severity = SEVERITY::ERROR;
    std::string message;
};

/// Everything `orane-story check` reports about the story as the editor sees it, file by file.
class StoryDiagnostics
{
public:
    /// A story file larger than this (ten times a long novel) is not checked on every edit.
    static constexpr std::size_t MAX_FILE_BYTES = std::size_t{8} << 20;

    /// `measure` may be null: pages are then not measured and `unmeasuredReason` says why.
    StoryDiagnostics(PageMeasure* measure, std::string unmeasuredReason);

    /// Every finding, keyed by the file it is placed in (suspects.ini for what concerns the
    /// whole directory or a missing file).
    [[nodiscard]] std::map<std::string, std::vector<Diagnostic>> run(Workspace& workspace, const StoryIndex& index);

    /// The words of `line` that a finding about it is best shown on: the link or quoted name
    /// it speaks of, else the line's text.
    [[nodiscard]] static Span placeOnLine(const std::string& path, std::size_t line, const std::string& message,
                                          Workspace& workspace, const StoryIndex& index);

private:
    PageMeasure* measure_ = nullptr;
    std::string unmeasuredReason_;
    StagedStory staged_;
    static constexpr std::size_t RUNS_BETWEEN_FORGETTING = 64;
    std::size_t runs_ = 0;
};

} // namespace orane::lsp
