#include "oranestatemanager.hpp"

#include "stategame.hpp"

#include <ryn/core/assert.hpp>

namespace orane
{

OraneStateManager::OraneStateManager() = default;

OraneStateManager::~OraneStateManager() = default;

bool OraneStateManager::init()
{
    state_ = std::make_unique<StateGame>();
    return state_->init();
}

ryn::AbstractState* OraneStateManager::currentState()
{
    return state_.get();
}

ryn::AbstractState* OraneStateManager::spareState()
{
    return state_.get();
}

void OraneStateManager::spareAction()
{
    RYN_ASSERT(false);
}

void OraneStateManager::updateLayout()
{
    if (state_)
        state_->updateLayout();
}

void OraneStateManager::spareActionWith(int)
{
    RYN_ASSERT(false);
}

} // namespace orane
