#include "texturegen/iconpainter.hpp"

#include <gtest/gtest.h>

using namespace orane::texturegen;

namespace
{

TEST(Icon, NotebookOnTheDeskInsideARoundedSquare)
{
    const FloatImage master = IconPainter(1947).paint();
    ASSERT_EQ(master.width(), IconPainter::MASTER_SIZE);
    const int size = IconPainter::MASTER_SIZE;
    // Rounded corners, see-through; the middle of each edge and the inside are opaque.
    EXPECT_EQ(master.alpha(2, 2), 0.f);
    EXPECT_EQ(master.alpha(size - 3, size - 3), 0.f);
    EXPECT_EQ(master.alpha(size / 2, 0), 1.f);
    EXPECT_EQ(master.alpha(0, size / 2), 1.f);
    // Light paper on both pages, dark wood at the top and bottom.
    EXPECT_GT(master.colour(size / 4, size - 230).luminance(), 0.6f);
    EXPECT_GT(master.colour(3 * size / 4, size - 230).luminance(), 0.6f);
    EXPECT_LT(master.colour(size / 2, 60).luminance(), 0.2f);
    EXPECT_LT(master.colour(size / 2, size - 60).luminance(), 0.2f);
}

TEST(Icon, ReducingAveragesAndIgnoresTheColourOfTransparentPixels)
{
    FloatImage picture(8, 8, Rgb(1.f, 0.f, 0.f));
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 4; ++x)
            picture.set(x, y, Rgb(0.f, 0.f, 1.f), x < 2 ? 0.f : 1.f);
    const FloatImage reduced = IconPainter::reduce(picture, 2);
    ASSERT_EQ(reduced.width(), 2);
    // Left half: half transparent, its visible half blue, not darkened by the hidden pixels.
    EXPECT_FLOAT_EQ(reduced.alpha(0, 0), 0.5f);
    EXPECT_FLOAT_EQ(reduced.colour(0, 1).b, 1.f);
    EXPECT_FLOAT_EQ(reduced.colour(0, 1).r, 0.f);
    EXPECT_FLOAT_EQ(reduced.alpha(1, 1), 1.f);
    EXPECT_FLOAT_EQ(reduced.colour(1, 0).r, 1.f);
}

} // namespace
