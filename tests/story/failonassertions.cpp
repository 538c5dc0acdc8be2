#include <ryn/core/assert.hpp>

#include <gtest/gtest.h>

namespace
{

/// No check of the story code may be reached by these tests: one that is fails the running
/// test instead of stopping the whole program at a debugger break.
int failTheTest(const char* expression, const char*, const char* file, int line)
{
    ADD_FAILURE_AT(file, line) << "assertion reached: " << expression;
    return 1;
}

class FailOnAssertions : public ::testing::Environment
{
public:
    void SetUp() override { ryn::setAssertHandler(&failTheTest); }
    void TearDown() override { ryn::setAssertHandler(nullptr); }
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new FailOnAssertions);

} // namespace
