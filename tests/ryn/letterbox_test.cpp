#include <ryn/core/letterbox.hpp>

#include <gtest/gtest.h>

namespace
{

const sf::Vector2u GAME(1600, 900);

TEST(Letterbox, FitKeepsTheSizeThatFitsAndOtherwiseTheLargestOfTheSameProportions)
{
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {1920, 1080}), GAME);
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {1600, 900}), GAME);
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {1280, 720}), sf::Vector2u(1280, 720));
    // 768 * 16 / 9 is 1365.3: the height limits, the width is cut to a whole pixel.
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {1366, 768}), sf::Vector2u(1365, 768));
    // Wide enough but one pixel short in height.
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {2560, 899}), sf::Vector2u(1598, 899));
    // A portrait screen: the width limits.
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {800, 1280}), sf::Vector2u(800, 450));
    EXPECT_EQ(ryn::Letterbox::fit(GAME, {0, 0}), sf::Vector2u(1, 1));
}

TEST(Letterbox, PixelsMapBackToThePictureAcrossTheBands)
{
    // A 16:10 window shows the 16:9 picture with bands of 40 pixels above and below.
    const ryn::Letterbox box(GAME, {1280, 800});
    EXPECT_FLOAT_EQ(box.scale(), 0.8f);
    EXPECT_EQ(box.area(), sf::FloatRect(0.f, 40.f, 1280.f, 720.f));
    EXPECT_EQ(box.toPicture({0, 40}), sf::Vector2f(0.f, 0.f));
    EXPECT_EQ(box.toPicture({1280, 760}), sf::Vector2f(1600.f, 900.f));
    EXPECT_EQ(box.toPicture({640, 400}), sf::Vector2f(800.f, 450.f));
    EXPECT_LT(box.toPicture({10, 20}).y, 0.f);

    const ryn::Letterbox same(GAME, GAME);
    EXPECT_EQ(same.toPicture({1241, 855}), sf::Vector2f(1241.f, 855.f));
}

} // namespace
