#include "vibraphone.hpp"

#include "biquad.hpp"
#include "score.hpp"
#include "sineoscillator.hpp"

#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double PI = 3.141592653589793;
constexpr double PEDAL_RELEASE = 0.15;
constexpr double TREMOLO_DEPTH = 0.35;

struct Mode
{
    double ratio;
    double amplitude;
    double decaySeconds;
};

} // namespace

Vibraphone::Vibraphone(double sampleRate)
    : sampleRate_(sampleRate)
{}

std::vector<float> Vibraphone::play(double pitch, double seconds, float velocity, double startSeconds,
                                    assetgen::Random& random) const
{
    const double fundamental = frequencyOf(pitch);
    const auto held = static_cast<std::size_t>(seconds * sampleRate_);
    const auto total = held + static_cast<std::size_t>(PEDAL_RELEASE * 5 * sampleRate_);
    // Bars are tuned so that the first overtone sits two octaves up; the third mode is the mallet's
    // brief ping. Higher bars ring for less time.
    const double ring = 3.2 * std::pow(523.0 / fundamental, 0.4);
    const Mode modes[] = {
        {1.0, 1.0, ring}, {3.98, 0.20 + 0.15 * velocity, ring * 0.25}, {9.8, 0.05 + 0.06 * velocity, 0.08}};
    std::vector<float> note(total, 0.f);
    for (const Mode& mode : modes) {
        if (mode.ratio * fundamental > 18000.0)
            continue;
        SineOscillator partial(mode.ratio * fundamental, sampleRate_, random.uniform(0, 2 * PI));
        const double decay = std::exp(-1.0 / (mode.decaySeconds * sampleRate_));
        double envelope = mode.amplitude;
        for (std::size_t i = 0; i < total; ++i) {
            note[i] += static_cast<float>(partial.next() * envelope);
            envelope *= decay;
        }
    }

    // The felt of the mallet: a soft knock.
    Biquad knock = Biquad::bandPass(sampleRate_, 1800.0, 0.8);
    for (std::size_t i = 0; i < static_cast<std::size_t>(0.02 * sampleRate_) && i < total; ++i)
        note[i] += static_cast<float>(knock.process(static_cast<float>(random.uniform(-1, 1))) * 0.12 * velocity
                                      * std::exp(-static_cast<double>(i) / (0.003 * sampleRate_)));

    SineOscillator tremolo(TREMOLO_RATE, sampleRate_, 2 * PI * TREMOLO_RATE * startSeconds);
    const double attack = 0.0015 * sampleRate_;
    for (std::size_t i = 0; i < total; ++i) {
        double gain = velocity * (1.0 - TREMOLO_DEPTH * (0.5 + 0.5 * tremolo.next()));
        if (static_cast<double>(i) < attack)
            gain *= static_cast<double>(i) / attack;
        if (i > held)
            gain *= std::exp(-static_cast<double>(i - held) / (PEDAL_RELEASE * sampleRate_));
        note[i] = static_cast<float>(note[i] * gain);
    }
    return note;
}

} // namespace orane::audiogen
