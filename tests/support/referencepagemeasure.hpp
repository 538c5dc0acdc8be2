#pragma once

#include "pagemeasure.hpp"

#include <SFML/Graphics/Font.hpp>
#include <SFML/System/String.hpp>

#include <vector>

namespace orane
{
struct Scene;
} // namespace orane

/// The page measures as orane-story first took them, from text objects and a choice button built
/// as the game builds one: the yardstick that PageMeasure's glyph-by-glyph figures must equal.
class ReferencePageMeasure
{
public:
    /// Reads the font files `measure` was loaded from.
    explicit ReferencePageMeasure(const orane::PageMeasure& measure);

    float textBottom(const sf::String& brokenText, orane::PageWriter writer) const;
    float buttonsBottom(const sf::String& brokenPage, const std::vector<sf::String>& labels) const;
    float buttonWidth(const sf::String& label) const;

private:
    sf::Font fonts_[2];
};

/// Expects every page and button of `scene`, with each of its answers written, to measure the same
/// to the last bit in `measure` as in `reference`; `place` names the scene in failures.
void expectSameMeasures(orane::PageMeasure& measure, const ReferencePageMeasure& reference, const orane::Scene& scene,
                        const std::string& place);
