#pragma once

#include <ryn/core/guifactory.hpp>

namespace ryn
{
class SceneNode;
class ShapeShifterPushButtonNode;
} // namespace ryn

namespace orane
{

/// Makes the game's widgets; holds no state.
class OraneGuiFactory : public ryn::GuiFactory
{
public:
    /// A choice button attached to `parent` (which owns it): its label in Nathan's hand, black,
    /// in a thin black frame fitted 5 pixels around it, its left edge at the button's origin.
    ryn::ShapeShifterPushButtonNode* createChoiceButton(ryn::SceneNode* parent) const;
};

} // namespace orane
