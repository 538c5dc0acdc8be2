#pragma once

#include <SFML/System/String.hpp>

#include <string>
#include <string_view>

namespace orane
{

/// Code points held or seen without going through sf::String, which allocates for any text of
/// more than three characters and cannot be moved: the loader reads whole stories through these.
using CodePoints = std::basic_string<sf::Uint32>;
using CodePointView = std::basic_string_view<sf::Uint32>;

/// The code points of `text`, valid as long as `text` is neither changed nor destroyed.
inline CodePointView viewOf(const sf::String& text)
{
    return CodePointView(text.getData(), text.getSize());
}

/// A new sf::String holding `text`, allocated once at its exact size.
inline sf::String toString(CodePointView text)
{
    return sf::String::fromUtf32(text.begin(), text.end());
}

} // namespace orane
