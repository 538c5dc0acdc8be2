#include "choicebuttonlook.hpp"

#include <ryn/core/floatcolor.hpp>
#include <ryn/gui/shapeshifter.hpp>

namespace orane
{
namespace
{

/// A hint of shade behind the label, so that the frame reads as a button.
const ryn::FloatColor FRAME_FILL(0.f, 0.f, 0.f, 0.05f);

} // namespace

void ChoiceButtonLook::dress(ryn::ShapeShifter& button, const sf::Font& font)
{
    button.text()->setCharacterSize(LABEL_SIZE);
    button.setMode(ryn::ShapeShifter::FIT_SHAPE);
    button.setTextAlignment(ryn::ShapeShifter::Alignment::LEFT);
    button.setAlignment(ryn::ShapeShifter::Alignment::LEFT);
    button.setMargin(LABEL_MARGIN, LABEL_MARGIN);
    button.text()->setFillColor(sf::Color::Black);
    button.text()->setFont(font);
    button.shape()->setOutlineColor(sf::Color::Black);
    button.shape()->setOutlineThickness(FRAME_THICKNESS);
    button.shape()->setFillColor(FRAME_FILL);
}

} // namespace orane
