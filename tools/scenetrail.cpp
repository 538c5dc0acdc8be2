#include "scenetrail.hpp"

#include "scene/scene.hpp"

#include <algorithm>
#include <utility>

namespace orane
{

void SceneTrail::openAt(std::size_t stop, const PreviewPlace& place)
{
    // `place` may be one of the stops cut below: kept before the cut.
    PreviewPlace opening = place;
    stops_.resize(std::min(stop, stops_.size()));
    firstSpread_ = stops_.size();
    opening_ = std::move(opening);
    opened_ = true;
}

void SceneTrail::sceneShown(const sf::String& scene, const std::vector<sf::String>& investigated)
{
    if (opened_) {
        opened_ = false;
        stops_.push_back(opening_);
        stops_.back().scene = scene;
        return;
    }
    PreviewPlace place;
    place.scene = scene;
    place.investigated = investigated;
    if (!stops_.empty()) {
        // The hub, once shown, is seen for good; nothing else changes that.
        const PreviewPlace& previous = stops_.back();
        place.hubSeen = previous.hubSeen || previous.scene == HUB_SCENE_NAME;
    }
    stops_.push_back(std::move(place));
}

std::size_t SceneTrail::stopOfSpread(std::size_t spreadIndex) const
{
    return std::min(firstSpread_ + spreadIndex, stops_.size() - 1);
}

} // namespace orane
