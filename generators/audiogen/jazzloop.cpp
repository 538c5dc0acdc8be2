#include "jazzloop.hpp"

#include "../common/random.hpp"
#include "biquad.hpp"
#include "brushkit.hpp"
#include "piano.hpp"
#include "reverb.hpp"
#include "uprightbass.hpp"
#include "vibraphone.hpp"
#include "walkingbass.hpp"

#include <cmath>
#include <stdexcept>

namespace orane::audiogen
{

namespace
{

/// A comping figure: when the chord is struck within the bar, for how long, and whether the hit
/// anticipates the next bar's chord.
struct Stab
{
    double beat;
    double length;
    bool anticipates = false;
};

const std::vector<std::vector<Stab>> COMP_FIGURES{
    {{0.0, 2.5}},                                      // 0: laid down and left to ring
    {{0.0, 0.9}, {5.0 / 3.0, 1.0}},                    // 1: the Charleston
    {{1.0, 0.5}, {8.0 / 3.0, 1.2}},                    // 2: off the beat
    {{0.0, 0.6}, {2.0, 0.6}, {11.0 / 3.0, 1.0, true}}, // 3: pushing into the next bar
    {{5.0 / 3.0, 1.8}},                                // 4: one late stab
    {{0.0, 1.4}, {2.0, 1.6}},                          // 5: one hit per chord, for split bars
};
// Which figure the pianist plays in each bar, leaving room where the vibes are busy.
const int COMP_PLAN[] = {0, 1, 2, 3, 1, 4, 2, 1, 0, 2, 5, 5, 1, 2, 4, 3, 0, 2, 1, 3, 4, 1, 5, 5};

/// Scales a stem so that its loudness (RMS) lands on the given level in decibels.
void setLoudness(StereoLoop& stem, float decibels)
{
    const float rms = stem.rms();
    if (rms > 0.f)
        stem.scale(std::pow(10.f, decibels / 20.f) / rms);
}

/// Runs a filter over a loop as if the loop had been playing for a while, so that the filter's
/// state at the end matches the start and the join stays clean.
template <typename Process>
void runLooped(std::size_t frames, std::size_t preroll, Process process)
{
    for (std::size_t i = frames - preroll; i < frames; ++i)
        process(i, false);
    for (std::size_t i = 0; i < frames; ++i)
        process(i, true);
}

} // namespace

JazzLoop::JazzLoop(double sampleRate, std::uint64_t seed)
    : sampleRate_(sampleRate)
    , seed_(seed)
    , chart_(Chart::noirBlues())
{}

const std::vector<std::string>& JazzLoop::melodyBars()
{
    static const std::vector<std::string> BARS{
        // First time through: the theme, a question over D minor, its answer over G minor.
        "r:1 A4:2/3 C5:1/3 D5:1 F5:2/3 E5:1/3",
        "D5:2 r:2/3 C5:1/3 Bb4:2/3 A4:1/3",
        "A4:3 r:2/3 F4:1/3",
        "G4:2/3 A4:1/3 Bb4:2/3 C5:1/3 >Eb5:1 D5:1",
        "D5:1 r:2/3 D5:1/3 F5:1 E5:2/3 D5:1/3",
        "Bb4:3 r:1",
        "r:2/3 A4:1/3 C5:2/3 D5:1/3 E5:2/3 F5:1/3 >A5:1",
        "G5:2/3 F5:1/3 E5:2/3 D5:1/3 C5:1 A4:1",
        ">Ab4:2 G4:2/3 F4:1/3 D4:1",
        "C#5:1 Bb4:2/3 A4:1/3 G4:1 F4:1",
        "E4:2 r:1 F4:2/3 G4:1/3",
        "A4:1 G4:1 E4:2/3 G4:1/3 C#5:1",
        // Second time: the vibes open up, climb higher and lean on the blue notes.
        ">D5:1 r:2/3 A4:1/3 D5:2/3 F5:1/3 A5:1",
        "G5:2/3 F5:1/3 D5:2/3 Bb4:1/3 A4:2",
        "r:1 F5:2/3 E5:1/3 D5:2/3 C5:1/3 A4:1",
        "C5:2/3 Bb4:1/3 Ab4:2/3 F#4:1/3 >Eb5:2",
        "D5:3 r:2/3 D5:1/3",
        "F5:2/3 E5:1/3 D5:2/3 Bb4:1/3 G4:2",
        "r:2/3 F4:1/3 A4:2/3 C5:1/3 E5:2",
        "D5:2/3 C5:1/3 A4:2/3 F4:1/3 A4:2",
        "r:1 Ab4:2/3 Bb4:1/3 C5:2/3 D5:1/3 >F5:1",
        "Eb5:1 C#5:2/3 Bb4:1/3 G4:2",
        "A4:2 r:1 D5:2/3 C5:1/3",
        "Bb4:1 G4:1 E4:2/3 C#4:1/3 r:1",
    };
    return BARS;
}

std::vector<NoteEvent> JazzLoop::melody()
{
    std::vector<NoteEvent> notes;
    const auto& bars = melodyBars();
    for (std::size_t bar = 0; bar < bars.size(); ++bar) {
        double length = 0.0;
        const auto barNotes =
            parseMelody(bars[bar], static_cast<double>(bar) * static_cast<double>(Chart::BEATS_PER_BAR), &length);
        if (std::abs(length - Chart::BEATS_PER_BAR) > 1e-9)
            throw std::invalid_argument("melody bar " + std::to_string(bar + 1) + " does not fill the bar");
        notes.insert(notes.end(), barNotes.begin(), barNotes.end());
    }
    return notes;
}

std::size_t JazzLoop::frames() const
{
    return static_cast<std::size_t>(std::llround(chart_.beats() * 60.0 / TEMPO * sampleRate_));
}

std::int64_t JazzLoop::frameOf(double beat, double jitterSeconds, assetgen::Random& random) const
{
    const double seconds = beat * 60.0 / TEMPO + random.normal() * jitterSeconds;
    return static_cast<std::int64_t>(std::llround(seconds * sampleRate_));
}

StereoLoop JazzLoop::renderBass(assetgen::Random& random) const
{
    const UprightBass bass(sampleRate_);
    StereoLoop stem(frames());
    for (const NoteEvent& note : WalkingBass().walk(chart_, random))
        stem.add(frameOf(note.beat, 0.004, random),
                 bass.play(note.pitch, note.length * 60.0 / TEMPO, note.velocity, random), 1.f, 0.f);
    return stem;
}

StereoLoop JazzLoop::renderPiano(assetgen::Random& random) const
{
    const Piano piano(sampleRate_);
    StereoLoop stem(frames());
    for (int bar = 0; bar < chart_.bars(); ++bar) {
        for (const Stab& stab : COMP_FIGURES[static_cast<std::size_t>(COMP_PLAN[bar % 24])]) {
            const double beat = bar * static_cast<double>(Chart::BEATS_PER_BAR) + stab.beat;
            const Chord& chord = chart_.chordAt(stab.anticipates ? std::ceil(beat) + 0.01 : beat);
            const std::int64_t start = frameOf(beat, 0.008, random);
            const float velocity = static_cast<float>(random.uniform(0.42, 0.6));
            // The fingers land a few milliseconds apart, from the bottom up.
            double spread = 0.0;
            int voice = 0;
            for (int pitch : chord.voicing) {
                const float pan = -0.45f + 0.15f * static_cast<float>(voice++);
                stem.add(start + static_cast<std::int64_t>(spread * sampleRate_),
                         piano.play(pitch, stab.length * 60.0 / TEMPO,
                                    velocity * static_cast<float>(random.uniform(0.85, 1.0)), random),
                         1.f, pan);
                spread += random.uniform(0.002, 0.009);
            }
        }
    }
    return stem;
}

StereoLoop JazzLoop::renderVibes(assetgen::Random& random) const
{
    const Vibraphone vibes(sampleRate_);
    StereoLoop stem(frames());
    for (const NoteEvent& note : melody()) {
        const std::int64_t start = frameOf(note.beat, 0.007, random);
        const float velocity = std::min(1.f, note.velocity + static_cast<float>(random.uniform(-0.06, 0.06)));
        stem.add(start,
                 vibes.play(note.pitch, note.length * 60.0 / TEMPO, velocity, static_cast<double>(start) / sampleRate_,
                            random),
                 1.f, 0.25f);
    }
    return stem;
}

StereoLoop JazzLoop::renderDrums(assetgen::Random& random) const
{
    const BrushKit kit(sampleRate_, seed_ + 5);
    const double beatSeconds = 60.0 / TEMPO;
    // A few takes of each stroke, picked at random and played at different strengths: real hits
    // are never identical, and rendering a few hundred cymbal crashes would be slow.
    std::vector<std::vector<float>> sweeps;
    std::vector<std::vector<float>> slaps;
    std::vector<std::vector<float>> rides;
    std::vector<std::vector<float>> hats;
    std::vector<std::vector<float>> kicks;
    for (int take = 0; take < 4; ++take) {
        sweeps.push_back(kit.sweep(beatSeconds, 1.f, take % 2 == 1, random));
        slaps.push_back(kit.slap(1.f, random));
        rides.push_back(kit.ride(1.f, random));
        hats.push_back(kit.hiHatFoot(1.f, random));
        kicks.push_back(kit.bassDrum(1.f, random));
    }
    auto pick = [&random](const std::vector<std::vector<float>>& takes) -> const std::vector<float>& {
        return takes[static_cast<std::size_t>(random.integer(0, static_cast<int>(takes.size()) - 1))];
    };
    auto sweepFor = [&](int beat) -> const std::vector<float>& {
        // Strokes alternate between the dark centre and the bright edge of the head.
        const int sweep = beat % 2 + 2 * random.integer(0, 1);
        return sweeps[static_cast<std::size_t>(sweep)];
    };

    StereoLoop stem(frames());
    struct RideHit
    {
        double beat;
        float level;
    };
    const RideHit ridePattern[] = {{0.0, 0.7f}, {1.0, 0.85f}, {5.0 / 3.0, 0.5f},
                                   {2.0, 0.7f}, {3.0, 0.85f}, {11.0 / 3.0, 0.5f}};
    constexpr float SNARE_PAN = -0.15f;
    for (int bar = 0; bar < chart_.bars(); ++bar) {
        const double first = bar * static_cast<double>(Chart::BEATS_PER_BAR);
        for (int beat = 0; beat < Chart::BEATS_PER_BAR; ++beat) {
            const double at = first + beat;
            stem.add(frameOf(at - 0.1, 0.003, random), sweepFor(beat), 0.5f, SNARE_PAN);
            stem.add(frameOf(at, 0.003, random), pick(kicks), 0.35f, 0.f);
            if (beat % 2 == 1) {
                stem.add(frameOf(at, 0.003, random), pick(slaps), static_cast<float>(random.uniform(0.7, 0.85)),
                         SNARE_PAN);
                stem.add(frameOf(at, 0.003, random), pick(hats), 0.45f, 0.3f);
            } else if (random.chance(0.25)) {
                // A ghosted slap on the swung upbeat.
                stem.add(frameOf(at + 2.0 / 3.0, 0.003, random), pick(slaps), 0.3f, SNARE_PAN);
            }
        }
        for (const RideHit& hit : ridePattern)
            stem.add(frameOf(first + hit.beat, 0.003, random), pick(rides),
                     hit.level * static_cast<float>(random.uniform(0.9, 1.05)), 0.4f);
        if (bar % 12 == 11) {
            // A triplet pickup on the snare leads into the next chorus (and back to the top).
            const float levels[] = {0.45f, 0.6f, 0.8f};
            for (int triplet = 0; triplet < 3; ++triplet)
                stem.add(frameOf(first + 3.0 + triplet / 3.0, 0.003, random), pick(slaps), levels[triplet], SNARE_PAN);
        }
    }
    return stem;
}

StereoLoop JazzLoop::renderRoom(const LoopTrack& send) const
{
    Reverb room(sampleRate_, 0.6f, 0.5f);
    StereoLoop wet(frames());
    runLooped(frames(), static_cast<std::size_t>(5.0 * sampleRate_), [&](std::size_t i, bool keep) {
        const auto [left, right] = room.process(send.at(i));
        if (keep) {
            wet.left().at(i) = left;
            wet.right().at(i) = right;
        }
    });
    return wet;
}

StereoLoop JazzLoop::render() const
{
    // Each part draws from its own generator, so that changing one part leaves the others as
    // they were.
    assetgen::Random bassRandom(seed_ + 1);
    assetgen::Random pianoRandom(seed_ + 2);
    assetgen::Random vibesRandom(seed_ + 3);
    assetgen::Random drumsRandom(seed_ + 4);
    StereoLoop bass = renderBass(bassRandom);
    StereoLoop piano = renderPiano(pianoRandom);
    StereoLoop vibes = renderVibes(vibesRandom);
    StereoLoop drums = renderDrums(drumsRandom);
    setLoudness(bass, -19.f);
    setLoudness(vibes, -21.f);
    setLoudness(piano, -26.f);
    setLoudness(drums, -31.f);

    StereoLoop dry(frames());
    dry.mix(bass, 1.f);
    dry.mix(piano, 1.f);
    dry.mix(vibes, 1.f);
    dry.mix(drums, 1.f);

    LoopTrack send(frames());
    const struct
    {
        const StereoLoop* stem;
        float level;
    } sends[] = {{&bass, 0.08f}, {&piano, 0.3f}, {&vibes, 0.45f}, {&drums, 0.15f}};
    for (const auto& stemSend : sends)
        for (std::size_t i = 0; i < frames(); ++i)
            send.at(i) += (stemSend.stem->left().at(i) + stemSend.stem->right().at(i)) * 0.5f * stemSend.level;
    StereoLoop wet = renderRoom(send);
    // The room sits about ten decibels under the band.
    setLoudness(wet, 20.f * std::log10(dry.rms()) - 10.f);
    dry.mix(wet, 1.f);

    // An old record's gentle top end.
    Biquad tapeLeft = Biquad::lowPass(sampleRate_, 11000.0);
    Biquad tapeRight = Biquad::lowPass(sampleRate_, 11000.0);
    StereoLoop master(frames());
    runLooped(frames(), static_cast<std::size_t>(0.1 * sampleRate_), [&](std::size_t i, bool keep) {
        const float left = tapeLeft.process(dry.left().at(i));
        const float right = tapeRight.process(dry.right().at(i));
        if (keep) {
            master.left().at(i) = left;
            master.right().at(i) = right;
        }
    });
    master.scale(PEAK / master.peak());
    return startAtQuietestJoin(master);
}

StereoLoop JazzLoop::startAtQuietestJoin(const StereoLoop& loop) const
{
    // On the downbeat itself the join would sit on the attack of bass, piano and cymbal together,
    // and read as a click; a little after it, between strokes, the music flows and hides it.
    const auto beatFrames = static_cast<std::size_t>(60.0 / TEMPO * sampleRate_);
    const std::size_t window = static_cast<std::size_t>(0.01 * sampleRate_);
    std::size_t best = 0;
    double bestActivity = -1.0;
    for (std::size_t candidate = beatFrames * 15 / 100; candidate < beatFrames * 55 / 100; candidate += 16) {
        double activity = 0.0;
        for (std::size_t i = candidate - window; i < candidate + window; ++i)
            for (const LoopTrack* channel : {&loop.left(), &loop.right()}) {
                const float step = channel->at(i) - channel->at(i - 1);
                activity += step * step;
            }
        if (bestActivity < 0.0 || activity < bestActivity) {
            best = candidate;
            bestActivity = activity;
        }
    }
    StereoLoop rotated(frames());
    for (std::size_t i = 0; i < frames(); ++i) {
        const std::size_t from = (i + best) % frames();
        rotated.left().at(i) = loop.left().at(from);
        rotated.right().at(i) = loop.right().at(from);
    }
    return rotated;
}

} // namespace orane::audiogen
