#pragma once

#include <SFML/System/Time.hpp>

#include <optional>

namespace orane
{

/// When to read the story again after its files changed, and when a fault found there may be
/// shown. Editors save in several steps (truncate then write, write a copy then rename it,
/// delete then create): the story is read once the files have been quiet for a moment, and a
/// fault is shown only if nothing changes for a while longer, since it may come from a file
/// caught half written. A story that reads well is shown at once. Times are on any one clock.
class ReloadTimer
{
public:
    /// Quiet needed after the last change before reading the story.
    static constexpr sf::Int64 QUIET_MICROSECONDS = 8'000;
    /// Quiet needed after the last change before a fault found is shown.
    static constexpr sf::Int64 FAULT_GRACE_MICROSECONDS = 300'000;

    /// A story file changed at `now`; a fault held back is dropped (a newer reading will judge).
    void noteChange(sf::Time now);
    /// True once per burst of changes, when they have been quiet for long enough.
    [[nodiscard]] bool takeReload(sf::Time now);
    /// The reading just made found a fault: it waits for the grace to run out.
    void holdFault();
    /// True once, when a fault held back may now be shown.
    [[nodiscard]] bool takeFault(sf::Time now);
    /// How long until one of the two answers above turns true; empty while nothing waits.
    [[nodiscard]] std::optional<sf::Time> untilDue(sf::Time now) const;

private:
    sf::Time lastChange_;
    bool reloadPending_ = false;
    bool faultHeld_ = false;
};

} // namespace orane
