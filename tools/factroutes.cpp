#include "factroutes.hpp"

#include "choicelabel.hpp"

#include <functional>
#include <queue>
#include <utility>

namespace orane
{

FactRoutes::FactRoutes(const FactFlow& flow, std::uint32_t fact)
    : flow_(flow)
    , fact_(fact)
{
    for (const auto& region : flow_.regions_)
        inRegion_.push_back(region->routesWithout(fact_));
    acrossStops();
}

std::uint32_t FactRoutes::legClicks(const FactFlow::Leg& leg) const
{
    // Leaving "begin" takes no click; every other leg starts with a choice at the hub or the
    // arrest scene.
    const std::uint32_t choice = leg.from == 0 ? 0 : 1;
    if (leg.region == NONE)
        return choice;
    const std::uint32_t inside = inRegion_[leg.region].clicks[leg.exit];
    return inside == FAR ? FAR : choice + inside;
}

void FactRoutes::acrossStops()
{
    const std::size_t stops = flow_.stops_.size();
    toStop_.assign(stops, FAR);
    viaLeg_.assign(stops, NONE);
    toEntry_.assign(flow_.regions_.size(), FAR);
    entryLeg_.assign(flow_.regions_.size(), NONE);
    if (stops == 0)
        return;
    using Queued = std::pair<std::uint32_t, std::uint32_t>;
    std::priority_queue<Queued, std::vector<Queued>, std::greater<>> work;
    toStop_[0] = 0;
    work.emplace(0, 0);
    while (!work.empty()) {
        const auto [clicks, stop] = work.top();
        work.pop();
        if (clicks != toStop_[stop])
            continue;
        const FactFlow::Stop& from = flow_.stops_[stop];
        for (std::uint32_t index = from.firstEntry; index < from.firstEntry + from.entryCount; ++index) {
            const std::uint32_t region = flow_.entries_[index].region;
            const std::uint32_t entering = clicks + (stop == 0 ? 0 : 1);
            if (entering < toEntry_[region]) {
                toEntry_[region] = entering;
                entryLeg_[region] = index;
            }
        }
        for (std::uint32_t index = from.firstLeg; index < from.firstLeg + from.legCount; ++index) {
            const FactFlow::Leg& leg = flow_.legs_[index];
            const std::uint32_t cost = legClicks(leg);
            if (cost == FAR || clicks + cost >= toStop_[leg.to])
                continue;
            toStop_[leg.to] = clicks + cost;
            viaLeg_[leg.to] = index;
            work.emplace(clicks + cost, leg.to);
        }
    }
}

std::vector<sf::String> FactRoutes::shortestTo(Story::SceneId scene, bool andAfter) const
{
    if (andAfter && flow_.facts_.setBy(scene).contains(fact_))
        return {};
    std::uint32_t best = FAR, bestRegion = NONE, bestNode = NONE;
    for (std::uint32_t region = 0; region < flow_.regions_.size(); ++region) {
        if (toEntry_[region] == FAR)
            continue;
        const FactRegion& stretch = *flow_.regions_[region];
        for (std::uint32_t node = 0; node < stretch.size(); ++node) {
            const std::uint32_t inside = inRegion_[region].clicks[node];
            if (stretch.sceneOf(node) != scene || inside == FAR || toEntry_[region] + inside >= best)
                continue;
            best = toEntry_[region] + inside;
            bestRegion = region;
            bestNode = node;
        }
    }
    std::vector<sf::String> labels;
    if (bestRegion != NONE)
        appendLeg(flow_.entries_[entryLeg_[bestRegion]], bestNode, labels);
    return labels;
}

void FactRoutes::appendLabelsTo(std::uint32_t stop, std::vector<sf::String>& labels) const
{
    if (viaLeg_[stop] == NONE)
        return;
    const FactFlow::Leg& leg = flow_.legs_[viaLeg_[stop]];
    appendLeg(leg, leg.exit, labels);
}

void FactRoutes::appendLeg(const FactFlow::Leg& leg, std::uint32_t node, std::vector<sf::String>& labels) const
{
    appendLabelsTo(leg.from, labels);
    if (leg.from != 0)
        labels.push_back(choiceLabel(flow_.story_, flow_.stops_[leg.from].position, leg.choice));
    if (leg.region != NONE) {
        for (sf::String& label : flow_.regions_[leg.region]->labelsTo(inRegion_[leg.region], node))
            labels.push_back(std::move(label));
    }
}

} // namespace orane
