#pragma once

#include <SFML/System/String.hpp>

#include <functional>
#include <string>
#include <vector>

/// The program's one way to the console. Everything goes out as UTF-8 bytes through the narrow
/// standard output, so narrow and wide text can be mixed in any order without a line vanishing
/// or an accent turning into '?'. Never use std::wcout: it would lock the stream to wide mode.
namespace ryn::console
{

/// Writes UTF-8 (or plain ASCII) text as it is.
void write(const std::string& utf8Text);
void write(const char* utf8Text);
/// Writes wide text encoded as UTF-8; a value that is no Unicode scalar becomes U+FFFD.
void write(const std::wstring& text);
void write(const wchar_t* text);
void write(const sf::String& text);

/// The same, followed by an end of line; the console is flushed.
void writeLine(const std::string& utf8Text);
void writeLine(const char* utf8Text);
void writeLine(const std::wstring& text);
void writeLine(const wchar_t* text);
void writeLine(const sf::String& text);

/// Encodes wide text as UTF-8; a value that is no Unicode scalar becomes U+FFFD.
std::string toUtf8(const std::wstring& text);

/// Receives everything written while installed (tests and tools), instead of standard output.
using Sink = std::function<void(const std::string& utf8Text)>;

/// Redirects the console for its lifetime; captures nest, the innermost one wins.
class Capture
{
public:
    Capture();
    ~Capture();
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    /// Everything written since the capture began.
    [[nodiscard]] const std::string& text() const { return text_; }
    /// The captured text cut at its line feeds (a last line without one is kept).
    [[nodiscard]] std::vector<std::string> lines() const;
    void clear() { text_.clear(); }

private:
    std::string text_;
    Sink previous_;
};

} // namespace ryn::console
