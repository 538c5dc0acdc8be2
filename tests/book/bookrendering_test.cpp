#include "book/book.hpp"
#include "book/bookshaders.hpp"
#include "booktesting.hpp"
#include "scene/choice.hpp"

#include <ryn/core/vectors.hpp>

#include <SFML/Graphics/RenderTexture.hpp>
#include <SFML/System/Err.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using namespace booktesting;

namespace
{

const sf::Color BACKGROUND(10, 60, 20);

/// The book drawn into a window-sized texture, as the play state draws it into the window; the
/// image is kept under shots/ in the build folder.
sf::Image render(orane::Book& book, const std::string& shot)
{
    sf::RenderTexture target;
    EXPECT_TRUE(target.create(1600, 900));
    target.clear(BACKGROUND);
    book.draw(target);
    target.display();
    const sf::Image image = target.getTexture().copyToImage();
    image.saveToFile(std::string(ORANE_BINARY_DIR) + "/shots/" + shot + ".png");
    return image;
}

::testing::AssertionResult shows(const sf::Image& image, sf::Vector2f at, sf::Color expected)
{
    const sf::Color c =
        image.getPixel(static_cast<unsigned int>(std::lround(at.x)), static_cast<unsigned int>(std::lround(at.y)));
    if (std::abs(c.r - expected.r) <= 3 && std::abs(c.g - expected.g) <= 3 && std::abs(c.b - expected.b) <= 3)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "(" << +c.r << ", " << +c.g << ", " << +c.b << ") at (" << at.x << ", "
                                         << at.y << ")";
}

int inkPixels(const sf::Image& image, sf::IntRect area)
{
    int count = 0;
    for (int x = area.left; x < area.left + area.width; ++x)
        for (int y = area.top; y < area.top + area.height; ++y) {
            const sf::Color c = image.getPixel(static_cast<unsigned int>(x), static_cast<unsigned int>(y));
            count += c.r + c.g + c.b < 240 ? 1 : 0;
        }
    return count;
}

float distanceToLine(sf::Vector2f p, sf::Vector2f a, sf::Vector2f b)
{
    const sf::Vector2f along = ryn::normalized(b - a);
    return std::abs((p - a).x * along.y - (p - a).y * along.x);
}

} // namespace

TEST(BookShaders, CompileWithoutReportingTheExpectedFirstRefusal)
{
    std::ostringstream errors;
    std::streambuf* previous = sf::err().rdbuf(errors.rdbuf());
    sf::Shader inside;
    sf::Shader outside;
    const bool loaded = orane::loadFragmentShader(inside, orane::INSIDE_SHADER_SOURCE)
                        && orane::loadFragmentShader(outside, orane::OUTSIDE_SHADER_SOURCE);
    const std::string quiet = errors.str();
    sf::Shader broken;
    const bool brokenLoaded = orane::loadFragmentShader(broken, "void main() { gl_FragColor = nothing; }");
    sf::err().rdbuf(previous);

    EXPECT_TRUE(loaded);
    EXPECT_EQ("", quiet);
    EXPECT_FALSE(brokenLoaded);
    EXPECT_NE("", errors.str()) << "a source that no attempt compiles is reported";
}

TEST(BookRendering, FlatSpreadsShowPaperAndHandwritingOrNothingWithoutPages)
{
    orane::Book book;
    ASSERT_TRUE(book.loadResources());
    const sf::Image empty = render(book, "empty");
    for (unsigned int x = 0; x < 1600; x += 7)
        for (unsigned int y = 0; y < 900; y += 7)
            ASSERT_EQ(BACKGROUND, empty.getPixel(x, y)) << x << ", " << y;

    book.addScene(scene("Nathan, je vous écris de Lyon.\nTout va bien.", "Orane, soyez prudente.\nGarnier vous suit."));
    const sf::Image image = render(book, "flat_spread");
    EXPECT_TRUE(shows(image, {100.f, 100.f}, BACKGROUND));
    EXPECT_TRUE(shows(image, {1300.f, 500.f}, BACKGROUND));
    EXPECT_TRUE(shows(image, {500.f, 800.f}, TEST_PAPER));
    EXPECT_TRUE(shows(image, {1100.f, 800.f}, TEST_PAPER));
    // Ink on the first two lines of each page, inset by the text padding; none elsewhere.
    EXPECT_GT(inkPixels(image, {402, 216, 360, 60}), 150);
    EXPECT_GT(inkPixels(image, {842, 216, 360, 60}), 150);
    EXPECT_EQ(0, inkPixels(image, {366, 180, 32, 660}));
    EXPECT_EQ(0, inkPixels(image, {1206, 180, 32, 660}));
    EXPECT_EQ(0, inkPixels(image, {402, 300, 360, 500}));
    // The spine shadow lies along the spine on both pages, not on the outer edges.
    EXPECT_LT(image.getPixel(797, 600).r, TEST_PAPER.r - 30);
    EXPECT_LT(image.getPixel(807, 600).r, TEST_PAPER.r - 30);
    EXPECT_TRUE(shows(image, {367.f, 600.f}, TEST_PAPER));
    EXPECT_TRUE(shows(image, {1237.f, 600.f}, TEST_PAPER));
}

