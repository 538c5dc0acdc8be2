#pragma once

#include <ryn/core/loopclock.hpp>

#include <SFML/System/Clock.hpp>

#include <functional>
#include <optional>

namespace orane
{

/// The main loop's real-time clock, whose waits between passes also watch a file descriptor:
/// what arrives there is handled at once, between two passes, instead of at the next update
/// step. The handler runs when the descriptor is readable and when the delay it last asked for
/// is over; it answers the next delay it wants, or nothing to be called only on input.
class EventWaiter : public ryn::LoopClock
{
public:
    using Handler = std::function<std::optional<sf::Time>()>;

    /// `fileDescriptor` may be -1: the waits are then plain sleeps, still cut short for the
    /// handler's delays.
    EventWaiter(int fileDescriptor, Handler handler);

    void restart() override;
    sf::Time elapsed() override;
    void sleep(sf::Time duration) override;

private:
    /// Waits up to `duration` for the descriptor; true when it is readable.
    bool waitForInput(sf::Time duration) const;

    int fileDescriptor_ = -1;
    Handler handler_;
    sf::Clock clock_;
    /// On clock_'s time (which restart does not move: it only sets origin_).
    std::optional<sf::Time> handlerDue_;
    sf::Time origin_;
};

} // namespace orane
