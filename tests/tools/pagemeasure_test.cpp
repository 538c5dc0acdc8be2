#include "loadedstory.hpp"
#include "pagemeasure.hpp"
#include "referencepagemeasure.hpp"

#include <ryn/core/console.hpp>

#include <SFML/Graphics/Text.hpp>

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

class PageMeasureTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(measure_.loadFonts({std::string(ORANE_BINARY_DIR) + "/resources/fonts/"})) << measure_.error();
    }

    orane::PageMeasure measure_;
};

TEST_F(PageMeasureTest, TheWritingAreaIsThePageLessItsPadding)
{
    EXPECT_EQ(measure_.writingArea(), sf::Vector2f(360.f, 600.f));
}

TEST_F(PageMeasureTest, BrokenLinesFitTheColumnAndTheTextGrowsDownwards)
{
    const sf::String sentence = L"Il pleuvait sur les quais et la lanterne du passeur tremblait dans le brouillard. ";
    const sf::String broken = measure_.brokenText(sentence + sentence, orane::PageWriter::ORANE);
    EXPECT_NE(broken.find(L"\n"), sf::String::InvalidPos);

    const float once = measure_.textBottom(sentence, orane::PageWriter::ORANE);
    const float twice = measure_.textBottom(sentence + sentence, orane::PageWriter::ORANE);
    EXPECT_GT(once, 0.f);
    EXPECT_GT(twice, once);
    EXPECT_EQ(measure_.textBottom(L"", orane::PageWriter::NATHAN), 0.f);
}

TEST_F(PageMeasureTest, RememberedMeasuresAreThoseOfAFreshMeasure)
{
    // The same text in both hands, and labels that would run together without a separator.
    const sf::String text = L"Le passeur attendait sous la lanterne, une main sur la rame et l'autre dans sa poche.";
    const float oranes = measure_.textBottom(text, orane::PageWriter::ORANE);
    const float nathans = measure_.textBottom(text, orane::PageWriter::NATHAN);
    const float split = measure_.buttonsBottom(text, {L"Aller au quai", L"Attendre"});
    const float joined = measure_.buttonsBottom(text, {L"Aller au quaiAttendre"});
    measure_.forgetUnused();
    measure_.forgetUnused();

    orane::PageMeasure fresh;
    ASSERT_TRUE(fresh.loadFonts({std::string(ORANE_BINARY_DIR) + "/resources/fonts/"}));
    EXPECT_EQ(oranes, fresh.textBottom(text, orane::PageWriter::ORANE));
    EXPECT_EQ(nathans, fresh.textBottom(text, orane::PageWriter::NATHAN));
    EXPECT_EQ(split, fresh.buttonsBottom(text, {L"Aller au quai", L"Attendre"}));
    EXPECT_EQ(joined, fresh.buttonsBottom(text, {L"Aller au quaiAttendre"}));
    EXPECT_EQ(measure_.textBottom(text, orane::PageWriter::NATHAN), nathans);
}

TEST_F(PageMeasureTest, AnAnswerGoesOnItsOwnLineUnlessThePageIsEmpty)
{
    EXPECT_EQ(measure_.withAnswer(L"", L"Je pars.\n"), sf::String(L"Je pars.\n"));
    EXPECT_EQ(measure_.withAnswer(L"Bonsoir.\n", L"Je pars.\n"), sf::String(L"Bonsoir.\n\nJe pars.\n"));
}

TEST_F(PageMeasureTest, ButtonsStandFortyPixelsApartUnderTheText)
{
    const sf::String text = L"Bonsoir.\n";
    const float one = measure_.buttonsBottom(text, {L" Partir"});
    const float three = measure_.buttonsBottom(text, {L" Partir", L" Partir", L" Partir"});
    EXPECT_FLOAT_EQ(three - one, 80.f);
    EXPECT_GT(one, measure_.textBottom(text, orane::PageWriter::NATHAN));
    EXPECT_EQ(measure_.buttonsBottom(text, {}), measure_.textBottom(text, orane::PageWriter::NATHAN));
}

TEST_F(PageMeasureTest, AButtonIsItsLabelWithAMarginOnEachSide)
{
    const float shortButton = measure_.buttonWidth(L" Oui");
    const float longButton = measure_.buttonWidth(L" Oui, je descends tout de suite à la cave avec vous");
    EXPECT_GT(shortButton, 10.f);
    EXPECT_GT(longButton, shortButton);
    EXPECT_GT(longButton, measure_.writingArea().x);
}

} // namespace

namespace
{

// The measures are taken glyph by glyph instead of from text objects: on our own story and on
// the test stories (overflowing pages, texts with marks and line feeds) they must agree to the bit.
TEST_F(PageMeasureTest, EveryPageOfOurStoriesMeasuresAsTheTextObjectsDo)
{
    const ReferencePageMeasure reference(measure_);
    std::vector<std::string> directories{std::string(ORANE_SOURCE_DIR) + "/resources/stories/"};
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ORANE_SOURCE_DIR) + "/tests/tools/stories"))
        directories.push_back(entry.path().string() + "/");
    for (const std::string& directory : directories) {
        const orane::LoadedStory story(directory);
        for (const auto& [name, scene] : story.story().scenes())
            expectSameMeasures(measure_, reference, scene, directory + ryn::console::toUtf8(name.toWideString()));
    }
    // Blanks and line feeds at the edges, where the text's box is set by the pen alone.
    for (const sf::String& text : {sf::String(L" "), sf::String(L"\n"), sf::String(L"Oui\n\n"), sf::String(L"\tNon ")})
        EXPECT_EQ(measure_.textBottom(text, orane::PageWriter::ORANE),
                  reference.textBottom(measure_.brokenText(text, orane::PageWriter::ORANE), orane::PageWriter::ORANE));
}

} // namespace
