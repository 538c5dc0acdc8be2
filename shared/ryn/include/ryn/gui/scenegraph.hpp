#pragma once

#include <ryn/gui/scenenode.hpp>

namespace ryn
{

/// Owns the root of a GUI tree and passes the pointer, steps and drawing to it.
class SceneGraph : public virtual sf::Drawable
{
public:
    SceneGraph() = default;
    /// Destroys the nodes under the root before the root itself.
    ~SceneGraph() override;

    virtual void updateHover(sf::Vector2f point);
    virtual bool touchDown(sf::Vector2f point);
    virtual bool touchUp(sf::Vector2f point);
    virtual void update(float dt);
    /// Destroys every node under the root.
    virtual void clear();

    SceneNode& root() { return root_; }
    const SceneNode& root() const { return root_; }

    void draw(sf::RenderTarget& target, sf::RenderStates states) const override;

private:
    SceneNode root_;
};

} // namespace ryn
