#pragma once

#include "sourcetext.hpp"
#include "storyfinding.hpp"

#include <SFML/Config.hpp>

#include <string>
#include <vector>

namespace orane
{

/// Every character a reader sees must exist in the font it is written with: Orane's texts in
/// Orane's font; Nathan's texts, the choice labels and the answers in Nathan's. A character a
/// font lacks is drawn as an empty box (Dancing Script has no no-break space, for one).
class GlyphCheck
{
public:
    /// The fonts' files, as the game loads them.
    GlyphCheck(const std::string& oraneFont, const std::string& nathanFont);

    /// False, with the reason in error(), when a font cannot be read.
    [[nodiscard]] bool available() const { return error_.empty(); }
    [[nodiscard]] const std::string& error() const { return error_; }

    [[nodiscard]] std::vector<StoryFinding> findings(const std::vector<SourceText>& sources) const;

    /// True when `font` (0 Orane's, 1 Nathan's) has a glyph for `c`.
    [[nodiscard]] bool has(int font, sf::Uint32 c) const;

private:
    /// The code points each font covers, read once.
    std::vector<sf::Uint32> covered_[2];
    std::string paths_[2];
    std::string error_;
};

} // namespace orane
