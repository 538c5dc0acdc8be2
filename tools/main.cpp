#include "pagemeasure.hpp"
#include "stdiotransport.hpp"
#include "storycommands.hpp"

#include <ryn/core/assert.hpp>

#include <cstring>
#include <unistd.h>

int main(int argc, char* argv[])
{
    if (argc == 2 && std::strcmp(argv[1], "lsp") == 0) {
        ryn::setAssertHandler(ryn::reportOnlyAssertHandler);
        // Standard output carries the protocol alone: whatever the game's code prints goes to
        // standard error instead.
        const int protocol = ::dup(STDOUT_FILENO);
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        return orane::lsp::runLanguageServer(STDIN_FILENO, protocol,
                                             orane::PageMeasure::fontDirectories(orane::executableDirectory()));
    }
    return orane::runStoryCommand(argc, argv);
}
