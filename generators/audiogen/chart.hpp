#pragma once

#include <string>
#include <vector>

namespace orane::audiogen
{

/// A chord as the band plays it.
struct Chord
{
    std::string name;
    int root = 0;             ///< pitch class, C = 0
    std::vector<int> tones;   ///< pitch classes the bass may walk through
    std::vector<int> voicing; ///< MIDI notes of the piano's left-hand voicing
};

/// The changes of the tune, two chords to the bar at most, in 4/4.
class Chart
{
public:
    /// A minor blues in D, twice through, with altered dominants and a turnaround back to the top.
    static Chart noirBlues();

    static constexpr int BEATS_PER_BAR = 4;

    [[nodiscard]] int bars() const { return static_cast<int>(halves_.size() / 2); }
    [[nodiscard]] double beats() const { return bars() * static_cast<double>(BEATS_PER_BAR); }
    /// The chord sounding on a beat; beats before the start or past the end wrap around the loop.
    [[nodiscard]] const Chord& chordAt(double beat) const;
    /// True when the chord changes on beat three of the bar (bars wrap around).
    [[nodiscard]] bool changesMidBar(int bar) const;

private:
    explicit Chart(std::vector<Chord> halves)
        : halves_(std::move(halves))
    {}

    std::vector<Chord> halves_; ///< one chord per half bar
};

} // namespace orane::audiogen
