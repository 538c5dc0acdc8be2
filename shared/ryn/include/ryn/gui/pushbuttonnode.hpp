#pragma once

#include <ryn/gui/scenenode.hpp>

#include <functional>

namespace ryn
{

/// A node that runs its callback when clicked: pressed and released while the pointer stays
/// on it. It holds the focus while the click is handled. Cannot be hit by itself: a concrete
/// button gives it a hit area.
class PushButtonNode : public SceneNode
{
public:
    explicit PushButtonNode(SceneNode* parent);

    /// Run on every click; an empty function clears it. It must not destroy the button, which
    /// is still used once the callback returns.
    void setCallback(std::function<void()> callback);

protected:
    // Protected rather than private: a concrete button adds its look to them and calls these.
    void onTouchCancel() override;
    void onTouchUp(sf::Vector2f point) override;

private:
    std::function<void()> callback_;
};

} // namespace ryn
