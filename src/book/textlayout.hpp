#pragma once

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/String.hpp>

#include <cstdint>
#include <limits>
#include <unordered_map>

namespace orane
{

/// The horizontal half of sf::Text's layout, one character at a time: the same float operations
/// in the same order as SFML 2.5's own, so that an extent gathered here equals, bit for bit, what
/// the text object's bounds would hold. Lines are independent of each other (the pen goes back to
/// 0 after a line feed), which is what lets the line breaker re-measure one line instead of the
/// whole text.
class TextLayout
{
public:
    /// Kerning by pair of characters (the first in the high half), for one font and size.
    using Kernings = std::unordered_map<std::uint64_t, float>;

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
    Extent textExtent(const Extent& lines) const;

private:
    struct GlyphMetrics
    {
        float advance = 0.f;
        float left = 0.f;
        float top = 0.f;
        float right = 0.f;
        float bottom = 0.f;
    };

    const GlyphMetrics& metrics(sf::Uint32 character);
    float kerning(sf::Uint32 first, sf::Uint32 second);

    const sf::Font& font_;
    unsigned int characterSize_ = 0;
    bool bold_ = false;
    float italicShear_ = 0.f;
    float letterSpacing_ = 0.f;
    float whitespaceWidth_ = 0.f;
    /// Shared by every layout of the same font and size, for the program's whole life.
    Kernings& kernings_;
    std::unordered_map<sf::Uint32, GlyphMetrics> glyphs_;
};

} // namespace orane
