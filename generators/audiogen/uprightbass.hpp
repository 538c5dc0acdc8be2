#pragma once

#include "../common/random.hpp"

#include <vector>

namespace orane::audiogen
{

/// A plucked double bass: a warm additive tone whose upper partials die first, a finger-noise
/// attack and a quick damp when the next note comes.
class UprightBass
{
public:
    explicit UprightBass(double sampleRate);

    /// One note held for the given seconds, followed by its short damped release.
    std::vector<float> play(double pitch, double seconds, float velocity, assetgen::Random& random) const;

private:
    double sampleRate_ = 44100.0;
};

} // namespace orane::audiogen
