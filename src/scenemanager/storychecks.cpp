#include "scenemanager/storychecks.hpp"

#include "scene/storytext.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"

#include <ryn/core/console.hpp>

#include <algorithm>
#include <unordered_set>

namespace orane
{
namespace
{

using KIND = Diagnostic::KIND;

std::string quoted(const sf::String& text)
{
    return "\"" + ryn::console::toUtf8(text.toWideString()) + "\"";
}

Diagnostic storyFault(KIND kind, std::string message)
{
    Diagnostic diagnostic;
    diagnostic.kind = kind;
    diagnostic.message = std::move(message);
    return diagnostic;
}

/// The record placed at `line` of the file of `scene`, when a story file defined it.
Diagnostic sceneFault(const Story& story, const sf::String& scene, KIND kind, std::string message,
                      SourceLine SceneSource::*line = &SceneSource::scene)
{
    Diagnostic diagnostic = storyFault(kind, std::move(message));
    diagnostic.scene = scene;
    if (const SceneSource* source = story.findSource(scene)) {
        diagnostic.file = story.pathOf(*source);
        diagnostic.line = (source->*line).line;
        diagnostic.fileLine = (source->*line).fileLine;
    }
    return diagnostic;
}

Diagnostic suspectFault(const Story& story, const sf::String& suspect, std::string message)
{
    Diagnostic diagnostic = storyFault(KIND::SUSPECT_SCENE_MISSING, std::move(message));
    diagnostic.file = story.suspectsFile();
    diagnostic.fileLine = story.suspectFileLine(suspect);
    return diagnostic;
}

} // namespace

bool StoryChecks::checkLinks(const Story& story, const SceneIndex& index, Diagnostics& diagnostics)
{
    bool allFound = true;
    const auto leadsSomewhere = [&index](const sf::String& target) {
        return isSpecialSceneName(target) || index.find(viewOf(target)) != nullptr;
    };
    for (const SceneIndex::Entry* entry : index.entries()) {
        const auto& [key, scene] = *entry;
        if (!scene.forward.isEmpty() && !leadsSomewhere(scene.forward)) {
            diagnostics.push_back(
                sceneFault(story, key, KIND::BROKEN_FORWARD,
                           "Scene " + quoted(key) + " forwards to non-existing scene " + quoted(scene.forward) + ".",
                           &SceneSource::forward));
            allFound = false;
        }
        for (std::size_t choice = 0; choice < scene.choices.size(); ++choice) {
            const sf::String& target = scene.choices[choice].nextSceneName;
            if (leadsSomewhere(target))
                continue;
            Diagnostic broken = sceneFault(story, key, KIND::BROKEN_CHOICE,
                                           "Scene " + quoted(key) + " choice " + std::to_string(choice)
                                               + " points to non-existing scene " + quoted(target) + ".");
            broken.choice = choice;
            const SceneSource* source = story.findSource(key);
            if (source != nullptr && choice < source->choices.size()) {
                broken.line = source->choices[choice].target.line;
                broken.fileLine = source->choices[choice].target.fileLine;
            }
            diagnostics.push_back(std::move(broken));
            allFound = false;
        }
    }
    return allFound;
}

bool StoryChecks::checkPlayability(const Story& story, const SceneIndex& index, Diagnostics& diagnostics)
{
    const bool startFound = checkStartScene(story, diagnostics);
    const bool suspectsPlayable = checkSuspectScenes(story, index, diagnostics);
    const bool forwardsEnd = checkForwardCycles(story, index, diagnostics);
    return startFound && suspectsPlayable && forwardsEnd;
}

bool StoryChecks::checkStartScene(const Story& story, Diagnostics& diagnostics)
{
    if (story.scenes().count(START_SCENE_NAME) > 0)
        return true;
    diagnostics.push_back(storyFault(KIND::NO_START_SCENE, "No scene named " + quoted(START_SCENE_NAME)
                                                               + " was found. The story starts with that scene."));
    return false;
}

bool StoryChecks::canReachHub(const SceneIndex& index)
{
    const CodePointView hub = viewOf(HUB_SCENE_NAME);
    const CodePointView arrest = viewOf(ARREST_SCENE_NAME);
    const auto leadsToHub = [hub, arrest](const sf::String& target) {
        const CodePointView name = viewOf(target);
        return name == hub || name == arrest;
    };
    for (const SceneIndex::Entry* entry : index.entries()) {
        const Scene& scene = entry->second;
        if (leadsToHub(scene.forward))
            return true;
        for (const Choice& choice : scene.choices) {
            if (leadsToHub(choice.nextSceneName))
                return true;
        }
    }
    return false;
}

bool StoryChecks::checkSuspectScenes(const Story& story, const SceneIndex& index, Diagnostics& diagnostics)
{
    // Suspects are only ever offered by the hub (the arrest scene leads back to it).
    if (!canReachHub(index))
        return true;
    bool playable = true;
    for (const sf::String& name : story.suspects()) {
        if (containsToken(name, SUSPECT_BEGIN_SUFFIX)) {
            Diagnostic ambiguous = suspectFault(story, name,
                                                "Suspect " + quoted(name) + " has " + quoted(SUSPECT_BEGIN_SUFFIX)
                                                    + " in its name, so the hub can't tell which suspect is picked.");
            ambiguous.kind = KIND::SUSPECT_NAME_HOLDS_BEGIN;
            diagnostics.push_back(std::move(ambiguous));
            playable = false;
        }
        for (const sf::String& suffix : {SUSPECT_BEGIN_SUFFIX, SUSPECT_ARREST_SUFFIX}) {
            if (story.scenes().count(name + suffix) == 0) {
                diagnostics.push_back(suspectFault(
                    story, name, "Suspect " + quoted(name) + " has no scene " + quoted(name + suffix) + "."));
                playable = false;
            }
        }
    }
    return playable;
}

bool StoryChecks::checkForwardCycles(const Story& story, const SceneIndex& index, Diagnostics& diagnostics)
{
    // Each scene without choices has one successor, so every walk ends at a scene with choices,
    // at a special scene, or in a cycle; each cycle is reported once, from where it is entered.
    using Entry = SceneIndex::Entry;
    const auto successor = [&index](const Entry& entry) -> const Entry* {
        const Scene& scene = entry.second;
        if (!scene.choices.empty() || scene.forward.isEmpty() || isSpecialSceneName(scene.forward))
            return nullptr;
        return index.find(viewOf(scene.forward));
    };
    std::unordered_set<const Entry*> done;
    bool noCycle = true;
    for (const Entry* start : index.entries()) {
        const Entry& entry = *start;
        if (successor(entry) == nullptr)
            continue;
        std::vector<const Entry*> path;
        std::unordered_set<const Entry*> onPath;
        const Entry* step = &entry;
        for (const Entry* next = successor(*step); next != nullptr && done.count(step) == 0 && onPath.count(step) == 0;
             next = successor(*step)) {
            path.push_back(step);
            onPath.insert(step);
            step = next;
        }
        if (onPath.count(step) > 0) {
            std::string cycle;
            for (auto member = std::find(path.begin(), path.end(), step); member != path.end(); ++member)
                cycle += quoted((*member)->first) + " -> ";
            diagnostics.push_back(sceneFault(story, step->first, KIND::FORWARD_CYCLE,
                                             "Scenes " + cycle + quoted(step->first)
                                                 + " forward to one another without any choice, so play would "
                                                   "never stop."));
            noCycle = false;
        }
        done.insert(path.begin(), path.end());
        done.insert(&entry);
    }
    return noCycle;
}

} // namespace orane
