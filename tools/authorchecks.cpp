#include "authorchecks.hpp"

#include "factflow.hpp"
#include "glyphcheck.hpp"
#include "slipcheck.hpp"
#include "spellingcheck.hpp"
#include "typographycheck.hpp"

#include <ryn/core/console.hpp>

#include <optional>

namespace orane
{

std::vector<SourceText> readSourceTexts(const std::string& directory, const std::vector<sf::String>& suspects)
{
    std::vector<SourceText> sources{SourceText::load(directory + "story.txt")};
    for (const sf::String& suspect : suspects)
        sources.push_back(SourceText::load(directory + ryn::console::toUtf8(suspect.toWideString()) + ".txt"));
    return sources;
}

std::vector<StoryFinding> runAuthorChecks(const AuthorStory& story, const AuthorCheckOptions& options)
{
    std::vector<StoryFinding> findings;
    for (const SourceText& source : story.sources)
        findings.insert(findings.end(), source.annotationFindings().begin(), source.annotationFindings().end());
    if (options.continuity && story.story != nullptr) {
        FactFlow flow(*story.story, story.sources);
        if (flow.hasAnnotations()) {
            flow.solve();
            const std::vector<StoryFinding> proved = flow.findings();
            findings.insert(findings.end(), proved.begin(), proved.end());
        }
    }
    const auto add = [&findings](const std::vector<StoryFinding>& more) {
        findings.insert(findings.end(), more.begin(), more.end());
    };
    const auto unavailable = [&findings, &story](const std::string& message) {
        StoryFinding finding;
        finding.severity = StoryFinding::SEVERITY::WARNING;
        finding.kind = "setup";
        finding.file = story.directory;
        finding.message = message;
        findings.push_back(std::move(finding));
    };
    if (options.spelling) {
        std::optional<SpellingCheck> own;
        SpellingCheck* spelling = options.spellingCheck;
        if (spelling == nullptr)
            spelling = &own.emplace(options.dictionaryDirectory, story.directory + SpellingCheck::WORD_LIST,
                                    options.spellingCache);
        if (spelling->available())
            add(spelling->findings(story.sources));
        else
            unavailable("spelling was not checked: " + spelling->error());
    }
    if (options.typography)
        add(TypographyCheck(story.sources).findings());
    if (options.glyphs) {
        const GlyphCheck glyphs(options.oraneFont, options.nathanFont);
        if (glyphs.available())
            add(glyphs.findings(story.sources));
        else
            unavailable("characters were not checked against the fonts: " + glyphs.error());
    }
    if (options.slips)
        add(SlipCheck(story.sources, story.directory, story.suspects).findings());
    sortFindings(findings);
    return findings;
}

} // namespace orane
