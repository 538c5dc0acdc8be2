#pragma once

#include "scene/diagnostic.hpp"
#include "scenemanager/sceneindex.hpp"
#include "scenemanager/story.hpp"

namespace orane
{

/// The checks the game runs over a whole story once every file is read. Each adds its records
/// to `diagnostics`, in the order the game prints them, and answers true when it found none.
/// `index` indexes story.scenes().
class StoryChecks
{
public:
    /// Every FORWARD link and choice that names neither a stored nor a special scene, in the
    /// order of scene names; placed at the FORWARD or "->" line.
    static bool checkLinks(const Story& story, const SceneIndex& index, Diagnostics& diagnostics);

    /// What would stop play later: no start scene; when some link leads to the hub or the
    /// arrest scene, a suspect without its "_begin" or "_arrest" scene or whose name the hub
    /// cannot tell apart; FORWARD cycles among scenes without choices.
    static bool checkPlayability(const Story& story, const SceneIndex& index, Diagnostics& diagnostics);

private:
    static bool checkStartScene(const Story& story, Diagnostics& diagnostics);
    static bool canReachHub(const SceneIndex& index);
    static bool checkSuspectScenes(const Story& story, const SceneIndex& index, Diagnostics& diagnostics);
    static bool checkForwardCycles(const Story& story, const SceneIndex& index, Diagnostics& diagnostics);
};

} // namespace orane
