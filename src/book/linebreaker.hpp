#pragma once

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/String.hpp>

namespace orane
{

/// Breaks `text` into lines no wider than `maxWidth` when set in `writer`: the same lines as
/// `breakLinesReference`, character for character, at a cost that grows about linearly with the
/// text. Existing line feeds stay where they are.
/// Two differences. French typography: a blank just before ; : ! ? or », or just after «, is
/// never a break, so the mark stays on the line of its word. And a word (with any mark so bound to it)
/// wider than a whole line is broken before the character that overflows (or at the blank that
/// follows it), where the reference lets it run off the page.
/// `writer` is left unrotated with origin (0, 0); its string is not touched. Without a font
/// nothing can be measured and the text comes back unchanged. An outline is not measured (the
/// notebook's writers have none).
sf::String breakLines(const sf::String& text, sf::Text& writer, float maxWidth);

/// The same with a text object of the given font and character size, SFML's default style.
sf::String breakLines(const sf::String& text, const sf::Font& font, unsigned int characterSize, float maxWidth);

} // namespace orane
