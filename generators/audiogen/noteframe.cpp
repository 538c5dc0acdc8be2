#include "noteframe.hpp"

#include "biquad.hpp"

#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double PI = 3.141592653589793;

} // namespace

NoteFrame::NoteFrame(double sampleRate, double heldSeconds, double ringSeconds)
    : sampleRate_(sampleRate)
    , held_(static_cast<std::size_t>(heldSeconds * sampleRate))
    , total_(held_ + static_cast<std::size_t>(ringSeconds * sampleRate))
{}

void NoteFrame::addNoiseBurst(std::vector<float>& note, assetgen::Random& random, double cutoff, double seconds,
                              double level, double fadeSeconds) const
{
    Biquad filter = Biquad::lowPass(sampleRate_, cutoff);
    const auto length = static_cast<std::size_t>(seconds * sampleRate_);
    for (std::size_t i = 0; i < length && i < note.size(); ++i) {
        const double fade = std::exp(-static_cast<double>(i) / (fadeSeconds * sampleRate_));
        note[i] += static_cast<float>(filter.process(static_cast<float>(random.uniform(-1, 1))) * level * fade);
    }
}

void NoteFrame::shape(std::vector<float>& note, float velocity, Attack attack, double attackSeconds,
                      double releaseSeconds) const
{
    const double attackSamples = attackSeconds * sampleRate_;
    for (std::size_t i = 0; i < note.size(); ++i) {
        double gain = velocity;
        if (static_cast<double>(i) < attackSamples)
            gain *= attack == Attack::Linear
                        ? static_cast<double>(i) / attackSamples
                        : std::pow(std::sin(0.5 * PI * static_cast<double>(i) / attackSamples), 2.0);
        if (i > held_)
            gain *= std::exp(-static_cast<double>(i - held_) / (releaseSeconds * sampleRate_));
        note[i] = static_cast<float>(note[i] * gain);
    }
}

} // namespace orane::audiogen
