#pragma once

#include "../common/random.hpp"
#include "chart.hpp"
#include "score.hpp"

#include <vector>

namespace orane::audiogen
{

/// Writes a walking bass line over a chart: a quarter note on every beat, the root on each new
/// chord, chord tones in between and a chromatic step into the next chord, with the odd swung
/// skip note. The line wraps: the last bar leads into the first.
class WalkingBass
{
public:
    std::vector<NoteEvent> walk(const Chart& chart, assetgen::Random& random) const;

    static constexpr int LOWEST = 28;  ///< E1, the open low string
    static constexpr int HIGHEST = 50; ///< D3

    /// The pitch of the given class within the bass range nearest to near (ties go down).
    static int nearestPitch(int pitchClass, double near);
    /// Where a bar starting on from should walk to reach the given root: four to twelve semitones
    /// away, within the range.
    static int walkingTarget(int pitchClass, int from);
    /// The chord tone within the range nearest to target, other than the excluded pitches.
    static int nearestChordTone(const Chord& chord, double target, std::vector<int> excluded);
};

} // namespace orane::audiogen
