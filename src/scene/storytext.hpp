#pragma once

#include "scene/choice.hpp"
#include "scene/codepoints.hpp"
#include "scene/diagnostic.hpp"

#include <SFML/System/String.hpp>

#include <cstdint>
#include <vector>

/// Text operations of the story language. All of them work on code points, so any line (of any
/// length, with control characters or characters beyond U+FFFF) is safe to hand over. The
/// CodePointView forms copy nothing: the loader reads whole stories through them.
namespace orane
{

/// True when `token` occurs anywhere in `line`, case-sensitively.
bool containsToken(CodePointView line, CodePointView token);
bool containsToken(const sf::String& line, const sf::String& token);

/// Which of the scene-body tokens a line holds, found in a single pass over it.
struct LineTokens
{
    bool forward = false;
    bool orane = false;
    bool nathan = false;
    bool choice = false;
    bool nextScene = false;
};

/// The tokens FORWARD, ORANE, NATHAN, "*" and "->" that occur anywhere in `line`; the same answers
/// as containsToken for each, at the cost of one scan.
LineTokens findLineTokens(CodePointView line);
LineTokens findLineTokens(const sf::String& line);

/// Moves `index` past the next word of `text` and sets `word` to it; false when no word is left.
/// Words are the pieces between blanks (U+0020 only): other whitespace, tabs included, stays
/// inside them.
bool nextWord(CodePointView text, std::size_t& index, CodePointView& word);

/// The words of `text` (see nextWord): runs of blanks give no empty pieces.
std::vector<sf::String> splitWords(const sf::String& text);

/// True for space, tab, line feed, vertical tab, form feed and carriage return; nothing else
/// (neither U+00A0 nor any character beyond U+00FF) is whitespace.
bool isWhitespace(sf::Uint32 codePoint);

/// `text` without whitespace (isWhitespace) at either end.
CodePointView trimWhitespace(CodePointView text);
sf::String trimWhitespace(const sf::String& text);

/// Sets the choice's label to what follows the line's first "*", untrimmed. A line without
/// the token is a fault of the caller: it is reported and false is answered.
bool readChoiceBrief(CodePointView line, Choice& choice, std::uint32_t lineNumber);
/// The same, adding the report to `diagnostics` instead of printing it.
bool readChoiceBrief(CodePointView line, Choice& choice, std::uint32_t lineNumber, Diagnostics& diagnostics);

/// Sets the choice's next scene name to what follows the line's first "->", trimmed. A line
/// without the token is a fault of the caller: it is reported and false is answered.
bool readChoiceTarget(CodePointView line, Choice& choice, std::uint32_t lineNumber);
bool readChoiceTarget(CodePointView line, Choice& choice, std::uint32_t lineNumber, Diagnostics& diagnostics);

} // namespace orane
