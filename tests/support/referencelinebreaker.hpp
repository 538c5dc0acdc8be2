#pragma once

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/String.hpp>

namespace orane
{

/// The notebook's original line breaker, kept as the yardstick for `breakLines`.
/// Rebuilds the text one character at a time in `writer` and reads its bounds after each
/// character; when they are wider than `maxWidth` (strictly), the last blank before the character
/// just added (searched back through the whole text, never at index 0) becomes a line feed.
/// Its cost grows with the square of the text's length: tests and benchmarks only.
/// `writer` is left unrotated with origin (0, 0); its string is overwritten.
sf::String breakLinesReference(const sf::String& text, sf::Text& writer, float maxWidth);

/// The same with a text object of the given font and character size, SFML's default style.
sf::String breakLinesReference(const sf::String& text, const sf::Font& font, unsigned int characterSize,
                               float maxWidth);

} // namespace orane
