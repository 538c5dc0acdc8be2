#pragma once

#include <string>
#include <vector>

namespace orane::audiogen
{

/// One note of a part, in beats from the start of the loop.
struct NoteEvent
{
    double beat = 0.0;
    double length = 0.0;
    int pitch = 0;         ///< MIDI note number, C4 = 60
    float velocity = 0.7f; ///< 0..1
};

/// MIDI number of a note name such as "C4", "Bb3" or "F#5" (C4 = 60); throws std::invalid_argument
/// for anything else.
int noteNumber(const std::string& name);

/// Frequency in hertz of a (possibly fractional) MIDI pitch, A4 = 440 Hz.
double frequencyOf(double pitch);

/// Reads a line of melody: tokens "NAME:LENGTH" separated by spaces, NAME a note name or "r" for
/// a rest, LENGTH in beats as "1", "1.5" or "2/3"; a leading '>' accents the note. Notes follow one
/// another from startBeat; the beat after the last token is added to *endBeat when it is given.
/// Throws std::invalid_argument on a malformed token.
std::vector<NoteEvent> parseMelody(const std::string& text, double startBeat, double* endBeat = nullptr);

} // namespace orane::audiogen
