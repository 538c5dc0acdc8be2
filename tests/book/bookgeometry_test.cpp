// The notebook's geometry and its turn state machine are plain arithmetic: these tests open no
// window and load no font.

#include "book/bookgeometry.hpp"
#include "book/pageturn.hpp"
#include "turndriving.hpp"

#include <ryn/core/vectors.hpp>

#include <gtest/gtest.h>

#include <algorithm>

using orane::BookGeometry;
using orane::HOOK;
using orane::PageTurn;
using orane::STATE;
using turndriving::BOTTOM_LEFT;
using turndriving::BOTTOM_RIGHT;
using turndriving::BOTTOM_SPINE;
using turndriving::drag;
using turndriving::settle;
using turndriving::TOP_LEFT;
using turndriving::TOP_RIGHT;
using turndriving::TOP_SPINE;

TEST(BookGeometry, HookRegionsAndCorners)
{
    const BookGeometry book;
    // Corner circles include their boundary; edge rectangles reach 40 pixels either side of the
    // outer edge, y 306 to 726.
    EXPECT_TRUE(book.isInHook(TOP_RIGHT + sf::Vector2f(0.f, 100.f), HOOK::TOP_RIGHT));
    EXPECT_FALSE(book.isInHook(TOP_RIGHT + sf::Vector2f(0.f, 100.001f), HOOK::TOP_RIGHT));
    EXPECT_TRUE(book.isInHook({322.f, 306.f}, HOOK::LEFT));
    EXPECT_TRUE(book.isInHook({402.f, 726.f}, HOOK::LEFT));
    EXPECT_FALSE(book.isInHook({402.5f, 516.f}, HOOK::LEFT));
    EXPECT_FALSE(book.isInHook({362.f, 305.5f}, HOOK::LEFT));

    HOOK h = HOOK::COUNT;
    ASSERT_TRUE(book.findHook({1240.f, 850.f}, h));
    EXPECT_EQ(HOOK::BOTTOM_RIGHT, h);
    ASSERT_TRUE(book.findHook({1230.f, 516.f}, h));
    EXPECT_EQ(HOOK::RIGHT, h);
    EXPECT_FALSE(book.findHook({802.f, 516.f}, h));
    EXPECT_EQ(HOOK::RIGHT, h) << "a miss leaves the hook untouched";

    // The edge hooks move the bottom corner, and a top hook's page hangs from the top of the spine.
    EXPECT_EQ(BOTTOM_LEFT, book.getHookCorner(HOOK::LEFT));
    EXPECT_EQ(BOTTOM_LEFT, book.getTargetCorner(HOOK::RIGHT));
    EXPECT_EQ(TOP_LEFT, book.getTargetCorner(HOOK::TOP_RIGHT));
    const auto anchors = book.anchors(HOOK::TOP_LEFT);
    ASSERT_TRUE(anchors.has_value());
    EXPECT_EQ(TOP_SPINE, anchors->nearSpineEnd);
    EXPECT_EQ(BOTTOM_SPINE, anchors->farSpineEnd);
    EXPECT_EQ(BOTTOM_SPINE, book.anchors(HOOK::RIGHT)->nearSpineEnd);

    // The spine itself belongs to neither side.
    EXPECT_FALSE(book.isBeyondSpine(HOOK::BOTTOM_RIGHT, {802.f, 800.f}));
    EXPECT_TRUE(book.isBeyondSpine(HOOK::BOTTOM_RIGHT, {801.9f, 800.f}));
    EXPECT_TRUE(book.isBeyondSpine(HOOK::LEFT, {802.1f, 800.f}));
}

TEST(BookGeometry, ADraggedCornerStaysOnTheSpine)
{
    const BookGeometry book;
    for (const sf::Vector2f pointer : {sf::Vector2f(1000.f, 300.f), sf::Vector2f(100.f, 1000.f)})
        EXPECT_EQ(sf::Vector2f(std::clamp(pointer.x, 362.f, 1242.f), 856.f),
                  book.constrainTarget(HOOK::RIGHT, pointer));

    EXPECT_EQ(sf::Vector2f(1000.f, 300.f), book.constrainTarget(HOOK::TOP_RIGHT, {1000.f, 300.f}));
    for (const sf::Vector2f pointer : {sf::Vector2f(1800.f, 100.f), sf::Vector2f(1300.f, 1100.f),
                                       sf::Vector2f(900.f, -400.f), sf::Vector2f(-500.f, 900.f)}) {
        const sf::Vector2f held = book.constrainTarget(HOOK::TOP_RIGHT, pointer);
        EXPECT_LE(ryn::lengthOf(held - TOP_SPINE), 440.01f) << pointer.x << ", " << pointer.y;
        EXPECT_LE(ryn::lengthOf(held - BOTTOM_SPINE), 809.95f) << pointer.x << ", " << pointer.y;
    }
}

