#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace orane::lsp
{

/// Cuts the byte stream of the base protocol into message bodies: header lines ended by CR LF,
/// a blank line, then exactly Content-Length bytes. Bytes may arrive in pieces of any size.
/// A header block that cannot be read is reported once and the bytes up to the next
/// "Content-Length" header are dropped unread, so one bad message never ends the conversation;
/// however the bytes are cut by the reads, the same frames come out.
class MessageReader
{
public:
    /// What the stream held next: a body, or the reason a header block was thrown away.
    struct Frame
    {
        bool valid = true;
        /// The body when valid, the fault otherwise.
        std::string text;
    };

    /// Bodies longer than this are skipped unread and reported.
    static constexpr std::size_t MAX_BODY_BYTES = std::size_t{256} << 20;
    static constexpr std::size_t MAX_HEADER_BYTES = 4096;

    void feed(const char* data, std::size_t size);
    /// Puts bytes back in front of what is still unread (a body that turned out to hold the
    /// start of the next message after a wrong Content-Length).
    void unread(const std::string& bytes);

    /// The next frame, or nothing until more bytes arrive.
    [[nodiscard]] std::optional<Frame> next();

private:
    std::optional<Frame> readHeaders();
    Frame discardUpToNextHeader(const std::string& reason);
    /// Drops bytes up to the next "Content-Length"; false while it has not come.
    bool resync();

    std::string buffer_;
    std::size_t start_ = 0;
    /// Set once a header block has been read: the size of the body still awaited.
    std::optional<std::size_t> bodySize_;
    /// Bytes of an oversized body still to be dropped.
    std::size_t skipping_ = 0;
    bool resyncing_ = false;
};

} // namespace orane::lsp
