#include "../story/storytesting.hpp"
#include "glyphcheck.hpp"
#include "slipcheck.hpp"
#include "spellingcheck.hpp"
#include "typographycheck.hpp"

#include <gtest/gtest.h>

#include <cstdio>

namespace
{

using orane::SourceText;
using orane::StoryFinding;
using storytesting::u8;
using storytesting::utf8;

std::vector<SourceText> oneFile(const std::string& text)
{
    return {SourceText::read("story.txt", text)};
}

/// "line:column" of each finding, in order.
std::vector<std::string> places(std::vector<StoryFinding> findings)
{
    orane::sortFindings(findings);
    std::vector<std::string> result;
    for (const StoryFinding& finding : findings)
        result.push_back(std::to_string(finding.line) + ":" + std::to_string(finding.column));
    return result;
}

TEST(TypographyCheck, FlagsFrenchSpacingSlipsWhereTheyStandAndNothingElse)
{
    const auto sources = oneFile("SCENE a\n"
                                 "ORANE\n"
                                 "Bien : à 13:15 ; « oui » ?! Puis… rien, dit-il.\n" // sound
                                 "Quoi? Non! Ah; «non».\n"
                                 "Et ... puis , rien .\n"
                                 "Deux  blancs.\n"
                                 "« Une citation qui continue\n"
                                 "au paragraphe suivant. »\n"
                                 "Un » seul.\n"
                                 "NATHAN\n"
                                 "Bon.\n"
                                 "…\n"
                                 "*  Une étiquette\n"
                                 "« Ouvert.\n"
                                 "-> b\n");
    const auto found = orane::TypographyCheck(sources).findings();
    EXPECT_EQ(places(found), (std::vector<std::string>{"4:5", "4:10", "4:14", "4:16", "4:20", "5:3", "5:4", "5:12",
                                                       "5:19", "6:5", "9:4", "12:1", "14:1"}));
}

TEST(TypographyCheck, StraightApostrophesAreFlaggedOnlyWhereTheStoryOtherwiseCurlsThem)
{
    const std::string curled = "SCENE a\nORANE\nL’homme d’abord, l’autre ensuite.\nC'est tout.\nFORWARD end\n";
    EXPECT_EQ(places(orane::TypographyCheck(oneFile(curled)).findings()), (std::vector<std::string>{"4:2"}));
    const std::string straight = "SCENE a\nORANE\nL'homme d'abord, l'autre ensuite.\nC’est tout.\nFORWARD end\n";
    EXPECT_TRUE(orane::TypographyCheck(oneFile(straight)).findings().empty());
}

class SpellingCheckTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        tree_.write("lexique.txt", "# Noms propres\nAdèle\n  Vaubecour \n");
        spelling_ =
            std::make_unique<orane::SpellingCheck>("/usr/share/hunspell", tree_.directory() + "lexique.txt", cache());
        if (!spelling_->available())
            GTEST_SKIP() << spelling_->error();
    }
    std::string cache() const { return tree_.directory() + "cache/spelling.cache"; }

    storytesting::StoryTree tree_;
    std::unique_ptr<orane::SpellingCheck> spelling_;
};

TEST_F(SpellingCheckTest, WordsAreFrenchWordsWithTheirElisionsAndHyphens)
{
    std::vector<std::string> words;
    for (const auto& [index, word] :
         orane::SpellingCheck::words(u8("L’homme, peut-être ; 1894 fois -- aujourd'hui X2 « J. »")))
        words.push_back(std::to_string(index) + utf8(word));
    EXPECT_EQ(words, (std::vector<std::string>{"0L’homme", "9peut-être", "26fois", "34aujourd'hui", "51J"}));
}

TEST_F(SpellingCheckTest, TheWordListAndTheDictionaryDecideAndAccentSlipsAreSuggestedFirst)
{
    std::vector<std::string> suggestions;
    EXPECT_TRUE(spelling_->check("Vaubecour", nullptr));
    EXPECT_TRUE(spelling_->check("d’Adèle", nullptr));
    EXPECT_TRUE(spelling_->check("qu’il", nullptr));
    EXPECT_FALSE(spelling_->check("Vaubecourt", &suggestions));
    ASSERT_FALSE(suggestions.empty());
    EXPECT_EQ(suggestions[0], "Vaubecour");
    EXPECT_FALSE(spelling_->check("etrange", &suggestions));
    ASSERT_FALSE(suggestions.empty());
    EXPECT_EQ(suggestions[0], "étrange");

    const auto sources = oneFile(
        "SCENE a\nORANE\nUne maisson étrange, signée J. Vaubecour.\nNATHAN\nBon.\n* Alors\nCe n’est rienn.\n-> end\n");
    const auto found = spelling_->findings(sources);
    EXPECT_EQ(places(found), (std::vector<std::string>{"3:5", "7:10"}));
    EXPECT_EQ(found[0].suggestions.at(0), "maison");
}

