#include <ryn/core/systemclock.hpp>

#include <SFML/System/Sleep.hpp>

namespace ryn
{

void SystemClock::restart()
{
    clock_.restart();
}

sf::Time SystemClock::elapsed()
{
    return clock_.getElapsedTime();
}

void SystemClock::sleep(sf::Time duration)
{
    sf::sleep(duration);
}

} // namespace ryn
