#include "chart.hpp"

#include <cmath>

namespace orane::audiogen
{

namespace
{

// Rootless voicings around middle C, so that they sit above the bass and under the vibes.
const Chord D_MINOR_9{"Dm9", 2, {2, 5, 9, 0, 4}, {53, 57, 60, 64}};
const Chord G_MINOR_9{"Gm9", 7, {7, 10, 2, 5, 9}, {53, 57, 58, 62}};
const Chord D_ALTERED{"D7alt", 2, {2, 6, 9, 0, 3}, {54, 58, 60, 65}};
const Chord B_FLAT_13{"Bb13", 10, {10, 2, 5, 8, 0}, {56, 60, 62, 67}};
const Chord A_ALTERED{"A7alt", 9, {9, 1, 4, 7, 10}, {55, 58, 61, 65}};
const Chord E_HALF_DIMINISHED{"Em7b5", 4, {4, 7, 10, 2}, {55, 58, 62, 64}};

} // namespace

Chart Chart::noirBlues()
{
    const std::vector<std::vector<Chord>> chorus{{D_MINOR_9},
                                                 {G_MINOR_9},
                                                 {D_MINOR_9},
                                                 {D_ALTERED},
                                                 {G_MINOR_9},
                                                 {G_MINOR_9},
                                                 {D_MINOR_9},
                                                 {D_MINOR_9},
                                                 {B_FLAT_13},
                                                 {A_ALTERED},
                                                 {D_MINOR_9, B_FLAT_13},
                                                 {E_HALF_DIMINISHED, A_ALTERED}};
    std::vector<Chord> halves;
    for (int pass = 0; pass < 2; ++pass) {
        for (const auto& bar : chorus) {
            halves.push_back(bar.front());
            halves.push_back(bar.back());
        }
    }
    return Chart(std::move(halves));
}

const Chord& Chart::chordAt(double beat) const
{
    const double total = beats();
    const double wrapped = beat - std::floor(beat / total) * total;
    const auto half = static_cast<std::size_t>(wrapped / (BEATS_PER_BAR / 2.0));
    return halves_[std::min(half, halves_.size() - 1)];
}

bool Chart::changesMidBar(int bar) const
{
    const auto index = static_cast<std::size_t>(((bar % bars()) + bars()) % bars());
    return halves_[index * 2].name != halves_[index * 2 + 1].name;
}

} // namespace orane::audiogen
