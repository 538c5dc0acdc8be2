#include "audiogen/jazzloop.hpp"
#include "audiogen/looptrack.hpp"
#include "audiogen/stereoloop.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace orane::audiogen;

TEST(LoopTracks, SoundPastTheEndOrBeforeTheStartWrapsAround)
{
    LoopTrack track(10);
    track.add(8, {1.f, 2.f, 3.f, 4.f}, 1.f);
    EXPECT_FLOAT_EQ(track.at(8), 1.f);
    EXPECT_FLOAT_EQ(track.at(9), 2.f);
    EXPECT_FLOAT_EQ(track.at(0), 3.f);
    EXPECT_FLOAT_EQ(track.at(1), 4.f);
    track.add(-1, {10.f, 20.f}, 0.5f);
    EXPECT_FLOAT_EQ(track.at(9), 7.f);
    EXPECT_FLOAT_EQ(track.at(0), 13.f);
    // A sound longer than the loop laps it.
    LoopTrack lap(3);
    lap.add(0, std::vector<float>(7, 1.f), 1.f);
    EXPECT_FLOAT_EQ(lap.at(0), 3.f);
    EXPECT_FLOAT_EQ(lap.at(1), 2.f);
    EXPECT_FLOAT_EQ(lap.peak(), 3.f);
}

TEST(LoopTracks, PanKeepsThePowerAndPlacesTheSound)
{
    StereoLoop loop(4);
    loop.add(0, {1.f}, 1.f, 0.f);
    EXPECT_NEAR(loop.left().at(0), loop.right().at(0), 1e-6);
    EXPECT_NEAR(loop.left().at(0) * loop.left().at(0) + loop.right().at(0) * loop.right().at(0), 1.f, 1e-6);
    loop.add(1, {1.f}, 1.f, -1.f);
    EXPECT_NEAR(loop.left().at(1), 1.f, 1e-6);
    EXPECT_NEAR(loop.right().at(1), 0.f, 1e-6);
    loop.add(2, {1.f}, 1.f, 0.5f);
    EXPECT_GT(loop.right().at(2), loop.left().at(2));
}

/// The music takes a second or two to render; every check below listens to the same take.
class MusicLoop : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { music_ = new StereoLoop(JazzLoop(44100.0, 1947).render()); }
    static void TearDownTestSuite()
    {
        delete music_;
        music_ = nullptr;
    }

    static float stepAt(const LoopTrack& track, std::size_t frame)
    {
        const std::size_t before = frame == 0 ? track.frames() - 1 : frame - 1;
        return std::abs(track.at(frame) - track.at(before));
    }

    static StereoLoop* music_;
};

StereoLoop* MusicLoop::music_ = nullptr;

TEST_F(MusicLoop, LastsOverAMinuteOfWholeBarsAndPeaksBelowMinusOneDecibel)
{
    const double seconds = static_cast<double>(music_->frames()) / 44100.0;
    EXPECT_GE(seconds, 60.0);
    const double bars = seconds / (4 * 60.0 / JazzLoop::TEMPO);
    EXPECT_NEAR(bars, std::round(bars), 1e-6) << "the loop ends on a bar line";
    EXPECT_LE(20.0 * std::log10(music_->peak()), -1.0);
    EXPECT_GT(20.0 * std::log10(music_->rms()), -24.0) << "loud enough to carry under the game";
}

TEST_F(MusicLoop, JoinsItsEndToItsStartWithoutAJump)
{
    for (const LoopTrack* channel : {&music_->left(), &music_->right()}) {
        std::vector<float> steps;
        for (std::size_t frame = 1; frame < channel->frames(); frame += 7)
            steps.push_back(stepAt(*channel, frame));
        std::nth_element(steps.begin(), steps.begin() + steps.size() * 99 / 100, steps.end());
        const float usual = steps[steps.size() * 99 / 100];
        EXPECT_LE(stepAt(*channel, 0), usual) << "the step across the loop point is an ordinary one";
        // Nothing is left hanging at the end: the last few milliseconds flow into the first ones.
        double endEnergy = 0.0;
        double startEnergy = 0.0;
        for (std::size_t i = 0; i < 441; ++i) {
            endEnergy += channel->at(channel->frames() - 1 - i) * channel->at(channel->frames() - 1 - i);
            startEnergy += channel->at(i) * channel->at(i);
        }
        EXPECT_GT(endEnergy, 0.0) << "tails that run past the end sound at the start, not in silence";
        EXPECT_GT(startEnergy, 0.0);
    }
}

TEST_F(MusicLoop, HasABassRegisterATopAndNoOffset)
{
    // A crude spectrum: one-pole splits into below ~150 Hz and above ~4 kHz.
    double low = 0.0;
    double high = 0.0;
    double total = 0.0;
    double sum = 0.0;
    float smooth = 0.f;
    float previous = 0.f;
    const LoopTrack& left = music_->left();
    for (std::size_t i = 0; i < left.frames(); ++i) {
        const float x = left.at(i);
        smooth += 0.021f * (x - smooth);
        const float difference = x - previous;
        previous = x;
        low += smooth * smooth;
        high += difference * difference;
        total += x * x;
        sum += x;
    }
    EXPECT_GT(low / total, 0.1) << "the double bass is there";
    EXPECT_GT(high / total, 0.005) << "the brushes and the cymbal are there";
    EXPECT_LT(std::abs(sum / static_cast<double>(left.frames())), 0.002) << "no DC offset";
}
