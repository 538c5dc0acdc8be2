#include "storychecker.hpp"

#include "findingsjson.hpp"
#include "scene/diagnosticprinter.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "storygraph.hpp"
#include "storyplaces.hpp"
#include "tooltext.hpp"

#include <ryn/core/console.hpp>

#include <cmath>
#include <map>
#include <set>

namespace orane
{
namespace
{

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
{}

int StoryChecker::run()
{
    runChecks();
    if (format_ == FORMAT::JSON)
        ryn::console::writeLine(findingsToJson(records_, errors_, warnings_));
    else
        ryn::console::writeLine("orane-story check: " + plural(errors_, "error") + ", " + plural(warnings_, "warning"));
    return errors_ == 0 ? 0 : 1;
}

std::vector<StoryFinding> StoryChecker::findings()
{
    format_ = FORMAT::JSON;
    records_.clear();
    errors_ = 0;
    warnings_ = 0;
    runChecks();
    return std::move(records_);
}

void StoryChecker::runChecks()
{
    reportGameChecks();
    checkSuspectNames();
    checkDuplicates();
    checkReachability();
    checkPages();
    checkForAuthors();
}

// ---- What the game reports ----------------------------------------------------------------------

void StoryChecker::reportGameChecks()
{
    const Diagnostics& found = story_.diagnostics();
    for (std::size_t index = 0; index < found.size(); ++index) {
        if (index == story_.gameDiagnosticCount())
            note("the game stops at the first faulty file; it would report these next:");
        reportGameDiagnostic(found[index]);
    }
}

void StoryChecker::reportGameDiagnostic(const Diagnostic& diagnostic)
{
    const std::string place = storyplaces::placeOf(diagnostic, story_.directory());
    if (diagnostic.kind == Diagnostic::KIND::STORY_FILE_UNREADABLE) {
        const std::string message = "ERROR : cannot open this story file; the game stops loading here without a word.";
        StoryFinding record = recordAt(place, StoryFinding::SEVERITY::ERROR, "game");
        record.message = message;
        emit(place + ": " + message, std::move(record));
        ++errors_;
        return;
    }
    const std::vector<std::string> lines = DiagnosticPrinter::lines(diagnostic);
    const bool warns = diagnostic.severity == Diagnostic::SEVERITY::WARNING;
    // The loader's closing line only repeats that the scene above could not be read.
    const bool counts = !warns && diagnostic.kind != Diagnostic::KIND::SCENE_NOT_READ;
    if (format_ == FORMAT::JSON) {
        StoryFinding record = recordAt(place,
                                       warns    ? StoryFinding::SEVERITY::WARNING
                                       : counts ? StoryFinding::SEVERITY::ERROR
                                                : StoryFinding::SEVERITY::NOTE,
                                       "game");
        record.scene = diagnostic.scene;
        record.choice = diagnostic.choice;
        for (std::size_t index = 0; index < lines.size(); ++index)
            record.message += (index == 0 ? "" : "\n") + lines[index];
        records_.push_back(std::move(record));
    } else {
        for (std::size_t index = 0; index < lines.size(); ++index)
            ryn::console::writeLine(index == 0 ? place + ": " + lines[index] : lines[index]);
    }
    if (warns)
        ++warnings_;
    else if (counts)
        ++errors_;
}

// ---- What the game does not report ---------------------------------------------------------------

void StoryChecker::checkSuspectNames()
{
    const Story& story = story_.story();
    for (const sf::String& name : story.suspects()) {
        const std::string place = storyplaces::suspectPlace(story, name);
        if (name.isEmpty()) {
            warning(place, "a suspect with an empty name (a blank line?): the game looks for the file \".txt\"");
            continue;
        }
        if (name[0] == 0xFEFF)
            warning(place, "suspect " + quoted(name)
                               + " starts with a byte-order mark: save suspects.ini as UTF-8 without BOM");
        bool unsafe = name == sf::String(L".") || name == sf::String(L"..");
        for (sf::Uint32 c : name)
            unsafe = unsafe || isUnsafeInFileName(c);
        if (unsafe)
            warning(place, "suspect " + quoted(name) + " holds characters that are unsafe in a file name");
    }
}

void StoryChecker::checkDuplicates()
{
    const Story& story = story_.story();
    for (const Story::SkippedScene& skipped : story.skippedScenes()) {
        const std::string here = storyplaces::place(skipped.origin.file, skipped.fileLine, story_.directory());
        warning(here, "scene " + quoted(skipped.name) + " is defined twice: the game keeps the one at "
                          + scenePlace(skipped.name) + " and silently drops this one");
    }
    for (const sf::String& composed : {HUB_SCENE_NAME, ARREST_SCENE_NAME}) {
        if (story.findSource(composed) != nullptr)
            warning(scenePlace(composed),
                    "scene " + quoted(composed) + " is composed by the game: its text and choices here are replaced");
    }
}

void StoryChecker::checkReachability()
{
    if (story_.anyFileFaulty()) {
        note("scenes were not followed from \"begin\": a story file has a fault");
        return;
    }
    const Story& story = story_.story();
    const StoryGraph graph(story);
    if (graph.scenes().count(START_SCENE_NAME) == 0)
        return; // the game's own check says so
    const std::set<sf::String> reached = graph.reachableFrom(START_SCENE_NAME);
    for (const auto& entry : story.scenes()) {
        const sf::String& name = entry.first;
        if (story.findSource(name) != nullptr && reached.count(name) == 0)
            warning(scenePlace(name),
                    "scene " + quoted(name) + " is never reached: no path from \"begin\" leads to it");
    }
    reportDeadEnds(graph, graph.reachingAnEnding());
}

void StoryChecker::reportDeadEnds(const StoryGraph& graph, const std::set<sf::String>& ending)
{
    // Scenes that cannot end and lead into one another are one finding: a loop, and the scenes
    // that lead only into it.
    const Story& story = story_.story();
    std::set<sf::String> stuck;
    for (const auto& entry : story.scenes()) {
        if (story.findSource(entry.first) != nullptr && ending.count(entry.first) == 0)
            stuck.insert(entry.first);
    }
    std::map<sf::String, sf::String> group;
    for (const sf::String& name : stuck)
        group[name] = name;
    const auto root = [&group](sf::String name) {
        while (group[name] != name)
            name = group[name];
        return name;
    };
    for (const StoryGraph::Edge& edge : graph.edges()) {
        if (stuck.count(edge.from) > 0 && stuck.count(edge.to) > 0)
            group[root(edge.from)] = root(edge.to);
    }
    std::map<sf::String, std::vector<sf::String>> members;
    std::vector<sf::String> firsts;
    for (const sf::String& name : graph.inPlayOrder(stuck)) {
        std::vector<sf::String>& scenes = members[root(name)];
        if (scenes.empty())
            firsts.push_back(root(name));
        scenes.push_back(name);
    }
    for (const sf::String& first : firsts) {
        const std::vector<sf::String>& scenes = members[first];
        if (scenes.size() == 1) {
            warning(scenePlace(scenes[0]), "no ending can be reached from scene " + quoted(scenes[0])
                                               + ": no path leads from it to \"end\" or \"game_over\"");
            continue;
        }
        std::string list;
        for (const sf::String& name : scenes)
            list += (list.empty() ? "" : ", ") + quoted(name);
        warning(scenePlace(scenes[0]),
                "no ending can be reached from scenes " + list
                    + ", in the order play meets them: no path leads from them to \"end\" or \"game_over\"");
    }
}

void StoryChecker::checkPages()
{
    if (measure_ == nullptr) {
        warning(story_.directory(), "pages and choice labels were not measured: " + unmeasuredReason_);
        return;
    }
    for (const auto& [name, scene] : story_.story().scenes()) {
        if (story_.story().findSource(name) != nullptr)
            checkScenePages(scene, scenePlace(name), false);
    }
    checkComposedPages();
}

void StoryChecker::checkScenePages(const Scene& scene, const std::string& place, bool composed)
{
    const sf::Vector2f area = measure_->writingArea();
    const std::string what = composed ? "the " + utf8(scene.name) + " scene" : "scene " + quoted(scene.name);
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
        const std::string labelPlace =
            !composed && !scene.name.isEmpty()
                ? storyplaces::choicePlace(story_.story(), scene.name, index, story_.directory())
                : place;
        warning(labelPlace, "choice " + std::to_string(index) + " of " + what + ", " + quoted(labels[index]) + ", is "
                                + pixels(width) + " wide as a button; Nathan's text column is " + pixels(area.x));
    }
}

void StoryChecker::checkComposedPages()
{
    // Only a story that leads to the hub gets the composed scenes; measure them at their
    // fullest: the first hub offers every suspect, the arrest scene every suspect and the retreat.
    const Story& story = story_.story();
    const StoryGraph graph(story);
    if (graph.scenes().count(HUB_SCENE_NAME) == 0)
        return;
    std::map<sf::String, bool> noneVisited;
    std::map<sf::String, bool> allVisited;
    for (const sf::String& suspect : story.suspects()) {
        noneVisited.emplace(suspect, false);
        allVisited.emplace(suspect, true);
    }
    const auto storedOrEmpty = [&story](const sf::String& name) {
        const Scene* stored = story.findScene(name);
        return stored == nullptr ? Scene() : *stored;
    };
    Scene hub = storedOrEmpty(HUB_SCENE_NAME);
    composeHub(hub, noneVisited, false);
    hub.name = HUB_SCENE_NAME;
    Scene arrest = storedOrEmpty(ARREST_SCENE_NAME);
    composeArrest(arrest, allVisited);
    arrest.name = ARREST_SCENE_NAME;
    const std::string suspects = story_.suspectsPath();
    checkScenePages(hub, suspects, true);
    checkScenePages(arrest, suspects, true);
}

std::string StoryChecker::scenePlace(const sf::String& sceneName) const
{
    return storyplaces::scenePlace(story_.story(), sceneName, story_.directory());
}

void StoryChecker::warning(const std::string& place, const std::string& message)
{
    StoryFinding record = recordAt(place, StoryFinding::SEVERITY::WARNING, "story");
    record.message = message;
    emit(place + ": warning: " + message, std::move(record));
    ++warnings_;
}

void StoryChecker::note(const std::string& message)
{
    StoryFinding record;
    record.severity = StoryFinding::SEVERITY::NOTE;
    record.kind = "story";
    record.message = message;
    emit("note: " + message, std::move(record));
}

void StoryChecker::checkForAuthors()
{
    if (!authorOptions_.has_value())
        return;
    const Story& loaded = story_.story();
    AuthorStory story;
    story.story = story_.loads() ? &loaded : nullptr;
    story.suspects = loaded.suspects();
    if (sources_ != nullptr)
        story.sources = *sources_;
    else
        story.sources = readSourceTexts(story_.directory(), story.suspects);
    story.directory = story_.directory();
    for (StoryFinding& finding : runAuthorChecks(story, *authorOptions_)) {
        if (finding.severity == StoryFinding::SEVERITY::ERROR)
            ++errors_;
        else if (finding.severity == StoryFinding::SEVERITY::WARNING)
            ++warnings_;
        const std::string text = formatFinding(finding);
        emit(text, std::move(finding));
    }
}

void StoryChecker::emit(const std::string& text, StoryFinding record)
{
    if (format_ == FORMAT::TEXT)
        ryn::console::writeLine(text);
    else
        records_.push_back(std::move(record));
}

StoryFinding StoryChecker::recordAt(const std::string& place, StoryFinding::SEVERITY severity, const std::string& kind)
{
    StoryFinding record;
    record.severity = severity;
    record.kind = kind;
    record.file = place;
    const std::size_t colon = place.rfind(':');
    if (colon != std::string::npos && colon + 1 < place.size()
        && place.find_first_not_of("0123456789", colon + 1) == std::string::npos) {
        record.file = place.substr(0, colon);
        record.line = std::stoul(place.substr(colon + 1));
    }
    return record;
}

} // namespace orane
