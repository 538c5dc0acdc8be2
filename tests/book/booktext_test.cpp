#include "book/book.hpp"
#include "book/linebreaker.hpp"
#include "booktesting.hpp"

#include <gtest/gtest.h>

using booktesting::u8;
using booktesting::utf8;

namespace
{

const std::string LONG_NATHAN =
    "Gardez ce passeport sur vous, Orane, et ne retournez pas à l'hôtel avant d'avoir parlé "
    "au concierge : il a vu quelqu'un sortir par l'escalier de service.";

orane::Choice answer(const std::string& longDescription)
{
    orane::Choice choice;
    choice.longDescription = u8(longDescription);
    return choice;
}

sf::String broken(const sf::String& text)
{
    return orane::breakLines(text, booktesting::resourceFont("nathan.ttf"), 20, 360.f);
}

} // namespace

TEST(BookText, ScenesBecomeSpreadsAndAnswersGoBelowNathansText)
{
    orane::Book book;
    booktesting::fill(book, 1);
    book.addScene(booktesting::scene("Deuxième lettre.", LONG_NATHAN));
    const std::vector<orane::Page>& pages = book.getPages();
    ASSERT_EQ(4u, pages.size());
    EXPECT_EQ(0u, book.getCurrentPage()) << "a new scene does not move the spread shown";
    EXPECT_EQ(orane::PageWriter::ORANE, pages[2].writer);
    EXPECT_EQ(orane::PageWriter::NATHAN, pages[3].writer);
    EXPECT_EQ("Deuxième lettre.", utf8(pages[2].text));
    // Broken in Nathan's hand to the page width less the padding.
    EXPECT_EQ(utf8(broken(u8(LONG_NATHAN))), utf8(pages[3].text));
    EXPECT_NE(LONG_NATHAN, utf8(pages[3].text));

    const sf::String before = pages[3].text;
    const std::string text = "J'irai voir le concierge demain, dès l'ouverture de la loge.\n";
    book.appendChoice(answer(text));
    EXPECT_EQ(utf8(broken(before + sf::String(U'\n') + u8(text))), utf8(pages[3].text));
    EXPECT_EQ(0u, utf8(pages[3].text).find(utf8(before) + "\nJ'irai"));
    EXPECT_EQ("Deuxième lettre.", utf8(pages[2].text));
}

TEST(BookText, AnEmptyPageTakesTheAnswerAsItIs)
{
    orane::Book book;
    booktesting::fill(book, 0);
    book.addScene(booktesting::scene("", ""));
    ASSERT_EQ(2u, book.getPages().size());
    EXPECT_EQ(0.f, book.getLastTextHeight());

    book.appendChoice(answer("Je pars ce soir.\n"));
    EXPECT_EQ("Je pars ce soir.\n", utf8(book.getPages()[1].text));
    const float oneLine = book.getLastTextHeight();
    EXPECT_GT(oneLine, 10.f);
    book.appendChoice(answer("Sans vous."));
    EXPECT_GT(book.getLastTextHeight(), oneLine + 15.f);
}
