#include <ryn/gui/pushbuttonnode.hpp>

namespace ryn
{

PushButtonNode::PushButtonNode(SceneNode* parent)
    : SceneNode(parent)
{}

void PushButtonNode::setCallback(std::function<void()> callback)
{
    callback_ = std::move(callback);
}

void PushButtonNode::onTouchCancel()
{
    unfocus();
}

void PushButtonNode::onTouchUp(sf::Vector2f)
{
    if (!hasFocus())
        focus();
    if (callback_)
        callback_();
}

} // namespace ryn
