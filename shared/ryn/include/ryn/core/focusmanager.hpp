#pragma once

namespace ryn
{

class SceneNode;

/// Remembers which scene node has the keyboard focus (at most one) and tells nodes when they
/// gain or lose it. The focused node is not owned: release the focus before destroying it.
class FocusManager
{
public:
    virtual ~FocusManager() = default;

    /// Releases the focused node, if any.
    virtual void clearFocus();
    [[nodiscard]] virtual SceneNode* focused() const;
    /// The node that had the focus loses it (even if it is `node` itself), then `node`, which
    /// must not be null, gains it. Answers true.
    virtual bool setFocus(SceneNode* node);
    /// When `node` has the focus: takes it away, tells the node and answers true;
    /// otherwise changes nothing and answers false.
    virtual bool releaseFocus(SceneNode* node);

private:
    SceneNode* focused_ = nullptr;
};

} // namespace ryn
