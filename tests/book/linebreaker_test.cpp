#include "book/linebreaker.hpp"
#include "booktesting.hpp"
#include "referencelinebreaker.hpp"

#include <SFML/Graphics/Text.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

using booktesting::u8;
using booktesting::utf8;

namespace
{

constexpr float LINE_WIDTH = 360.f;

const char* const FRENCH_PROSE =
    "Nathan, je vous écris depuis la gare d'Austerlitz. Le train de nuit a été annulé, et "
    "l'inspecteur Garnier refuse de me laisser partir avant l'aube. Il m'a demandé où j'étais "
    "jeudi soir. J'ai répondu : « chez ma sœur, à Versailles ». C'est vrai, mais personne ne peut "
    "le confirmer… sauf le chauffeur du taxi. Où avez-vous trouvé cette lettre ? Le papier est à "
    "en-tête du Crédit lyonnais, agence de l'Opéra ; Mme Lefèvre n'y avait aucun compte.";

/// The prose's words shuffled into new texts with what the notebook meets: line feeds, runs of
/// blanks, blanks at the start of a line, tabs, carriage returns.
std::vector<sf::String> shuffledTexts(unsigned int seed, int count, int maxWords)
{
    std::vector<std::string> words;
    std::istringstream prose(FRENCH_PROSE);
    for (std::string word; prose >> word;)
        words.push_back(word);
    const std::vector<std::string> separators = {"\n", "\n\n   ", "    ", "\t", "\r\n"};

    std::mt19937 random(seed);
    std::vector<sf::String> texts;
    for (int t = 0; t < count; ++t) {
        std::string text;
        for (int w = 1 + static_cast<int>(random() % maxWords); w > 0; --w) {
            text += words[random() % words.size()];
            const unsigned int roll = static_cast<unsigned int>(random() % 40);
            text += roll < separators.size() ? separators[roll] : " ";
        }
        texts.push_back(u8(text));
    }
    return texts;
}

bool staysWithWordBefore(sf::Uint32 character)
{
    return character == U';' || character == U':' || character == U'!' || character == U'?' || character == U'»';
}

/// The text without the blanks that French sets after « and before ; : ! ? », which the notebook
/// never breaks at: what is left is broken exactly as the reference breaks it.
sf::String withoutBoundBlanks(const sf::String& text)
{
    sf::String kept;
    std::size_t i = 0;
    while (i < text.getSize()) {
        if (text[i] != U' ') {
            kept += text[i++];
            continue;
        }
        std::size_t end = i;
        while (end < text.getSize() && text[end] == U' ')
            ++end;
        const bool afterGuillemet = i > 0 && text[i - 1] == U'«';
        const bool beforeMark = end < text.getSize() && staysWithWordBefore(text[end]);
        if (!afterGuillemet && !beforeMark)
            kept += text.substring(i, end - i);
        i = end;
    }
    return kept;
}

float boundsWidth(sf::Text& writer, const sf::String& text)
{
    writer.setString(text);
    return writer.getGlobalBounds().width;
}

std::vector<sf::String> linesOf(const sf::String& text)
{
    std::vector<sf::String> lines(1);
    for (std::size_t i = 0; i < text.getSize(); ++i) {
        if (text[i] == U'\n')
            lines.emplace_back();
        else
            lines.back() += text[i];
    }
    return lines;
}

class LineBreakerTest : public ::testing::TestWithParam<const char*>
{
protected:
    [[nodiscard]] sf::Text writer() const { return sf::Text("", booktesting::resourceFont(GetParam()), 20); }
};

} // namespace

