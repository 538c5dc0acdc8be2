#include "storydiagnostics.hpp"

#include "glyphcheck.hpp"
#include "letters.hpp"
#include "loadedstory.hpp"
#include "pagemeasure.hpp"
#include "spellingcheck.hpp"
#include "storychecker.hpp"
#include "tooltext.hpp"
#include "typographycheck.hpp"

#include <SFML/System/Utf.hpp>

#include <algorithm>
#include <sys/stat.h>

namespace orane::lsp
{
namespace
{

Diagnostic::SEVERITY severityOf(StoryFinding::SEVERITY severity)
{
    switch (severity) {
    case StoryFinding::SEVERITY::ERROR: return Diagnostic::SEVERITY::ERROR;
    case StoryFinding::SEVERITY::WARNING: return Diagnostic::SEVERITY::WARNING;
    case StoryFinding::SEVERITY::NOTE: break;
    }
    return Diagnostic::SEVERITY::INFORMATION;
}

/// "mtime size" of a file, empty when there is none: the word list is read again when it changes.
std::string fileStamp(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec) + " "
           + std::to_string(status.st_size);
}

/// The code point at byte `at` of `text`, and where the next one starts.
sf::Uint32 codePointAt(std::string_view text, std::size_t at, std::size_t& next)
{
    sf::Uint32 c = 0;
    const auto* begin = text.data() + at;
    const auto* end = sf::Utf8::decode(begin, text.data() + text.size(), c, 0xFFFD);
    next = at + static_cast<std::size_t>(end - begin);
    return c;
}

bool holdsWord(sf::Uint32 c)
{
    return isLetter(c) || isDigit(c) || c == U'_' || c == U'\'' || c == U'’' || c == U'-';
}

/// The word that starts at byte `at` of `line` (a misspelt word, a fact's name), else the one
/// character there (a stray punctuation mark).
std::size_t wordEnd(std::string_view line, std::size_t at)
{
    std::size_t next = at;
    std::size_t end = at;
    while (end < line.size() && holdsWord(codePointAt(line, end, next)))
        end = next;
    if (end == at && at < line.size())
        static_cast<void>(codePointAt(line, at, end));
    return end;
}

Span trimmedLine(const std::string& path, std::size_t start, std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return Span{path, start, start + text.size()};
    return Span{path, start + first, start + text.find_last_not_of(" \t") + 1};
}

} // namespace

StoryDiagnostics::StoryDiagnostics(PageMeasure* measure, std::string unmeasuredReason,
                                   std::array<std::string, 2> fontFiles)
    : measure_(measure)
    , unmeasuredReason_(std::move(unmeasuredReason))
    , fontFiles_(std::move(fontFiles))
{}

StoryDiagnostics::~StoryDiagnostics() = default;

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
    follow(workspace);
    const LoadedStory story(workspace.directory(), source_);
    std::vector<SourceText> sources;
    sources.push_back(texts_.at(workspace.directory() + "story.txt"));
    for (const sf::String& suspect : story.story().suspects()) {
        const std::string path = workspace.directory() + utf8(suspect) + ".txt";
        const auto text = texts_.find(path);
        sources.push_back(text != texts_.end() ? text->second : SourceText::read(path, {}));
    }
    SpellingCheck& words = spelling(workspace.directory());
    if (!glyphs_)
        glyphs_ = std::make_unique<GlyphCheck>(fontFiles_[0], fontFiles_[1]);
    AuthorCheckOptions authors;
    // Spelling, typography and glyphs are found file by file below; a check that cannot run at
    // all is left to the checker, which says why in check's own words.
    authors.spelling = !words.available();
    authors.typography = false;
    authors.glyphs = !glyphs_->available();
    authors.spellingCheck = &words;
    authors.oraneFont = fontFiles_[0];
    authors.nathanFont = fontFiles_[1];
    StoryChecker checker(story, measure_, unmeasuredReason_);
    checker.setAuthorOptions(authors);
    checker.setSourceTexts(&sources);
    std::vector<StoryFinding> findings = checker.findings();
    const TypographyCheck typography(sources);
    for (const SourceText& source : sources) {
        const std::vector<StoryFinding>& more = textFindings(source, words, typography);
        findings.insert(findings.end(), more.begin(), more.end());
    }
    // Edits come a few characters at a time: what a run forgets, the next may need again.
    if (measure_ != nullptr && ++runs_ % RUNS_BETWEEN_FORGETTING == 0)
        measure_->forgetUnused();
    for (const StoryFinding& finding : findings) {
        Span span;
        if (place(finding, workspace, index, span))
            found[span.file].push_back(Diagnostic{span, severityOf(finding.severity), finding.message});
    }
    return found;
}

