// The notebook's line breaker against the character-by-character reference: the same lines
// wherever no word is wider than a line (there the breaker cuts the word, the reference lets it
// run off the page). French blanks, after « and before ; : ! ? », are never breaks for the
// notebook and may be for the reference: a text that holds one is checked for that rule instead.
//
// Input layout: one byte for the hand and style, one for the line width, then UTF-8 text.

#include "book/linebreaker.hpp"

#include "fuzzing.hpp"
#include "referencelinebreaker.hpp"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Text.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace
{

constexpr unsigned int CHARACTER_SIZE = 20; // the notebook's
/// The reference re-measures the whole text for every character; longer texts would only
/// slow the search down without reaching new code.
constexpr std::size_t MAX_CHARACTERS = 320;

const sf::Font& hand(std::size_t index)
{
    static const std::array<std::unique_ptr<sf::Font>, 2> fonts = [] {
        std::array<std::unique_ptr<sf::Font>, 2> loaded;
        const std::array<const char*, 2> paths = {ORANE_FUZZ_ORANE_FONT, ORANE_FUZZ_NATHAN_FONT};
        for (std::size_t i = 0; i < loaded.size(); ++i) {
            loaded[i] = std::make_unique<sf::Font>();
            fuzzing::require(loaded[i]->loadFromFile(paths[i]), "the handwriting fonts load");
        }
        return loaded;
    }();
    return *fonts[index % fonts.size()];
}

bool staysWithWordBefore(sf::Uint32 character)
{
    return character == U';' || character == U':' || character == U'!' || character == U'?' || character == U'\u00BB';
}

/// A blank in a run that follows « or comes just before a mark that stays with its word.
bool isBoundBlank(const sf::String& text, std::size_t index)
{
    std::size_t before = index;
    while (before > 0 && text[before - 1] == U' ')
        --before;
    std::size_t after = index;
    while (after < text.getSize() && text[after] == U' ')
        ++after;
    return (before > 0 && text[before - 1] == U'\u00AB')
           || (after < text.getSize() && staysWithWordBefore(text[after]));
}

bool isBreak(const sf::String& text, std::size_t index)
{
    return text[index] == U'\n' || (text[index] == U' ' && !isBoundBlank(text, index));
}

bool holdsBoundBlank(const sf::String& text)
{
    for (std::size_t i = 0; i < text.getSize(); ++i)
        if (text[i] == U' ' && isBoundBlank(text, i))
            return true;
    return false;
}

/// Only blanks turned into line feeds, and never one just before a mark that stays with its word
/// nor one after «.
bool keepsMarksWithTheirWords(const sf::String& text, const sf::String& broken)
{
    if (broken.getSize() != text.getSize())
        return false;
    for (std::size_t i = 0; i < text.getSize(); ++i) {
        if (text[i] == broken[i])
            continue;
        if (text[i] != U' ' || broken[i] != U'\n')
            return false;
        const bool beforeMark = i + 1 < text.getSize() && staysWithWordBefore(text[i + 1]);
        std::size_t before = i;
        while (before > 0 && text[before - 1] == U' ')
            --before;
        if (beforeMark || (before > 0 && text[before - 1] == U'\u00AB'))
            return false;
    }
    return true;
}

/// True when some word (with the marks its bound blanks hold to it), alone on a line, or with the
/// blank that follows it, is wider than `maxWidth` in the writer's font and style. The text's very
/// first character is never a break, so a blank there belongs to the first word.
bool hasOverlongWord(const sf::String& text, const sf::Text& writer, float maxWidth)
{
    sf::Text measure = writer;
    const auto tooWide = [&](const sf::String& piece) {
        measure.setString(piece);
        return measure.getGlobalBounds().width > maxWidth;
    };
    std::size_t start = 0;
    while (start < text.getSize()) {
        std::size_t end = start == 0 && text[0] == U' ' ? 1 : start;
        while (end < text.getSize() && !isBreak(text, end))
            ++end;
        const bool blankFollows = end < text.getSize() && text[end] == U' ';
        if (end > start && tooWide(text.substring(start, end - start + (blankFollows ? 1 : 0))))
            return true;
        start = end + 1;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    fuzzing::installAbortingAssertHandler();
    const std::uint8_t style = data[0];
    const float maxWidth = 40.f + 2.f * static_cast<float>(data[1]);
    sf::String text = sf::String::fromUtf8(data + 2, data + size);
    if (text.getSize() > MAX_CHARACTERS)
        text = text.substring(0, MAX_CHARACTERS);

    sf::Text writer("", hand(style & 1u), CHARACTER_SIZE);
    writer.setStyle((style & 2u) ? sf::Text::Italic : sf::Text::Regular);
    // Where the notebook sets Nathan's page: the position enters the arithmetic of the bounds.
    if (style & 4u)
        writer.setPosition(842.f, 216.f);
    sf::Text referenceWriter = writer;

    const sf::String broken = orane::breakLines(text, writer, maxWidth);
    if (hasOverlongWord(text, writer, maxWidth))
        return 0;
    if (holdsBoundBlank(text)) {
        if (!keepsMarksWithTheirWords(text, broken))
            std::fprintf(stderr, "width %g\nbroken: [%s]\n", maxWidth,
                         ryn::console::toUtf8(broken.toWideString()).c_str());
        fuzzing::require(keepsMarksWithTheirWords(text, broken), "no line parts a French mark from its word");
    } else {
        const sf::String expected = orane::breakLinesReference(text, referenceWriter, maxWidth);
        if (broken != expected)
            std::fprintf(stderr, "width %g\nbreaker:   [%s]\nreference: [%s]\n", maxWidth,
                         ryn::console::toUtf8(broken.toWideString()).c_str(),
                         ryn::console::toUtf8(expected.toWideString()).c_str());
        fuzzing::require(broken == expected, "the breaker's lines are the reference's");
    }
    return 0;
}
