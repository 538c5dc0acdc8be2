#include "piano.hpp"

#include "noteframe.hpp"
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
    const NoteFrame frame(sampleRate_, seconds, DAMPER_SECONDS * 5);
    const std::size_t total = frame.total();
    std::vector<float> note = frame.silence();

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

    // The felt hammer's thump.
    frame.addNoiseBurst(note, random, 1400.0, 0.03, 0.25 * velocity, 0.005);
    frame.shape(note, velocity, NoteFrame::Attack::Linear, 0.002, DAMPER_SECONDS);
    return note;
}

} // namespace orane::audiogen
