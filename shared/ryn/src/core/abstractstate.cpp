#include <ryn/core/abstractstate.hpp>

namespace ryn
{

AbstractState::AbstractState(StateManager* owner)
    : owner_(owner)
{}

void AbstractState::resetTime()
{
    elapsed_ = 0.f;
}

void AbstractState::updateLayout()
{
    layout();
}

void AbstractState::update(float dt)
{
    elapsed_ += dt;
}

} // namespace ryn