TEST(BookGeometry, FoldWorkedExampleAndTheFixedCases)
{
    const BookGeometry::Fold fold = BookGeometry::computeFold({1000.f, 250.f}, TOP_RIGHT, BOTTOM_SPINE, TOP_SPINE);
    EXPECT_EQ(sf::Vector2f(1121.f, 213.f), fold.centre);
    EXPECT_NEAR(1109.69f, fold.edgePoint.x, 0.01f);
    EXPECT_EQ(176.f, fold.edgePoint.y);
    EXPECT_NEAR(73.0f, fold.foldAngle, 0.05f);
    EXPECT_NEAR(-34.0f, fold.pageAngle, 0.05f);

    const BookGeometry::Fold atRest = BookGeometry::computeFold(TOP_RIGHT, TOP_RIGHT, BOTTOM_SPINE, TOP_SPINE);
    EXPECT_EQ(-45.f, atRest.foldAngle);
    EXPECT_EQ(90.f, atRest.pageAngle);
    EXPECT_EQ(TOP_SPINE, atRest.edgePoint);

    // Edge hooks: a vertical fold and an unrotated back, both directions.
    for (const sf::Vector2f hookCorner : {BOTTOM_RIGHT, BOTTOM_LEFT}) {
        const BookGeometry::Fold edge = BookGeometry::computeFold({700.f, 856.f}, hookCorner, TOP_SPINE, BOTTOM_SPINE);
        EXPECT_EQ(90.f, edge.foldAngle);
        EXPECT_EQ(0.f, edge.pageAngle);
        EXPECT_EQ(edge.centre, edge.edgePoint);
    }

    // The fold never meets the edge beyond the spine.
    EXPECT_EQ(TOP_SPINE, BookGeometry::computeFold({900.f, 800.f}, TOP_RIGHT, BOTTOM_SPINE, TOP_SPINE).edgePoint);
}

TEST(BookGeometry, TurnPoseAndMask)
{
    const BookGeometry book;
    // A backward corner hook hangs its back upside down from the far corner of the page.
    const BookGeometry::TurnPose back = book.computeTurnPose(HOOK::BOTTOM_LEFT, {600.f, 800.f});
    EXPECT_EQ(TOP_LEFT, back.revealedPosition);
    EXPECT_EQ(sf::Vector2f(440.f, 680.f), back.backOrigin);
    EXPECT_NEAR(back.fold.pageAngle + 180.f, back.backRotation, 1e-4f);
    const BookGeometry::TurnPose edge = book.computeTurnPose(HOOK::LEFT, {600.f, 856.f});
    EXPECT_EQ(0.f, edge.backRotation) << "an edge hook's page is not turned over";

    // The mask's side a-b lies on the fold, centred on it, and a-d is square to it.
    const BookGeometry::MaskRectangle mask = BookGeometry::computeMaskRectangle(90.f, {800.f, 500.f}, 200.f, 50.f);
    EXPECT_NEAR(800.f, mask.a.x, 1e-3f);
    EXPECT_NEAR(600.f, mask.a.y, 1e-3f);
    EXPECT_NEAR(400.f, mask.b.y, 1e-3f);
    EXPECT_NEAR(0.f, ryn::dot(mask.b - mask.a, mask.d - mask.a), 1e-2f);
    EXPECT_NEAR(50.f, ryn::lengthOf(mask.d - mask.a), 1e-3f);
}

TEST(PageTurn, AQuickGrabEndsANearlyLandedTurnAndIsTakenOnTheNewSpread)
{
    const BookGeometry geometry;
    PageTurn turn(geometry);
    turn.setPageCount(6);
    drag(turn, BOTTOM_RIGHT, {600.f, 800.f});
    ASSERT_EQ(STATE::TURNING, turn.state());

    // Far from its target the turn goes on, and the grab is ignored as before.
    EXPECT_FALSE(turn.finishNearlyDoneTurn());
    turn.grab(BOTTOM_RIGHT);
    EXPECT_EQ(STATE::TURNING, turn.state());

    // Just over 24 pixels away it still goes on; within them a grab ends it.
    int frames = 0;
    while (ryn::lengthOf(turn.target() - turn.corner()) > PageTurn::QUICK_GRAB_DISTANCE + 0.5f && frames++ < 1000)
        EXPECT_FALSE(turn.update());
    EXPECT_FALSE(turn.finishNearlyDoneTurn());
    while (ryn::lengthOf(turn.target() - turn.corner()) > PageTurn::QUICK_GRAB_DISTANCE && frames++ < 1000)
        EXPECT_FALSE(turn.update());
    ASSERT_EQ(STATE::TURNING, turn.state());
    EXPECT_TRUE(turn.finishNearlyDoneTurn());
    EXPECT_EQ(STATE::IDLE, turn.state());
    EXPECT_EQ(2u, turn.currentPage());
    EXPECT_EQ(BOTTOM_LEFT, turn.corner()) << "the page lies where a finished turn leaves it";
    EXPECT_FALSE(turn.finishNearlyDoneTurn()) << "a turn ends once";

    turn.grab(BOTTOM_RIGHT);
    EXPECT_EQ(STATE::DRAGGING, turn.state());
    EXPECT_EQ(HOOK::BOTTOM_RIGHT, turn.hook());
    EXPECT_EQ(BOTTOM_RIGHT, turn.corner());
}

TEST(PageTurn, OnlyATurnIsEndedEarly)
{
    const BookGeometry geometry;
    PageTurn turn(geometry);
    turn.setPageCount(4);
    // A page falling back keeps falling, however near its place.
    turn.setPointer(BOTTOM_RIGHT);
    turn.grab(BOTTOM_RIGHT);
    turn.setPointer({1200.f, 840.f});
    turn.update();
    turn.release({1200.f, 840.f});
    ASSERT_EQ(STATE::RETURNING, turn.state());
    EXPECT_FALSE(turn.finishNearlyDoneTurn());
    EXPECT_EQ(STATE::RETURNING, turn.state());
    EXPECT_GT(settle(turn), 0);

    // A full turn on its own still ends on the frame the corner arrives, and only once.
    drag(turn, BOTTOM_RIGHT, {600.f, 800.f});
    int turned = 0;
    for (int frame = 0; frame < 2000 && turn.state() != STATE::IDLE; ++frame)
        turned += turn.update() ? 1 : 0;
    EXPECT_EQ(1, turned);
    EXPECT_EQ(BOTTOM_LEFT, turn.corner());
    EXPECT_TRUE(turn.isOnLastSpread());
}
