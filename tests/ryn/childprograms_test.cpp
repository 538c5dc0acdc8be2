#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <sys/wait.h>

// Programs that run on their own, read from outside: what reaches standard output is what a
// player's terminal would show.
namespace
{

struct Finished
{
    std::string output;
    int status = -1;
};

Finished runProgram(const std::string& commandLine)
{
    Finished finished;
    FILE* pipe = popen(commandLine.c_str(), "r");
    if (!pipe)
        return finished;
    char buffer[4096];
    std::size_t count = 0;
    while ((count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        finished.output.append(buffer, count);
    const int raw = pclose(pipe);
    finished.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return finished;
}

TEST(Console, NarrowWideAndReportLinesAllArriveInOrderAsUtf8)
{
    const Finished child = runProgram(RYN_CONSOLE_CHILD);

    EXPECT_EQ(child.status, 0);
    EXPECT_EQ(child.output, "Impossible de charger le son \xC2\xAB shot_pistol.wav \xC2\xBB\n"
                            "ERROR (line 12) : sc\xC3\xA8ne \xC2\xAB d\xC3\xA9"
                            "but \xC2\xBB inconnue\n"
                            "Musique lanc\xC3\xA9"
                            "e\n"
                            "shared/ryn/src/core/application.cpp(189): Assert Failure: 'gameRate > 0.f' \n"
                            "\xC5\x92uvre d\xE2\x80\x99Orane, c\xC5\x93ur \xC3\xA0 l\xE2\x80\x99ouvrage\n"
                            "fin\n");
}

TEST(TestStateProgram, EndsWhenItsWindowIsClosed)
{
    const Finished program = runProgram(std::string(RYN_TEST_STATE) + " close");

    EXPECT_EQ(program.status, 0);
    EXPECT_NE(program.output.find("window 800x600\n"), std::string::npos) << program.output;
    EXPECT_NE(program.output.find("step 0.050000\n"), std::string::npos);
    EXPECT_NE(program.output.find("first frame 0 0 0 255\n"), std::string::npos);
    EXPECT_NE(program.output.find("ended yes\nopen no\n"), std::string::npos);
    EXPECT_EQ(program.output.find("never arrived"), std::string::npos);
}

TEST(TestStateProgram, QuitFlagEndsTheRunAfterThatStep)
{
    const Finished program = runProgram(std::string(RYN_TEST_STATE) + " quit");

    EXPECT_EQ(program.status, 0);
    EXPECT_NE(program.output.find("ended yes\nopen no\nsteps 3\n"), std::string::npos) << program.output;
    EXPECT_NE(program.output.find("frames after the third step 0\n"), std::string::npos);
}

} // namespace
