#include "oraneguifactory.hpp"

#include "choicebuttonlook.hpp"
#include "resourceids.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/resourcemanager.hpp>
#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

#include <memory>

namespace orane
{

ryn::ShapeShifterPushButtonNode* OraneGuiFactory::createChoiceButton(ryn::SceneNode* parent) const
{
    auto node = std::make_unique<ryn::ShapeShifterPushButtonNode>(
        parent, ryn::ShapeShifter::TEXT | ryn::ShapeShifter::SHAPE, ryn::ShapeShifter::RECTANGLE);
    auto* button = static_cast<ryn::ShapeShifterPushButtonNode*>(parent->attachChild(std::move(node)));

    ChoiceButtonLook::dress(*button, ryn::components().resourceManager()->font(FontId::Nathan));
    return button;
}

} // namespace orane
