#pragma once

#include "scenemanager/bufferedstorysource.hpp"
#include "sourcetext.hpp"
#include "storyfinding.hpp"
#include "storyindex.hpp"
#include "workspace.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orane
{
class GlyphCheck;
class PageMeasure;
class SpellingCheck;
class TypographyCheck;
} // namespace orane

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

/// Everything `orane-story check` finds in the story as the editor sees it, file by file: the
/// loader reads the workspace's texts (open buffers over the files on disk), and check's own
/// records are placed on the words they concern.
class StoryDiagnostics
{
public:
    /// A story file larger than this (ten times a long novel) is not checked on every edit.
    static constexpr std::size_t MAX_FILE_BYTES = std::size_t{8} << 20;

    /// `measure` may be null: pages are then not measured and `unmeasuredReason` says why.
    /// `fontFiles`: Orane's and Nathan's fonts, for the glyph check.
    StoryDiagnostics(PageMeasure* measure, std::string unmeasuredReason, std::array<std::string, 2> fontFiles);
    ~StoryDiagnostics();
    StoryDiagnostics(const StoryDiagnostics&) = delete;
    StoryDiagnostics& operator=(const StoryDiagnostics&) = delete;

    /// Every finding, keyed by the file it is placed in (suspects.ini for what concerns the
    /// whole directory or a missing file).
    [[nodiscard]] std::map<std::string, std::vector<Diagnostic>> run(Workspace& workspace, const StoryIndex& index);

    /// Where `finding` is shown: the file it names (suspects.ini, on the suspect's line, when
    /// that file does not exist) and the words of its line it speaks of. False for a finding
    /// about no place (a note on the run).
    [[nodiscard]] static bool place(const StoryFinding& finding, Workspace& workspace, const StoryIndex& index,
                                    Span& span);

private:
    /// Brings the loader's buffers and the authors' texts up to date with the workspace.
    void follow(Workspace& workspace);
    SpellingCheck& spelling(const std::string& directory);
    /// What `source`'s text decides alone (its spelling, its typography, its characters against
    /// the fonts), found again only when that text changed (or, for typography, the story's
    /// apostrophe): an edit costs the edited file, not the story.
    const std::vector<StoryFinding>& textFindings(const SourceText& source, SpellingCheck& words,
                                                  const TypographyCheck& typography);

    PageMeasure* measure_ = nullptr;
    std::string unmeasuredReason_;
    std::array<std::string, 2> fontFiles_;
    BufferedStorySource source_;
    /// Path -> the revision held in source_ and texts_.
    std::map<std::string, std::uint64_t> revisions_;
    std::map<std::string, SourceText> texts_;
    std::unique_ptr<SpellingCheck> spelling_;
    std::unique_ptr<GlyphCheck> glyphs_;
    struct TextFindings
    {
        std::uint64_t revision = 0; ///< 0: never found
        bool curlyApostrophes = false;
        std::vector<StoryFinding> findings;
    };
    std::map<std::string, TextFindings> textFindings_;
    std::string wordListStamp_;
    static constexpr std::size_t RUNS_BETWEEN_FORGETTING = 64;
    std::size_t runs_ = 0;
};

} // namespace orane::lsp
