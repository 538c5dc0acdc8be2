#include <ryn/core/assert.hpp>
#include <ryn/core/focusmanager.hpp>
#include <ryn/gui/scenenode.hpp>

namespace ryn
{

void FocusManager::clearFocus()
{
    if (focused_)
        releaseFocus(focused_);
}

SceneNode* FocusManager::focused() const
{
    return focused_;
}

bool FocusManager::setFocus(SceneNode* node)
{
    RYN_ASSERT(node);
    // Forgotten before it is told, so that a node reacting to the loss cannot release it twice.
    if (SceneNode* previous = focused_) {
        focused_ = nullptr;
        previous->focusLost();
    }
    focused_ = node;
    if (node)
        node->focusGained();
    return true;
}

bool FocusManager::releaseFocus(SceneNode* node)
{
    if (!focused_ || focused_ != node)
        return false;
    focused_ = nullptr;
    node->focusLost();
    return true;
}

} // namespace ryn
