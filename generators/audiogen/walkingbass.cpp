#include "walkingbass.hpp"

#include <algorithm>
#include <cmath>

namespace orane::audiogen
{

namespace
{

int pitchClassOf(int pitch)
{
    return ((pitch % 12) + 12) % 12;
}

/// A half step into target, from below when the line is climbing, from above when falling.
int approach(int target, int from)
{
    const int below = target - 1;
    const int above = target + 1;
    if (below < WalkingBass::LOWEST)
        return above;
    if (above > WalkingBass::HIGHEST)
        return below;
    return from <= target ? below : above;
}

} // namespace

int WalkingBass::nearestPitch(int pitchClass, double near)
{
    int best = -1;
    for (int pitch = LOWEST; pitch <= HIGHEST; ++pitch)
        if (pitchClassOf(pitch) == pitchClass && (best < 0 || std::abs(pitch - near) < std::abs(best - near)))
            best = pitch;
    return best;
}

int WalkingBass::walkingTarget(int pitchClass, int from)
{
    // A bar of four quarter notes walks best over a fourth to an octave; a closer root is taken
    // in the other octave, and the middle of the range is preferred.
    int best = -1;
    double bestScore = 0.0;
    for (int pitch = LOWEST; pitch <= HIGHEST; ++pitch) {
        const int span = std::abs(pitch - from);
        if (pitchClassOf(pitch) != pitchClass || span < 5 || span > 12)
            continue;
        const double score = span + 0.3 * std::abs(pitch - 39);
        if (best < 0 || score < bestScore) {
            best = pitch;
            bestScore = score;
        }
    }
    return best >= 0 ? best : nearestPitch(pitchClass, from);
}

int WalkingBass::nearestChordTone(const Chord& chord, double target, std::vector<int> excluded)
{
    int best = -1;
    for (int pitch = LOWEST; pitch <= HIGHEST; ++pitch) {
        const bool inChord =
            std::find(chord.tones.begin(), chord.tones.end(), pitchClassOf(pitch)) != chord.tones.end();
        const bool allowed = std::find(excluded.begin(), excluded.end(), pitch) == excluded.end();
        if (inChord && allowed && (best < 0 || std::abs(pitch - target) < std::abs(best - target)))
            best = pitch;
    }
    return best;
}

std::vector<NoteEvent> WalkingBass::walk(const Chart& chart, assetgen::Random& random) const
{
    constexpr int BEATS = Chart::BEATS_PER_BAR;
    std::vector<NoteEvent> line;
    // The line starts mid-range, and its last bar leads back to the same note at the top of the loop.
    const int opening = nearestPitch(chart.chordAt(0).root, 38);
    int previous = opening;
    auto targetAfter = [&](int bar, const Chord& next, int from, bool wholeBar) {
        if (bar + 1 == chart.bars())
            return opening;
        return wholeBar ? walkingTarget(next.root, from) : nearestPitch(next.root, from);
    };
    for (int bar = 0; bar < chart.bars(); ++bar) {
        const double first = bar * static_cast<double>(BEATS);
        const Chord& chord = chart.chordAt(first);
        const Chord& next = chart.chordAt(first + BEATS);
        int notes[BEATS];
        notes[0] = nearestPitch(chord.root, previous);
        if (chart.changesMidBar(bar)) {
            const Chord& second = chart.chordAt(first + BEATS / 2);
            notes[2] = nearestPitch(second.root, notes[0]);
            notes[1] = approach(notes[2], notes[0]);
            const int target = targetAfter(bar, next, notes[2], false);
            notes[3] =
                target == notes[2] ? nearestChordTone(second, notes[2] + 7, {notes[2]}) : approach(target, notes[2]);
        } else {
            const int target = targetAfter(bar, next, notes[0], true);
            notes[3] = approach(target, notes[0]);
            const double span = notes[3] - notes[0];
            notes[1] = nearestChordTone(chord, notes[0] + span / 3.0, {notes[0]});
            notes[2] = nearestChordTone(chord, notes[0] + span * 2.0 / 3.0, {notes[0], notes[1], notes[3]});
        }
        for (int beat = 0; beat < BEATS; ++beat) {
            const float accent = beat == 0 ? 0.9f : (beat % 2 == 1 ? 0.82f : 0.76f);
            const float velocity = accent + static_cast<float>(random.uniform(-0.05, 0.05));
            // Now and then the bassist rakes a swung eighth into the next beat.
            if (beat > 0 && random.chance(0.1)) {
                line.push_back({first + beat, 2.0 / 3.0, notes[beat], velocity});
                line.push_back({first + beat + 2.0 / 3.0, 1.0 / 3.0, notes[beat], velocity * 0.55f});
            } else {
                line.push_back({first + beat, 0.95, notes[beat], velocity});
            }
        }
        previous = notes[BEATS - 1];
    }
    return line;
}

} // namespace orane::audiogen
