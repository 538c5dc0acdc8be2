#include "reloadtimer.hpp"

#include <algorithm>

namespace orane
{
namespace
{

const sf::Time QUIET = sf::microseconds(ReloadTimer::QUIET_MICROSECONDS);
const sf::Time FAULT_GRACE = sf::microseconds(ReloadTimer::FAULT_GRACE_MICROSECONDS);

} // namespace

void ReloadTimer::noteChange(sf::Time now)
{
    lastChange_ = now;
    reloadPending_ = true;
    faultHeld_ = false;
}

bool ReloadTimer::takeReload(sf::Time now)
{
    if (!reloadPending_ || now - lastChange_ < QUIET)
        return false;
    reloadPending_ = false;
    return true;
}

void ReloadTimer::holdFault()
{
    faultHeld_ = true;
}

bool ReloadTimer::takeFault(sf::Time now)
{
    if (!faultHeld_ || reloadPending_ || now - lastChange_ < FAULT_GRACE)
        return false;
    faultHeld_ = false;
    return true;
}

std::optional<sf::Time> ReloadTimer::untilDue(sf::Time now) const
{
    if (reloadPending_)
        return std::max(sf::Time::Zero, lastChange_ + QUIET - now);
    if (faultHeld_)
        return std::max(sf::Time::Zero, lastChange_ + FAULT_GRACE - now);
    return std::nullopt;
}

} // namespace orane
