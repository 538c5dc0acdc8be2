#pragma once

#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <cstdio>
#include <cstdlib>

/// What every fuzz target shares: a check reached by the input is a finding, and so is a
/// property that does not hold. Both stop the run at once so that libFuzzer keeps the input.
namespace fuzzing
{

inline int abortOnAssert(const char* expression, const char* message, const char* file, int line)
{
    std::fprintf(stderr, "%s(%d): Assert Failure: '%s' %s\n", file, line, expression ? expression : "",
                 message ? message : "");
    std::abort();
}

inline void installAbortingAssertHandler()
{
    ryn::setAssertHandler(&abortOnAssert);
}

/// Stops the run when `holds` is false, naming the property that failed.
inline void require(bool holds, const char* property)
{
    if (!holds) {
        std::fprintf(stderr, "property failed: %s\n", property);
        std::abort();
    }
}

} // namespace fuzzing
