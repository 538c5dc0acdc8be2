#include "book/book.hpp"
#include "booktesting.hpp"
#include "turndriving.hpp"

#include <ryn/core/vectors.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

using orane::Book;
using orane::HOOK;
using orane::STATE;
using turndriving::BOTTOM_LEFT;
using turndriving::BOTTOM_RIGHT;
using turndriving::drag;
using turndriving::settle;
using turndriving::TOP_LEFT;
using turndriving::TOP_RIGHT;

namespace
{

constexpr HOOK ALL_HOOKS[] = {HOOK::TOP_LEFT,  HOOK::LEFT,  HOOK::BOTTOM_LEFT,
                              HOOK::TOP_RIGHT, HOOK::RIGHT, HOOK::BOTTOM_RIGHT};

} // namespace

TEST(BookHooks, WhatCanTurn)
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
    for (int frame = 0; frame < 2000 && book.getState() != STATE::IDLE; ++frame) {
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
    for (const float x : {802.f, 700.f}) {
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
    for (const sf::Vector2f pointer :
         {sf::Vector2f(1000.f, 300.f), sf::Vector2f(100.f, 1000.f), sf::Vector2f(1500.f, 516.f)}) {
        edge.setPointer(pointer);
        edge.update();
        EXPECT_EQ(sf::Vector2f(std::clamp(pointer.x, 362.f, 1242.f), 856.f), edge.getTarget());
        EXPECT_EQ(856.f, edge.getCorner().y);
    }
}

TEST(BookTurning, AGrabNearTheEndOfATurnEndsItThenTakesTheNewSpread)
{
    Book book;
    booktesting::fill(book, 3);
    std::vector<std::pair<STATE, std::uint32_t>> turned;
    book.setPageTurnedCallback([&] { turned.emplace_back(book.getState(), book.getCurrentPage()); });
    drag(book, TOP_RIGHT, {600.f, 300.f});
    while (book.getState() == STATE::TURNING && ryn::lengthOf(book.getTarget() - book.getCorner()) > 24.f)
        book.update();
    ASSERT_EQ(STATE::TURNING, book.getState());
    const std::uint64_t revision = book.getSpreadRevision();

    book.setPointer(BOTTOM_RIGHT);
    book.grab(BOTTOM_RIGHT);
    ASSERT_EQ(1u, turned.size()) << "the turn ends, and tells so, before the grab";
    EXPECT_EQ(STATE::IDLE, turned[0].first);
    EXPECT_EQ(2u, turned[0].second);
    EXPECT_NE(revision, book.getSpreadRevision());
    EXPECT_EQ(STATE::DRAGGING, book.getState());
    EXPECT_EQ(HOOK::BOTTOM_RIGHT, book.getHook());
    EXPECT_EQ(BOTTOM_RIGHT, book.getCorner());
}