TEST_F(SpellingCheckTest, VerdictsKeptInTheCacheAreReadBackByTheNextCheck)
{
    std::vector<std::string> suggestions;
    EXPECT_FALSE(spelling_->check("maisson", &suggestions));
    spelling_.reset();
    // A verdict planted in the cache is believed: the cache, not the dictionary, answered.
    std::FILE* file = std::fopen(cache().c_str(), "a");
    ASSERT_NE(file, nullptr);
    std::fputs("zzzplanted\t1\n", file);
    std::fclose(file);
    orane::SpellingCheck again("/usr/share/hunspell", tree_.directory() + "lexique.txt", cache());
    EXPECT_TRUE(again.check("zzzplanted", nullptr));
    EXPECT_FALSE(again.check("maisson", &suggestions));
    EXPECT_EQ(suggestions.at(0), "maison");
    // Another word list is another cache.
    tree_.write("lexique.txt", "Adèle\n");
    orane::SpellingCheck otherList("/usr/share/hunspell", tree_.directory() + "lexique.txt", cache());
    EXPECT_FALSE(otherList.check("zzzplanted", nullptr));
}

TEST(GlyphCheck, CharactersMissingFromTheWritersFontsAreFound)
{
    const std::string fonts = std::string(ORANE_BINARY_DIR) + "/resources/fonts/";
    const orane::GlyphCheck glyphs(fonts + "orane.ttf", fonts + "nathan.ttf");
    ASSERT_TRUE(glyphs.available()) << glyphs.error();
    EXPECT_TRUE(glyphs.has(0, U'é') && glyphs.has(0, U'’') && glyphs.has(0, U'«') && glyphs.has(1, U'œ'));
    EXPECT_FALSE(glyphs.has(0, 0xA0));
    const auto sources =
        oneFile("SCENE a\nORANE\nÉté, « cœur » l’œil…\nSans\u00A0blanc.\nNATHAN\nBon \u2603.\nFORWARD end\n");
    const auto found = glyphs.findings(sources);
    EXPECT_EQ(places(found), (std::vector<std::string>{"4:5", "6:5"}));
    EXPECT_NE(found[1].message.find("Nathan's font"), std::string::npos);
    EXPECT_FALSE(orane::GlyphCheck("/no/such/font.ttf", fonts + "nathan.ttf").available());
}

TEST(SlipCheck, ClosestNamesForgiveCaseAccentsAndSmallTypos)
{
    const auto sources =
        oneFile("SCENE Lemoine_cuisine\nORANE\nA.\nFORWARD end\nSCENE Lemoine_cave\nORANE\nB.\nFORWARD end\n"
                "SCENE église\nORANE\nC.\nFORWARD end\n");
    const orane::SlipCheck slips(sources, "/nowhere/", {});
    EXPECT_EQ(slips.closestNames(u8("Lemoine_cusine")), (std::vector<sf::String>{u8("Lemoine_cuisine")}));
    EXPECT_EQ(slips.closestNames(u8("lemoine_cave")), (std::vector<sf::String>{u8("Lemoine_cave")}));
    EXPECT_EQ(slips.closestNames(u8("eglise")), (std::vector<sf::String>{u8("église")}));
    EXPECT_EQ(slips.closestNames(u8("gameover")), (std::vector<sf::String>{u8("game_over")}));
    EXPECT_TRUE(slips.closestNames(u8("grenier")).empty());
    EXPECT_EQ(orane::SlipCheck::fold(u8("Hélène"), true), orane::SlipCheck::fold(u8("He\xcc\x81le\xcc\x80ne"), true));
    EXPECT_NE(orane::SlipCheck::fold(u8("Hélène"), true), orane::SlipCheck::fold(u8("hélène"), true));
}

} // namespace
