#pragma once

#include "scene/scene.hpp"

#include <SFML/System/String.hpp>

#include <cstddef>
#include <map>

namespace orane
{

/// sf::String's own order (code point by code point), compared inline: loading a large story
/// spends much of its time ordering scene names, and SFML's operator cannot be inlined.
struct CodePointLess
{
    bool operator()(const sf::String& left, const sf::String& right) const
    {
        const sf::Uint32* a = left.getData();
        const sf::Uint32* b = right.getData();
        const std::size_t common = left.getSize() < right.getSize() ? left.getSize() : right.getSize();
        for (std::size_t i = 0; i < common; ++i)
            if (a[i] != b[i])
                return a[i] < b[i];
        return left.getSize() < right.getSize();
    }
};

/// The story's scenes by name.
using SceneMap = std::map<sf::String, Scene, CodePointLess>;

} // namespace orane