void StoryDiagnostics::follow(Workspace& workspace)
{
    std::vector<std::string> paths = workspace.storyFiles();
    paths.push_back(workspace.suspectsPath());
    for (const std::string& path : paths) {
        const std::uint64_t revision = workspace.revision(path);
        const auto known = revisions_.find(path);
        if (known != revisions_.end() && known->second == revision)
            continue;
        revisions_[path] = revision;
        const std::string& text = workspace.document(path).text();
        if (workspace.exists(path))
            source_.setBuffer(path, text);
        else
            source_.removeBuffer(path);
        texts_.insert_or_assign(path, SourceText::read(path, workspace.exists(path) ? text : std::string()));
    }
}

SpellingCheck& StoryDiagnostics::spelling(const std::string& directory)
{
    const std::string wordList = directory + SpellingCheck::WORD_LIST;
    const std::string stamp = fileStamp(wordList);
    if (!spelling_ || stamp != wordListStamp_) {
        spelling_.reset();
        spelling_ = std::make_unique<SpellingCheck>(AuthorCheckOptions().dictionaryDirectory, wordList,
                                                    SpellingCheck::defaultCacheFile());
        wordListStamp_ = stamp;
        textFindings_.clear();
    }
    return *spelling_;
}

const std::vector<StoryFinding>& StoryDiagnostics::textFindings(const SourceText& source, SpellingCheck& words,
                                                                const TypographyCheck& typography)
{
    static const std::vector<StoryFinding> none;
    const auto revision = revisions_.find(source.path());
    if (revision == revisions_.end() || source.scenes().empty())
        return none;
    TextFindings& known = textFindings_[source.path()];
    if (known.revision == revision->second && known.curlyApostrophes == typography.curlyApostrophes())
        return known.findings;
    known.revision = revision->second;
    known.curlyApostrophes = typography.curlyApostrophes();
    known.findings = typography.findings(source);
    const std::vector<SourceText> one{source};
    if (words.available()) {
        const std::vector<StoryFinding> spelling = words.findings(one);
        known.findings.insert(known.findings.end(), spelling.begin(), spelling.end());
    }
    if (glyphs_->available()) {
        const std::vector<StoryFinding> glyphs = glyphs_->findings(one);
        known.findings.insert(known.findings.end(), glyphs.begin(), glyphs.end());
    }
    return known.findings;
}

bool StoryDiagnostics::place(const StoryFinding& finding, Workspace& workspace, const StoryIndex& index, Span& span)
{
    if (finding.file.empty())
        return false;
    std::string path = finding.file;
    std::size_t line = finding.line == 0 ? 0 : finding.line - 1;
    if (path.compare(0, workspace.directory().size(), workspace.directory()) != 0 || !workspace.exists(path)) {
        // What concerns the whole directory, and a suspect's missing file, is shown in
        // suspects.ini, on the suspect's line when there is one.
        const std::string name =
            path.size() > workspace.directory().size() + 4
                ? path.substr(workspace.directory().size(), path.size() - workspace.directory().size() - 4)
                : std::string();
        path = workspace.suspectsPath();
        line = 0;
        for (std::size_t k = 0; k < index.suspectLines().size(); ++k) {
            if (!name.empty() && index.suspectLines()[k].name == name) {
                line = k;
                break;
            }
        }
        span = trimmedLine(path, workspace.document(path).lineStart(line), workspace.document(path).line(line));
        return true;
    }
    const TextDocument& document = workspace.document(path);
    const std::size_t start = document.lineStart(line);
    const std::string_view text = document.line(line);
    if (finding.line > 0 && finding.column > 0) {
        std::size_t at = document.offsetAt(
            Position{static_cast<std::uint32_t>(line), static_cast<std::uint32_t>(finding.column - 1)},
            PositionEncoding::UTF32);
        at = std::max(at, start);
        span = Span{path, at, start + wordEnd(text, at - start)};
        return true;
    }
    if (const StoryIndex::File* file = index.file(path); file != nullptr && finding.line > 0) {
        // A link's fault sits on the link's name, a scene's on the name of its SCENE line.
        for (const StoryIndex::Link& link : file->links) {
            const bool onLine = link.span.begin >= start && link.span.begin <= start + text.size();
            const bool sameChoice = !finding.choice.has_value()
                                    || (link.choice >= 0 && static_cast<std::size_t>(link.choice) == *finding.choice);
            if (onLine && sameChoice) {
                span = link.span;
                return true;
            }
        }
        for (const StoryIndex::Scene& scene : file->scenes) {
            if (scene.firstLine == line && scene.nameSpan.end > scene.nameSpan.begin) {
                span = scene.nameSpan;
                return true;
            }
        }
    }
    span = trimmedLine(path, start, text);
    return true;
}

} // namespace orane::lsp
