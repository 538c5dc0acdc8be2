#pragma once

#include "factflow.hpp"
#include "factregion.hpp"
#include "scenemanager/story.hpp"

#include <SFML/System/String.hpp>

#include <cstdint>
#include <vector>

namespace orane
{

/// The fewest clicks from "begin" to each scene of a solved FactFlow without ever learning one
/// fact, for the paths its errors show: through each stretch once, then from stop to stop.
class FactRoutes
{
public:
    /// `flow` must outlive the routes.
    FactRoutes(const FactFlow& flow, std::uint32_t fact);

    /// The labels a player clicks to show `scene` not knowing the fact, or with `andAfter`, to be
    /// offered its choices still not knowing it (so the scene must not set it). Empty when
    /// nothing is clicked, or when no such way exists.
    [[nodiscard]] std::vector<sf::String> shortestTo(Story::SceneId scene, bool andAfter) const;

private:
    static constexpr std::uint32_t FAR = FactRegion::FAR;
    static constexpr std::uint32_t NONE = FactRegion::NONE;

    void acrossStops();
    [[nodiscard]] std::uint32_t legClicks(const FactFlow::Leg& leg) const;
    /// The labels to the stop, then those of `leg` from it.
    void appendLabelsTo(std::uint32_t stop, std::vector<sf::String>& labels) const;
    void appendLeg(const FactFlow::Leg& leg, std::uint32_t node, std::vector<sf::String>& labels) const;

    const FactFlow& flow_;
    std::uint32_t fact_ = 0;
    std::vector<FactRegion::Routes> inRegion_;
    std::vector<std::uint32_t> toStop_;
    std::vector<std::uint32_t> viaLeg_;
    /// The fewest clicks to enter each stretch, and the entry that does.
    std::vector<std::uint32_t> toEntry_;
    std::vector<std::uint32_t> entryLeg_;
};

} // namespace orane
