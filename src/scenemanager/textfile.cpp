#include "scenemanager/textfile.hpp"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace orane
{
namespace
{

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0) == 0x80;
}

/// The length of the well-formed sequence at `bytes[index]`, or 0 when there is none.
std::size_t sequenceLength(const std::string& bytes, std::size_t index)
{
    const auto lead = static_cast<unsigned char>(bytes[index]);
    if (lead < 0x80)
        return 1;
    std::size_t length = 0;
    sf::Uint32 codePoint = 0;
    sf::Uint32 minimum = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
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
        return 0;
    }
    if (bytes.size() - index < length)
        return 0;
    for (std::size_t k = 1; k < length; ++k) {
        const auto byte = static_cast<unsigned char>(bytes[index + k]);
        if (!isContinuation(byte))
            return 0;
        codePoint = (codePoint << 6) | (byte & 0x3F);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < minimum || codePoint > 0x10FFFF || isSurrogate)
        return 0;
    return length;
}

/// True when none of the eight bytes at `bytes` has its high bit set.
bool eightAscii(const char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return (word & 0x8080808080808080ULL) == 0;
}

/// The offset of the first byte that starts no well-formed sequence, or the size when all do.
/// A line feed is never part of a multi-byte sequence, so one cut by a line's end fails there.
std::size_t findInvalidByte(const std::string& bytes)
{
    std::size_t index = 0;
    while (index < bytes.size()) {
        if (bytes.size() - index >= 8 && eightAscii(bytes.data() + index)) {
            index += 8;
            continue;
        }
        const std::size_t length = sequenceLength(bytes, index);
        if (length == 0)
            return index;
        index += length;
    }
    return bytes.size();
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
    std::string bytes;
    if (!noSize)
        bytes.reserve(static_cast<std::size_t>(size));
    if (!readBytes(path, bytes))
        return unreadable;
    return decode(std::move(bytes));
}

bool TextFile::readBytes(const std::string& path, std::string& bytes)
{
    // A NUL would cut the path short, to another file or to the folder itself.
    if (path.find('\0') != std::string::npos)
        return false;
    std::ifstream stream(path, std::ios::binary);
    if (!stream.is_open())
        return false;
    // istream::read turns a failed read (a folder opens, then cannot be read) into the bad bit,
    // where reading the buffer directly would throw.
    char chunk[64 * 1024];
    while (stream.read(chunk, sizeof chunk) || stream.gcount() > 0)
        bytes.append(chunk, static_cast<std::size_t>(stream.gcount()));
    return !stream.bad();
}

TextFile TextFile::decode(std::string bytes)
{
    TextFile file;
    file.bytes_ = std::move(bytes);
    const std::string& all = file.bytes_;
    const std::size_t invalid = findInvalidByte(all);
    if (invalid == all.size()) {
        file.readableEnd_ = all.size();
        return file;
    }
    file.status_ = STATUS::INVALID_UTF8;
    const auto before = all.begin() + static_cast<std::ptrdiff_t>(invalid);
    file.invalidLineIndex_ = static_cast<std::size_t>(std::count(all.begin(), before, '\n'));
    const std::size_t lastFeed = invalid == 0 ? std::string::npos : all.rfind('\n', invalid - 1);
    file.readableEnd_ = lastFeed == std::string::npos ? 0 : lastFeed + 1;
    return file;
}

TextFile TextFile::fromBytes(std::string bytes)
{
    if (bytes.size() > MAX_BYTES) {
        TextFile file;
        file.status_ = STATUS::TOO_LARGE;
        file.byteCount_ = bytes.size();
        return file;
    }
    return decode(std::move(bytes));
}

std::vector<sf::String> TextFile::lines() const
{
    std::vector<sf::String> decoded;
    // sf::String cannot be moved: growing the vector would deep-copy every line decoded so far.
    const auto readable = bytes_.begin() + static_cast<std::ptrdiff_t>(readableEnd_);
    decoded.reserve(static_cast<std::size_t>(std::count(bytes_.begin(), readable, '\n')) + 1);
    std::vector<sf::Uint32> codePoints;
    std::size_t offset = 0;
    std::string_view line;
    while (nextLine(offset, line)) {
        codePoints.resize(std::max(codePoints.size(), line.size()));
        const std::size_t count = decodeLine(line, codePoints.data());
        decoded.push_back(sf::String::fromUtf32(codePoints.data(), codePoints.data() + count));
    }
    return decoded;
}

bool TextFile::nextLine(std::size_t& offset, std::string_view& line) const
{
    if (offset >= readableEnd_)
        return false;
    const char* start = bytes_.data() + offset;
    const void* feed = std::memchr(start, '\n', readableEnd_ - offset);
    const std::size_t end =
        feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - bytes_.data()) : readableEnd_;
    line = std::string_view(start, end - offset);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    offset = end + 1;
    return true;
}

std::size_t TextFile::decodeLine(std::string_view line, sf::Uint32* out)
{
    const auto* byte = reinterpret_cast<const unsigned char*>(line.data());
    const auto* const end = byte + line.size();
    sf::Uint32* const first = out;
    while (byte < end) {
        if (end - byte >= 8 && eightAscii(reinterpret_cast<const char*>(byte))) {
            for (int k = 0; k < 8; ++k)
                out[k] = byte[k];
            out += 8;
            byte += 8;
            continue;
        }
        const unsigned char lead = *byte;
        if (lead < 0x80) {
            *out++ = lead;
            ++byte;
            continue;
        }
        const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        // Unreachable for a checked line; stops at a cut sequence rather than reading past it.
        if (static_cast<std::size_t>(end - byte) < length)
            break;
        sf::Uint32 codePoint = lead & (0x7Fu >> length);
        for (std::size_t k = 1; k < length; ++k)
            codePoint = (codePoint << 6) | (byte[k] & 0x3Fu);
        *out++ = codePoint;
        byte += length;
    }
    return static_cast<std::size_t>(out - first);
}

} // namespace orane
