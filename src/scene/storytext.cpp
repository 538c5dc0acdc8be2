#include "scene/storytext.hpp"

#include "scene/diagnosticprinter.hpp"
#include "scene/scene.hpp"
#include "scene/tokens.hpp"

#include <algorithm>
#include <cstring>

namespace orane
{
namespace
{

/// What follows the first occurrence of `token`, or false when the line lacks it.
bool textAfterToken(CodePointView line, const sf::String& token, CodePointView& rest)
{
    const std::size_t position = line.find(viewOf(token));
    if (position == CodePointView::npos)
        return false;
    rest = line.substr(position + token.getSize());
    return true;
}

/// True when `token` starts at `line[index]`.
bool tokenAt(CodePointView line, std::size_t index, CodePointView token)
{
    return line.size() - index >= token.size() && std::equal(token.begin(), token.end(), line.begin() + index);
}

/// Four code points, compared all at once (GCC's and Clang's vector extension; plain code where
/// the processor has no vector unit).
typedef sf::Uint32 FourCodePoints __attribute__((vector_size(16)));

/// True when one of the eight code points at `codePoints` is the first of a body token.
bool mayStartToken(const sf::Uint32* codePoints)
{
    FourCodePoints hits = {0, 0, 0, 0};
    for (std::size_t half = 0; half < 2; ++half) {
        FourCodePoints c;
        std::memcpy(&c, codePoints + 4 * half, sizeof c);
        hits |= (c == sf::Uint32{'F'}) | (c == sf::Uint32{'O'}) | (c == sf::Uint32{'N'}) | (c == sf::Uint32{'*'})
                | (c == sf::Uint32{'-'});
    }
    return (hits[0] | hits[1] | hits[2] | hits[3]) != 0;
}

void reportMissingChoiceToken(std::uint32_t lineNumber, Diagnostics& diagnostics)
{
    Diagnostic diagnostic;
    diagnostic.line = lineNumber;
    diagnostic.kind = Diagnostic::KIND::MISSING_CHOICE_TOKEN;
    diagnostic.message = "CODE ERROR : Trying to read a choice in a string without choice token. "
                         "Fix -> Find Varek and kick his a**.";
    diagnostics.push_back(std::move(diagnostic));
}

/// Runs `read` with a record list of its own and prints what it reports.
template <typename Read>
bool printingReports(Read read)
{
    Diagnostics diagnostics;
    const bool done = read(diagnostics);
    DiagnosticPrinter::print(diagnostics);
    return done;
}

} // namespace

bool containsToken(CodePointView line, CodePointView token)
{
    return line.find(token) != CodePointView::npos;
}

bool containsToken(const sf::String& line, const sf::String& token)
{
    return containsToken(viewOf(line), viewOf(token));
}

LineTokens findLineTokens(CodePointView line)
{
    static const CodePointView forward = viewOf(TOKEN_FORWARD);
    static const CodePointView orane = viewOf(TOKEN_ORANE);
    static const CodePointView nathan = viewOf(TOKEN_NATHAN);
    static const CodePointView nextScene = viewOf(TOKEN_NEXT_SCENE);
    LineTokens found;
    const auto lookAt = [&](std::size_t index) {
        switch (line[index]) {
        case U'F': found.forward = found.forward || tokenAt(line, index, forward); break;
        case U'O': found.orane = found.orane || tokenAt(line, index, orane); break;
        case U'N': found.nathan = found.nathan || tokenAt(line, index, nathan); break;
        case U'*': found.choice = true; break;
        case U'-': found.nextScene = found.nextScene || tokenAt(line, index, nextScene); break;
        default: break;
        }
    };
    // Prose seldom holds a character that starts a token: eight code points at a time are
    // compared with all five in a few vector steps, and passed over together.
    constexpr std::size_t chunk = 8;
    std::size_t index = 0;
    for (; index + chunk <= line.size(); index += chunk) {
        if (!mayStartToken(line.data() + index))
            continue;
        for (std::size_t k = 0; k < chunk; ++k)
            lookAt(index + k);
    }
    for (; index < line.size(); ++index)
        lookAt(index);
    return found;
}

LineTokens findLineTokens(const sf::String& line)
{
    return findLineTokens(viewOf(line));
}

bool nextWord(CodePointView text, std::size_t& index, CodePointView& word)
{
    while (index < text.size() && text[index] == U' ')
        ++index;
    const std::size_t start = index;
    while (index < text.size() && text[index] != U' ')
        ++index;
    word = text.substr(start, index - start);
    return index > start;
}

std::vector<sf::String> splitWords(const sf::String& text)
{
    std::vector<sf::String> words;
    std::size_t index = 0;
    CodePointView word;
    while (nextWord(viewOf(text), index, word))
        words.push_back(toString(word));
    return words;
}

bool isWhitespace(sf::Uint32 codePoint)
{
    return codePoint == U' ' || (codePoint >= U'\t' && codePoint <= U'\r');
}

CodePointView trimWhitespace(CodePointView text)
{
    while (!text.empty() && isWhitespace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhitespace(text.back()))
        text.remove_suffix(1);
    return text;
}

sf::String trimWhitespace(const sf::String& text)
{
    return toString(trimWhitespace(viewOf(text)));
}

bool readChoiceBrief(CodePointView line, Choice& choice, std::uint32_t lineNumber)
{
    return printingReports(
        [&](Diagnostics& diagnostics) { return readChoiceBrief(line, choice, lineNumber, diagnostics); });
}

bool readChoiceBrief(CodePointView line, Choice& choice, std::uint32_t lineNumber, Diagnostics& diagnostics)
{
    CodePointView brief;
    if (!textAfterToken(line, TOKEN_CHOICE, brief)) {
        reportMissingChoiceToken(lineNumber, diagnostics);
        return false;
    }
    choice.briefDescription = toString(brief);
    return true;
}

bool readChoiceTarget(CodePointView line, Choice& choice, std::uint32_t lineNumber)
{
    return printingReports(
        [&](Diagnostics& diagnostics) { return readChoiceTarget(line, choice, lineNumber, diagnostics); });
}

bool readChoiceTarget(CodePointView line, Choice& choice, std::uint32_t lineNumber, Diagnostics& diagnostics)
{
    CodePointView rest;
    if (!textAfterToken(line, TOKEN_NEXT_SCENE, rest)) {
        reportMissingChoiceToken(lineNumber, diagnostics);
        return false;
    }
    choice.nextSceneName = toString(trimWhitespace(rest));
    return true;
}

} // namespace orane
