#include "storychecker.hpp"

#include "storygraph.hpp"
#include "tooltext.hpp"

#include "scenemanager/fixedscenes.hpp"

#include <ryn/core/console.hpp>

#include <cmath>
#include <regex>

namespace orane
{
namespace
{

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

/// Characters that cannot stand in a file name on one of the systems players use.
bool isUnsafeInFileName(sf::Uint32 c)
{
    static const std::u32string unsafe = U"/\\:*?\"<>|";
    return c < 0x20 || c == 0x7F || unsafe.find(static_cast<char32_t>(c)) != std::u32string::npos;
}

std::string pixels(float value)
{
    return std::to_string(static_cast<long>(std::ceil(value))) + " px";
}

std::string plural(std::size_t count, const std::string& word)
{
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

} // namespace

StoryChecker::StoryChecker(const LoadedStory& story, PageMeasure* measure, std::string unmeasuredReason)
    : story_(story)
    , measure_(measure)
    , unmeasuredReason_(std::move(unmeasuredReason))
{
}

int StoryChecker::run()
{
    reportGameChecks();
    checkSuspectNames();
    checkDuplicates();
    checkReachability();
    checkPages();
    ryn::console::writeLine("orane-story check: " + plural(errors_, "error") + ", " + plural(warnings_, "warning"));
    return errors_ == 0 ? 0 : 1;
}

// ---- What the game reports ----------------------------------------------------------------------

void StoryChecker::reportGameChecks()
{
    if (story_.loads())
        return;
    const LoadedStory::FileReport* failed = story_.firstFailedFile();
    if (story_.files().empty()) {
        reportGameLines(story_.gameReport(), story_.suspectsPath());
        return;
    }
    if (failed != nullptr && failed->status == LoadedStory::FileReport::STATUS::CANNOT_OPEN)
        reportFileThatCannotOpen(*failed);
    else
        reportGameLines(story_.gameReport(), failed != nullptr ? failed->path : std::string());
    reportFilesTheGameNeverRead();
}

void StoryChecker::reportGameLines(const std::vector<std::string>& lines, const std::string& file)
{
    for (const std::string& line : lines) {
        const std::string place = placeOfGameLine(line, file);
        ryn::console::writeLine(place.empty() ? line : place + ": " + line);
        // The loader's closing line only repeats that the scene above could not be read.
        if ((startsWith(line, "ERROR") && !startsWith(line, "ERROR : couldn't deserialize")) || startsWith(line, "FATAL"))
            ++errors_;
    }
}

void StoryChecker::reportFileThatCannotOpen(const LoadedStory::FileReport& file)
{
    ryn::console::writeLine(file.path + ": ERROR : cannot open this story file; the game stops loading here without a word.");
    ++errors_;
}

void StoryChecker::reportFilesTheGameNeverRead()
{
    const LoadedStory::FileReport* failed = story_.firstFailedFile();
    bool afterFailure = false;
    bool noted = false;
    for (const LoadedStory::FileReport& file : story_.files()) {
        if (&file == failed) {
            afterFailure = true;
            continue;
        }
        if (!afterFailure || file.status == LoadedStory::FileReport::STATUS::READ)
            continue;
        if (!noted) {
            note("the game stops at the first faulty file; it would report these next:");
            noted = true;
        }
        if (file.status == LoadedStory::FileReport::STATUS::CANNOT_OPEN)
            reportFileThatCannotOpen(file);
        else
            reportGameLines(file.messages, file.path);
    }
}

std::string StoryChecker::placeOfGameLine(const std::string& line, const std::string& file)
{
    static const std::regex numbered(R"(^ERROR (?:\(line |: couldn't deserialize scene starting at line )(\d+))");
    static const std::regex aboutChoice(R"re(^ERROR : Scene "([^"]*)" choice (\d+))re");
    static const std::regex aboutScene(R"(^ERROR : Scenes? "([^"]*)\")");
    static const std::regex aboutSuspect(R"(^ERROR : Suspect "([^"]*)\")");
    std::smatch match;
    if (std::regex_search(line, match, numbered) && !file.empty())
        return places_.place(file, static_cast<std::uint32_t>(std::stoul(match[1].str())));
    if (std::regex_search(line, match, aboutChoice))
        return choicePlaceOf(sf::String::fromUtf8(match[1].first, match[1].second), std::stoul(match[2].str()));
    if (std::regex_search(line, match, aboutScene))
        return scenePlace(sf::String::fromUtf8(match[1].first, match[1].second));
    if (std::regex_search(line, match, aboutSuspect))
        return places_.suspectPlace(story_.suspectsPath(), sf::String::fromUtf8(match[1].first, match[1].second));
    if (startsWith(line, "ERROR") || startsWith(line, "FATAL"))
        return file.empty() ? story_.directory() : file;
    return {};
}

// ---- What the game does not report ---------------------------------------------------------------

void StoryChecker::checkSuspectNames()
{
    for (const auto& suspect : story_.game().suspectsVisited()) {
        const sf::String& name = suspect.first;
        const std::string place = places_.suspectPlace(story_.suspectsPath(), name);
        if (name.isEmpty()) {
            warning(place, "a suspect with an empty name (a blank line?): the game looks for the file \".txt\"");
            continue;
        }
        if (name[0] == 0xFEFF)
            warning(place, "suspect " + quoted(name) + " starts with a byte-order mark: save suspects.ini as UTF-8 without BOM");
        bool unsafe = name == sf::String(L".") || name == sf::String(L"..");
        for (sf::Uint32 c : name)
            unsafe = unsafe || isUnsafeInFileName(c);
        if (unsafe)
            warning(place, "suspect " + quoted(name) + " holds characters that are unsafe in a file name");
    }
}

void StoryChecker::checkDuplicates()
{
    const SceneManager& scenes = story_.allScenes();
    for (const SceneManager::SkippedScene& skipped : scenes.skippedScenes()) {
        const std::string here = places_.place(skipped.origin.file, skipped.origin.line);
        warning(here, "scene " + quoted(skipped.name) + " is defined twice: the game keeps the one at "
                          + scenePlace(skipped.name) + " and silently drops this one");
    }
    for (const sf::String& composed : {SPECIAL_SCENE_NAMES[2], SPECIAL_SCENE_NAMES[3]}) {
        if (scenes.findOrigin(composed).has_value())
            warning(scenePlace(composed), "scene " + quoted(composed)
                                              + " is composed by the game: its text and choices here are replaced");
    }
}

void StoryChecker::checkReachability()
{
    if (story_.anyFileFaulty()) {
        note("scenes were not followed from \"begin\": a story file has a fault");
        return;
    }
    const SceneManager& all = story_.allScenes();
    const StoryGraph graph(all.scenes(), story_.game().suspectsVisited());
    if (graph.scenes().count(START_SCENE_NAME) == 0)
        return; // the game's own check says so
    const std::set<sf::String> reached = graph.reachableFrom(START_SCENE_NAME);
    const std::set<sf::String> ending = graph.reachingAnEnding();
    for (const auto& entry : all.scenes()) {
        const sf::String& name = entry.first;
        if (!all.findOrigin(name).has_value())
            continue;
        if (reached.count(name) == 0)
            warning(scenePlace(name), "scene " + quoted(name) + " is never reached: no path from \"begin\" leads to it");
        if (ending.count(name) == 0)
            warning(scenePlace(name), "no ending can be reached from scene " + quoted(name)
                                          + ": no path leads from it to \"end\" or \"game_over\"");
    }
}

void StoryChecker::checkPages()
{
    if (measure_ == nullptr) {
        warning(story_.directory(), "pages and choice labels were not measured: " + unmeasuredReason_);
        return;
    }
    const SceneManager& all = story_.allScenes();
    for (const auto& [name, scene] : all.scenes()) {
        const std::optional<SceneManager::SceneOrigin> origin = all.findOrigin(name);
        if (origin.has_value())
            checkScenePages(scene, places_.place(origin->file, origin->line), {});
    }
    checkComposedPages();
}

void StoryChecker::checkScenePages(const Scene& scene, const std::string& place, const std::string& suspectsPlace)
{
    const sf::Vector2f area = measure_->writingArea();
    const std::string what = suspectsPlace.empty() ? "scene " + quoted(scene.name) : "the " + utf8(scene.name) + " scene";
    const float left = measure_->textBottom(scene.oraneText, PageWriter::ORANE);
    if (left > area.y)
        warning(place, "Orane's page of " + what + " overflows: her text reaches " + pixels(left)
                           + " down, the page holds " + pixels(area.y));

    std::vector<sf::String> labels;
    for (const Choice& choice : scene.choices)
        labels.push_back(choice.briefDescription);
    float right = measure_->textBottom(scene.nathanText, PageWriter::NATHAN);
    std::string how = "his text";
    for (std::size_t index = 0; index < scene.choices.size(); ++index) {
        const sf::String page = measure_->withAnswer(scene.nathanText, scene.choices[index].longDescription);
        const float bottom = measure_->buttonsBottom(page, labels);
        if (bottom > right) {
            right = bottom;
            how = "his text with the answer of choice " + std::to_string(index) + " "
                  + quoted(oneLine(scene.choices[index].briefDescription)) + " and " + plural(labels.size(), "button")
                  + " under it";
        }
    }
    if (right > area.y)
        warning(place, "Nathan's page of " + what + " overflows: " + how + " reaches " + pixels(right)
                           + " down, the page holds " + pixels(area.y));

    for (std::size_t index = 0; index < labels.size(); ++index) {
        const float width = measure_->buttonWidth(labels[index]);
        if (width <= area.x)
            continue;
        const std::string labelPlace = suspectsPlace.empty() && !scene.name.isEmpty()
                                           ? choicePlaceOf(scene.name, index)
                                           : place;
        warning(labelPlace, "choice " + std::to_string(index) + " of " + what + ", " + quoted(labels[index])
                                + ", is " + pixels(width) + " wide as a button; Nathan's text column is "
                                + pixels(area.x));
    }
}

void StoryChecker::checkComposedPages()
{
    // Only a story that leads to the hub gets the composed scenes; measure them at their
    // fullest: the first hub offers every suspect, the arrest scene every suspect and the retreat.
    const SceneManager& all = story_.allScenes();
    const StoryGraph graph(all.scenes(), story_.game().suspectsVisited());
    if (graph.scenes().count(SPECIAL_SCENE_NAMES[2]) == 0)
        return;
    std::map<sf::String, bool> noneVisited = story_.game().suspectsVisited();
    std::map<sf::String, bool> allVisited = noneVisited;
    for (auto& suspect : allVisited)
        suspect.second = true;
    const auto storedOrEmpty = [&all](const sf::String& name) {
        const auto found = all.scenes().find(name);
        return found == all.scenes().end() ? Scene() : found->second;
    };
    Scene hub = storedOrEmpty(SPECIAL_SCENE_NAMES[2]);
    composeHub(hub, noneVisited, false);
    hub.name = SPECIAL_SCENE_NAMES[2];
    Scene arrest = storedOrEmpty(SPECIAL_SCENE_NAMES[3]);
    composeArrest(arrest, allVisited);
    arrest.name = SPECIAL_SCENE_NAMES[3];
    const std::string suspects = story_.suspectsPath();
    checkScenePages(hub, suspects, suspects);
    checkScenePages(arrest, suspects, suspects);
}

std::string StoryChecker::scenePlace(const sf::String& sceneName)
{
    const std::optional<SceneManager::SceneOrigin> origin = story_.allScenes().findOrigin(sceneName);
    if (!origin.has_value())
        return story_.directory();
    return places_.place(origin->file, origin->line);
}

std::string StoryChecker::choicePlaceOf(const sf::String& sceneName, std::size_t choiceIndex)
{
    const std::optional<SceneManager::SceneOrigin> origin = story_.allScenes().findOrigin(sceneName);
    if (!origin.has_value())
        return story_.directory();
    return places_.choicePlace(origin->file, origin->line, choiceIndex);
}

void StoryChecker::warning(const std::string& place, const std::string& message)
{
    ryn::console::writeLine(place + ": warning: " + message);
    ++warnings_;
}

void StoryChecker::note(const std::string& message)
{
    ryn::console::writeLine("note: " + message);
}

} // namespace orane
