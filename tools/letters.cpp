#include "letters.hpp"

#include <clocale>
#include <cwctype>
#include <locale.h>

namespace orane
{

bool isLetter(sf::Uint32 c)
{
    if (c < 0x80)
        return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
    // Classified by the C library's own Unicode tables, whatever locale the program runs in.
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    return unicode != static_cast<locale_t>(nullptr) && c <= 0x10FFFF
           && iswalpha_l(static_cast<wint_t>(c), unicode) != 0;
}

} // namespace orane
