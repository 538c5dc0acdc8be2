#include "texturegen/bloodpainter.hpp"
#include "texturegen/deskpainter.hpp"
#include "texturegen/floatimage.hpp"
#include "texturegen/gradientnoise.hpp"
#include "texturegen/paperpainter.hpp"
#include "texturegen/scalarfield.hpp"
#include "texturegen/shadowpainter.hpp"

#include <gtest/gtest.h>

#include <cmath>

using namespace orane::texturegen;

namespace
{

constexpr int PAGE_WIDTH = 440;
constexpr int PAGE_HEIGHT = 680;

/// Relative luminance of an 8-bit sRGB colour, as contrast ratios are defined on it.
double luminanceOf(const sf::Color& colour)
{
    auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.r) + 0.7152 * linear(colour.g) + 0.0722 * linear(colour.b);
}

double contrast(const sf::Color& a, const sf::Color& b)
{
    const double la = luminanceOf(a);
    const double lb = luminanceOf(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

const FloatImage& paper()
{
    static const FloatImage painted = PaperPainter(1861).paint(PAGE_WIDTH, PAGE_HEIGHT);
    return painted;
}

} // namespace

TEST(Paper, BothInksReadClearlyEverywhereTheTextCanGo)
{
    const sf::Image image = paper().toImage(11);
    ASSERT_EQ(image.getSize(), sf::Vector2u(PAGE_WIDTH, PAGE_HEIGHT));
    const sf::Color inks[] = {sf::Color(26, 20, 26), sf::Color(38, 13, 26)};
    // Text starts 40 px in from the edges; the darkest spot there (foxing, fibres) still has to read.
    double worst = 1e9;
    for (unsigned y = 40; y < PAGE_HEIGHT - 40; ++y)
        for (unsigned x = 40; x < PAGE_WIDTH - 40; ++x)
            for (const sf::Color& ink : inks)
                worst = std::min(worst, contrast(image.getPixel(x, y), ink));
    EXPECT_GE(worst, 7.0);
}

TEST(Paper, IsOpaqueWarmAndDarkerAtTheEdges)
{
    const sf::Image image = paper().toImage(11);
    double centre = 0.0;
    double rim = 0.0;
    int centreCount = 0;
    int rimCount = 0;
    // One report for the whole page, not one per pixel.
    int cold = 0;
    sf::Vector2u firstCold;
    for (unsigned y = 0; y < PAGE_HEIGHT; ++y)
        for (unsigned x = 0; x < PAGE_WIDTH; ++x) {
            const sf::Color pixel = image.getPixel(x, y);
            ASSERT_EQ(pixel.a, 255);
            if (pixel.r <= pixel.b && cold++ == 0)
                firstCold = {x, y};
            const bool nearEdge = x < 4 || y < 4 || x >= PAGE_WIDTH - 4 || y >= PAGE_HEIGHT - 4;
            const bool inMiddle = x > 150 && x < 290 && y > 250 && y < 430;
            if (nearEdge) {
                rim += luminanceOf(pixel);
                ++rimCount;
            } else if (inMiddle) {
                centre += luminanceOf(pixel);
                ++centreCount;
            }
        }
    EXPECT_EQ(cold, 0) << "not warm (grey or blue) at " << firstCold.x << "," << firstCold.y << " and " << cold - 1
                       << " other pixels";
    EXPECT_LT(rim / rimCount, centre / centreCount * 0.9);
}

TEST(SpineShadow, DarkAtTheSpineAndGoneWithinATenthOfThePage)
{
    const sf::Image image = ShadowPainter().paint(PAGE_WIDTH, PAGE_HEIGHT).toImage(14);
    for (unsigned y : {0u, 333u, PAGE_HEIGHT - 1u}) {
        EXPECT_GE(image.getPixel(0, y).a, 150) << "row " << y;
        unsigned firstRise = 0;
        for (unsigned x = PAGE_WIDTH - 1; x >= 1; --x)
            if (image.getPixel(x, y).a > image.getPixel(x - 1, y).a + 1)
                firstRise = x;
        EXPECT_EQ(firstRise, 0u) << "darker again at " << firstRise << " on row " << y << ": it should fade steadily";
        for (unsigned x = PAGE_WIDTH / 10; x < PAGE_WIDTH; ++x)
            ASSERT_EQ(image.getPixel(x, y).a, 0) << "fully transparent at " << x << "," << y;
    }
    EXPECT_GT(image.getPixel(PAGE_WIDTH / 20, 100).a, 0) << "a soft falloff, not a hard line";
}

TEST(BloodStainedPages, StainBothPagesAsOneSceneOnTheSamePaper)
{
    const auto [left, right] = BloodPainter(1888).paint(paper());
    ASSERT_EQ(left.width(), PAGE_WIDTH);
    ASSERT_EQ(right.height(), PAGE_HEIGHT);

    auto stained = [](const FloatImage& page, int x, int y) {
        const Rgb clean = paper().colour(x, y);
        const Rgb seen = page.colour(x, y);
        return std::abs(seen.r - clean.r) + std::abs(seen.g - clean.g) + std::abs(seen.b - clean.b) > 0.15f;
    };
    auto soaked = [](const FloatImage& page, int x, int y) {
        const Rgb clean = paper().colour(x, y);
        const Rgb seen = page.colour(x, y);
        return std::abs(seen.r - clean.r) + std::abs(seen.g - clean.g) + std::abs(seen.b - clean.b) > 0.8f;
    };
    auto redder = [](const FloatImage& page, int x, int y) {
        const Rgb c = page.colour(x, y);
        return c.r > c.g * 1.3f && c.r > c.b * 1.3f;
    };
    for (const FloatImage* page : {&left, &right}) {
        int count = 0;
        int thick = 0;
        int red = 0;
        for (int y = 0; y < PAGE_HEIGHT; ++y)
            for (int x = 0; x < PAGE_WIDTH; ++x) {
                count += stained(*page, x, y) ? 1 : 0;
                if (soaked(*page, x, y)) {
                    ++thick;
                    red += redder(*page, x, y) ? 1 : 0;
                }
            }
        const double share = count / double(PAGE_WIDTH * PAGE_HEIGHT);
        EXPECT_GT(share, 0.01) << "the page is visibly bloodied";
        EXPECT_LT(share, 0.25) << "most of the page still reads";
        EXPECT_GT(thick, count / 4);
        EXPECT_GT(red, thick * 0.9) << "where it lies thick, blood is red, not mud";
    }
    // The pool runs across the spine: rows stained at the left page's inner edge are stained at
    // the right page's inner edge too.
    int acrossSpine = 0;
    int matched = 0;
    for (int y = 0; y < PAGE_HEIGHT; ++y)
        if (stained(left, PAGE_WIDTH - 1, y)) {
            ++acrossSpine;
            matched += stained(right, 0, y) ? 1 : 0;
        }
    EXPECT_GT(acrossSpine, 40);
    EXPECT_GT(matched, acrossSpine * 0.8);
    // Away from the stain the pages are the plain paper, so turning to them shows no seam.
    int untouched = 0;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            untouched += !stained(left, x, y) && left.colour(x, y).r == paper().colour(x, y).r ? 1 : 0;
    EXPECT_EQ(untouched, 1600);
}

TEST(Desk, DarkRoomLitPoolAndTheNotebookStandsOut)
{
    const sf::IntRect spread(362, 176, 880, 680);
    const sf::Image image = DeskPainter(1947, spread).paint(1600, 900).toImage(15);
    ASSERT_EQ(image.getSize(), sf::Vector2u(1600, 900));
    auto meanLuminance = [&](int left, int top, int width, int height) {
        double sum = 0.0;
        for (int y = top; y < top + height; ++y)
            for (int x = left; x < left + width; ++x)
                sum += luminanceOf(image.getPixel(static_cast<unsigned>(x), static_cast<unsigned>(y)));
        return sum / (width * height);
    };
    const double corner = meanLuminance(0, 0, 100, 100);
    const double besideBook = meanLuminance(200, 400, 100, 100);
    const double paperLuminance = 0.75;
    EXPECT_LT(corner, besideBook) << "the lamp's pool fades into the corners";
    EXPECT_LT(besideBook, paperLuminance / 5.0) << "the desk is dark enough for the pages to stand out";
    // The edges of the page block show just outside the pages, lighter than the cover around them.
    const sf::Color pageEdge = image.getPixel(spread.left - 2, 500);
    const sf::Color cover = image.getPixel(spread.left - 12, 500);
    EXPECT_GT(luminanceOf(pageEdge), luminanceOf(cover) * 3.0);
    for (unsigned y = 0; y < 900; y += 37)
        ASSERT_EQ(image.getPixel(800, y).a, 255) << "the background is opaque";
}

TEST(PaintingTools, DistanceInsideAShapeAndDitheringThatKeepsTransparency)
{
    ScalarField disc(101, 101);
    disc.raiseDisc(50.f, 50.f, 30.f, 1.f);
    const ScalarField distance = disc.distanceInside(0.5f);
    EXPECT_NEAR(distance.at(50, 50), 30.f, 1.5f);
    EXPECT_NEAR(distance.at(50, 30), 10.f, 1.f);
    EXPECT_EQ(distance.at(5, 5), 0.f);

    // A level between two 8-bit steps comes out as a mix of both, averaging to the level.
    FloatImage flat(64, 64, Rgb(100.5f / 255.f, 0.f, 1.f), 0.f);
    const sf::Image image = flat.toImage(3);
    double sum = 0.0;
    for (unsigned y = 0; y < 64; ++y)
        for (unsigned x = 0; x < 64; ++x) {
            const sf::Color pixel = image.getPixel(x, y);
            ASSERT_TRUE(pixel.r == 100 || pixel.r == 101);
            ASSERT_EQ(pixel.b, 255);
            ASSERT_EQ(pixel.a, 0) << "dithering never makes a transparent pixel visible";
            sum += pixel.r;
        }
    EXPECT_NEAR(sum / (64 * 64), 100.5, 0.1);
}

TEST(PaintingTools, NoiseIsSmoothBoundedAndSeeded)
{
    const GradientNoise noise(7);
    const GradientNoise same(7);
    const GradientNoise other(8);
    float low = 1.f;
    float high = -1.f;
    int differences = 0;
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 200; ++x) {
            const float fx = static_cast<float>(x) * 0.173f - 20.f;
            const float fy = static_cast<float>(y) * 0.191f - 20.f;
            const float value = noise.fractal(fx, fy, 4);
            low = std::min(low, value);
            high = std::max(high, value);
            ASSERT_EQ(value, same.fractal(fx, fy, 4));
            differences += value != other.fractal(fx, fy, 4) ? 1 : 0;
            // A step of a hundredth of a cell barely moves it: no seams at the lattice lines.
            ASSERT_LT(std::abs(noise.at(fx, fy) - noise.at(fx + 0.01f, fy)), 0.05f);
        }
    }
    EXPECT_GE(low, -1.f);
    EXPECT_LE(high, 1.f);
    EXPECT_GT(high - low, 0.8f) << "it uses its range";
    EXPECT_GT(differences, 39000) << "another seed, another pattern";
    EXPECT_EQ(noise.at(3.f, -5.f), 0.f) << "gradient noise is zero on its lattice points";
}
