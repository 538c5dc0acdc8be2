#include "brushkit.hpp"

#include "biquad.hpp"
#include "sineoscillator.hpp"

#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double PI = 3.141592653589793;

std::size_t samplesOf(double seconds, double sampleRate)
{
    return static_cast<std::size_t>(seconds * sampleRate);
}

} // namespace

BrushKit::BrushKit(double sampleRate, std::uint64_t seed)
    : sampleRate_(sampleRate)
{
    // A bronze plate has a thicket of inharmonic modes; with few of them it would ring like a bell.
    assetgen::Random random(seed);
    for (int mode = 0; mode < 56; ++mode) {
        // Struck lightly with wires, the low modes barely speak: the energy sits in the shimmer.
        const double frequency = 1400.0 * std::pow(11000.0 / 1400.0, random.uniform());
        rideModes_.push_back({frequency, random.uniform(0.4, 1.0) * std::sqrt(frequency / 11000.0),
                              1.1 * std::pow(frequency / 1400.0, -0.3) * random.uniform(0.7, 1.2)});
    }
}

std::vector<float> BrushKit::filteredNoise(double seconds, double decaySeconds, double lowCut, double highCut,
                                           assetgen::Random& random) const
{
    Biquad low = Biquad::highPass(sampleRate_, lowCut);
    Biquad high = Biquad::lowPass(sampleRate_, highCut);
    std::vector<float> noise(samplesOf(seconds, sampleRate_));
    const double decay = std::exp(-1.0 / (decaySeconds * sampleRate_));
    double envelope = 1.0;
    for (float& sample : noise) {
        sample = static_cast<float>(high.process(low.process(static_cast<float>(random.uniform(-1, 1)))) * envelope);
        envelope *= decay;
    }
    return noise;
}

std::vector<float> BrushKit::sweep(double seconds, float level, bool bright, assetgen::Random& random) const
{
    Biquad body = Biquad::bandPass(sampleRate_, bright ? 3600.0 : 2500.0, 0.55);
    Biquad air = Biquad::highPass(sampleRate_, 700.0);
    Biquad chatter = Biquad::lowPass(sampleRate_, 40.0);
    std::vector<float> stroke(samplesOf(seconds, sampleRate_));
    const double length = static_cast<double>(stroke.size());
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        // The brush speeds up through the first third of the stroke and glides out.
        const double t = static_cast<double>(i) / length;
        const double shape =
            t < 0.3 ? std::sin(0.5 * PI * t / 0.3) : std::pow(std::cos(0.5 * PI * (t - 0.3) / 0.7), 1.5);
        const double grip = 0.75 + 2.5 * chatter.process(static_cast<float>(random.uniform(-1, 1)));
        const float noise = air.process(body.process(static_cast<float>(random.uniform(-1, 1))));
        stroke[i] = static_cast<float>(noise * shape * grip * level);
    }
    return stroke;
}

std::vector<float> BrushKit::slap(float level, assetgen::Random& random) const
{
    std::vector<float> hit = filteredNoise(0.35, 0.055, 900.0, 6500.0, random);
    // The bristles land over a few milliseconds, not at once.
    const std::vector<float> wires = filteredNoise(0.35, 0.09, 3500.0, 11000.0, random);
    for (std::size_t i = 0; i < hit.size(); ++i)
        hit[i] = hit[i] * 0.8f + wires[i] * 0.45f;
    for (int bristle = 0; bristle < 7; ++bristle) {
        const auto start = samplesOf(random.uniform(0.0, 0.007), sampleRate_);
        const double decay = std::exp(-1.0 / (0.0006 * sampleRate_));
        double envelope = random.uniform(0.3, 0.7);
        for (std::size_t i = start; i < hit.size() && envelope > 1e-4; ++i) {
            hit[i] += static_cast<float>(random.uniform(-1, 1) * envelope);
            envelope *= decay;
        }
    }
    // The drum head under the wires.
    for (const double frequency : {182.0, 331.0}) {
        SineOscillator head(frequency, sampleRate_);
        const double decay = std::exp(-1.0 / (0.05 * sampleRate_));
        double envelope = 0.35;
        for (float& sample : hit) {
            sample += static_cast<float>(head.next() * envelope);
            envelope *= decay;
        }
    }
    for (float& sample : hit)
        sample *= level;
    return hit;
}

std::vector<float> BrushKit::ride(float level, assetgen::Random& random) const
{
    std::vector<float> hit = filteredNoise(2.0, 0.35, 5000.0, 14000.0, random);
    for (float& sample : hit)
        sample *= 0.3f;
    for (const Mode& mode : rideModes_) {
        SineOscillator partial(mode.frequency, sampleRate_, random.uniform(0, 2 * PI));
        const double decay = std::exp(-1.0 / (mode.decaySeconds * sampleRate_));
        double envelope = 0.05 * mode.amplitude;
        for (float& sample : hit) {
            sample += static_cast<float>(partial.next() * envelope);
            envelope *= decay;
        }
    }
    // The brush's wires hit the cymbal a little spread in time, softening the attack.
    const std::vector<float> tip = filteredNoise(0.015, 0.002, 2500.0, 11000.0, random);
    for (std::size_t i = 0; i < tip.size(); ++i)
        hit[i] += tip[i] * 0.5f;
    for (float& sample : hit)
        sample *= level;
    return hit;
}

std::vector<float> BrushKit::hiHatFoot(float level, assetgen::Random& random) const
{
    std::vector<float> chick = filteredNoise(0.12, 0.02, 6000.0, 12000.0, random);
    const std::vector<float> clap = filteredNoise(0.12, 0.008, 600.0, 2500.0, random);
    for (std::size_t i = 0; i < chick.size(); ++i)
        chick[i] = (chick[i] + clap[i] * 0.5f) * level;
    return chick;
}

std::vector<float> BrushKit::bassDrum(float level, assetgen::Random& random) const
{
    std::vector<float> hit(samplesOf(0.45, sampleRate_));
    double phase = random.uniform(0, 0.2);
    for (std::size_t i = 0; i < hit.size(); ++i) {
        const double t = static_cast<double>(i) / sampleRate_;
        // The pitch drops as the head's tension relaxes.
        const double frequency = 52.0 + 38.0 * std::exp(-t / 0.035);
        phase += 2 * PI * frequency / sampleRate_;
        hit[i] = static_cast<float>(std::sin(phase) * std::exp(-t / 0.16) * level);
    }
    const std::vector<float> felt = filteredNoise(0.02, 0.003, 100.0, 1200.0, random);
    for (std::size_t i = 0; i < felt.size(); ++i)
        hit[i] += felt[i] * 0.3f * level;
    return hit;
}

} // namespace orane::audiogen
