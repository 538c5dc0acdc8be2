#pragma once

#include "../common/random.hpp"

#include <vector>

namespace orane::audiogen
{

/// A vibraphone with its motor running: soft-mallet bars whose overtones fade fast, a slow
/// tremolo shared by every note (the rotors turn for the whole band), damped by the pedal when
/// the note ends.
class Vibraphone
{
public:
    explicit Vibraphone(double sampleRate);

    /// startSeconds: when the note begins in the loop, so that the tremolo stays in phase across
    /// notes.
    std::vector<float> play(double pitch, double seconds, float velocity, double startSeconds,
                            assetgen::Random& random) const;

    /// Rotor speed in hertz.
    static constexpr double TREMOLO_RATE = 5.0;

private:
    double sampleRate_ = 44100.0;
};

} // namespace orane::audiogen
