#pragma once

#include <utility>
#include <vector>

namespace orane::audiogen
{

/// A small-club reverb: eight damped feedback combs and four all-passes per side (the classic
/// Schroeder-Moorer design), mono in, stereo out, wet signal only.
class Reverb
{
public:
    /// roomSize and damping in 0..1: larger rooms ring longer, more damping darkens the tail.
    Reverb(double sampleRate, float roomSize, float damping);

    /// Wet left and right for one input sample.
    std::pair<float, float> process(float input);

private:
    struct Comb
    {
        std::vector<float> buffer;
        std::size_t position = 0;
        float memory = 0.f;
    };
    struct AllPass
    {
        std::vector<float> buffer;
        std::size_t position = 0;
    };

    float runComb(Comb& comb, float input) const;
    static float runAllPass(AllPass& allPass, float input);

    std::vector<Comb> combs_[2];
    std::vector<AllPass> allPasses_[2];
    float feedback_ = 0.f;
    float damping_ = 0.f;
};

} // namespace orane::audiogen
