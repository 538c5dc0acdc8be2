#include <ryn/core/console.hpp>

#include <cstdio>
#include <vector>

namespace ryn::console
{
namespace
{

Sink& currentSink()
{
    static Sink sink;
    return sink;
}

void emit(const std::string& bytes, bool endLine)
{
    if (const Sink& sink = currentSink()) {
        sink(endLine ? bytes + "\n" : bytes);
        return;
    }
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    if (endLine) {
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

void appendUtf8(std::string& out, char32_t code)
{
    const bool isScalar = code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    if (!isScalar)
        code = 0xFFFD;
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

} // namespace

std::string toUtf8(const std::wstring& text)
{
    std::string out;
    out.reserve(text.size());
    for (wchar_t c : text)
        appendUtf8(out, static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(c)));
    return out;
}

void write(const std::string& utf8Text)
{
    emit(utf8Text, false);
}
void write(const char* utf8Text)
{
    emit(utf8Text, false);
}
void write(const std::wstring& text)
{
    emit(toUtf8(text), false);
}
void write(const wchar_t* text)
{
    emit(toUtf8(text), false);
}
void write(const sf::String& text)
{
    emit(toUtf8(text.toWideString()), false);
}
void writeLine(const std::string& utf8Text)
{
    emit(utf8Text, true);
}
void writeLine(const char* utf8Text)
{
    emit(utf8Text, true);
}
void writeLine(const std::wstring& text)
{
    emit(toUtf8(text), true);
}
void writeLine(const wchar_t* text)
{
    emit(toUtf8(text), true);
}
void writeLine(const sf::String& text)
{
    emit(toUtf8(text.toWideString()), true);
}

Capture::Capture()
    : previous_(currentSink())
{
    currentSink() = [this](const std::string& bytes) { text_ += bytes; };
}

Capture::~Capture()
{
    currentSink() = previous_;
}

std::vector<std::string> Capture::lines() const
{
    std::vector<std::string> result;
    std::string::size_type start = 0;
    while (start < text_.size()) {
        const auto end = text_.find('\n', start);
        if (end == std::string::npos) {
            result.push_back(text_.substr(start));
            break;
        }
        result.push_back(text_.substr(start, end - start));
        start = end + 1;
    }
    return result;
}

} // namespace ryn::console
