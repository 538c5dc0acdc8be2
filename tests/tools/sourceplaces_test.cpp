#include "sourceplaces.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace
{

class SourcePlacesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        std::ofstream file(path_);
        file << "# opening comment\n"          // 1: not counted
                "SCENE cave\n"                 // 2: game line 0
                "NATHAN\n"                     // 3: 1
                "# a remark in the middle\n"   // 4: not counted
                "Il a dit * non.\n"            // 5: 2, text that opens the choices
                "-> puits\n"                   // 6: 3
                "ORANE * rien\n"               // 7: 4, a token line, not a choice
                "* Descendre\n"                // 8: 5
                "-> fond\n"                    // 9: 6
                "SCENE puits\n"                // 10: 7
                "* Remonter\n";                // 11: 8
    }
    void TearDown() override { std::remove(path_.c_str()); }

    std::string path_ = "sourceplaces_test_story.txt";
    orane::SourcePlaces places_;
};

TEST_F(SourcePlacesTest, GameLineNumbersSkipCommentsAndCountFromZero)
{
    EXPECT_EQ(places_.place(path_, 0), path_ + ":2");
    EXPECT_EQ(places_.place(path_, 2), path_ + ":5");
    EXPECT_EQ(places_.place(path_, 7), path_ + ":10");
    EXPECT_EQ(places_.place(path_, 99), path_);
    EXPECT_EQ(places_.place("no_such_file.txt", 0), "no_such_file.txt");
}

TEST_F(SourcePlacesTest, ChoicesAreFoundAsTheParserFindsThem)
{
    EXPECT_EQ(places_.choicePlace(path_, 0, 0), path_ + ":5");
    EXPECT_EQ(places_.choicePlace(path_, 0, 1), path_ + ":8");
    // The next scene's choice is not this scene's: fall back to the scene itself.
    EXPECT_EQ(places_.choicePlace(path_, 0, 2), path_ + ":2");
    EXPECT_EQ(places_.choicePlace(path_, 7, 0), path_ + ":11");
}

TEST(SuspectPlaces, NamesAreMatchedOnceTrimmed)
{
    const std::string path = "sourceplaces_test_suspects.ini";
    std::ofstream(path) << "Adele\n  Bruno\t\n\n";
    orane::SourcePlaces places;
    EXPECT_EQ(places.suspectPlace(path, L"Bruno"), path + ":2");
    EXPECT_EQ(places.suspectPlace(path, L""), path + ":3");
    EXPECT_EQ(places.suspectPlace(path, L"Zoe"), path);
    std::remove(path.c_str());
}

} // namespace
