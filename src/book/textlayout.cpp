#include "book/textlayout.hpp"

#include <algorithm>

namespace orane
{

TextLayout::TextLayout(const sf::Text& text)
    : font_(*text.getFont())
    , characterSize_(text.getCharacterSize())
    , bold_((text.getStyle() & sf::Text::Bold) != 0)
    , italicShear_((text.getStyle() & sf::Text::Italic) != 0 ? 0.209f : 0.f)
{
    // Written as sf::Text writes it: the spacing is added to the blank, not computed apart.
    whitespaceWidth_ = font_.getGlyph(U' ', characterSize_, bold_).advance;
    letterSpacing_ = (whitespaceWidth_ / 3.f) * (text.getLetterSpacing() - 1.f);
    whitespaceWidth_ += letterSpacing_;
}

TextLayout::Pen TextLayout::penForLineAt(std::size_t index)
{
    Pen pen;
    pen.previous = index == 0 ? 0 : U'\n';
    return pen;
}

void TextLayout::lay(Pen& pen, sf::Uint32 character)
{
    if (character == U'\r')
        return;

    pen.x += font_.getKerning(pen.previous, character, characterSize_);
    pen.previous = character;
    Extent& extent = pen.extent;

    if (character == U' ' || character == U'\n' || character == U'\t')
    {
        extent.minX = std::min(extent.minX, pen.x);
        if (character == U' ')
            pen.x += whitespaceWidth_;
        else if (character == U'\t')
            pen.x += whitespaceWidth_ * 4;
        else
            pen.x = 0.f;
        extent.maxX = std::max(extent.maxX, pen.x);
        return;
    }

    const GlyphMetrics& glyph = metrics(character);
    extent.minX = std::min(extent.minX, pen.x + glyph.left - italicShear_ * glyph.bottom);
    extent.maxX = std::max(extent.maxX, pen.x + glyph.right - italicShear_ * glyph.top);
    pen.x += glyph.advance + letterSpacing_;
}

TextLayout::Extent TextLayout::textExtent(const Extent& lines) const
{
    Extent text;
    text.minX = std::min(static_cast<float>(characterSize_), lines.minX);
    text.maxX = std::max(0.f, lines.maxX);
    return text;
}

const TextLayout::GlyphMetrics& TextLayout::metrics(sf::Uint32 character)
{
    const auto found = glyphs_.find(character);
    if (found != glyphs_.end())
        return found->second;

    const sf::Glyph& glyph = font_.getGlyph(character, characterSize_, bold_);
    GlyphMetrics metrics;
    metrics.advance = glyph.advance;
    metrics.left = glyph.bounds.left;
    metrics.top = glyph.bounds.top;
    metrics.right = glyph.bounds.left + glyph.bounds.width;
    metrics.bottom = glyph.bounds.top + glyph.bounds.height;
    return glyphs_.emplace(character, metrics).first->second;
}

} // namespace orane
