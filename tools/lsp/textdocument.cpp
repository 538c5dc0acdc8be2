#include "textdocument.hpp"

#include <algorithm>

namespace orane::lsp
{
namespace
{

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

/// Units that one character of `length` UTF-8 bytes takes in `encoding`.
std::uint32_t unitsOf(std::size_t length, PositionEncoding encoding)
{
    switch (encoding) {
    case PositionEncoding::UTF8: return static_cast<std::uint32_t>(length);
    case PositionEncoding::UTF16: return length == 4 ? 2U : 1U;
    case PositionEncoding::UTF32: break;
    }
    return 1U;
}

} // namespace

std::size_t utf8SequenceLength(std::string_view text, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    std::size_t length = 1;
    if (lead >= 0xF0U && lead <= 0xF4U)
        length = 4;
    else if (lead >= 0xE0U)
        length = lead <= 0xEFU ? 3 : 1;
    else if (lead >= 0xC2U)
        length = 2;
    if (at + length > text.size())
        return 1;
    for (std::size_t k = 1; k < length; ++k) {
        if (!isContinuation(static_cast<unsigned char>(text[at + k])))
            return 1;
    }
    return length;
}

TextDocument::TextDocument(std::string text)
    : text_(std::move(text))
{
    findLines(0);
}

std::string_view TextDocument::line(std::size_t index) const
{
    if (index >= lineStarts_.size())
        return {};
    const std::size_t begin = lineStarts_[index];
    std::size_t end = index + 1 < lineStarts_.size() ? lineStarts_[index + 1] - 1 : text_.size();
    if (end > begin && text_[end - 1] == '\r' && index + 1 < lineStarts_.size())
        --end;
    return std::string_view(text_).substr(begin, end - begin);
}

std::size_t TextDocument::lineStart(std::size_t index) const
{
    return index < lineStarts_.size() ? lineStarts_[index] : text_.size();
}

std::size_t TextDocument::offsetAt(Position position, PositionEncoding encoding) const
{
    if (position.line >= lineStarts_.size())
        return text_.size();
    const std::string_view text = line(position.line);
    std::size_t at = 0;
    std::uint32_t units = 0;
    while (at < text.size()) {
        const std::size_t length = utf8SequenceLength(text, at);
        const std::uint32_t width = unitsOf(length, encoding);
        // A column inside a character (half a surrogate pair) lands on the character.
        if (units + width > position.character)
            break;
        units += width;
        at += length;
    }
    return lineStarts_[position.line] + at;
}

Position TextDocument::positionAt(std::size_t offset, PositionEncoding encoding) const
{
    offset = std::min(offset, text_.size());
    const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    const auto lineIndex = static_cast<std::size_t>(after - lineStarts_.begin()) - 1;
    const std::string_view text =
        std::string_view(text_).substr(lineStarts_[lineIndex], offset - lineStarts_[lineIndex]);
    std::uint32_t units = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8SequenceLength(text, at);
        units += unitsOf(length, encoding);
        at += length;
    }
    return Position{static_cast<std::uint32_t>(lineIndex), units};
}

void TextDocument::replace(std::size_t from, std::size_t to, const std::string& replacement)
{
    from = std::min(from, text_.size());
    to = std::min(to, text_.size());
    if (from > to)
        std::swap(from, to);
    text_.replace(from, to - from, replacement);
    // Lines before the edited one keep their starts.
    const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), from);
    findLines(static_cast<std::size_t>(after - lineStarts_.begin()) - 1);
}

void TextDocument::setText(std::string text)
{
    text_ = std::move(text);
    findLines(0);
}

void TextDocument::findLines(std::size_t fromLine)
{
    lineStarts_.resize(fromLine + 1);
    for (std::size_t at = text_.find('\n', lineStarts_.back()); at != std::string::npos; at = text_.find('\n', at + 1))
        lineStarts_.push_back(at + 1);
}

} // namespace orane::lsp
