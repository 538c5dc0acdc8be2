#pragma once

#include "../common/random.hpp"
#include "chart.hpp"
#include "score.hpp"
#include "stereoloop.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace orane::audiogen
{

/// "Whisky and Revolver": a slow noir minor blues for vibraphone, piano, double bass and brushes,
/// rendered as a seamless loop. Notes and reverb tails that run past the end come back in at the
/// start, so the join cannot be heard; the file starts a fraction of a beat into the first bar.
class JazzLoop
{
public:
    JazzLoop(double sampleRate, std::uint64_t seed);

    /// The finished mix, peaking at PEAK.
    [[nodiscard]] StereoLoop render() const;

    /// The tune, one string of melody per bar (see parseMelody).
    static const std::vector<std::string>& melodyBars();
    /// The melody as notes over the whole loop; throws when a bar does not fill exactly four beats.
    static std::vector<NoteEvent> melody();

    [[nodiscard]] std::size_t frames() const;

    static constexpr double TEMPO = 80.0; ///< beats per minute
    static constexpr float PEAK = 0.85f;  ///< -1.4 dBFS, headroom for the lossy encoder's overshoot

private:
    std::int64_t frameOf(double beat, double jitterSeconds, assetgen::Random& random) const;
    StereoLoop renderBass(assetgen::Random& random) const;
    StereoLoop renderPiano(assetgen::Random& random) const;
    StereoLoop renderVibes(assetgen::Random& random) const;
    StereoLoop renderDrums(assetgen::Random& random) const;
    [[nodiscard]] StereoLoop renderRoom(const LoopTrack& send) const;
    /// The same loop, starting where the join is least likely to be heard: just after the first
    /// downbeat, at the calmest moment before the next stroke.
    [[nodiscard]] StereoLoop startAtQuietestJoin(const StereoLoop& loop) const;

    double sampleRate_ = 44100.0;
    std::uint64_t seed_ = 0;
    Chart chart_;
};

} // namespace orane::audiogen
