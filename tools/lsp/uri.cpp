#include "uri.hpp"

#include <cctype>

namespace orane::lsp
{
namespace
{

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool isUnreserved(unsigned char c)
{
    return std::isalnum(c) != 0 || c == '-' || c == '.' || c == '_' || c == '~' || c == '/';
}

} // namespace

std::string pathFromUri(const std::string& uri)
{
    const std::string scheme = "file://";
    if (uri.compare(0, scheme.size(), scheme) != 0)
        return {};
    // The authority (a host name) is empty or "localhost" for local files.
    const std::size_t pathStart = uri.find('/', scheme.size());
    if (pathStart == std::string::npos)
        return {};
    std::string path;
    for (std::size_t at = pathStart; at < uri.size(); ++at) {
        if (uri[at] == '%' && at + 2 < uri.size() && hexValue(uri[at + 1]) >= 0 && hexValue(uri[at + 2]) >= 0) {
            path += static_cast<char>(hexValue(uri[at + 1]) * 16 + hexValue(uri[at + 2]));
            at += 2;
        } else if (uri[at] == '?' || uri[at] == '#') {
            break;
        } else {
            path += uri[at];
        }
    }
    return path;
}

std::string uriFromPath(const std::string& path)
{
    static const char* const digits = "0123456789ABCDEF";
    std::string uri = "file://";
    for (char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (isUnreserved(byte)) {
            uri += c;
        } else {
            uri += '%';
            uri += digits[byte >> 4U];
            uri += digits[byte & 0x0FU];
        }
    }
    return uri;
}

} // namespace orane::lsp
