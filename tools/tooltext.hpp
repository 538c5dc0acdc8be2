#pragma once

#include <SFML/System/String.hpp>

#include <string>

namespace orane
{

/// `text` as UTF-8, for the console.
std::string utf8(const sf::String& text);

/// `text` as UTF-8 between double quotes, as the game quotes names in its messages.
std::string quoted(const sf::String& text);
std::string quoted(const std::string& utf8Text);

/// `text` on one line: line feeds become blanks and the ends are trimmed, for labels and lists.
std::string oneLine(const sf::String& text);

} // namespace orane
