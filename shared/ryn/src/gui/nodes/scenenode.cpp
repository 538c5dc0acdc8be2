#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/focusmanager.hpp>
#include <ryn/gui/scenenode.hpp>

#include <SFML/Graphics/RenderTarget.hpp>

#include <algorithm>

namespace ryn
{

SceneNode::SceneNode(SceneNode* parent)
    : parent_(parent)
{}

SceneNode::~SceneNode()
{
    // The focus manager does not own or watch its node: never leave it a dangling one.
    if (hasFocus())
        components().focusManager()->releaseFocus(this);
}

sf::FloatRect SceneNode::bounds() const
{
    return {};
}

SceneNode* SceneNode::createChild()
{
    return attachChild(std::make_unique<SceneNode>(this));
}

SceneNode* SceneNode::attachChild(std::unique_ptr<SceneNode> child)
{
    RYN_ASSERT(child);
    child->parent_ = this;
    children_.push_back(std::move(child));
    return children_.back().get();
}

SceneNode* SceneNode::child(int index) const
{
    if (index < 0 || index >= static_cast<int>(children_.size()))
        return nullptr;
    return children_[static_cast<std::size_t>(index)].get();
}

std::vector<SceneNode*> SceneNode::children() const
{
    std::vector<SceneNode*> result;
    result.reserve(children_.size());
    for (const auto& child : children_)
        result.push_back(child.get());
    return result;
}

void SceneNode::detachAllChildren()
{
    // One by one in order, each child gone before the next is destroyed.
    for (auto& child : children_)
        child.reset();
    children_.clear();
}

std::unique_ptr<SceneNode> SceneNode::detachChild(const SceneNode& node)
{
    auto found = std::find_if(children_.begin(), children_.end(),
                              [&node](const std::unique_ptr<SceneNode>& child) { return child.get() == &node; });
    RYN_ASSERT(found != children_.end());
    if (found == children_.end())
        return nullptr;
    std::unique_ptr<SceneNode> detached = std::move(*found);
    detached->parent_ = nullptr;
    children_.erase(found);
    return detached;
}

void SceneNode::drawChildren(sf::RenderTarget& target, sf::RenderStates states) const
{
    for (const auto& child : children_)
        target.draw(*child, states);
}

void SceneNode::drawCurrent(sf::RenderTarget&, sf::RenderStates) const
{}

void SceneNode::unfocus()
{
    if (hasFocus())
        components().focusManager()->releaseFocus(this);
}

bool SceneNode::isEnabled() const
{
    return enabled_;
}

bool SceneNode::focus()
{
    if (hasFocus())
        return false;
    return components().focusManager()->setFocus(this);
}

bool SceneNode::hasFocus() const
{
    // Nodes also live without a running application (tools, tests): no manager, no focus.
    const FocusManager* manager = components().focusManager();
    return manager && manager->focused() == this;
}

void SceneNode::hide()
{
    if (!visible_)
        return;
    visible_ = false;
    unfocus();
    onHide();
}

bool SceneNode::hitTest(sf::Vector2f, bool&) const
{
    return false;
}

void SceneNode::focusGained()
{
    onFocusGained();
}

void SceneNode::focusLost()
{
    onFocusLost();
}

void SceneNode::update(float dt)
{
    updateCurrent(dt);
    updateChildren(dt);
}

void SceneNode::updateChildren(float dt)
{
    for (const auto& child : children_)
        child->update(dt);
}

void SceneNode::updateCurrent(float)
{}

sf::Vector2f SceneNode::worldPosition() const
{
    return worldTransform() * sf::Vector2f();
}

sf::Transform SceneNode::worldTransform() const
{
    sf::Transform transform = sf::Transform::Identity;
    for (const SceneNode* node = this; node; node = node->parent_)
        transform = node->getTransform() * transform;
    return transform;
}

void SceneNode::onDisable()
{}
void SceneNode::onEnable()
{}
void SceneNode::onFocusGained()
{}
void SceneNode::onFocusLost()
{}
void SceneNode::onHide()
{}
void SceneNode::onHoverEnter()
{}
void SceneNode::onHoverLeave()
{}
void SceneNode::spareEvent()
{}
void SceneNode::onTouchDown(sf::Vector2f)
{}
void SceneNode::onTouchCancel()
{}
void SceneNode::onTouchUp(sf::Vector2f)
{}

void SceneNode::draw(sf::RenderTarget& target, sf::RenderStates states) const
{
    if (!visible_)
        return;
    states.transform *= getTransform();
    drawCurrent(target, states);
    drawChildren(target, states);
}

void SceneNode::setVisible(bool visible)
{
    visible_ = visible;
    if (!visible)
        unfocus();
}

void SceneNode::setEnabled(bool enabled)
{
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    if (enabled) {
        onEnable();
        return;
    }
    onDisable();
    unfocus();
}

void SceneNode::updateHover(sf::Vector2f point)
{
    if (!isInteractive())
        return;
    for (const auto& child : children_)
        child->updateHover(point);

    if (isHit(point)) {
        if (!hover_) {
            hover_ = true;
            onHoverEnter();
        }
        return;
    }
    if (hover_) {
        hover_ = false;
        onHoverLeave();
        if (touch_) {
            touch_ = false;
            onTouchCancel();
        }
    }
}

bool SceneNode::touchDown(sf::Vector2f point)
{
    if (!isInteractive())
        return false;
    for (const auto& child : children_) {
        if (child->touchDown(point))
            return true;
    }
    if (!isHit(point))
        return false;
    RYN_CHECK(hover_ && !touch_);
    if (touch_)
        return false;
    touch_ = true;
    onTouchDown(point);
    return true;
}

bool SceneNode::touchUp(sf::Vector2f point)
{
    if (!isInteractive())
        return false;
    for (const auto& child : children_) {
        if (child->touchUp(point))
            return true;
    }
    if (!isHit(point))
        return false;
    RYN_CHECK(hover_);
    if (!touch_)
        return false;
    touch_ = false;
    onTouchUp(point);
    return true;
}

bool SceneNode::isHit(sf::Vector2f point) const
{
    bool inside = false;
    return hitTest(point, inside) && inside;
}

} // namespace ryn
