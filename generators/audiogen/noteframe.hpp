#pragma once

#include "../common/random.hpp"

#include <cstddef>
#include <vector>

namespace orane::audiogen
{

/// The span of one struck or plucked note, in samples: the time the key or finger holds it and
/// the time it rings on after, with the two touches the piano and the bass shape alike.
class NoteFrame
{
public:
    enum class Attack
    {
        Linear,     ///< a straight rise: a hammer
        SineSquared ///< a rounded rise: a finger
    };

    NoteFrame(double sampleRate, double heldSeconds, double ringSeconds);

    [[nodiscard]] std::size_t held() const { return held_; }
    [[nodiscard]] std::size_t total() const { return total_; }
    /// Silence as long as the whole note, to add partials into.
    [[nodiscard]] std::vector<float> silence() const { return std::vector<float>(total_, 0.f); }

    /// Adds low-passed noise over the first `seconds`, at `level`, dying away with the time
    /// constant `fadeSeconds`: the hammer's or the finger's own sound.
    void addNoiseBurst(std::vector<float>& note, assetgen::Random& random, double cutoff, double seconds, double level,
                       double fadeSeconds) const;
    /// Scales `note` by `velocity`, rising over `attackSeconds` and, once let go, dying away
    /// with the time constant `releaseSeconds`.
    void shape(std::vector<float>& note, float velocity, Attack attack, double attackSeconds,
               double releaseSeconds) const;

private:
    double sampleRate_ = 44100.0;
    std::size_t held_ = 0;
    std::size_t total_ = 0;
};

} // namespace orane::audiogen
