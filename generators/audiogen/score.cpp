#include "score.hpp"

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace orane::audiogen
{

namespace
{

double parseLength(const std::string& text)
{
    std::size_t used = 0;
    const auto slash = text.find('/');
    try {
        if (slash == std::string::npos) {
            const double value = std::stod(text, &used);
            if (used == text.size() && value > 0.0)
                return value;
        } else {
            const double numerator = std::stod(text.substr(0, slash), &used);
            std::size_t usedBelow = 0;
            const double denominator = std::stod(text.substr(slash + 1), &usedBelow);
            if (used == slash && usedBelow == text.size() - slash - 1 && numerator > 0.0 && denominator > 0.0)
                return numerator / denominator;
        }
    } catch (const std::logic_error&) {}
    throw std::invalid_argument("bad note length '" + text + "'");
}

} // namespace

int noteNumber(const std::string& name)
{
    static const int STEPS[] = {9, 11, 0, 2, 4, 5, 7}; // A B C D E F G
    if (name.size() < 2 || name[0] < 'A' || name[0] > 'G')
        throw std::invalid_argument("bad note name '" + name + "'");
    int semitone = STEPS[name[0] - 'A'];
    std::size_t position = 1;
    if (name[position] == '#' || name[position] == 'b')
        semitone += name[position++] == '#' ? 1 : -1;
    if (position + 1 != name.size() || name[position] < '0' || name[position] > '9')
        throw std::invalid_argument("bad note name '" + name + "'");
    return (name[position] - '0' + 1) * 12 + semitone;
}

double frequencyOf(double pitch)
{
    return 440.0 * std::pow(2.0, (pitch - 69.0) / 12.0);
}

std::vector<NoteEvent> parseMelody(const std::string& text, double startBeat, double* endBeat)
{
    std::vector<NoteEvent> notes;
    std::istringstream tokens(text);
    std::string token;
    double beat = startBeat;
    while (tokens >> token) {
        const bool accent = token[0] == '>';
        const std::string body = accent ? token.substr(1) : token;
        const auto colon = body.find(':');
        if (colon == std::string::npos)
            throw std::invalid_argument("note without a length '" + token + "'");
        const std::string name = body.substr(0, colon);
        const double length = parseLength(body.substr(colon + 1));
        if (name != "r")
            notes.push_back({beat, length, noteNumber(name), accent ? 0.9f : 0.7f});
        beat += length;
    }
    if (endBeat)
        *endBeat += beat - startBeat;
    return notes;
}

} // namespace orane::audiogen
