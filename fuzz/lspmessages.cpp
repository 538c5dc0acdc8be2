// The language server's byte-level input: the base protocol's framing, fed in pieces of any
// size, and the editor's incremental edits of a document.

#include "fuzzing.hpp"
#include "messagereader.hpp"
#include "textdocument.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace
{

std::vector<orane::lsp::MessageReader::Frame> framesOf(const std::string& bytes, std::size_t piece)
{
    orane::lsp::MessageReader reader;
    std::vector<orane::lsp::MessageReader::Frame> frames;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        reader.feed(bytes.data() + at, std::min(piece, bytes.size() - at));
        while (auto frame = reader.next())
            frames.push_back(*frame);
    }
    return frames;
}

/// However the bytes are cut by the reads, the same messages come out.
void checkFraming(const std::string& bytes, std::size_t piece)
{
    const auto whole = framesOf(bytes, bytes.size() + 1);
    const auto pieces = framesOf(bytes, piece);
    fuzzing::require(whole.size() == pieces.size(), "the pieces give as many frames as the whole");
    for (std::size_t k = 0; k < whole.size() && k < pieces.size(); ++k) {
        fuzzing::require(whole[k].valid == pieces[k].valid, "the pieces give the same frames as the whole");
        if (whole[k].valid)
            fuzzing::require(whole[k].text == pieces[k].text, "the pieces give the same bodies as the whole");
    }
}

/// Edits at any position, however far past the end, leave a document whose lines are those of
/// its text read afresh, and whose positions go to offsets and back.
void checkEdits(const std::string& bytes)
{
    orane::lsp::TextDocument document(bytes.substr(0, bytes.size() / 2));
    for (std::size_t at = bytes.size() / 2; at + 5 <= bytes.size(); at += 5) {
        const auto number = [&](std::size_t k) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + k]));
        };
        const auto encoding = static_cast<orane::lsp::PositionEncoding>(number(4) % 3);
        const std::size_t from = document.offsetAt({number(0) % 8, number(1)}, encoding);
        const std::size_t to = document.offsetAt({number(2) % 8, number(3)}, encoding);
        fuzzing::require(from <= document.text().size() && to <= document.text().size(), "offsets stay in the text");
        const orane::lsp::Position position = document.positionAt(from, encoding);
        fuzzing::require(document.offsetAt(position, encoding) == from, "a position goes to its offset and back");
        document.replace(from, to, bytes.substr(at, number(4) % 4));
    }
    const orane::lsp::TextDocument fresh(document.text());
    fuzzing::require(fresh.lineCount() == document.lineCount(), "edited lines are the lines of the text");
    for (std::size_t line = 0; line < fresh.lineCount(); ++line)
        fuzzing::require(fresh.line(line) == document.line(line), "edited lines are the lines of the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] & 1U)
        checkEdits(bytes);
    else
        checkFraming(bytes, static_cast<std::size_t>(data[0] >> 1U) + 1);
    return 0;
}
