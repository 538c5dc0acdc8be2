#include "book/bookgeometry.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/vectors.hpp>

#include <algorithm>
#include <cmath>

namespace orane
{
namespace
{

const sf::Vector2f DEFAULT_MARGIN(362.f, 176.f);
const sf::Vector2f DEFAULT_PAGE_SIZE(440.f, 680.f);
constexpr float PI = 3.1415927f;

float toDegrees(float radians)
{
    return radians * 180.f / PI;
}

/// Which way a lifted corner moves into its page.
sf::Vector2f liftDirection(HOOK h)
{
    switch (h) {
    case HOOK::TOP_LEFT: return {1.f, 1.f};
    case HOOK::LEFT: return {1.f, 0.f};
    case HOOK::BOTTOM_LEFT: return {1.f, -1.f};
    case HOOK::TOP_RIGHT: return {-1.f, 1.f};
    case HOOK::RIGHT: return {-1.f, 0.f};
    case HOOK::BOTTOM_RIGHT: return {-1.f, -1.f};
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return {};
}

} // namespace

BookGeometry::BookGeometry()
{
    setMargin(DEFAULT_MARGIN);
    setPageSize(DEFAULT_PAGE_SIZE);
}

void BookGeometry::setMargin(sf::Vector2f margin)
{
    RYN_ASSERT((margin.x > 0) && (margin.y > 0));
    margin_ = margin;
    updateCorners();
}

void BookGeometry::setPageSize(sf::Vector2f pageSize)
{
    RYN_ASSERT((pageSize.x > 0) && (pageSize.y > 0));
    pageSize_ = pageSize;
    pageDiagonal_ = ryn::lengthOf(pageSize);
    updateCorners();
}

void BookGeometry::updateCorners()
{
    const float width = pageSize_.x;
    const float height = pageSize_.y;
    topLeft_ = margin_;
    topSpine_ = {topLeft_.x + width, topLeft_.y};
    topRight_ = {topSpine_.x + width, topLeft_.y};
    bottomLeft_ = {topLeft_.x, topLeft_.y + height};
    bottomSpine_ = {bottomLeft_.x + width, bottomLeft_.y};
    bottomRight_ = {bottomSpine_.x + width, bottomLeft_.y};
    middleSpine_ = {topSpine_.x, topSpine_.y + height * 0.5f};
    middleRight_ = {topRight_.x, middleSpine_.y};
    middleLeft_ = {topLeft_.x, middleSpine_.y};
}

// ---- Hooks ------------------------------------------------------------------------------------

bool BookGeometry::isForwardHook(HOOK h)
{
    return static_cast<unsigned int>(h) - 3u < 3u;
}

bool BookGeometry::isBottomHook(HOOK h)
{
    return h == HOOK::BOTTOM_LEFT || h == HOOK::BOTTOM_RIGHT;
}

bool BookGeometry::isEdgeHook(HOOK h)
{
    return h == HOOK::LEFT || h == HOOK::RIGHT;
}

bool BookGeometry::isTopHook(HOOK h)
{
    return h == HOOK::TOP_LEFT || h == HOOK::TOP_RIGHT;
}

bool BookGeometry::isInHook(sf::Vector2f point, HOOK h) const
{
    switch (h) {
    case HOOK::TOP_LEFT:
    case HOOK::BOTTOM_LEFT:
    case HOOK::TOP_RIGHT:
    case HOOK::BOTTOM_RIGHT: return ryn::isPointInCircle(point, getHookCorner(h), hookRadius_);
    case HOOK::LEFT:
    case HOOK::RIGHT: {
        const sf::Vector2f centre = h == HOOK::LEFT ? middleLeft_ : middleRight_;
        const sf::Vector2f half = edgeHookSize_ / 2.f;
        return ryn::isPointInRectangle(point, centre - half, centre + half);
    }
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return false;
}

bool BookGeometry::findHook(sf::Vector2f point, HOOK& h) const
{
    for (int i = 0; i < static_cast<int>(HOOK::COUNT); ++i) {
        const auto candidate = static_cast<HOOK>(i);
        if (isInHook(point, candidate)) {
            h = candidate;
            return true;
        }
    }
    return false;
}

sf::Vector2f BookGeometry::getHookCorner(HOOK h) const
{
    switch (h) {
    case HOOK::TOP_LEFT: return topLeft_;
    case HOOK::LEFT:
    case HOOK::BOTTOM_LEFT: return bottomLeft_;
    case HOOK::TOP_RIGHT: return topRight_;
    case HOOK::RIGHT:
    case HOOK::BOTTOM_RIGHT: return bottomRight_;
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return {};
}

sf::Vector2f BookGeometry::getTargetCorner(HOOK h) const
{
    switch (h) {
    case HOOK::TOP_LEFT: return topRight_;
    case HOOK::LEFT:
    case HOOK::BOTTOM_LEFT: return bottomRight_;
    case HOOK::TOP_RIGHT: return topLeft_;
    case HOOK::RIGHT:
    case HOOK::BOTTOM_RIGHT: return bottomLeft_;
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return {};
}

std::optional<BookGeometry::HookAnchors> BookGeometry::anchors(HOOK h) const
{
    RYN_ASSERT(h != HOOK::COUNT);
    if (h == HOOK::COUNT)
        return std::nullopt;
    const bool top = isTopHook(h);
    return HookAnchors{getHookCorner(h), getTargetCorner(h), top ? topSpine_ : bottomSpine_,
                       top ? bottomSpine_ : topSpine_};
}

// ---- Motion limits ----------------------------------------------------------------------------

sf::Vector2f BookGeometry::liftedCorner(HOOK h) const
{
    return getHookCorner(h) + ryn::normalized(liftDirection(h)) * (hookRadius_ * 0.5f);
}

bool BookGeometry::isBeyondSpine(HOOK h, sf::Vector2f pointer) const
{
    return isForwardHook(h) ? pointer.x < topSpine_.x : pointer.x > topSpine_.x;
}

sf::Vector2f BookGeometry::constrainTarget(HOOK h, sf::Vector2f target) const
{
    if (isEdgeHook(h)) {
        // The page slides along the bottom edge and folds vertically.
        return {std::clamp(target.x, bottomLeft_.x, bottomRight_.x), bottomSpine_.y};
    }

    const std::optional<HookAnchors> anchor = anchors(h);
    if (!anchor)
        return target;
    // The page stays attached to the spine: its corner can be no farther than one page width
    // from the near end and one diagonal from the far end.
    const sf::Vector2f fromFar = target - anchor->farSpineEnd;
    if (ryn::lengthOf(fromFar) < pageDiagonal_ && ryn::lengthOf(target - anchor->nearSpineEnd) < pageSize_.x)
        return target;
    if (ryn::lengthOf(fromFar) > pageDiagonal_)
        target = anchor->farSpineEnd + ryn::normalized(fromFar) * pageDiagonal_;
    const sf::Vector2f fromNear = target - anchor->nearSpineEnd;
    if (ryn::lengthOf(fromNear) > pageSize_.x)
        target = anchor->nearSpineEnd + ryn::normalized(fromNear) * pageSize_.x;
    return target;
}

// ---- Fold -------------------------------------------------------------------------------------

BookGeometry::Fold BookGeometry::computeFold(sf::Vector2f corner, sf::Vector2f hookCorner, sf::Vector2f /*farSpineEnd*/,
                                             sf::Vector2f nearSpineEnd)
{
    Fold fold;
    if (corner == hookCorner) {
        fold.foldAngle = -45.f;
        fold.pageAngle = 90.f;
        fold.centre = corner;
        fold.edgePoint = nearSpineEnd;
        return fold;
    }

    const sf::Vector2f centre = (corner + hookCorner) / 2.f;
    const sf::Vector2f toHook = hookCorner - centre;
    // The fold, perpendicular to corner-hook corner through the centre, meets the page edge that
    // runs through the hook corner and the spine here; never beyond the spine.
    float x = centre.x - std::tan(std::atan2(toHook.y, toHook.x)) * toHook.y;
    const float spineX = nearSpineEnd.x;
    if ((x > spineX && spineX > hookCorner.x) || (x < spineX && spineX < hookCorner.x))
        x = spineX;
    const sf::Vector2f edge(x, nearSpineEnd.y);

    fold.centre = centre;
    fold.edgePoint = edge;
    if (centre.y == edge.y) {
        fold.foldAngle = 90.f;
        fold.pageAngle = 0.f;
        return fold;
    }
    fold.foldAngle = centre.y > edge.y ? toDegrees(std::atan2(centre.y - edge.y, centre.x - edge.x))
                                       : toDegrees(std::atan2(edge.y - centre.y, edge.x - centre.x));
    fold.pageAngle = toDegrees(std::atan2(edge.y - corner.y, edge.x - corner.x));
    return fold;
}

BookGeometry::MaskRectangle BookGeometry::computeMaskRectangle(float angle, sf::Vector2f centre, float width,
                                                               float height)
{
    MaskRectangle mask;
    const sf::Vector2f direction = ryn::rotated({1.f, 0.f}, angle);
    mask.a = centre + direction * (width * 0.5f);
    const sf::Vector2f along = ryn::normalized(centre - mask.a);
    mask.b = mask.a + along * width;
    mask.d = mask.a + ryn::rotated(along, 90.f) * height;
    return mask;
}

BookGeometry::TurnPose BookGeometry::computeTurnPose(HOOK h, sf::Vector2f corner) const
{
    TurnPose pose;
    const std::optional<HookAnchors> anchor = anchors(h);
    if (!anchor)
        return pose;
    pose.fold = computeFold(corner, anchor->hookCorner, anchor->farSpineEnd, anchor->nearSpineEnd);

    pose.revealedPosition = isForwardHook(h) ? topSpine_ : topLeft_;
    const bool leftCorner = h == HOOK::TOP_LEFT || h == HOOK::BOTTOM_LEFT;
    pose.backRotation = pose.fold.pageAngle + (leftCorner ? 180.f : 0.f);

    const float width = pageSize_.x;
    const float height = pageSize_.y;
    switch (h) {
    case HOOK::TOP_RIGHT: pose.backOrigin = {0.f, 0.f}; break;
    case HOOK::RIGHT:
    case HOOK::BOTTOM_RIGHT: pose.backOrigin = {0.f, height}; break;
    case HOOK::TOP_LEFT: pose.backOrigin = {width, 0.f}; break;
    case HOOK::LEFT:
    case HOOK::BOTTOM_LEFT: pose.backOrigin = {width, height}; break;
    case HOOK::COUNT: break;
    }
    return pose;
}

BookGeometry::MaskRectangle BookGeometry::windowMask(float foldAngle, sf::Vector2f edgePoint) const
{
    // Large enough to cover the whole window on one side of the fold.
    const float width = 2.f * (2.f * margin_.x + 2.f * pageSize_.x);
    const float height = 2.f * margin_.y + 2.f * pageSize_.y;
    return computeMaskRectangle(foldAngle, edgePoint, width, height);
}

} // namespace orane
