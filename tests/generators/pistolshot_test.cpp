#include "audiogen/pistolshot.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace orane::audiogen;

namespace
{

double decibelsOf(const std::vector<float>& sound, double fromSeconds, double toSeconds)
{
    const auto from = static_cast<std::size_t>(fromSeconds * 44100);
    const auto to = std::min(sound.size(), static_cast<std::size_t>(toSeconds * 44100));
    double sum = 0.0;
    for (std::size_t i = from; i < to; ++i)
        sum += static_cast<double>(sound[i]) * sound[i];
    return 10.0 * std::log10(sum / static_cast<double>(to - from) + 1e-30);
}

} // namespace

TEST(PistolShot, StrikesAtOnceThenFadesThroughTheRoomToSilence)
{
    const std::vector<float> shot = PistolShot(44100.0, 45).render();
    EXPECT_NEAR(static_cast<double>(shot.size()) / 44100.0, 1.0, 0.05);

    const auto loudest =
        std::max_element(shot.begin(), shot.end(), [](float a, float b) { return std::abs(a) < std::abs(b); });
    EXPECT_NEAR(20.0 * std::log10(std::abs(*loudest)), -1.0, 0.01);
    EXPECT_LT(loudest - shot.begin(), 0.005 * 44100) << "the peak is in the first five milliseconds";

    const double blast = decibelsOf(shot, 0.0, 0.02);
    const double body = decibelsOf(shot, 0.05, 0.1);
    const double room = decibelsOf(shot, 0.2, 0.3);
    const double end = decibelsOf(shot, 0.9, 1.0);
    EXPECT_GT(blast, -12.0);
    EXPECT_LT(body, blast - 3.0);
    EXPECT_LT(room, body - 10.0);
    EXPECT_GT(room, -60.0) << "a room tail follows the blast";
    EXPECT_LT(end, -80.0) << "the tail has died away";
    EXPECT_EQ(shot.back(), 0.f) << "the last sample is silent, so the sound ends without a click";
}

TEST(PistolShot, SameSeedSameSoundOtherSeedOtherSound)
{
    EXPECT_EQ(PistolShot(44100.0, 45).render(), PistolShot(44100.0, 45).render());
    EXPECT_NE(PistolShot(44100.0, 45).render(), PistolShot(44100.0, 46).render());
}
