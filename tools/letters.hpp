#pragma once

#include <SFML/Config.hpp>

namespace orane
{

/// True for a letter of any script (accented ones included), as Unicode classes it.
bool isLetter(sf::Uint32 c);

/// True for a decimal digit 0 to 9.
inline bool isDigit(sf::Uint32 c)
{
    return c >= U'0' && c <= U'9';
}

} // namespace orane
