#pragma once

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Rect.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/String.hpp>

#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

namespace orane
{

/// sf::Text's layout without its vertices, one character at a time: the same float operations
/// in the same order as SFML 2.5's own, so that an extent gathered here equals, bit for bit, what
/// the text object's bounds would hold. Lines are independent of each other (the pen goes back to
/// 0 after a line feed), which is what lets the line breaker re-measure one line instead of the
/// whole text.
class TextLayout
{
public:
    /// What one glyph contributes to a line: its advance and its box around the pen.
    struct GlyphMetrics
    {
        float advance = 0.f;
        float left = 0.f;
        float top = 0.f;
        float right = 0.f;
        float bottom = 0.f;
    };

    /// What sf::Font answers for one font and size, kept for the program's whole life since
    /// asking it (FreeType behind it) is most of the time taken to measure a long text. Latin-1
    /// characters (nearly every one of French prose) are in tables, the others by key.
    struct FontMetrics
    {
        static constexpr sf::Uint32 TABLE_SIDE = 256;
        /// Kerning by pair; NaN where the pair was not asked yet.
        std::vector<float> kerningTable =
            std::vector<float>(TABLE_SIDE * TABLE_SIDE, std::numeric_limits<float>::quiet_NaN());
        /// Kerning by pair, the first character in the high half.
        std::unordered_map<std::uint64_t, float> kernings;
        /// Glyphs by weight (regular, bold), then by character.
        std::vector<GlyphMetrics> glyphTable[2];
        std::vector<bool> glyphKnown[2];
        std::unordered_map<sf::Uint32, GlyphMetrics> glyphs[2];
    };

    /// Horizontal range that sf::Text's bounds take from the characters laid so far.
    struct Extent
    {
        float minX = std::numeric_limits<float>::infinity();
        float maxX = -std::numeric_limits<float>::infinity();
    };

    /// Where the next character goes, and what has been covered since the pen was set down.
    struct Pen
    {
        float x = 0.f;
        sf::Uint32 previous = 0; ///< last character laid, for kerning; '\r' is skipped
        Extent extent;
    };

    /// Takes font, size, style and letter spacing from `text`, which must have a font and must
    /// outlive the layout.
    explicit TextLayout(const sf::Text& text);

    /// A pen at the start of the line that begins at `index` of a text (the previous character
    /// is then a line feed, or nothing at the very start).
    static Pen penForLineAt(std::size_t index);

    /// Lays one character. A line feed moves the pen back to 0, like sf::Text does.
    void lay(Pen& pen, sf::Uint32 character);

    /// sf::Text starts its bounds at (characterSize, 0) before the first character: the extent
    /// of a text whose lines have the combined extent `lines`.
    [[nodiscard]] Extent textExtent(const Extent& lines) const;

    /// What sf::Text::getLocalBounds answers for `text` set in this layout's font, size and style,
    /// bit for bit, without building the text's vertices.
    [[nodiscard]] sf::FloatRect localBounds(const sf::String& text);

private:
    const GlyphMetrics& metrics(sf::Uint32 character);
    [[nodiscard]] GlyphMetrics measureGlyph(sf::Uint32 character) const;
    float kerning(sf::Uint32 first, sf::Uint32 second);

    const sf::Font& font_;
    unsigned int characterSize_ = 0;
    bool bold_ = false;
    float italicShear_ = 0.f;
    float letterSpacing_ = 0.f;
    float whitespaceWidth_ = 0.f;
    float lineSpacing_ = 0.f;
    /// Shared by every layout of the same font and size.
    FontMetrics& known_;
};

} // namespace orane
