#include "book/pageturn.hpp"

#include <ryn/core/vectors.hpp>

namespace orane
{

PageTurn::PageTurn(const BookGeometry& geometry)
    : geometry_(geometry)
{}

bool PageTurn::finishNearlyDoneTurn()
{
    if (state_ != STATE::TURNING || ryn::lengthOf(target_ - corner_) > QUICK_GRAB_DISTANCE)
        return false;
    endTurn();
    return true;
}

void PageTurn::grab(sf::Vector2f pointer)
{
    if (state_ != STATE::IDLE && state_ != STATE::PEEKING)
        return;
    HOOK h = HOOK::COUNT;
    if (!geometry_.findHook(pointer, h) || !canTurn(h))
        return;
    // At rest a page's corner lies on its hook corner, whatever an earlier turn left in corner_.
    if (state_ == STATE::IDLE)
        corner_ = geometry_.getHookCorner(h);
    hook_ = h;
    state_ = STATE::DRAGGING;
}

void PageTurn::release(sf::Vector2f pointer)
{
    if (state_ != STATE::DRAGGING)
        return;
    if (!geometry_.isBeyondSpine(hook_, pointer)) {
        letGo();
        return;
    }
    target_ = geometry_.getTargetCorner(hook_);
    state_ = STATE::TURNING;
}

bool PageTurn::update()
{
    if (state_ == STATE::IDLE) {
        HOOK h = HOOK::COUNT;
        if (geometry_.findHook(pointer_, h) && canTurn(h))
            lift(h);
    } else if (state_ == STATE::PEEKING && !geometry_.isInHook(pointer_, hook_)) {
        letGo();
    }
    if (state_ == STATE::DRAGGING)
        target_ = geometry_.constrainTarget(hook_, pointer_);

    moveCornerTowards(target_);
    return finishMotion();
}

bool PageTurn::canTurn(HOOK h) const
{
    return (BookGeometry::isForwardHook(h) && currentPage_ + 2u < pageCount_)
           || (BookGeometry::isBackwardHook(h) && currentPage_ != 0);
}

bool PageTurn::isOnLastSpread() const
{
    return pageCount_ - 2 <= currentPage_;
}

void PageTurn::moveCornerTowards(sf::Vector2f target)
{
    const sf::Vector2f remaining = target - corner_;
    if (ryn::lengthOf(remaining) <= snapDistance_)
        corner_ = target;
    else
        corner_ += remaining * approachFactor_;
}

void PageTurn::lift(HOOK h)
{
    if (state_ != STATE::IDLE || !canTurn(h))
        return;
    hook_ = h;
    corner_ = geometry_.getHookCorner(h);
    target_ = geometry_.liftedCorner(h);
    state_ = STATE::PEEKING;
}

void PageTurn::letGo()
{
    if (state_ != STATE::PEEKING && state_ != STATE::DRAGGING)
        return;
    target_ = geometry_.getHookCorner(hook_);
    state_ = STATE::RETURNING;
}

bool PageTurn::finishMotion()
{
    if (corner_ != target_)
        return false;
    if (state_ == STATE::RETURNING) {
        state_ = STATE::IDLE;
    } else if (state_ == STATE::TURNING) {
        endTurn();
        return true;
    }
    return false;
}

void PageTurn::endTurn()
{
    corner_ = target_;
    if (BookGeometry::isForwardHook(hook_))
        currentPage_ += 2;
    else
        currentPage_ -= 2;
    state_ = STATE::IDLE;
}

} // namespace orane
