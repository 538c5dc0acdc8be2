// Writes, in one run, what the game writes over a session: narrow lines, wide story reports
// with accents, and an assertion report, under the global locale that the game installs.
#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <SFML/System/String.hpp>

#include <codecvt>
#include <locale>

int main()
{
    std::locale::global(std::locale(std::locale(), new std::codecvt_utf8<wchar_t, 0x10FFFF>));
    ryn::setAssertHandler(&ryn::reportOnlyAssertHandler);

    ryn::console::writeLine("Impossible de charger le son « shot_pistol.wav »");
    ryn::console::writeLine(L"ERROR (line 12) : scène « début » inconnue");
    ryn::console::writeLine("Musique lancée");
    ryn::reportAssert("gameRate > 0.f", "shared/ryn/src/core/application.cpp", 189, nullptr);
    ryn::console::write(L"Œuvre ");
    ryn::console::writeLine(sf::String(L"d’Orane, cœur à l’ouvrage"));
    ryn::console::writeLine("fin");
    return 0;
}
