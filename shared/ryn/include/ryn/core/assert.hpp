#pragma once

#include <csignal>

namespace ryn
{

/// Receives every failed check; answers 0 to stop at a debugger break, anything else to go on.
/// `message` is null when the check carries no message.
using AssertHandler = int (*)(const char* expression, const char* message, const char* file, int line);

/// Formats the optional printf-style message (cut to 1023 bytes), hands the report to the
/// installed handler and answers its result.
int reportAssert(const char* expression, const char* file, int line, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 4, 5)))
#endif
    ;

/// Prints "file(line): Assert Failure: 'expression' message" as one console line; answers 0.
int defaultAssertHandler(const char* expression, const char* message, const char* file, int line);

/// Prints the same line as the default handler but answers 1, so the program goes on.
int reportOnlyAssertHandler(const char* expression, const char* message, const char* file, int line);

/// Installs `handler` (null restores the default one) and answers the one it replaces.
AssertHandler setAssertHandler(AssertHandler handler);

AssertHandler assertHandler();

} // namespace ryn

#define RYN_DEBUG_BREAK() std::raise(SIGTRAP)

/// Contract check: reports the condition's text when it is false and stops at a debugger
/// break unless the handler lets the program go on.
#define RYN_ASSERT(condition)                                                                                          \
    do {                                                                                                               \
        if (!(condition) && ::ryn::reportAssert(#condition, __FILE__, __LINE__, nullptr) == 0)                         \
            RYN_DEBUG_BREAK();                                                                                         \
    } while (false)

/// For checks that bad data or ordinary input can reach: reports like RYN_ASSERT but never
/// stops, so the caller can end in order. Evaluates to the condition's value.
#define RYN_CHECK(condition)                                                                                           \
    ((condition) ? true : (::ryn::reportAssert(#condition, __FILE__, __LINE__, nullptr), false))
