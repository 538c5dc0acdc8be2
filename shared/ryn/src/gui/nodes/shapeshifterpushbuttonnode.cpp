#include <ryn/core/vectors.hpp>
#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

namespace ryn
{

ShapeShifterPushButtonNode::ShapeShifterPushButtonNode(SceneNode* parent, int flags, int shapeType)
    : PushButtonNode(parent)
    , ShapeShifter(flags, shapeType)
{}

sf::FloatRect ShapeShifterPushButtonNode::bounds() const
{
    return ShapeShifter::bounds(worldPosition());
}

bool ShapeShifterPushButtonNode::hitTest(sf::Vector2f point, bool& inside) const
{
    inside = isPointInRectangle(point, bounds());
    return true;
}

void ShapeShifterPushButtonNode::draw(sf::RenderTarget& target, sf::RenderStates states) const
{
    SceneNode::draw(target, states);
}

void ShapeShifterPushButtonNode::drawCurrent(sf::RenderTarget& target, sf::RenderStates states) const
{
    ShapeShifter::draw(target, states);
}

void ShapeShifterPushButtonNode::onHoverEnter()
{
    refresh();
}

void ShapeShifterPushButtonNode::onHoverLeave()
{
    refresh();
}

void ShapeShifterPushButtonNode::onTouchDown(sf::Vector2f)
{
    refresh();
}

void ShapeShifterPushButtonNode::onTouchCancel()
{
    PushButtonNode::onTouchCancel();
    refresh();
}

void ShapeShifterPushButtonNode::onTouchUp(sf::Vector2f point)
{
    PushButtonNode::onTouchUp(point);
    refresh();
    unfocus();
}

} // namespace ryn
