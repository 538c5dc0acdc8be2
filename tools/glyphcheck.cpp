#include "glyphcheck.hpp"

#include "tooltext.hpp"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdio>

namespace orane
{
namespace
{

/// Every code point `path` maps to a glyph, sorted; false when the file is no font.
bool readCoverage(const std::string& path, std::vector<sf::Uint32>& covered)
{
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0)
        return false;
    FT_Face face = nullptr;
    const bool opened = FT_New_Face(library, path.c_str(), 0, &face) == 0;
    if (opened) {
        FT_UInt glyph = 0;
        for (FT_ULong c = FT_Get_First_Char(face, &glyph); glyph != 0; c = FT_Get_Next_Char(face, c, &glyph))
            covered.push_back(static_cast<sf::Uint32>(c));
        std::sort(covered.begin(), covered.end());
        FT_Done_Face(face);
    }
    FT_Done_FreeType(library);
    return opened;
}

std::string codePointName(sf::Uint32 c)
{
    char hex[16];
    std::snprintf(hex, sizeof hex, "U+%04X", static_cast<unsigned>(c));
    if (c < 0x20 || c == 0x7F || c == 0xA0 || c == 0x202F || (c >= 0x2000 && c <= 0x200F))
        return hex;
    return quoted(sf::String(c)) + " (" + hex + ")";
}

} // namespace

GlyphCheck::GlyphCheck(const std::string& oraneFont, const std::string& nathanFont)
    : paths_{oraneFont, nathanFont}
{
    for (int font = 0; font < 2; ++font) {
        if (!readCoverage(paths_[font], covered_[font]) && error_.empty())
            error_ = "cannot read the font " + paths_[font];
    }
}

bool GlyphCheck::has(int font, sf::Uint32 c) const
{
    const std::vector<sf::Uint32>& covered = covered_[font == 0 ? 0 : 1];
    return std::binary_search(covered.begin(), covered.end(), c);
}

std::vector<StoryFinding> GlyphCheck::findings(const std::vector<SourceText>& sources) const
{
    std::vector<StoryFinding> found;
    if (!available())
        return found;
    for (const SourceText& source : sources) {
        for (const SourceText::Scene& scene : source.scenes()) {
            for (const SourceText::TextLine& text : scene.texts) {
                const int font = text.kind == SourceText::TextLine::KIND::ORANE ? 0 : 1;
                for (std::size_t i = 0; i < text.text.getSize(); ++i) {
                    const sf::Uint32 c = text.text[i];
                    // The layout itself handles blanks and tabs; the rest must be drawn.
                    if (c == U' ' || c == U'\t' || has(font, c))
                        continue;
                    StoryFinding finding;
                    finding.severity = StoryFinding::SEVERITY::WARNING;
                    finding.kind = "glyph";
                    finding.file = source.path();
                    finding.line = text.line;
                    finding.column = text.column + i;
                    finding.scene = scene.name;
                    finding.message = std::string(font == 0 ? "Orane's" : "Nathan's") + " font has no "
                                      + codePointName(c) + ": the notebook would show an empty box";
                    found.push_back(std::move(finding));
                }
            }
        }
    }
    return found;
}

} // namespace orane
