#pragma once

#include <SFML/System/Vector2.hpp>

#include <optional>

namespace orane
{

/// The six regions by which a page can be taken. Hooks 3 to 5 turn forward, 0 to 2 backward.
enum class HOOK
{
    TOP_LEFT = 0,
    LEFT = 1,
    BOTTOM_LEFT = 2,
    TOP_RIGHT = 3,
    RIGHT = 4,
    BOTTOM_RIGHT = 5,
    COUNT = 6, ///< ends the list; never a valid hook
};

/// Where the notebook's pages lie and how a page hangs while it turns: pure vector maths on
/// window pixels (y down) and degrees, with no font, texture or window.
class BookGeometry
{
public:
    /// The four points a turn of one hook moves between.
    struct HookAnchors
    {
        sf::Vector2f hookCorner;   ///< the page corner that moves
        sf::Vector2f targetCorner; ///< where it ends when the turn completes
        sf::Vector2f nearSpineEnd; ///< the spine end on the hook corner's edge
        sf::Vector2f farSpineEnd;
    };

    /// The fold of a page whose hook corner has moved to another place.
    struct Fold
    {
        float foldAngle = 0.f;  ///< of the fold line
        float pageAngle = 0.f;  ///< of the turning page's back
        sf::Vector2f centre;    ///< middle of the moved corner and its hook corner
        sf::Vector2f edgePoint; ///< where the fold meets the edge through the hook corner
    };

    /// Where a turning page goes and how it hangs.
    struct TurnPose
    {
        Fold fold;
        sf::Vector2f revealedPosition; ///< of the page the turn uncovers
        sf::Vector2f backOrigin;       ///< the point of the turning page's back that sits on the corner
        float backRotation = 0.f;
    };

    /// A rectangle by three of its corners: a-b along one side, a-d along the other.
    struct MaskRectangle
    {
        sf::Vector2f a;
        sf::Vector2f b;
        sf::Vector2f d;
    };

    /// The notebook's default place and page size (the left page's top-left corner at margin).
    BookGeometry();

    void setMargin(sf::Vector2f margin);
    void setPageSize(sf::Vector2f pageSize);

    [[nodiscard]] sf::Vector2f margin() const { return margin_; }
    [[nodiscard]] sf::Vector2f pageSize() const { return pageSize_; }
    [[nodiscard]] float pageDiagonal() const { return pageDiagonal_; }
    [[nodiscard]] float hookRadius() const { return hookRadius_; }
    [[nodiscard]] sf::Vector2f topLeft() const { return topLeft_; }
    [[nodiscard]] sf::Vector2f topSpine() const { return topSpine_; }

    [[nodiscard]] static bool isForwardHook(HOOK h);
    [[nodiscard]] static bool isBackwardHook(HOOK h) { return !isForwardHook(h); }
    [[nodiscard]] static bool isBottomHook(HOOK h);
    [[nodiscard]] static bool isEdgeHook(HOOK h);
    [[nodiscard]] static bool isTopHook(HOOK h);

    /// Corner hooks are circles (boundary included), edge hooks rectangles across the outer edge.
    [[nodiscard]] bool isInHook(sf::Vector2f point, HOOK h) const;
    /// Tries the hooks in order; the first one hit goes into `h` (untouched when none is).
    [[nodiscard]] bool findHook(sf::Vector2f point, HOOK& h) const;
    /// The page corner that moves when the hook is taken (the edge hooks move the bottom one).
    [[nodiscard]] sf::Vector2f getHookCorner(HOOK h) const;
    /// Where the hook's corner ends when the turn completes.
    [[nodiscard]] sf::Vector2f getTargetCorner(HOOK h) const;
    /// Nothing for `HOOK::COUNT` (an assertion failure).
    [[nodiscard]] std::optional<HookAnchors> anchors(HOOK h) const;

    /// Where a hovered hook's corner lifts to: half a hook radius into its page.
    [[nodiscard]] sf::Vector2f liftedCorner(HOOK h) const;
    /// Whether a page of hook `h` let go at `pointer` turns (exactly on the spine it does not).
    [[nodiscard]] bool isBeyondSpine(HOOK h, sf::Vector2f pointer) const;
    /// `target` held where a corner of hook `h` can go with its page still on the spine: edge
    /// hooks slide along the bottom edge; a corner stays within a page width of the near spine
    /// end and a diagonal of the far one.
    [[nodiscard]] sf::Vector2f constrainTarget(HOOK h, sf::Vector2f target) const;

    /// The fold of a page whose corner `hookCorner` has moved to `corner`; `farSpineEnd` plays no
    /// part but belongs to the same anchors.
    [[nodiscard]] static Fold computeFold(sf::Vector2f corner, sf::Vector2f hookCorner, sf::Vector2f farSpineEnd,
                                          sf::Vector2f nearSpineEnd);
    /// A rectangle whose side a-b, `width` long and centred on `centre`, lies at `angle`, and
    /// whose side a-d, `height` long, runs perpendicular to it.
    [[nodiscard]] static MaskRectangle computeMaskRectangle(float angle, sf::Vector2f centre, float width,
                                                            float height);
    /// The pose of a page of hook `h` whose corner is at `corner`.
    [[nodiscard]] TurnPose computeTurnPose(HOOK h, sf::Vector2f corner) const;
    /// The mask that covers the whole window on one side of the fold through `edgePoint`.
    [[nodiscard]] MaskRectangle windowMask(float foldAngle, sf::Vector2f edgePoint) const;

private:
    void updateCorners();

    float hookRadius_ = 100.f;
    sf::Vector2f edgeHookSize_{80.f, 420.f};
    sf::Vector2f margin_;
    sf::Vector2f pageSize_;
    float pageDiagonal_ = 0.f;
    sf::Vector2f topLeft_;
    sf::Vector2f topSpine_;
    sf::Vector2f topRight_;
    sf::Vector2f bottomLeft_;
    sf::Vector2f bottomSpine_;
    sf::Vector2f bottomRight_;
    sf::Vector2f middleSpine_;
    sf::Vector2f middleLeft_;
    sf::Vector2f middleRight_;
};

} // namespace orane
