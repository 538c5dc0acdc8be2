#pragma once

#include "previewplace.hpp"

#include <cstddef>
#include <vector>

namespace orane
{

/// The scenes the preview has shown since the last restart from "begin", in order, each with
/// the place play stood at on reaching it (its stop). The notebook holds one spread per scene,
/// from the stop it was opened at: a reload opens it again at the stop of the spread in view,
/// "back" at the stop before.
class SceneTrail
{
public:
    /// The notebook is opened at `place` as stop `stop` (at most stopCount()): the stops from
    /// there on are forgotten, those before it stay for "back".
    void openAt(std::size_t stop, const PreviewPlace& place);
    /// A scene was written into the notebook, with the suspects investigated at that point. The
    /// first one after openAt takes the place opened at.
    void sceneShown(const sf::String& scene, const std::vector<sf::String>& investigated);

    [[nodiscard]] std::size_t stopCount() const { return stops_.size(); }
    /// The stop of the notebook's spread `spreadIndex` (0 for its first), or the last stop when
    /// the notebook holds fewer; needs a stop.
    [[nodiscard]] std::size_t stopOfSpread(std::size_t spreadIndex) const;
    [[nodiscard]] const PreviewPlace& place(std::size_t stop) const { return stops_[stop]; }

private:
    std::vector<PreviewPlace> stops_;
    std::size_t firstSpread_ = 0;
    PreviewPlace opening_;
    bool opened_ = false;
};

} // namespace orane
