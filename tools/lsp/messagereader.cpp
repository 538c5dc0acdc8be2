#include "messagereader.hpp"

#include <algorithm>
#include <cctype>

namespace orane::lsp
{
namespace
{

const std::string HEADER_END = "\r\n\r\n";
const std::string LENGTH_HEADER = "content-length";

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return text;
}

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// The value of a Content-Length header: decimal digits only, nothing when it is not one.
std::optional<std::size_t> parseLength(const std::string& value)
{
    if (value.empty() || value.size() > 18
        || !std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    return static_cast<std::size_t>(std::stoull(value));
}

} // namespace

void MessageReader::feed(const char* data, std::size_t size)
{
    // Drop what has been consumed before growing, so a long session keeps a small buffer.
    if (start_ > 0 && start_ >= buffer_.size() / 2) {
        buffer_.erase(0, start_);
        start_ = 0;
    }
    buffer_.append(data, size);
}

void MessageReader::unread(const std::string& bytes)
{
    buffer_.replace(0, start_, bytes);
    start_ = 0;
}

std::optional<MessageReader::Frame> MessageReader::next()
{
    if (skipping_ > 0) {
        const std::size_t dropped = std::min(skipping_, buffer_.size() - start_);
        start_ += dropped;
        skipping_ -= dropped;
        if (skipping_ > 0)
            return std::nullopt;
    }
    if (resyncing_ && !resync())
        return std::nullopt;
    if (!bodySize_.has_value()) {
        std::optional<Frame> fault = readHeaders();
        if (fault.has_value() || !bodySize_.has_value())
            return fault;
    }
    if (buffer_.size() - start_ < *bodySize_)
        return std::nullopt;
    Frame frame{true, buffer_.substr(start_, *bodySize_)};
    start_ += *bodySize_;
    bodySize_.reset();
    return frame;
}

std::optional<MessageReader::Frame> MessageReader::readHeaders()
{
    // Headers are a few dozen bytes: a long run without a blank line is not a header block.
    const std::size_t end = buffer_.find(HEADER_END, start_);
    if ((end == std::string::npos && buffer_.size() - start_ > MAX_HEADER_BYTES)
        || (end != std::string::npos && end - start_ > MAX_HEADER_BYTES))
        return discardUpToNextHeader("no end of headers in the first 4096 bytes");
    if (end == std::string::npos)
        return std::nullopt;
    std::optional<std::size_t> length;
    std::size_t lineStart = start_;
    while (lineStart < end) {
        std::size_t lineEnd = buffer_.find("\r\n", lineStart);
        const std::string line = buffer_.substr(lineStart, lineEnd - lineStart);
        lineStart = lineEnd + 2;
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos)
            return discardUpToNextHeader("a header line without ':'");
        if (lowered(trimmed(line.substr(0, colon))) != LENGTH_HEADER)
            continue; // Content-Type and headers of later versions are allowed and unused.
        length = parseLength(trimmed(line.substr(colon + 1)));
        if (!length.has_value())
            return discardUpToNextHeader("Content-Length is not a number");
    }
    if (!length.has_value())
        return discardUpToNextHeader("no Content-Length header");
    start_ = end + HEADER_END.size();
    if (*length > MAX_BODY_BYTES) {
        skipping_ = *length;
        return Frame{false, "a body of " + std::to_string(*length) + " bytes is larger than the server reads"};
    }
    bodySize_ = length;
    return std::nullopt;
}

MessageReader::Frame MessageReader::discardUpToNextHeader(const std::string& reason)
{
    // Skip at least one byte so that a header block that starts with "Content-Length" moves on.
    start_ = std::min(start_ + 1, buffer_.size());
    resyncing_ = true;
    return Frame{false, reason};
}

bool MessageReader::resync()
{
    const std::string unread = lowered(buffer_.substr(start_));
    const std::size_t next = unread.find(LENGTH_HEADER);
    if (next != std::string::npos) {
        start_ += next;
        resyncing_ = false;
        return true;
    }
    // Keep an end that may be the beginning of the header, cut by the read.
    std::size_t keep = std::min(unread.size(), LENGTH_HEADER.size() - 1);
    while (keep > 0 && unread.compare(unread.size() - keep, keep, LENGTH_HEADER, 0, keep) != 0)
        --keep;
    start_ = buffer_.size() - keep;
    return false;
}

} // namespace orane::lsp
