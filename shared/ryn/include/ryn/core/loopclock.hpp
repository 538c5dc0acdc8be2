#pragma once

#include <SFML/System/Time.hpp>

namespace ryn
{

/// Where the main loop takes its time from. The program runs on real time; tests drive a
/// clock of their own so that the fixed-step arithmetic can be checked without waiting.
class LoopClock
{
public:
    virtual ~LoopClock() = default;

    /// Starts counting from zero.
    virtual void restart() = 0;
    /// Time since the last restart.
    virtual sf::Time elapsed() = 0;
    /// Waits, so that the loop does not spin while nothing is due.
    virtual void sleep(sf::Time duration) = 0;
};

} // namespace ryn
