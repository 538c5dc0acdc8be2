#include "audio.hpp"
#include "oraneapp.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/runapplication.hpp>

#include <codecvt>
#include <locale>

namespace
{

/// Wide streams opened from now on read and write UTF-8, without a byte-order mark.
void installUtf8Locale()
{
    std::locale::global(std::locale(std::locale(), new std::codecvt_utf8<wchar_t, 0x10FFFF>()));
}

} // namespace

int main()
{
    installUtf8Locale();
    // A story or a click can reach a check: it is reported and the game goes on, or ends in
    // order, but never stops in the debugger.
    ryn::setAssertHandler(&ryn::reportOnlyAssertHandler);
    orane::loadAudio();

    int status = 0;
    {
        orane::OraneApp application;
        status = ryn::runApplication(application);
    }
    // Before static destruction, while SFML's audio device can still release them.
    orane::releaseAudio();
    return status;
}
