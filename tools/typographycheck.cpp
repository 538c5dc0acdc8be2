#include "typographycheck.hpp"

#include "letters.hpp"
#include "tooltext.hpp"

#include <algorithm>
#include <iterator>
#include <map>

namespace orane
{
namespace
{

constexpr sf::Uint32 OPENING = U'\u00AB';
constexpr sf::Uint32 CLOSING = U'\u00BB';
constexpr sf::Uint32 RIGHT_QUOTE = U'\u2019';

/// The blanks French typography puts before high marks: a space, or a no-break one.
bool isBlank(sf::Uint32 c)
{
    return c == U' ' || c == U'\u00A0' || c == U'\u202F' || c == U'\t';
}

bool isHighMark(sf::Uint32 c)
{
    return c == U';' || c == U':' || c == U'!' || c == U'?';
}

std::string markName(sf::Uint32 c)
{
    return quoted(sf::String(c));
}

StoryFinding typography(const std::string& file, const SourceText::Scene& scene, std::size_t line, std::size_t column,
                        const std::string& message)
{
    StoryFinding finding;
    finding.severity = StoryFinding::SEVERITY::WARNING;
    finding.kind = "typography";
    finding.file = file;
    finding.line = line;
    finding.column = column;
    finding.scene = scene.name;
    finding.message = message;
    return finding;
}

bool isPunctuationOnly(const sf::String& text)
{
    bool any = false;
    for (const sf::Uint32 c : text) {
        if (isBlank(c))
            continue;
        if (isLetter(c) || isDigit(c))
            return false;
        any = true;
    }
    return any;
}

} // namespace

TypographyCheck::TypographyCheck(const std::vector<SourceText>& sources)
    : sources_(sources)
{
    std::size_t straight = 0;
    std::size_t curly = 0;
    for (const SourceText& source : sources) {
        for (const SourceText::Scene& scene : source.scenes()) {
            for (const SourceText::TextLine& text : scene.texts) {
                straight += static_cast<std::size_t>(std::count(text.text.begin(), text.text.end(), sf::Uint32{U'\''}));
                curly += static_cast<std::size_t>(std::count(text.text.begin(), text.text.end(), RIGHT_QUOTE));
            }
        }
    }
    curlyApostrophes_ = curly > straight;
}

std::vector<StoryFinding> TypographyCheck::findings() const
{
    std::vector<StoryFinding> found;
    for (const SourceText& source : sources_) {
        std::vector<StoryFinding> more = findings(source);
        found.insert(found.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
    }
    return found;
}

std::vector<StoryFinding> TypographyCheck::findings(const SourceText& source) const
{
    std::vector<StoryFinding> found;
    for (const SourceText::Scene& scene : source.scenes()) {
        for (const SourceText::TextLine& text : scene.texts)
            checkLine(source.path(), scene, text, found);
        checkQuotes(source.path(), scene, found);
    }
    return found;
}

void TypographyCheck::checkLine(const std::string& file, const SourceText::Scene& scene,
                                const SourceText::TextLine& text, std::vector<StoryFinding>& found) const
{
    const sf::String& line = text.text;
    const std::size_t size = line.getSize();
    // A label's blanks after its "*" only part it from the star.
    std::size_t first = 0;
    while (text.kind == SourceText::TextLine::KIND::LABEL && first < size && isBlank(line[first]))
        ++first;
    const auto report = [&](std::size_t index, const std::string& message) {
        found.push_back(typography(file, scene, text.line, text.column + index, message));
    };
    for (std::size_t i = first; i < size; ++i) {
        const sf::Uint32 c = line[i];
        const bool afterText = i > first;
        const sf::Uint32 before = afterText ? line[i - 1] : 0;
        const sf::Uint32 after = i + 1 < size ? line[i + 1] : 0;
        // A colon between digits is a time of day ("10:30"), not punctuation.
        const bool highMarkGlued = isHighMark(c) && afterText && !isBlank(before) && !isHighMark(before)
                                   && before != CLOSING && before != U'.'
                                   && !(c == U':' && isDigit(before) && isDigit(after));
        const bool closingGlued = c == CLOSING && afterText && !isBlank(before);
        if (highMarkGlued || closingGlued) {
            report(i, "no blank before " + markName(c) + ": French sets a space before ; : ! ? and »");
        } else if (c == OPENING && i + 1 < size && !isBlank(after)) {
            report(i, "no blank after " + markName(c) + ": French sets a space after «");
        } else if ((c == U',' || c == U'.') && afterText && isBlank(before) && !(c == U'.' && after == U'.')) {
            report(i - 1, "a blank before " + markName(c) + ": French sets none there");
        }
        if (c == U'.' && after == U'.' && i + 2 < size && line[i + 2] == U'.' && (i == 0 || line[i - 1] != U'.')) {
            report(i, "three dots: write the ellipsis \"…\" as one character");
            if (afterText && isBlank(before))
                report(i - 1, "a blank before \"…\": French sets none there");
        }
        if (c == U'\'' && curlyApostrophes_)
            report(i, "a straight apostrophe \"'\": the story writes \"’\" everywhere else");
        if (c == U' ' && before == U' ' && afterText && i + 1 < size && (i < 2 || line[i - 2] != U' '))
            report(i - 1, "a doubled blank");
    }
    if (text.endsPage && isPunctuationOnly(line))
        report(first, "the page ends on a line of punctuation alone: join it to the line before");
}

void TypographyCheck::checkQuotes(const std::string& file, const SourceText::Scene& scene,
                                  std::vector<StoryFinding>& found) const
{
    // Quotes pair up within one page (a paragraph may go on inside them), or within one answer.
    const auto pageOf = [](const SourceText::TextLine& text) {
        return text.kind == SourceText::TextLine::KIND::ORANE    ? std::size_t{0}
               : text.kind == SourceText::TextLine::KIND::NATHAN ? std::size_t{1}
               : text.kind == SourceText::TextLine::KIND::LABEL  ? 2 + 2 * text.choice
                                                                 : 3 + 2 * text.choice;
    };
    struct Open
    {
        std::size_t line = 0;
        std::size_t column = 0;
    };
    std::map<std::size_t, std::vector<Open>> open;
    for (const SourceText::TextLine& text : scene.texts) {
        std::vector<Open>& stack = open[pageOf(text)];
        for (std::size_t i = 0; i < text.text.getSize(); ++i) {
            if (text.text[i] == OPENING) {
                stack.push_back(Open{text.line, text.column + i});
            } else if (text.text[i] == CLOSING) {
                if (stack.empty())
                    found.push_back(typography(file, scene, text.line, text.column + i, "a \"»\" closes no \"«\""));
                else
                    stack.pop_back();
            }
        }
    }
    for (const auto& [page, stack] : open) {
        for (const Open& unclosed : stack)
            found.push_back(
                typography(file, scene, unclosed.line, unclosed.column, "a \"«\" that no \"»\" closes on its page"));
    }
}

} // namespace orane
