#include "book/book.hpp"

#include "booktesting.hpp"

#include <ryn/core/vectors.hpp>

#include <gtest/gtest.h>

#include <algorithm>

using orane::Book;
using orane::HOOK;
using orane::STATE;

namespace
{

const sf::Vector2f TOP_LEFT(362.f, 176.f);
const sf::Vector2f TOP_SPINE(802.f, 176.f);
const sf::Vector2f TOP_RIGHT(1242.f, 176.f);
const sf::Vector2f BOTTOM_LEFT(362.f, 856.f);
const sf::Vector2f BOTTOM_SPINE(802.f, 856.f);
const sf::Vector2f BOTTOM_RIGHT(1242.f, 856.f);

constexpr HOOK ALL_HOOKS[] = {HOOK::TOP_LEFT, HOOK::LEFT,  HOOK::BOTTOM_LEFT,
                              HOOK::TOP_RIGHT, HOOK::RIGHT, HOOK::BOTTOM_RIGHT};

/// Frames until the book rests again, or -1 past `limit`.
int settle(Book& book, int limit = 2000)
{
    for (int frame = 1; frame <= limit; ++frame)
    {
        book.update();
        if (book.getState() == STATE::IDLE)
            return frame;
    }
    return -1;
}

void drag(Book& book, sf::Vector2f from, sf::Vector2f to)
{
    book.setPointer(from);
    book.grab(from);
    book.setPointer(to);
    for (int i = 0; i < 40; ++i)
        book.update();
    book.release(to);
}

} // namespace

TEST(BookHooks, RegionsCornersAndWhatCanTurn)
{
    Book book;
    EXPECT_FALSE(book.isOnLastSpread());
    for (const HOOK h : ALL_HOOKS)
        EXPECT_FALSE(book.canTurn(h)) << "no pages";
    booktesting::fill(book, 1);
    EXPECT_TRUE(book.isOnLastSpread());
    for (const HOOK h : ALL_HOOKS)
        EXPECT_FALSE(book.canTurn(h)) << "one spread";
    booktesting::fill(book, 1);
    for (const HOOK h : ALL_HOOKS)
        EXPECT_EQ(book.isForwardHook(h), book.canTurn(h));

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

    // The edge hooks move the bottom corner.
    EXPECT_EQ(BOTTOM_LEFT, book.getHookCorner(HOOK::LEFT));
    EXPECT_EQ(BOTTOM_LEFT, book.getTargetCorner(HOOK::RIGHT));
    EXPECT_EQ(TOP_LEFT, book.getTargetCorner(HOOK::TOP_RIGHT));
}

TEST(BookTurning, HoverLiftsACornerThatCanTurnAndLetsItFallBack)
{
    Book last;
    booktesting::fill(last, 1);
    last.setPointer(TOP_RIGHT);
    last.update();
    EXPECT_EQ(STATE::IDLE, last.getState()) << "nothing to turn to";

    Book book;
    booktesting::fill(book, 2);
    book.setPointer(TOP_RIGHT + sf::Vector2f(-5.f, 5.f));
    book.update();
    EXPECT_EQ(STATE::PEEKING, book.getState());
    EXPECT_EQ(HOOK::TOP_RIGHT, book.getHook());
    EXPECT_NEAR(1242.f - 35.36f, book.getTarget().x, 0.01f);
    EXPECT_NEAR(176.f + 35.36f, book.getTarget().y, 0.01f);

    // Out of the hook the corner falls back and rests on the frame it lands on its corner.
    book.setPointer({802.f, 516.f});
    for (int frame = 0; frame < 2000 && book.getState() != STATE::IDLE; ++frame)
    {
        book.update();
        EXPECT_EQ(book.getState() == STATE::IDLE, book.getCorner() == TOP_RIGHT);
    }
    EXPECT_EQ(STATE::IDLE, book.getState());
}

