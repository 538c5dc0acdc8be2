#include "piano.hpp"

#include "biquad.hpp"
#include "score.hpp"
#include "sineoscillator.hpp"

#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double PI = 3.141592653589793;
constexpr double INHARMONICITY = 0.00035;
constexpr double HAMMER_POSITION = 1.0 / 7.5;
constexpr double DAMPER_SECONDS = 0.09;

} // namespace

Piano::Piano(double sampleRate)
    : sampleRate_(sampleRate)
{}

std::vector<float> Piano::play(double pitch, double seconds, float velocity, assetgen::Random& random) const
{
    const double fundamental = frequencyOf(pitch);
    const auto held = static_cast<std::size_t>(seconds * sampleRate_);
    const auto total = held + static_cast<std::size_t>(DAMPER_SECONDS * 5 * sampleRate_);
    std::vector<float> note(total, 0.f);

    for (int n = 1; n <= 14; ++n) {
        const double frequency = n * fundamental * std::sqrt(1.0 + INHARMONICITY * n * n);
        if (frequency > 7500.0)
            break;
        // Harder blows bring out the upper partials; the hammer's point of contact mutes some.
        const double amplitude = std::pow(n, -1.15) * std::exp(-(n - 1) * (0.5 - 0.3 * velocity))
                                 * (0.35 + 0.65 * std::abs(std::sin(PI * n * HAMMER_POSITION)));
        const double fast = std::exp(-1.0 / (0.45 / (1.0 + 0.15 * n) * sampleRate_));
        const double slow = std::exp(-1.0 / (4.5 / (1.0 + 0.3 * n) * sampleRate_));
        // The lower partials come from two strings tuned a hair apart.
        const int strings = n <= 6 ? 2 : 1;
        for (int string = 0; string < strings; ++string) {
            const double detune = strings == 1 ? 1.0 : (string == 0 ? 0.99925 : 1.00075);
            SineOscillator partial(frequency * detune, sampleRate_, random.uniform(0, 2 * PI));
            double fastPart = 0.6 * amplitude / strings;
            double slowPart = 0.4 * amplitude / strings;
            for (std::size_t i = 0; i < total; ++i) {
                note[i] += static_cast<float>(partial.next() * (fastPart + slowPart));
                fastPart *= fast;
                slowPart *= slow;
            }
        }
    }

    Biquad felt = Biquad::lowPass(sampleRate_, 1400.0);
    for (std::size_t i = 0; i < static_cast<std::size_t>(0.03 * sampleRate_) && i < total; ++i)
        note[i] += static_cast<float>(felt.process(static_cast<float>(random.uniform(-1, 1))) * 0.25 * velocity
                                      * std::exp(-static_cast<double>(i) / (0.005 * sampleRate_)));

    const double attack = 0.002 * sampleRate_;
    for (std::size_t i = 0; i < total; ++i) {
        double gain = velocity;
        if (static_cast<double>(i) < attack)
            gain *= static_cast<double>(i) / attack;
        if (i > held)
            gain *= std::exp(-static_cast<double>(i - held) / (DAMPER_SECONDS * sampleRate_));
        note[i] = static_cast<float>(note[i] * gain);
    }
    return note;
}

} // namespace orane::audiogen
