#pragma once

#include "../common/random.hpp"

#include <cstdint>
#include <vector>

namespace orane::audiogen
{

/// A jazz kit played with wire brushes: the snare's sweep and slap, a ride cymbal, the hi-hat
/// closed by the foot, and a bass drum barely touched. Each call renders one stroke.
class BrushKit
{
public:
    /// seed: the cymbal's own set of vibration modes.
    BrushKit(double sampleRate, std::uint64_t seed);

    /// The brush stirred across the snare head for the given seconds; bright chooses the part of
    /// the head (the tone rises as the brush moves away from the centre).
    std::vector<float> sweep(double seconds, float level, bool bright, assetgen::Random& random) const;
    /// A slap of the brush on the snare: a spray of bristle clicks, the head and the wires.
    std::vector<float> slap(float level, assetgen::Random& random) const;
    std::vector<float> ride(float level, assetgen::Random& random) const;
    std::vector<float> hiHatFoot(float level, assetgen::Random& random) const;
    std::vector<float> bassDrum(float level, assetgen::Random& random) const;

private:
    std::vector<float> filteredNoise(double seconds, double decaySeconds, double lowCut, double highCut,
                                     assetgen::Random& random) const;

    struct Mode
    {
        double frequency;
        double amplitude;
        double decaySeconds;
    };

    double sampleRate_ = 44100.0;
    std::vector<Mode> rideModes_;
};

} // namespace orane::audiogen
