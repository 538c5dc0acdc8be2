#include "book/textlayout.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace orane
{
namespace
{

/// The metrics of every font and size measured so far. A font is known by its address and
/// family, so that another font given the same address later starts afresh.
class MetricsCache
{
public:
    TextLayout::FontMetrics& metricsFor(const sf::Font& font, unsigned int size)
    {
        Entry& entry = fonts_[{&font, size}];
        if (entry.family != font.getInfo().family) {
            entry.family = font.getInfo().family;
            entry.metrics = TextLayout::FontMetrics();
        }
        return entry.metrics;
    }

private:
    struct Entry
    {
        std::string family;
        TextLayout::FontMetrics metrics;
    };

    std::map<std::pair<const sf::Font*, unsigned int>, Entry> fonts_;
};

MetricsCache& metricsCache()
{
    static MetricsCache cache;
    return cache;
}

} // namespace

TextLayout::TextLayout(const sf::Text& text)
    : font_(*text.getFont())
    , characterSize_(text.getCharacterSize())
    , bold_((text.getStyle() & sf::Text::Bold) != 0)
    , italicShear_((text.getStyle() & sf::Text::Italic) != 0 ? 0.209f : 0.f)
    , known_(metricsCache().metricsFor(font_, characterSize_))
{
    // Written as sf::Text writes it: the spacing is added to the blank, not computed apart.
    whitespaceWidth_ = metrics(U' ').advance;
    letterSpacing_ = (whitespaceWidth_ / 3.f) * (text.getLetterSpacing() - 1.f);
    whitespaceWidth_ += letterSpacing_;
    lineSpacing_ = font_.getLineSpacing(characterSize_) * text.getLineSpacing();
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

sf::FloatRect TextLayout::localBounds(const sf::String& text)
{
    if (text.isEmpty())
        return {};
    // The vertical half follows sf::Text as the horizontal half does: the baseline of the first
    // line at the character size, a blank counted at the baseline, a line feed moving it down.
    const auto size = static_cast<float>(characterSize_);
    float baseline = size;
    float minY = size;
    float maxY = 0.f;
    Pen pen = penForLineAt(0);
    for (const sf::Uint32 character : text) {
        if (character == U'\r')
            continue;
        if (character == U' ' || character == U'\n' || character == U'\t') {
            minY = std::min(minY, baseline);
            if (character == U'\n')
                baseline += lineSpacing_;
            maxY = std::max(maxY, baseline);
        } else {
            const GlyphMetrics& glyph = metrics(character);
            minY = std::min(minY, baseline + glyph.top);
            maxY = std::max(maxY, baseline + glyph.bottom);
        }
        lay(pen, character);
    }
    const Extent horizontal = textExtent(pen.extent);
    return {horizontal.minX, minY, horizontal.maxX - horizontal.minX, maxY - minY};
}

float TextLayout::kerning(sf::Uint32 first, sf::Uint32 second)
{
    if (first < FontMetrics::TABLE_SIDE && second < FontMetrics::TABLE_SIDE) {
        float& known = known_.kerningTable[first * FontMetrics::TABLE_SIDE + second];
        if (std::isnan(known))
            known = font_.getKerning(first, second, characterSize_);
        return known;
    }
    const std::uint64_t pair = std::uint64_t{first} << 32 | second;
    const auto found = known_.kernings.find(pair);
    if (found != known_.kernings.end())
        return found->second;
    return known_.kernings.emplace(pair, font_.getKerning(first, second, characterSize_)).first->second;
}

const TextLayout::GlyphMetrics& TextLayout::metrics(sf::Uint32 character)
{
    const std::size_t weight = bold_ ? 1 : 0;
    std::vector<bool>& known = known_.glyphKnown[weight];
    std::vector<GlyphMetrics>& table = known_.glyphTable[weight];
    if (character < FontMetrics::TABLE_SIDE) {
        if (table.empty()) {
            table.resize(FontMetrics::TABLE_SIDE);
            known.resize(FontMetrics::TABLE_SIDE);
        }
        if (!known[character]) {
            table[character] = measureGlyph(character);
            known[character] = true;
        }
        return table[character];
    }
    std::unordered_map<sf::Uint32, GlyphMetrics>& others = known_.glyphs[weight];
    const auto found = others.find(character);
    if (found != others.end())
        return found->second;
    return others.emplace(character, measureGlyph(character)).first->second;
}

TextLayout::GlyphMetrics TextLayout::measureGlyph(sf::Uint32 character) const
{
    const sf::Glyph& glyph = font_.getGlyph(character, characterSize_, bold_);
    GlyphMetrics metrics;
    metrics.advance = glyph.advance;
    metrics.left = glyph.bounds.left;
    metrics.top = glyph.bounds.top;
    metrics.right = glyph.bounds.left + glyph.bounds.width;
    metrics.bottom = glyph.bounds.top + glyph.bounds.height;
    return metrics;
}

} // namespace orane
