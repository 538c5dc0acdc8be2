#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <gtest/gtest.h>

#include <string>

namespace
{

struct Recorded
{
    std::string expression;
    std::string message;
    int calls = 0;
};
Recorded recorded;

int recordingHandler(const char* expression, const char* message, const char*, int)
{
    recorded.expression = expression ? expression : "";
    recorded.message = message ? message : "";
    ++recorded.calls;
    return 1;
}

class AssertTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        recorded = {};
        previous_ = ryn::setAssertHandler(&recordingHandler);
    }
    void TearDown() override { ryn::setAssertHandler(previous_); }

private:
    ryn::AssertHandler previous_ = nullptr;
};

TEST_F(AssertTest, FailedCheckReportsItsTextAndGoesOnWhenTheHandlerSaysSo)
{
    // Going on is shown by getting past the check: a handler that answers 0 stops the test
    // program at a debugger break (see the death test below).
    const float gameRate = -1.f;
    RYN_ASSERT(gameRate > 0.f);
    EXPECT_EQ(recorded.expression, "gameRate > 0.f");
    EXPECT_EQ(recorded.calls, 1);

    RYN_ASSERT(gameRate < 0);
    EXPECT_EQ(recorded.calls, 1) << "a check that holds reports nothing";
}

TEST_F(AssertTest, MessageIsCutToTheBuffer)
{
    const std::string longText(3000, 'x');
    ryn::reportAssert("false", "file", 1, "%s", longText.c_str());
    EXPECT_EQ(recorded.message.size(), 1023u);
}

TEST_F(AssertTest, CheckEvaluatesToTheConditionAndReports)
{
    EXPECT_FALSE(RYN_CHECK(1 + 1 == 3));
    EXPECT_EQ(recorded.expression, "1 + 1 == 3");
    EXPECT_TRUE(RYN_CHECK(true));
    EXPECT_EQ(recorded.calls, 1);
}

TEST(DefaultAssertHandler, PrintsOneExactLine)
{
    ryn::console::Capture capture;
    EXPECT_EQ(ryn::defaultAssertHandler("gameRate > 0.f", nullptr, "shared/ryn/src/core/application.cpp", 189), 0);
    EXPECT_EQ(capture.text(), "shared/ryn/src/core/application.cpp(189): Assert Failure: 'gameRate > 0.f' \n");
}

TEST(DefaultAssertHandlerDeathTest, StopsAtADebuggerBreak)
{
    // The report goes to standard output; death tests read only the error stream.
    EXPECT_EXIT(RYN_ASSERT(1 == 2), ::testing::KilledBySignal(SIGTRAP), "");
}

} // namespace
