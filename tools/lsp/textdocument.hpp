#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orane::lsp
{

/// How the client counts characters within a line (negotiated at initialisation).
enum class PositionEncoding
{
    UTF16,
    UTF8,
    UTF32,
};

/// A position as the protocol gives it: 0-based line, and column in the negotiated units.
struct Position
{
    std::uint32_t line = 0;
    std::uint32_t character = 0;
    bool operator==(const Position& other) const { return line == other.line && character == other.character; }
};

/// The text of one file as UTF-8 bytes, with its lines found. Lines end at a line feed; a
/// carriage return before it belongs to no line, as when the game reads the file. Bytes that
/// are not valid UTF-8 count as one character each, so any file can be edited and addressed.
class TextDocument
{
public:
    TextDocument() = default;
    explicit TextDocument(std::string text);

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] std::size_t lineCount() const { return lineStarts_.size(); }
    /// Line `index` without its end; empty past the last line.
    [[nodiscard]] std::string_view line(std::size_t index) const;
    /// Byte offset where line `index` starts; the end of the text past the last line.
    [[nodiscard]] std::size_t lineStart(std::size_t index) const;

    /// The byte offset of `position`; positions past the end of a line or of the text are
    /// clamped to it, as the protocol asks.
    [[nodiscard]] std::size_t offsetAt(Position position, PositionEncoding encoding) const;
    /// The position of byte `offset` (clamped to the text).
    [[nodiscard]] Position positionAt(std::size_t offset, PositionEncoding encoding) const;

    /// Replaces the bytes between two offsets (in either order, clamped) with `replacement`.
    void replace(std::size_t from, std::size_t to, const std::string& replacement);
    void setText(std::string text);

private:
    void findLines(std::size_t fromLine);

    std::string text_;
    std::vector<std::size_t> lineStarts_{0};
};

/// Width of the UTF-8 sequence starting with `lead` (1 for a byte that starts none).
[[nodiscard]] std::size_t utf8SequenceLength(std::string_view text, std::size_t at);

} // namespace orane::lsp
