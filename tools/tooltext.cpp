#include "tooltext.hpp"

#include "scene/storytext.hpp"

#include <ryn/core/console.hpp>

namespace orane
{

std::string utf8(const sf::String& text)
{
    return ryn::console::toUtf8(text.toWideString());
}

std::string quoted(const sf::String& text)
{
    return quoted(utf8(text));
}

std::string quoted(const std::string& utf8Text)
{
    return "\"" + utf8Text + "\"";
}

std::string oneLine(const sf::String& text)
{
    sf::String flat = trimWhitespace(text);
    flat.replace(sf::String(L"\n"), sf::String(L" "));
    return utf8(flat);
}

} // namespace orane
