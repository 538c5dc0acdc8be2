#pragma once

#include "scene/codepoints.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orane
{

/// A UTF-8 text file cut into lines, checked strictly so that a bad byte is found and reported
/// rather than silently ending the text there. The bytes are kept as read: lines are decoded
/// only when asked for, so that a loader can read a large file without holding it twice.
class TextFile
{
public:
    enum class STATUS
    {
        READ,
        CANNOT_OPEN,
        INVALID_UTF8,
        TOO_LARGE,
    };

    /// Far beyond any story (a whole novel), yet small enough that the notebook can still lay
    /// out a scene that holds all of it: a larger file is refused unread.
    static constexpr std::uintmax_t MAX_BYTES = std::uintmax_t{1024} * 1024;

    /// Reads and checks the file at `path`; TOO_LARGE, with no lines, beyond MAX_BYTES.
    /// A folder, a path holding a NUL and a failed read are CANNOT_OPEN.
    static TextFile load(const std::string& path);

    /// Checks `bytes`: lines end at line feeds, a carriage return before a line feed (or at the
    /// very end) is dropped, and a last line feed does not start an empty line. A byte-order mark
    /// is kept as U+FEFF. Overlong forms, surrogates, values beyond U+10FFFF and cut sequences
    /// are invalid.
    static TextFile decode(std::string bytes);

    /// The bytes of the file at `path`, or false for a folder, a path holding a NUL, a file that
    /// cannot be opened and a failed read. Never throws, whatever the path names.
    [[nodiscard]] static bool readBytes(const std::string& path, std::string& bytes);

    /// decode, or TOO_LARGE (with no lines) beyond MAX_BYTES: `bytes` read as a file would be.
    static TextFile fromBytes(std::string bytes);

    [[nodiscard]] STATUS status() const { return status_; }

    /// Every line when READ; the lines before the first invalid one when INVALID_UTF8. Decoded
    /// anew at each call.
    [[nodiscard]] std::vector<sf::String> lines() const;

    /// Sets `line` to the UTF-8 bytes of the line that starts at `offset` (0 for the first) and
    /// moves `offset` to the next one; false after the last of the lines that lines() gives.
    /// The view lives as long as this file.
    bool nextLine(std::size_t& offset, std::string_view& line) const;

    /// Writes the code points of `line`, a view given by nextLine, from `out` on and answers how
    /// many there are; `out` must have room for line.size() of them (never fewer than needed).
    static std::size_t decodeLine(std::string_view line, sf::Uint32* out);

    /// 0-based index, in the file, of the line that holds the first invalid byte.
    [[nodiscard]] std::size_t invalidLineIndex() const { return invalidLineIndex_; }
    /// The file's size when TOO_LARGE.
    [[nodiscard]] std::uintmax_t byteCount() const { return byteCount_; }

private:
    STATUS status_ = STATUS::READ;
    std::string bytes_;
    /// The lines before this offset are whole and valid.
    std::size_t readableEnd_ = 0;
    std::size_t invalidLineIndex_ = 0;
    std::uintmax_t byteCount_ = 0;
};

} // namespace orane
