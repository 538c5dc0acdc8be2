#include "audiogen/biquad.hpp"
#include "audiogen/brushkit.hpp"
#include "audiogen/piano.hpp"
#include "audiogen/reverb.hpp"
#include "audiogen/score.hpp"
#include "audiogen/sineoscillator.hpp"
#include "audiogen/uprightbass.hpp"
#include "audiogen/vibraphone.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using namespace orane::audiogen;
using orane::assetgen::Random;

namespace
{

constexpr double RATE = 44100.0;
constexpr double PI = 3.141592653589793;

/// Power of one frequency in a stretch of sound (Goertzel), normalised by its length.
double powerAt(const std::vector<float>& sound, double frequency, std::size_t from = 0, std::size_t count = 0)
{
    if (count == 0 || from + count > sound.size())
        count = sound.size() - from;
    const double coefficient = 2.0 * std::cos(2.0 * PI * frequency / RATE);
    double previous = 0.0;
    double beforePrevious = 0.0;
    for (std::size_t i = from; i < from + count; ++i) {
        const double current = sound[i] + coefficient * previous - beforePrevious;
        beforePrevious = previous;
        previous = current;
    }
    return (previous * previous + beforePrevious * beforePrevious - coefficient * previous * beforePrevious)
           / (static_cast<double>(count) * static_cast<double>(count));
}

/// Amplitude of a steady sine after the filter has settled.
double gainOf(Biquad filter, double frequency)
{
    double peak = 0.0;
    for (int i = 0; i < 20000; ++i) {
        const float out = filter.process(static_cast<float>(std::sin(2.0 * PI * frequency * i / RATE)));
        if (i > 15000)
            peak = std::max(peak, static_cast<double>(std::abs(out)));
    }
    return peak;
}

double energy(const std::vector<float>& sound, std::size_t from, std::size_t count)
{
    double sum = 0.0;
    for (std::size_t i = from; i < from + count && i < sound.size(); ++i)
        sum += static_cast<double>(sound[i]) * sound[i];
    return sum;
}

} // namespace

TEST(Filters, PassBlockAndPeakWhereTheirDesignsSay)
{
    EXPECT_NEAR(gainOf(Biquad::lowPass(RATE, 1000.0), 50.0), 1.0, 0.01);
    EXPECT_NEAR(gainOf(Biquad::lowPass(RATE, 1000.0), 1000.0), 0.7071, 0.02) << "-3 dB at the corner";
    EXPECT_LT(gainOf(Biquad::lowPass(RATE, 1000.0), 8000.0), 0.02);
    EXPECT_LT(gainOf(Biquad::highPass(RATE, 1000.0), 50.0), 0.01);
    EXPECT_NEAR(gainOf(Biquad::highPass(RATE, 1000.0), 10000.0), 1.0, 0.02);
    EXPECT_NEAR(gainOf(Biquad::bandPass(RATE, 3000.0, 1.0), 3000.0), 1.0, 0.02);
    EXPECT_LT(gainOf(Biquad::bandPass(RATE, 3000.0, 1.0), 300.0), 0.15);
    // A corner asked above Nyquist is held below it, so the filter stays stable.
    EXPECT_LT(gainOf(Biquad::lowPass(RATE, 40000.0), 100.0), 1.01);
}

TEST(Oscillator, StaysOnTheSineForSecondsWithoutDrifting)
{
    SineOscillator oscillator(440.0, RATE, 0.3);
    double worst = 0.0;
    for (int i = 0; i < 4 * 44100; ++i)
        worst = std::max(worst, std::abs(oscillator.next() - std::sin(0.3 + 2.0 * PI * 440.0 * i / RATE)));
    EXPECT_LT(worst, 1e-6);
}

TEST(Room, ReverbTailIsWideAndDiesAway)
{
    Reverb room(RATE, 0.6f, 0.5f);
    std::vector<float> left;
    std::vector<float> right;
    for (int i = 0; i < 4 * 44100; ++i) {
        const auto [l, r] = room.process(i == 0 ? 1.f : 0.f);
        left.push_back(l);
        right.push_back(r);
    }
    const double early = energy(left, 0, 22050);
    const double late = energy(left, 3 * 44100, 22050);
    EXPECT_GT(early, 0.0);
    EXPECT_LT(late, early * 1e-5) << "about 50 dB down after three seconds";
    EXPECT_NE(left, right) << "the two sides differ, for width";
}

