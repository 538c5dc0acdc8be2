#include "pistolshot.hpp"

#include "../common/random.hpp"
#include "biquad.hpp"

#include <algorithm>
#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double PI = 3.141592653589793;

} // namespace

PistolShot::PistolShot(double sampleRate, std::uint64_t seed)
    : sampleRate_(sampleRate)
    , seed_(seed)
{}

std::vector<float> PistolShot::renderBlast() const
{
    assetgen::Random random(seed_);
    const auto length = static_cast<std::size_t>(SECONDS * sampleRate_);
    std::vector<float> blast(length, 0.f);

    // The body: noise that starts bright and darkens as the gas cloud expands.
    Biquad tone = Biquad::lowPass(sampleRate_, 9000.0, 0.9);
    for (std::size_t i = 0; i < length; ++i) {
        const double t = static_cast<double>(i) / sampleRate_;
        if (i % 32 == 0)
            tone.retuneLowPass(sampleRate_, 700.0 + 8300.0 * std::exp(-t / 0.025), 0.9);
        const double envelope = 0.5 * std::exp(-t / 0.011) + 0.2 * std::exp(-t / 0.06);
        const double attack = std::min(1.0, t / 0.0003);
        blast[i] +=
            static_cast<float>(tone.process(static_cast<float>(random.uniform(-1, 1))) * envelope * attack * 1.6);
    }

    // The boom: a falling thump from the blast wave.
    double phase = 0.0;
    for (std::size_t i = 0; i < length; ++i) {
        const double t = static_cast<double>(i) / sampleRate_;
        phase += 2 * PI * (48.0 + 120.0 * std::exp(-t / 0.02)) / sampleRate_;
        blast[i] += static_cast<float>(std::sin(phase) * 0.5 * std::exp(-t / 0.07) * std::min(1.0, t / 0.001));
    }

    // Overdriven like the air and the microphone it hit.
    for (float& sample : blast)
        sample = std::tanh(sample * 1.4f) * 0.75f;

    // The crack on top: a steep pressure step and its rebound, a fraction of a millisecond each,
    // left clean so that it is the loudest moment of the shot.
    const double crackSamples = 0.00025 * sampleRate_;
    for (std::size_t i = 0; i < static_cast<std::size_t>(4 * crackSamples); ++i) {
        const double t = static_cast<double>(i) / crackSamples;
        blast[i] += static_cast<float>((t < 1.0 ? 0.8 : -0.55) * std::exp(-t * 0.6));
    }
    return blast;
}

void PistolShot::addRoom(std::vector<float>& sound) const
{
    assetgen::Random random(seed_ + 1);
    const std::vector<float> dry = sound;

    // Early reflections from the walls, each duller than the last.
    const double delays[] = {0.0093, 0.0141, 0.0217, 0.0289, 0.0371, 0.0452};
    const double gains[] = {0.3, 0.24, 0.19, 0.15, 0.11, 0.08};
    for (int reflection = 0; reflection < 6; ++reflection) {
        Biquad wall = Biquad::lowPass(sampleRate_, 5000.0 - 600.0 * reflection);
        const auto offset = static_cast<std::size_t>(delays[reflection] * sampleRate_);
        // Some surfaces give the wave back inverted.
        const double gain = gains[reflection] * (random.chance(0.5) ? 1.0 : -1.0);
        for (std::size_t i = 0; i + offset < sound.size(); ++i)
            sound[i + offset] += static_cast<float>(wall.process(dry[i]) * gain);
    }

    // The late tail: decaying noise that loses its highs as it fades.
    Biquad air = Biquad::lowPass(sampleRate_, 3500.0);
    Biquad rumble = Biquad::highPass(sampleRate_, 90.0);
    const std::size_t start = static_cast<std::size_t>(0.012 * sampleRate_);
    for (std::size_t i = start; i < sound.size(); ++i) {
        const double t = static_cast<double>(i - start) / sampleRate_;
        if (i % 64 == 0)
            air.retuneLowPass(sampleRate_, 600.0 + 2900.0 * std::exp(-t / 0.15));
        const double envelope = 0.22 * std::exp(-t / 0.14) * std::min(1.0, t / 0.01);
        sound[i] +=
            static_cast<float>(rumble.process(air.process(static_cast<float>(random.uniform(-1, 1)))) * envelope);
    }
}

std::vector<float> PistolShot::render() const
{
    std::vector<float> shot = renderBlast();
    addRoom(shot);
    // A short fade brings the last of the tail to true silence.
    const std::size_t fade = static_cast<std::size_t>(0.08 * sampleRate_);
    for (std::size_t i = 0; i < fade; ++i)
        shot[shot.size() - 1 - i] *=
            static_cast<float>(0.5 - 0.5 * std::cos(PI * static_cast<double>(i) / static_cast<double>(fade)));
    float peak = 0.f;
    for (float sample : shot)
        peak = std::max(peak, std::abs(sample));
    for (float& sample : shot)
        sample *= PEAK / peak;
    return shot;
}

} // namespace orane::audiogen