TEST(BookTurning, ATurnCompletesOnlyBeyondTheSpine)
{
    Book book;
    booktesting::fill(book, 3);
    int calls = 0;
    book.setPageTurnedCallback([&] {
        ++calls;
        EXPECT_EQ(STATE::IDLE, book.getState());
        EXPECT_EQ(2u, book.getCurrentPage());
    });
    drag(book, TOP_RIGHT, {600.f, 300.f});
    EXPECT_EQ(STATE::TURNING, book.getState());
    EXPECT_EQ(TOP_LEFT, book.getTarget());
    EXPECT_GT(settle(book), 0);
    EXPECT_EQ(1, calls);
    EXPECT_EQ(TOP_LEFT, book.getCorner());

    // Exactly on the spine, or short of it, the page falls back.
    book.setPageTurnedCallback([&] { ++calls; });
    for (const float x : {802.f, 700.f})
    {
        drag(book, BOTTOM_LEFT, {x, 800.f});
        EXPECT_EQ(STATE::RETURNING, book.getState()) << x;
        EXPECT_EQ(BOTTOM_LEFT, book.getTarget());
        EXPECT_GT(settle(book), 0);
        EXPECT_EQ(1, calls);
    }
    drag(book, BOTTOM_LEFT, {1000.f, 800.f});
    EXPECT_GT(settle(book), 0);
    EXPECT_EQ(2, calls);
    EXPECT_EQ(0u, book.getCurrentPage());

    // Only hooks that can turn are taken; a drag ignores other grabs.
    book.grab(TOP_LEFT);
    EXPECT_EQ(STATE::IDLE, book.getState());
    book.grab(BOTTOM_RIGHT + sf::Vector2f(-10.f, -10.f));
    EXPECT_EQ(STATE::DRAGGING, book.getState());
    EXPECT_EQ(BOTTOM_RIGHT, book.getCorner()) << "taken from rest, the corner starts at its place";
    book.grab(TOP_RIGHT);
    EXPECT_EQ(HOOK::BOTTOM_RIGHT, book.getHook());
}

TEST(BookTurning, TheDraggedCornerStaysOnTheSpine)
{
    Book edge;
    booktesting::fill(edge, 2);
    edge.grab({1242.f, 516.f});
    for (const sf::Vector2f pointer : {sf::Vector2f(1000.f, 300.f), sf::Vector2f(100.f, 1000.f),
                                       sf::Vector2f(1500.f, 516.f)})
    {
        edge.setPointer(pointer);
        edge.update();
        EXPECT_EQ(sf::Vector2f(std::clamp(pointer.x, 362.f, 1242.f), 856.f), edge.getTarget());
        EXPECT_EQ(856.f, edge.getCorner().y);
    }

    // Corner hooks: at most a page width from the near spine end, a diagonal from the far one.
    Book corner;
    booktesting::fill(corner, 2);
    corner.grab(TOP_RIGHT);
    corner.setPointer({1000.f, 300.f});
    corner.update();
    EXPECT_EQ(sf::Vector2f(1000.f, 300.f), corner.getTarget());
    for (const sf::Vector2f pointer : {sf::Vector2f(1800.f, 100.f), sf::Vector2f(1300.f, 1100.f),
                                       sf::Vector2f(900.f, -400.f), sf::Vector2f(-500.f, 900.f)})
    {
        corner.setPointer(pointer);
        corner.update();
        EXPECT_LE(ryn::lengthOf(corner.getTarget() - TOP_SPINE), 440.01f);
        EXPECT_LE(ryn::lengthOf(corner.getTarget() - BOTTOM_SPINE), 809.95f);
    }
}

TEST(BookFold, WorkedExampleAndTheFixedCases)
{
    Book book;
    float foldAngle = 0.f;
    float pageAngle = 0.f;
    sf::Vector2f centre;
    sf::Vector2f edge;
    book.computeFold({1000.f, 250.f}, TOP_RIGHT, BOTTOM_SPINE, TOP_SPINE, foldAngle, pageAngle, centre, edge);
    EXPECT_EQ(sf::Vector2f(1121.f, 213.f), centre);
    EXPECT_NEAR(1109.69f, edge.x, 0.01f);
    EXPECT_EQ(176.f, edge.y);
    EXPECT_NEAR(73.0f, foldAngle, 0.05f);
    EXPECT_NEAR(-34.0f, pageAngle, 0.05f);

    book.computeFold(TOP_RIGHT, TOP_RIGHT, BOTTOM_SPINE, TOP_SPINE, foldAngle, pageAngle, centre, edge);
    EXPECT_EQ(-45.f, foldAngle);
    EXPECT_EQ(90.f, pageAngle);
    EXPECT_EQ(TOP_SPINE, edge);

    // Edge hooks: a vertical fold and an unrotated back, both directions.
    for (const sf::Vector2f hookCorner : {BOTTOM_RIGHT, BOTTOM_LEFT})
    {
        book.computeFold({700.f, 856.f}, hookCorner, TOP_SPINE, BOTTOM_SPINE, foldAngle, pageAngle, centre, edge);
        EXPECT_EQ(90.f, foldAngle);
        EXPECT_EQ(0.f, pageAngle);
        EXPECT_EQ(centre, edge);
    }

    // The fold never meets the edge beyond the spine.
    book.computeFold({900.f, 800.f}, TOP_RIGHT, BOTTOM_SPINE, TOP_SPINE, foldAngle, pageAngle, centre, edge);
    EXPECT_EQ(TOP_SPINE, edge);
}
