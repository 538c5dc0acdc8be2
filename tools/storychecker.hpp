#pragma once

#include "authorchecks.hpp"
#include "loadedstory.hpp"
#include "pagemeasure.hpp"
#include "storyfinding.hpp"
#include "storygraph.hpp"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orane
{

/// `orane-story check`: everything the game reports when it loads the story (warnings
/// included), each line led by the place it concerns, then what the game does not see: scenes
/// no path reaches, groups of scenes from which no ending can be reached, suspect names that
/// cannot name a file, scenes defined twice, pages that overflow and choice labels wider than
/// Nathan's column. A one-line summary ends it.
class StoryChecker
{
public:
    /// `measure` may be null (no display, no fonts): pages are then not measured, and
    /// `unmeasuredReason` says why.
    StoryChecker(const LoadedStory& story, PageMeasure* measure, std::string unmeasuredReason = {});

    /// Prints the report on the console; answers the exit status: 0 without errors, 1 with.
    int run();
    /// Every finding as the JSON document holds them, in its order; prints nothing.
    [[nodiscard]] std::vector<StoryFinding> findings();

    enum class FORMAT
    {
        TEXT, ///< one line per finding and a summary, for people
        JSON, ///< one JSON document of every finding, for editors and scripts
    };
    void setFormat(FORMAT format) { format_ = format; }

    /// Runs the authors' checks (annotations, continuity, prose) too, as `options` says; without
    /// this call the checker reports what it did before them.
    void setAuthorOptions(const AuthorCheckOptions& options) { authorOptions_ = options; }
    /// The texts of the story files for the authors' checks, in the game's order, instead of
    /// reading them from disk (an editor's buffers). Not owned: they must outlive the run.
    void setSourceTexts(const std::vector<SourceText>* sources) { sources_ = sources; }

    [[nodiscard]] std::size_t errorCount() const { return errors_; }
    [[nodiscard]] std::size_t warningCount() const { return warnings_; }

private:
    void runChecks();
    void reportGameChecks();
    void reportGameDiagnostic(const Diagnostic& diagnostic);
    void checkSuspectNames();
    void checkDuplicates();
    void checkReachability();
    void reportDeadEnds(const StoryGraph& graph, const std::set<sf::String>& ending);
    void checkPages();
    void checkScenePages(const Scene& scene, const std::string& place, bool composed);
    void checkComposedPages();

    [[nodiscard]] std::string scenePlace(const sf::String& sceneName) const;
    void warning(const std::string& place, const std::string& message);
    void note(const std::string& message);
    void checkForAuthors();
    /// Prints `text` (TEXT), or keeps `record` for the JSON document.
    void emit(const std::string& text, StoryFinding record);
    /// A record of `kind` at `place` ("file:line" or "file").
    static StoryFinding recordAt(const std::string& place, StoryFinding::SEVERITY severity, const std::string& kind);

    const LoadedStory& story_;
    PageMeasure* measure_ = nullptr;
    std::string unmeasuredReason_;
    std::optional<AuthorCheckOptions> authorOptions_;
    const std::vector<SourceText>* sources_ = nullptr;
    FORMAT format_ = FORMAT::TEXT;
    std::vector<StoryFinding> records_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

} // namespace orane
