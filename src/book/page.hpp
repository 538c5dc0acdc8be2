#pragma once

#include <SFML/System/String.hpp>

#include <cstdint>

namespace orane
{

/// Who wrote a page; indexes the notebook's writer texts (font, size and ink).
enum class PageWriter : std::int32_t
{
    ORANE = 0,
    NATHAN = 1,
};

/// One page of the notebook.
struct Page
{
    /// Already broken into lines.
    sf::String text;
    PageWriter writer = PageWriter::ORANE;
};

} // namespace orane
