#include "oraneguifactory.hpp"

#include "resourceids.hpp"

#include "ryn/core/components.hpp"
#include "ryn/core/floatcolor.hpp"
#include "ryn/core/resourcemanager.hpp"
#include "ryn/gui/shapeshifterpushbuttonnode.hpp"

#include <memory>

namespace orane
{

namespace
{

constexpr unsigned LABEL_SIZE = 20;
constexpr float LABEL_MARGIN = 5.f;
constexpr float FRAME_THICKNESS = 1.f;
/// A hint of shade behind the label, so that the frame reads as a button.
const ryn::FloatColor FRAME_FILL(0.f, 0.f, 0.f, 0.05f);

} // namespace

ryn::ShapeShifterPushButtonNode* OraneGuiFactory::createChoiceButton(ryn::SceneNode* parent) const
{
    auto node = std::make_unique<ryn::ShapeShifterPushButtonNode>(
        parent, ryn::ShapeShifter::TEXT | ryn::ShapeShifter::SHAPE, ryn::ShapeShifter::RECTANGLE);
    auto* button = static_cast<ryn::ShapeShifterPushButtonNode*>(parent->attachChild(std::move(node)));

    button->text()->setCharacterSize(LABEL_SIZE);
    button->setMode(ryn::ShapeShifter::FIT_SHAPE);
    button->setTextAlignment(ryn::ShapeShifter::Alignment::LEFT);
    button->setAlignment(ryn::ShapeShifter::Alignment::LEFT);
    button->setMargin(LABEL_MARGIN, LABEL_MARGIN);
    button->text()->setFillColor(sf::Color::Black);
    button->text()->setFont(ryn::components().resourceManager()->font(FontId::Nathan));
    button->shape()->setOutlineColor(sf::Color::Black);
    button->shape()->setOutlineThickness(FRAME_THICKNESS);
    button->shape()->setFillColor(FRAME_FILL);
    return button;
}

} // namespace orane
