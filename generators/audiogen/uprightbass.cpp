#include "uprightbass.hpp"

#include "biquad.hpp"
#include "score.hpp"
#include "sineoscillator.hpp"

#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double RELEASE_SECONDS = 0.07;
constexpr double PLUCK_POSITION = 0.19; // fraction of the string length from the bridge
constexpr double PI = 3.141592653589793;

} // namespace

UprightBass::UprightBass(double sampleRate)
    : sampleRate_(sampleRate)
{}

std::vector<float> UprightBass::play(double pitch, double seconds, float velocity, assetgen::Random& random) const
{
    const double fundamental = frequencyOf(pitch);
    const auto held = static_cast<std::size_t>(seconds * sampleRate_);
    const auto total = held + static_cast<std::size_t>(RELEASE_SECONDS * 3 * sampleRate_);
    std::vector<float> note(total, 0.f);

    for (int k = 1; k <= 14 && k * fundamental < 2600.0; ++k) {
        const double amplitude = std::pow(k, -1.1) * (0.3 + std::abs(std::sin(PI * k * PLUCK_POSITION)))
                                 * std::exp(-(k - 1) * (0.42 - 0.18 * velocity));
        const double decaySeconds = 1.7 / (1.0 + 0.55 * (k - 1));
        const double decay = std::exp(-1.0 / (decaySeconds * sampleRate_));
        SineOscillator partial(k * fundamental * (1.0 + 0.00015 * k * k), sampleRate_, random.uniform(0, 2 * PI));
        double envelope = amplitude;
        for (std::size_t i = 0; i < total; ++i) {
            note[i] += static_cast<float>(partial.next() * envelope);
            envelope *= decay;
        }
    }

    // The finger leaving the string: a short, dark burst of noise.
    Biquad thump = Biquad::lowPass(sampleRate_, 900.0);
    const std::size_t noiseLength = static_cast<std::size_t>(0.02 * sampleRate_);
    for (std::size_t i = 0; i < noiseLength && i < total; ++i) {
        const double fade = std::exp(-static_cast<double>(i) / (0.004 * sampleRate_));
        note[i] += static_cast<float>(thump.process(static_cast<float>(random.uniform(-1, 1))) * 0.5 * fade);
    }

    const double attack = 0.006 * sampleRate_;
    for (std::size_t i = 0; i < total; ++i) {
        double gain = velocity;
        if (static_cast<double>(i) < attack)
            gain *= std::pow(std::sin(0.5 * PI * static_cast<double>(i) / attack), 2.0);
        if (i > held)
            gain *= std::exp(-static_cast<double>(i - held) / (RELEASE_SECONDS / 3 * sampleRate_));
        note[i] = static_cast<float>(note[i] * gain);
    }
    return note;
}

} // namespace orane::audiogen
