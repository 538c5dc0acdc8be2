#include "scenemanager/textfile.hpp"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace orane
{
namespace
{

using CodePoints = std::basic_string<sf::Uint32>;

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

/// Decodes the sequence at `bytes[index]` into `codePoint` and moves `index` past it; answers
/// false, leaving `index` alone, when the sequence is not well-formed UTF-8.
bool decodeOne(const std::string& bytes, std::size_t& index, sf::Uint32& codePoint)
{
    const auto lead = static_cast<unsigned char>(bytes[index]);
    std::size_t length = 0;
    sf::Uint32 minimum = 0;
    if (lead < 0x80) {
        codePoint = lead;
        ++index;
        return true;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        codePoint = lead & 0x1F;
        minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        codePoint = lead & 0x0F;
        minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        codePoint = lead & 0x07;
        minimum = 0x10000;
    } else {
        return false;
    }
    if (bytes.size() - index < length)
        return false;
    for (std::size_t k = 1; k < length; ++k) {
        const auto byte = static_cast<unsigned char>(bytes[index + k]);
        if (!isContinuation(byte))
            return false;
        codePoint = (codePoint << 6) | (byte & 0x3F);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < minimum || codePoint > 0x10FFFF || isSurrogate)
        return false;
    index += length;
    return true;
}

/// Decodes bytes [index, end) into `line`. A line feed is never part of a multi-byte sequence,
/// so one cut by the line's end fails on the feed itself.
bool decodeLine(const std::string& bytes, std::size_t index, std::size_t end, CodePoints& line)
{
    // No line has more code points than bytes: write in place, then cut to what was decoded.
    line.resize(end - index);
    std::size_t count = 0;
    while (index < end) {
        const auto byte = static_cast<unsigned char>(bytes[index]);
        if (byte < 0x80) {
            line[count++] = byte;
            ++index;
        } else if (!decodeOne(bytes, index, line[count++])) {
            return false;
        }
    }
    line.resize(count);
    return true;
}

} // namespace

TextFile TextFile::load(const std::string& path)
{
    std::error_code noSize;
    const std::uintmax_t size = std::filesystem::file_size(path, noSize);
    if (!noSize && size > MAX_BYTES) {
        TextFile file;
        file.status_ = STATUS::TOO_LARGE;
        file.byteCount_ = size;
        return file;
    }
    TextFile unreadable;
    unreadable.status_ = STATUS::CANNOT_OPEN;
    // A NUL would cut the path short, to another file or to the folder itself.
    if (path.find('\0') != std::string::npos)
        return unreadable;
    std::ifstream stream(path, std::ios::binary);
    if (!stream.is_open())
        return unreadable;
    // istream::read turns a failed read (a folder opens, then cannot be read) into the bad bit,
    // where reading the buffer directly would throw.
    std::string bytes;
    if (!noSize)
        bytes.reserve(static_cast<std::size_t>(size));
    char chunk[64 * 1024];
    while (stream.read(chunk, sizeof chunk) || stream.gcount() > 0)
        bytes.append(chunk, static_cast<std::size_t>(stream.gcount()));
    if (stream.bad())
        return unreadable;
    return decode(bytes);
}

TextFile TextFile::decode(const std::string& bytes)
{
    TextFile file;
    // sf::String cannot be moved: growing the vector would deep-copy every line read so far.
    file.lines_.reserve(static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1);
    CodePoints line;
    std::size_t index = 0;
    while (index < bytes.size()) {
        const void* feed = std::memchr(bytes.data() + index, '\n', bytes.size() - index);
        const std::size_t end =
            feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - bytes.data()) : bytes.size();
        if (!decodeLine(bytes, index, end, line)) {
            file.status_ = STATUS::INVALID_UTF8;
            file.invalidLineIndex_ = file.lines_.size();
            return file;
        }
        if (!line.empty() && line.back() == U'\r')
            line.pop_back();
        file.lines_.emplace_back(line);
        index = end + 1;
    }
    return file;
}

} // namespace orane
