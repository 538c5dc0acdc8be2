#pragma once

#include "previewoptions.hpp"

#include <ryn/core/statemanager.hpp>

#include <memory>

namespace orane
{

class PreviewState;

/// The preview has one state from start to end, as the game has.
class PreviewStates : public ryn::StateManager
{
public:
    explicit PreviewStates(PreviewOptions options);
    ~PreviewStates() override;

    bool init() override;
    ryn::AbstractState* currentState() override;
    ryn::AbstractState* spareState() override;
    void spareAction() override;
    void updateLayout() override;
    void spareActionWith(int value) override;

    /// Null before init.
    [[nodiscard]] PreviewState* preview() { return state_.get(); }

private:
    PreviewOptions options_;
    std::unique_ptr<PreviewState> state_;
};

} // namespace orane
