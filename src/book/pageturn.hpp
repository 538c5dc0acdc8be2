#pragma once

#include "book/bookgeometry.hpp"

#include <SFML/System/Vector2.hpp>

#include <cstddef>
#include <cstdint>

namespace orane
{

/// Where a page turn stands.
enum class STATE : std::int32_t
{
    IDLE = 0,      ///< every page lies flat
    PEEKING = 1,   ///< the pointer hovers a hook: its corner lifts by itself
    DRAGGING = 2,  ///< the corner follows the pointer
    TURNING = 3,   ///< released beyond the spine: the corner travels to the other side
    RETURNING = 4, ///< let go: the corner falls back to its place
};

/// The page-turn state machine: which spread is shown, and the corner a reader hovers, drags
/// and lets go. The corner moves by a fixed share of its way per drawn frame, not per second.
/// The operations that can end a turn answer whether they did, so that the owner can tell
/// whoever waits for it.
class PageTurn
{
public:
    /// Reads the geometry, which must outlive the turn.
    explicit PageTurn(const BookGeometry& geometry);

    /// How many pages the notebook holds; a turn only reaches pages that exist.
    void setPageCount(std::size_t pages) { pageCount_ = pages; }

    void setPointer(sf::Vector2f pointer) { pointer_ = pointer; }
    /// Before a grab: a turn whose corner is within `QUICK_GRAB_DISTANCE` of its target ends at
    /// once, as it would on arriving; true when it did.
    bool finishNearlyDoneTurn();
    /// Takes the hook under `pointer` when the page can turn; only at rest or while peeking.
    void grab(sf::Vector2f pointer);
    /// Beyond the spine the turn goes on by itself; elsewhere the page falls back.
    void release(sf::Vector2f pointer);
    /// One animation step; true when it ended a turn.
    bool update();

    [[nodiscard]] STATE state() const { return state_; }
    [[nodiscard]] HOOK hook() const { return hook_; }
    /// Index of the left page of the spread shown; always even.
    [[nodiscard]] std::uint32_t currentPage() const { return currentPage_; }
    [[nodiscard]] sf::Vector2f corner() const { return corner_; }
    [[nodiscard]] sf::Vector2f target() const { return target_; }
    [[nodiscard]] bool canTurn(HOOK h) const;
    [[nodiscard]] bool isOnLastSpread() const;

    /// One step of the corner: snaps onto `target` within the snap distance, else covers the
    /// approach factor of the way.
    void moveCornerTowards(sf::Vector2f target);

    /// How near its target a turning corner may be taken again: a landed page still travels its
    /// last pixels for seconds, and a reader who turns fast must not find the notebook dead.
    static constexpr float QUICK_GRAB_DISTANCE = 24.f;

private:
    void lift(HOOK h);
    void letGo();
    /// Ends the motion when the corner has arrived; true when that ended a turn.
    bool finishMotion();
    void endTurn();

    const BookGeometry& geometry_;
    std::size_t pageCount_ = 0;
    STATE state_ = STATE::IDLE;
    HOOK hook_ = HOOK::COUNT;
    std::uint32_t currentPage_ = 0;
    sf::Vector2f pointer_;
    sf::Vector2f target_;
    sf::Vector2f corner_;
    float snapDistance_ = 1.f;
    float approachFactor_ = 0.02f;
};

} // namespace orane