TEST(Instruments, EachSoundsItsPitchAndFallsSilentAfterItsNote)
{
    struct Case
    {
        const char* name;
        int pitch;
        std::function<std::vector<float>(Random&)> play;
    };
    const UprightBass bass(RATE);
    const Piano piano(RATE);
    const Vibraphone vibes(RATE);
    const Case cases[] = {
        {"bass", noteNumber("D2"), [&](Random& r) { return bass.play(noteNumber("D2"), 0.7, 0.8f, r); }},
        {"piano", noteNumber("A3"), [&](Random& r) { return piano.play(noteNumber("A3"), 0.7, 0.6f, r); }},
        {"vibes", noteNumber("F5"), [&](Random& r) { return vibes.play(noteNumber("F5"), 0.7, 0.8f, 0.0, r); }},
    };
    for (const Case& c : cases) {
        Random random(5);
        const std::vector<float> note = c.play(random);
        const double f = frequencyOf(c.pitch);
        const std::size_t from = 2205;
        const std::size_t count = 22050;
        const double onPitch = powerAt(note, f, from, count);
        EXPECT_GT(onPitch, 20.0 * powerAt(note, f * std::pow(2.0, 1.0 / 12.0), from, count))
            << c.name << " vs a semitone up";
        EXPECT_GT(onPitch, 20.0 * powerAt(note, f * std::pow(2.0, -1.0 / 12.0), from, count))
            << c.name << " vs a semitone down";
        const double held = energy(note, from, 4410);
        const double tail = energy(note, note.size() - 441, 441) * 10.0;
        EXPECT_LT(tail, held * 1e-4) << c.name << ": damped at the end, so the cut is silent";
    }
}

TEST(Instruments, VibraphoneTremoloBeatsAtTheRotorSpeedInPhaseAcrossNotes)
{
    const Vibraphone vibes(RATE);
    Random random(9);
    // Two notes, the second starting a quarter of a rotor turn later in the music.
    const double quarterTurn = 0.25 / Vibraphone::TREMOLO_RATE;
    const std::vector<float> first = vibes.play(noteNumber("A4"), 2.0, 0.7f, 0.0, random);
    const std::vector<float> second = vibes.play(noteNumber("A4"), 2.0, 0.7f, quarterTurn, random);
    auto envelopeAt = [](const std::vector<float>& note, std::size_t at) {
        double peak = 0.0;
        for (std::size_t i = at; i < at + 100; ++i)
            peak = std::max(peak, static_cast<double>(std::abs(note[i])));
        return peak;
    };
    // Over one rotor turn the loudness swings well beyond the slow decay.
    const std::size_t turn = static_cast<std::size_t>(RATE / Vibraphone::TREMOLO_RATE);
    double loudest = 0.0;
    double softest = 1e9;
    for (std::size_t at = 22050; at < 22050 + turn; at += 100) {
        loudest = std::max(loudest, envelopeAt(first, at));
        softest = std::min(softest, envelopeAt(first, at));
    }
    EXPECT_LT(softest, loudest * 0.8);
    // The second note is at the rotor's phase of its own start time: shifting it by a quarter turn
    // lines its envelope up with the first one's.
    const std::size_t shift = static_cast<std::size_t>(quarterTurn * RATE);
    double mismatch = 0.0;
    double total = 0.0;
    for (std::size_t at = 22050; at < 22050 + turn; at += 100) {
        const double a = envelopeAt(first, at + shift) / envelopeAt(first, 22050);
        const double b = envelopeAt(second, at) / envelopeAt(second, 22050 - shift);
        mismatch += std::abs(a - b);
        total += a;
    }
    EXPECT_LT(mismatch, total * 0.05);
}

TEST(Instruments, BrushesHissHighAndTheBassDrumThumpsLow)
{
    const BrushKit kit(RATE, 3);
    Random random(4);
    const std::vector<float> slap = kit.slap(1.f, random);
    const std::vector<float> kick = kit.bassDrum(1.f, random);
    const std::vector<float> sweep = kit.sweep(0.75, 1.f, true, random);
    EXPECT_GT(powerAt(slap, 4000.0, 0, 4410), powerAt(slap, 60.0, 0, 4410));
    EXPECT_GT(powerAt(kick, 60.0, 0, 8820), 100.0 * powerAt(kick, 4000.0, 0, 8820));
    EXPECT_GT(powerAt(sweep, 3600.0), 10.0 * powerAt(sweep, 100.0));
    // A stroke swells and fades: it starts and ends quieter than its middle.
    const std::size_t third = sweep.size() / 3;
    EXPECT_LT(energy(sweep, 0, 400), energy(sweep, third, 400));
    EXPECT_LT(energy(sweep, sweep.size() - 400, 400), energy(sweep, third, 400));
}
