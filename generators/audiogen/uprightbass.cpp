#include "uprightbass.hpp"

#include "noteframe.hpp"
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
    const NoteFrame frame(sampleRate_, seconds, RELEASE_SECONDS * 3);
    const std::size_t total = frame.total();
    std::vector<float> note = frame.silence();

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
    frame.addNoiseBurst(note, random, 900.0, 0.02, 0.5, 0.004);
    frame.shape(note, velocity, NoteFrame::Attack::SineSquared, 0.006, RELEASE_SECONDS / 3);
    return note;
}

} // namespace orane::audiogen