TEST_P(LineBreakerTest, BreaksLikeTheReference)
{
    sf::Text game = writer();
    sf::Text reference = writer();
    // Where the notebook draws: the position enters the arithmetic of the bounds.
    game.setPosition(842.f, 216.f);
    reference.setPosition(842.f, 216.f);
    const sf::String prose = withoutBoundBlanks(u8(FRENCH_PROSE));
    for (const float width : {LINE_WIDTH, 250.f, 120.f})
        EXPECT_EQ(utf8(orane::breakLinesReference(prose, reference, width)),
                  utf8(orane::breakLines(prose, game, width)));
    for (const sf::String& shuffled : shuffledTexts(2024, 100, 160)) {
        const sf::String text = withoutBoundBlanks(shuffled);
        ASSERT_EQ(utf8(orane::breakLinesReference(text, reference, LINE_WIDTH)),
                  utf8(orane::breakLines(text, game, LINE_WIDTH)));
    }

    // In italics a descender at the start of a line reaches left of the pen, so the text's
    // bounds are wider than any of its lines: the reference then breaks an earlier line.
    game.setStyle(sf::Text::Italic);
    for (const sf::String& shuffled : shuffledTexts(7, 40, 60)) {
        const sf::String text = withoutBoundBlanks(shuffled);
        ASSERT_EQ(utf8(orane::breakLinesReference(text, game, LINE_WIDTH)),
                  utf8(orane::breakLines(text, game, LINE_WIDTH)));
    }
    const sf::String last = u8("mmmmmmmmmmmm");
    const sf::String both = u8("jg ab cd\n") + last;
    const float lastAlone = boundsWidth(game, last);
    ASSERT_GT(boundsWidth(game, both), lastAlone + 1.f);
    const float width = (lastAlone + boundsWidth(game, both)) / 2.f;
    EXPECT_EQ("jg ab\ncd\nmmmmmmmmmmmm", utf8(orane::breakLinesReference(both, game, width)));
    EXPECT_EQ("jg ab\ncd\nmmmmmmmmmmmm", utf8(orane::breakLines(both, game, width)));
}

TEST_P(LineBreakerTest, BreaksLikeTheReferenceWhenChoicesAreAppended)
{
    // The page keeps its earlier breaks and is broken again with each answer added below.
    sf::Text text = writer();
    sf::String game = orane::breakLines(withoutBoundBlanks(u8(FRENCH_PROSE)), text, LINE_WIDTH);
    sf::String reference = game;
    for (const sf::String& shuffled : shuffledTexts(99, 8, 30)) {
        const sf::String answer = withoutBoundBlanks(shuffled);
        game = orane::breakLines(game + sf::String(U'\n') + answer, text, LINE_WIDTH);
        reference = orane::breakLinesReference(reference + sf::String(U'\n') + answer, text, LINE_WIDTH);
        ASSERT_EQ(utf8(reference), utf8(game));
    }
}

TEST_P(LineBreakerTest, KeepsTheRulesOfThePage)
{
    sf::Text text = writer();
    using Breaker = sf::String (*)(const sf::String&, sf::Text&, float);
    for (const Breaker breaker : {Breaker(&orane::breakLines), Breaker(&orane::breakLinesReference)}) {
        const auto wrap = [&](const std::string& source, float width) {
            return utf8(breaker(u8(source), text, width));
        };
        EXPECT_EQ("Oui.\n  Non.", wrap("Oui.\n  Non.", LINE_WIDTH));

        // The third word overflows while it is added: the blank before it becomes the break;
        // a line feed of the story stays and is never taken as a break point.
        const float twoWords = std::max(boundsWidth(text, u8("cher ami")), boundsWidth(text, u8("cher ami ")));
        EXPECT_EQ("cher ami\nvotre", wrap("cher ami votre", twoWords + 1.f));
        EXPECT_EQ("cher ami\nvotre\nlettre", wrap("cher ami\nvotre lettre", twoWords + 1.f));

        // A blank that overflows moves the word before it down, followed by that blank. (In a
        // script font a blank may end inside the overhang of the letter before it: take a pair
        // of words whose blank reaches past it.)
        const std::vector<std::string> pairs = {"le quai", "mon vieux", "la nuit", "cher ami"};
        const auto reaching = std::find_if(pairs.begin(), pairs.end(), [&](const std::string& pair) {
            return boundsWidth(text, u8(pair + " ")) > boundsWidth(text, u8(pair));
        });
        ASSERT_NE(pairs.end(), reaching);
        const float width = (boundsWidth(text, u8(*reaching)) + boundsWidth(text, u8(*reaching + " "))) / 2.f;
        std::string expected = *reaching + " ";
        expected[reaching->find(' ')] = '\n';
        EXPECT_EQ(expected, wrap(*reaching + " ", width));
    }
}

