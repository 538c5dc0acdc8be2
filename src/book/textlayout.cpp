#include "book/textlayout.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace orane
{
namespace
{

/// sf::Font asks FreeType for every kerning pair it is given, which is most of the time taken
/// to measure a long text: the answers are kept for the program's whole life, by font and size.
/// A font is known by its address and family, so that another font given the same address
/// later starts afresh.
class KerningCache
{
public:
    TextLayout::Kernings& pairsFor(const sf::Font& font, unsigned int size)
    {
        Entry& entry = fonts_[{&font, size}];
        if (entry.family != font.getInfo().family) {
            entry.family = font.getInfo().family;
            entry.pairs.clear();
        }
        return entry.pairs;
    }

private:
    struct Entry
    {
        std::string family;
        TextLayout::Kernings pairs;
    };

    std::map<std::pair<const sf::Font*, unsigned int>, Entry> fonts_;
};

KerningCache& kerningCache()
{
    static KerningCache cache;
    return cache;
}

} // namespace

TextLayout::TextLayout(const sf::Text& text)
    : font_(*text.getFont())
    , characterSize_(text.getCharacterSize())
    , bold_((text.getStyle() & sf::Text::Bold) != 0)
    , italicShear_((text.getStyle() & sf::Text::Italic) != 0 ? 0.209f : 0.f)
    , kernings_(kerningCache().pairsFor(font_, characterSize_))
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

    pen.x += kerning(pen.previous, character);
    pen.previous = character;
    Extent& extent = pen.extent;

    if (character == U' ' || character == U'\n' || character == U'\t') {
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

float TextLayout::kerning(sf::Uint32 first, sf::Uint32 second)
{
    const std::uint64_t pair = std::uint64_t{first} << 32 | second;
    const auto found = kernings_.find(pair);
    if (found != kernings_.end())
        return found->second;
    return kernings_.emplace(pair, font_.getKerning(first, second, characterSize_)).first->second;
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
