#include "previewstates.hpp"

#include "previewstate.hpp"

namespace orane
{

PreviewStates::PreviewStates(PreviewOptions options)
    : options_(std::move(options))
{}

PreviewStates::~PreviewStates() = default;

bool PreviewStates::init()
{
    state_ = std::make_unique<PreviewState>(options_);
    return state_->init();
}

ryn::AbstractState* PreviewStates::currentState()
{
    return state_.get();
}

ryn::AbstractState* PreviewStates::spareState()
{
    return state_.get();
}

void PreviewStates::spareAction()
{}

void PreviewStates::updateLayout()
{
    if (state_)
        state_->updateLayout();
}

void PreviewStates::spareActionWith(int)
{}

} // namespace orane
