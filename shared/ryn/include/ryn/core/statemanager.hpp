#pragma once

namespace ryn
{

class AbstractState;

/// Creates the states and answers the current one; carries the flag that ends the main loop.
class StateManager
{
public:
    virtual ~StateManager() = default;

    /// Creates the first state and answers its `init()`; false stops the start-up.
    [[nodiscard]] virtual bool init() = 0;
    /// The state that the main loop updates and draws; never null after a successful `init`.
    virtual AbstractState* currentState() = 0;
    virtual AbstractState* spareState() = 0;
    virtual void spareAction() = 0;
    /// The window's size has changed: pass the notice on to the current state.
    virtual void updateLayout() = 0;
    virtual void spareActionWith(int value) = 0;

    /// Read by the main loop after every update step.
    [[nodiscard]] bool quitRequested() const { return quitRequested_; }

protected:
    /// Set by a derived manager to end the main loop after the current update step.
    bool quitRequested_ = false;
};

} // namespace ryn
