#pragma once

#include <SFML/Graphics/Drawable.hpp>
#include <SFML/Graphics/Rect.hpp>
#include <SFML/Graphics/Transformable.hpp>
#include <SFML/System/NonCopyable.hpp>

#include <memory>
#include <vector>

namespace ryn
{

/// A node of the GUI tree: owns its children, draws itself then its children, steps itself
/// then its children, and takes part in pointer handling (hover, press "touch", release),
/// where the deepest interested node wins. The base node draws nothing and is never hit;
/// widgets override the hooks.
///
/// Pointer positions are in one space for the whole tree; the recursion does not transform
/// them. The drawable base is virtual so that a node that is also another drawable (such as
/// a shape-shifter button) holds only one.
class SceneNode : public sf::Transformable, public virtual sf::Drawable, private sf::NonCopyable
{
public:
    /// `parent` is null for a root.
    explicit SceneNode(SceneNode* parent = nullptr);
    /// Destroys all children.
    ~SceneNode() override;

    /// Area hit by the pointer, in the tree's coordinates; empty for the base node.
    virtual sf::FloatRect bounds() const;
    /// Appends a plain node and answers it.
    virtual SceneNode* createChild();
    /// Takes ownership of `child` (not null), appends it and answers it.
    virtual SceneNode* attachChild(std::unique_ptr<SceneNode> child);
    /// Null when `index` is out of range.
    virtual SceneNode* child(int index) const;
    /// The children in order, not owned.
    virtual std::vector<SceneNode*> children() const;
    virtual void detachAllChildren();
    /// Hands `node` to the caller, the other children keeping their order; an empty pointer,
    /// after a report, when `node` is not a child.
    virtual std::unique_ptr<SceneNode> detachChild(const SceneNode& node);

private:
    // The hooks: derived nodes override them; only the node's own recursion calls them.
    virtual void drawChildren(sf::RenderTarget& target, sf::RenderStates states) const;
    /// The node's own look, drawn under its children; nothing for the base node.
    virtual void drawCurrent(sf::RenderTarget& target, sf::RenderStates states) const;

public:
    /// Gives the focus back if this node has it.
    virtual void unfocus();
    virtual bool isEnabled() const;
    /// False when the node already has the focus.
    virtual bool focus();
    virtual bool hasFocus() const;
    /// Hides the node (giving its focus back) and calls `onHide`; nothing if already hidden.
    virtual void hide();
    /// Answers whether the node can be hit at all; when it can, `inside` tells whether
    /// `point` hits it. The base node answers false and leaves `inside` alone.
    virtual bool hitTest(sf::Vector2f point, bool& inside) const;
    /// Called by the focus manager.
    virtual void focusGained();
    virtual void focusLost();
    /// Steps this node, then its children, whatever their visibility.
    virtual void update(float dt);

private:
    virtual void updateChildren(float dt);
    virtual void updateCurrent(float dt);

public:
    virtual sf::Vector2f worldPosition() const;
    /// Root x ... x parent x this.
    virtual sf::Transform worldTransform() const;

private:
    virtual void onDisable();
    virtual void onEnable();
    virtual void onFocusGained();
    virtual void onFocusLost();
    virtual void onHide();
    virtual void onHoverEnter();
    virtual void onHoverLeave();
    virtual void spareEvent();
    virtual void onTouchDown(sf::Vector2f point);
    virtual void onTouchCancel();
    virtual void onTouchUp(sf::Vector2f point);

public:
    /// Nothing is drawn, the node included, while it is hidden.
    void draw(sf::RenderTarget& target, sf::RenderStates states) const override;

    /// Hiding gives the focus back; no hook is called.
    void setVisible(bool visible);
    bool isVisible() const { return visible_; }
    /// A change calls `onEnable`, or `onDisable` and gives the focus back.
    void setEnabled(bool enabled);
    /// Once per update step: children first, then this node enters or leaves; leaving
    /// cancels a press. A hidden or disabled node and its subtree keep their flags.
    void updateHover(sf::Vector2f point);
    /// True when some node of this subtree took the press; the first child in order wins.
    bool touchDown(sf::Vector2f point);
    /// True when some node of this subtree took the release of a press it had taken.
    bool touchUp(sf::Vector2f point);
    bool isHovered() const { return hover_; }
    bool isTouched() const { return touch_; }
    SceneNode* parent() const { return parent_; }

private:
    bool isInteractive() const { return visible_ && enabled_; }
    bool isHit(sf::Vector2f point) const;

    std::vector<std::unique_ptr<SceneNode>> children_;
    SceneNode* parent_ = nullptr;
    bool visible_ = true;
    bool enabled_ = true;
    bool hover_ = false;
    bool touch_ = false;
};

} // namespace ryn
