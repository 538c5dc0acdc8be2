#pragma once

#include <ryn/gui/pushbuttonnode.hpp>
#include <ryn/gui/shapeshifter.hpp>

namespace ryn
{

/// The engine's concrete push button: its look and its hit area are a ShapeShifter, styled
/// through the shape shifter's own operations. The hit area is the shape shifter's bounds
/// moved by the node's world position (rotation and scale are not applied), edges included.
class ShapeShifterPushButtonNode : public PushButtonNode, public ShapeShifter
{
public:
    ShapeShifterPushButtonNode(SceneNode* parent, int flags, int shapeType);

    sf::FloatRect bounds() const override;
    using ShapeShifter::bounds;
    bool hitTest(sf::Vector2f point, bool& inside) const override;

    /// Drawn as a node: hidden buttons draw nothing, children come over the button.
    void draw(sf::RenderTarget& target, sf::RenderStates states) const override;

private:
    void drawCurrent(sf::RenderTarget& target, sf::RenderStates states) const override;
    void onHoverEnter() override;
    void onHoverLeave() override;
    void onTouchDown(sf::Vector2f point) override;
    void onTouchCancel() override;
    void onTouchUp(sf::Vector2f point) override;
};

} // namespace ryn
