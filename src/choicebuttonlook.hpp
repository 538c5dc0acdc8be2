#pragma once

#include <SFML/Graphics/Color.hpp>
#include <SFML/Graphics/Font.hpp>

namespace ryn
{
class ShapeShifter;
} // namespace ryn

namespace orane
{

/// How a choice button looks: its label in Nathan's hand, black, in a thin black frame fitted
/// around it, its left edge at the button's origin, the buttons stacked at a fixed spacing. The
/// game draws them so and orane-story measures pages with them: one definition for both.
class ChoiceButtonLook
{
public:
    static constexpr unsigned int LABEL_SIZE = 20;
    /// Between the label and the frame, on each side.
    static constexpr float LABEL_MARGIN = 5.f;
    static constexpr float FRAME_THICKNESS = 1.f;
    /// From the top of one button to the top of the next.
    static constexpr float SPACING = 40.f;

    /// Sets size, fitting, alignment, margin, colours and frame of `button`, its label in `font`
    /// (which must outlive the button).
    static void dress(ryn::ShapeShifter& button, const sf::Font& font);
};

} // namespace orane
