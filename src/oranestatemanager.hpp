#pragma once

#include <ryn/core/statemanager.hpp>

#include <memory>

namespace orane
{

class StateGame;

/// The game has one state, the play state, from start-up to the end.
class OraneStateManager : public ryn::StateManager
{
public:
    OraneStateManager();
    ~OraneStateManager() override;

    /// Creates the play state and answers its `init`.
    [[nodiscard]] bool init() override;
    /// The play state; null before `init`.
    ryn::AbstractState* currentState() override;
    /// There is no other state: the play state again.
    ryn::AbstractState* spareState() override;
    /// Not used by the game: reaching it is a fault.
    void spareAction() override;
    void updateLayout() override;
    /// Not used by the game: reaching it is a fault.
    void spareActionWith(int value) override;

private:
    std::unique_ptr<StateGame> state_;
};

} // namespace orane