TEST_P(LineBreakerTest, BreaksInsideAWordWiderThanTheLine)
{
    sf::Text text = writer();
    const sf::String word = u8("Anticonstitutionnellementissimement-et-caetera-et-caetera");
    const sf::String source = u8("Il a écrit ") + word + u8(" puis il est parti sans un mot.");
    ASSERT_GT(boundsWidth(text, word), LINE_WIDTH);

    // The reference finds no blank in the word and lets it run off the page.
    float widest = 0.f;
    for (const sf::String& line : linesOf(orane::breakLinesReference(source, text, LINE_WIDTH)))
        widest = std::max(widest, boundsWidth(text, line));
    EXPECT_GT(widest, LINE_WIDTH);

    // The game cuts the word: every line fits, and only line feeds were added.
    const sf::String game = orane::breakLines(source, text, LINE_WIDTH);
    const std::vector<sf::String> lines = linesOf(game);
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ("Il a écrit", utf8(lines[0]));
    sf::String letters;
    for (const sf::String& line : lines) {
        EXPECT_LE(boundsWidth(text, line), LINE_WIDTH) << utf8(line);
        letters += line;
    }
    std::string expected = utf8(source);
    expected.erase(std::remove(expected.begin(), expected.end(), ' '), expected.end());
    std::string actual = utf8(letters);
    actual.erase(std::remove(actual.begin(), actual.end(), ' '), actual.end());
    EXPECT_EQ(expected, actual);

    // A word that fits but not with the blank after it ends its line at that blank.
    const sf::String fills = u8("Saint-Germain-des-Prés");
    const float width = (boundsWidth(text, fills) + boundsWidth(text, fills + u8(" "))) / 2.f;
    EXPECT_EQ("Saint-Germain-des-Prés\nà minuit", utf8(orane::breakLines(fills + u8(" à minuit"), text, width)));
}

TEST_P(LineBreakerTest, KeepsFrenchMarksWithTheirWords)
{
    sf::Text text = writer();
    const auto wrap = [&](const std::string& source, float width) {
        return utf8(orane::breakLines(u8(source), text, width));
    };

    // A line exactly full keeps its mark; a hair narrower, the mark goes down with its word.
    const float full = boundsWidth(text, u8("Qui donc ?"));
    EXPECT_EQ("Qui donc ?", wrap("Qui donc ?", full));
    ASSERT_EQ("Qui donc\n?", utf8(orane::breakLinesReference(u8("Qui donc ?"), text, full - 0.5f)));
    EXPECT_EQ("Qui\ndonc ?", wrap("Qui donc ?", full - 0.5f));

    // Several bound blanks in a row make one unit; the blank before « is still a break.
    const std::string cry = "Il a crié « Non ! » ; puis";
    const float crowded = boundsWidth(text, u8("Il a crié « Non ! » ;")) - 0.5f;
    ASSERT_EQ("Il a crié « Non ! »\n; puis", utf8(orane::breakLinesReference(u8(cry), text, crowded)));
    EXPECT_EQ("Il a crié\n« Non ! » ; puis", wrap(cry, crowded));

    // « at the very end, even followed by a blank that overflows, never ends a line alone.
    const float said = boundsWidth(text, u8("Il a écrit"));
    EXPECT_EQ("Il a\nécrit « ", wrap("Il a écrit « ", said - 0.5f));
    const float open = (boundsWidth(text, u8("Il a écrit ")) + boundsWidth(text, u8("Il a écrit «"))) / 2.f;
    EXPECT_EQ("Il a écrit\n« ", wrap("Il a écrit « ", open));

    // Whatever the text, a break never parts a mark from the word before it, nor « from the word
    // after it, and only blanks turn into line feeds.
    for (const sf::String& source : shuffledTexts(31, 60, 80)) {
        const sf::String broken = orane::breakLines(source, text, LINE_WIDTH);
        ASSERT_EQ(source.getSize(), broken.getSize()) << utf8(broken);
        for (std::size_t i = 0; i < source.getSize(); ++i) {
            if (source[i] == broken[i])
                continue;
            ASSERT_TRUE(source[i] == U' ' && broken[i] == U'\n') << utf8(broken);
            ASSERT_FALSE(i + 1 < source.getSize() && staysWithWordBefore(source[i + 1])) << utf8(broken);
            ASSERT_FALSE(i > 0 && source[i - 1] == U'«') << utf8(broken);
        }
    }
}

TEST(LineBreakerHubTest, TheHubQuestionKeepsItsQuestionMark)
{
    // The hub's fixed question in Orane's hand, across the page: the reference left "?" alone.
    sf::Text text("", booktesting::resourceFont("orane.ttf"), 20);
    const sf::String question = u8("Très bien, dites moi sur qui pensez-vous enquêter ?");
    ASSERT_EQ("Très bien, dites moi sur qui pensez-vous enquêter\n?",
              utf8(orane::breakLinesReference(question, text, LINE_WIDTH)));
    EXPECT_EQ("Très bien, dites moi sur qui pensez-vous\nenquêter ?",
              utf8(orane::breakLines(question, text, LINE_WIDTH)));
}

INSTANTIATE_TEST_SUITE_P(Writers, LineBreakerTest, ::testing::Values("orane.ttf", "nathan.ttf"),
                         [](const auto& writer) { return std::string(writer.param).substr(0, 5); });
