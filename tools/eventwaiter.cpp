#include "eventwaiter.hpp"

#include <algorithm>
#include <ctime>
#include <poll.h>

namespace orane
{

EventWaiter::EventWaiter(int fileDescriptor, Handler handler)
    : fileDescriptor_(fileDescriptor)
    , handler_(std::move(handler))
{}

void EventWaiter::restart()
{
    origin_ = clock_.getElapsedTime();
}

sf::Time EventWaiter::elapsed()
{
    return clock_.getElapsedTime() - origin_;
}

void EventWaiter::sleep(sf::Time duration)
{
    const sf::Time end = clock_.getElapsedTime() + duration;
    for (;;) {
        const sf::Time now = clock_.getElapsedTime();
        if (handlerDue_ && now >= *handlerDue_) {
            handlerDue_.reset();
            const std::optional<sf::Time> delay = handler_();
            if (delay)
                handlerDue_ = clock_.getElapsedTime() + *delay;
            // The handler has changed what is on screen: the loop draws it without waiting out
            // the rest of the pass.
            return;
        }
        if (now >= end)
            return;
        const sf::Time wait = handlerDue_ ? std::min(end, *handlerDue_) - now : end - now;
        if (waitForInput(wait)) {
            const std::optional<sf::Time> delay = handler_();
            handlerDue_.reset();
            if (delay)
                handlerDue_ = clock_.getElapsedTime() + *delay;
        }
    }
}

bool EventWaiter::waitForInput(sf::Time duration) const
{
    const sf::Int64 microseconds = duration.asMicroseconds();
    const timespec timeout{static_cast<time_t>(microseconds / 1'000'000),
                           static_cast<long>(microseconds % 1'000'000) * 1000};
    pollfd input{fileDescriptor_, POLLIN, 0};
    // A negative descriptor is skipped by ppoll, which then only sleeps.
    return ppoll(&input, 1, &timeout, nullptr) > 0 && (input.revents & POLLIN) != 0;
}

} // namespace orane
