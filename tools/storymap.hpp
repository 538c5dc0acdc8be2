#pragma once

#include "loadedstory.hpp"

#include <string>

namespace orane
{

/// The story drawn as a Graphviz graph: one box per scene, grouped by the file it is written
/// in; FORWARD links dashed, choices labelled with what the player picks; the hub, the arrest
/// scene and the two endings drawn apart; scenes no path reaches greyed, links to missing
/// scenes in red.
class StoryMap
{
public:
    explicit StoryMap(const LoadedStory& story);

    /// The map in the DOT language.
    [[nodiscard]] std::string dot() const;

private:
    const LoadedStory& story_;
};

} // namespace orane