TEST(BookRendering, ATurningPageShowsTheNextPageAndItsBackEachSideOfTheFold)
{
    // The turning pages belong to the stained last spread and the spread under them does not,
    // so the colour of a pixel tells which page it shows.
    orane::Book book;
    fill(book, 2);
    book.setBloody();
    const sf::Image first = render(book, "bloody_first_spread");
    EXPECT_TRUE(shows(first, {500.f, 800.f}, TEST_PAPER));
    EXPECT_TRUE(shows(first, {1100.f, 800.f}, TEST_PAPER));

    const sf::Vector2f corner(1000.f, 250.f);
    book.grab({1242.f, 176.f});
    book.setPointer(corner);
    for (int frame = 0; frame < 2000 && book.getCorner() != corner; ++frame)
        book.update();
    ASSERT_EQ(corner, book.getCorner());
    const sf::Image image = render(book, "turn_top_right");

    // Fold through (1121, 213) and (1109.7, 176); the back hangs from the corner at -34 degrees.
    const sf::Vector2f foldCentre(1121.f, 213.f);
    const sf::Vector2f edgePoint(1109.69f, 176.f);
    const sf::Vector2f onBack = corner + ryn::fromAngle(-34.f) * 8.f + ryn::fromAngle(56.f) * 8.f;
    const sf::Vector2f onRevealed(1235.f, 200.f);
    // Beyond the reach of the fold's shadow, where the textures keep their own colours.
    ASSERT_GT(distanceToLine(onBack, foldCentre, edgePoint), 100.f);
    ASSERT_GT(distanceToLine(onRevealed, foldCentre, edgePoint), 100.f);
    EXPECT_TRUE(shows(image, onBack, TEST_BLOOD_LEFT));
    EXPECT_TRUE(shows(image, onRevealed, TEST_BLOOD_RIGHT));
    // Left of the fold above the back's top edge, and below where the fold leaves the page
    // through its right edge: the flat page.
    EXPECT_TRUE(shows(image, {1050.f, 190.f}, TEST_PAPER));
    EXPECT_TRUE(shows(image, {1200.f, 800.f}, TEST_PAPER));
    EXPECT_TRUE(shows(image, {1300.f, 150.f}, BACKGROUND));
    // Near the fold the revealed page lies in its shadow.
    EXPECT_LT(image.getPixel(1119, 195).b, TEST_BLOOD_RIGHT.b - 20);

    book.release({500.f, 300.f});
    for (int frame = 0; frame < 2000 && book.getState() != orane::STATE::IDLE; ++frame)
        book.update();
    ASSERT_TRUE(book.isOnLastSpread());
    const sf::Image last = render(book, "bloody_last_spread");
    EXPECT_TRUE(shows(last, {500.f, 800.f}, TEST_BLOOD_LEFT));
    EXPECT_TRUE(shows(last, {1100.f, 800.f}, TEST_BLOOD_RIGHT));
}

TEST(BookRendering, TextWrittenOnADrawnSpreadShowsOnTheNextFrame)
{
    orane::Book book;
    ASSERT_TRUE(book.loadResources());
    book.addScene(scene("Nathan, je vous écris de Lyon.", "Je pars ce soir."));
    const std::uint64_t before = book.getSpreadRevision();
    const sf::IntRect answerArea{842, 300, 360, 200};
    EXPECT_EQ(0, inkPixels(render(book, "before_answer"), answerArea));

    orane::Choice answer;
    answer.longDescription = u8("Je prendrai le train de nuit pour Marseille, puis le bateau pour Alger, "
                                "et je vous écrirai de là-bas dès que possible.");
    book.appendChoice(answer);
    EXPECT_NE(before, book.getSpreadRevision());
    // The answer breaks onto several lines: some reach below the first scene's line.
    EXPECT_GT(inkPixels(render(book, "after_answer"), {842, 240, 360, 260}), 150);
}
