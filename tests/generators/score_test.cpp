#include "audiogen/chart.hpp"
#include "audiogen/jazzloop.hpp"
#include "audiogen/score.hpp"
#include "audiogen/walkingbass.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <stdexcept>

using namespace orane::audiogen;

TEST(NoteNames, NaturalsSharpsAndFlatsAcrossOctaves)
{
    EXPECT_EQ(noteNumber("C4"), 60);
    EXPECT_EQ(noteNumber("A4"), 69);
    EXPECT_EQ(noteNumber("Bb3"), 58);
    EXPECT_EQ(noteNumber("F#5"), 78);
    EXPECT_EQ(noteNumber("E1"), 28);
    // Flats and sharps may cross the octave boundary.
    EXPECT_EQ(noteNumber("Cb4"), 59);
    EXPECT_EQ(noteNumber("B#3"), 60);
    EXPECT_NEAR(frequencyOf(69), 440.0, 1e-9);
    EXPECT_NEAR(frequencyOf(57), 220.0, 1e-9);
}

TEST(NoteNames, AnythingElseIsRefused)
{
    for (const char* bad : {"", "H4", "C", "Cx4", "C44", "c4", "Bb"})
        EXPECT_THROW(noteNumber(bad), std::invalid_argument) << bad;
}

TEST(Melody, NotesFollowOneAnotherAndRestsTakeTime)
{
    double end = 0.0;
    const auto notes = parseMelody("r:1 A4:2/3 >C5:1/3 D5:1.5 r:0.5", 8.0, &end);
    ASSERT_EQ(notes.size(), 3u);
    EXPECT_DOUBLE_EQ(notes[0].beat, 9.0);
    EXPECT_DOUBLE_EQ(notes[0].length, 2.0 / 3.0);
    EXPECT_DOUBLE_EQ(notes[1].beat, 9.0 + 2.0 / 3.0);
    EXPECT_EQ(notes[1].pitch, 72);
    EXPECT_GT(notes[1].velocity, notes[0].velocity) << "'>' accents a note";
    EXPECT_DOUBLE_EQ(notes[2].beat, 10.0);
    EXPECT_DOUBLE_EQ(end, 4.0) << "the length of the line, rests included";
}

TEST(Melody, MalformedTokensAreRefused)
{
    for (const char* bad : {"A4", "A4:", "A4:0", "A4:-1", "A4:1/0", "A4:x", "A4:1/3x", "Q4:1"})
        EXPECT_THROW(parseMelody(bad, 0.0), std::invalid_argument) << bad;
}

TEST(Tune, EveryBarOfTheMelodyFillsTheBarAndStaysOnTheVibes)
{
    const Chart chart = Chart::noirBlues();
    ASSERT_EQ(static_cast<int>(JazzLoop::melodyBars().size()), chart.bars());
    std::vector<NoteEvent> melody;
    ASSERT_NO_THROW(melody = JazzLoop::melody());
    ASSERT_FALSE(melody.empty());
    double previousEnd = 0.0;
    for (const NoteEvent& note : melody) {
        EXPECT_GE(note.pitch, noteNumber("F3"));
        EXPECT_LE(note.pitch, noteNumber("F6"));
        EXPECT_GE(note.beat + 1e-9, previousEnd) << "notes of the single melody line never overlap";
        previousEnd = note.beat + note.length;
    }
    EXPECT_LE(previousEnd, chart.beats() + 1e-9);
}

TEST(Tune, ChartWrapsAroundAndSplitsTheTurnaroundBars)
{
    const Chart chart = Chart::noirBlues();
    EXPECT_EQ(chart.bars(), 24);
    EXPECT_EQ(chart.chordAt(0).name, "Dm9");
    EXPECT_EQ(chart.chordAt(chart.beats()).name, "Dm9") << "past the end is the top again";
    EXPECT_EQ(chart.chordAt(-0.5).name, "A7alt") << "just before the top is the turnaround's last chord";
    EXPECT_TRUE(chart.changesMidBar(11));
    EXPECT_EQ(chart.chordAt(11 * 4 + 2.5).name, "A7alt");
    EXPECT_FALSE(chart.changesMidBar(0));
    EXPECT_TRUE(chart.changesMidBar(-1)) << "bar -1 is the last bar";
}

TEST(WalkingBassLine, WalksQuartersFromRootToRootAndStepsIntoEachBar)
{
    const Chart chart = Chart::noirBlues();
    orane::assetgen::Random random(1948);
    const auto line = WalkingBass().walk(chart, random);

    // The notes on the beat (skip notes sit on the swung upbeat).
    std::map<int, int> onBeat;
    for (const NoteEvent& note : line) {
        EXPECT_GE(note.pitch, WalkingBass::LOWEST);
        EXPECT_LE(note.pitch, WalkingBass::HIGHEST);
        if (std::abs(note.beat - std::round(note.beat)) < 1e-9)
            onBeat[static_cast<int>(std::lround(note.beat))] = note.pitch;
    }
    ASSERT_EQ(static_cast<int>(onBeat.size()), static_cast<int>(chart.beats())) << "one note on every beat";

    for (int bar = 0; bar < chart.bars(); ++bar) {
        const int first = bar * 4;
        EXPECT_EQ(onBeat[first] % 12, chart.chordAt(first).root) << "bar " << bar + 1 << " starts on the root";
        if (chart.changesMidBar(bar)) {
            EXPECT_EQ(onBeat[first + 2] % 12, chart.chordAt(first + 2).root) << "bar " << bar + 1;
        }
        const int nextFirst = (first + 4) % static_cast<int>(chart.beats());
        EXPECT_EQ(std::abs(onBeat[first + 3] - onBeat[nextFirst]), 1)
            << "bar " << bar + 1 << " leads into the next by a half step (the last into the first)";
        for (int beat = first + 1; beat < first + 4; ++beat)
            EXPECT_NE(onBeat[beat], onBeat[beat - 1]) << "the line moves on beat " << beat;
    }
}
