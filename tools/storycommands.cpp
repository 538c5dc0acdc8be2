#include "storycommands.hpp"

#include "authorchecks.hpp"
#include "factflow.hpp"
#include "loadedstory.hpp"
#include "pagemeasure.hpp"
#include "previewapp.hpp"
#include "previewoptions.hpp"
#include "spellingcheck.hpp"
#include "storychecker.hpp"
#include "storymap.hpp"
#include "storyplaces.hpp"
#include "storywalker.hpp"
#include "suspectsetproof.hpp"
#include "terminalplayer.hpp"
#include "tooltext.hpp"
#include "virtualdisplay.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

namespace orane
{
namespace
{

constexpr int EXIT_USAGE = 2;

const char* const USAGE =
    "usage: orane-story COMMAND DIR [options]\n"
    "  check DIR [OPTION...]          what the game reports on loading DIR, then warnings\n"
    "      --no-continuity --no-spelling --no-typography --no-glyphs --no-slips\n"
    "                                 leave out the facts' proofs, or a kind of prose check\n"
    "      --format=json              every finding as one JSON document\n"
    "  walk DIR                       explore every state play can reach\n"
    "  walk DIR --random N --seed S   N random playthroughs, the same for the same seed\n"
    "  graph DIR [-o FILE]            the story map: DOT on standard output, or FILE\n"
    "                                 (.dot, or .svg / .png drawn by Graphviz's dot)\n"
    "  play DIR                       play in the terminal; end of input ends the game\n"
    "  preview DIR [--scene NAME] [--investigated NAME,NAME] [--hub-seen]\n"
    "                                 the game's notebook at a scene, read again on every save\n"
    "  lsp                            the language server for editors, on standard input and output\n"
    "DIR is a stories directory such as resources/stories.";

std::string executablePath()
{
    char buffer[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

int check(const std::string& directory, AuthorCheckOptions options, StoryChecker::FORMAT format)
{
    const LoadedStory story(directory);
    const std::array<std::string, 2> fonts =
        PageMeasure::fontFiles(PageMeasure::fontDirectories(executableDirectory()));
    options.oraneFont = fonts[0];
    options.nathanFont = fonts[1];
    options.spellingCache = SpellingCheck::defaultCacheFile();
    VirtualDisplay display;
    PageMeasure measure;
    std::string reason;
    bool measured = false;
    if (!display.ensure())
        reason = display.error();
    else if (!measure.loadFonts(PageMeasure::fontDirectories(executableDirectory())))
        reason = measure.error();
    else
        measured = true;
    StoryChecker checker(story, measured ? &measure : nullptr, reason);
    checker.setAuthorOptions(options);
    checker.setFormat(format);
    return checker.run();
}

std::string labels(const std::vector<sf::String>& path)
{
    std::string text;
    for (const sf::String& label : path)
        text += (text.empty() ? "" : " > ") + quoted(oneLine(label));
    return text.empty() ? "(no choice)" : text;
}

bool storyLoads(const StoryWalker& walker, const std::string& directory)
{
    if (walker.loads())
        return true;
    for (const std::string& line : walker.loadReport())
        ryn::console::writeLine(line);
    ryn::console::writeLine("The story does not load; orane-story check " + directory + " tells where.");
    return false;
}

void reportEndings(const StoryWalker::Exploration& found)
{
    for (const sf::String& ending : {END_SCENE_NAME, GAME_OVER_SCENE_NAME}) {
        const auto paths = found.shortestPaths.find(ending);
        if (paths == found.shortestPaths.end()) {
            ryn::console::writeLine("ending " + quoted(ending) + ": never reached");
            continue;
        }
        ryn::console::writeLine("ending " + quoted(ending) + ": reached in " + std::to_string(found.endings.at(ending))
                                + " states; shortest path, " + std::to_string(paths->second.size())
                                + " choices: " + labels(paths->second));
    }
}

void reportDeadEnds(const StoryWalker& walker, const StoryWalker::Exploration& found)
{
    for (const StoryWalker::DeadEnd& deadEnd : found.deadEnds) {
        std::string scenes;
        for (const sf::String& scene : deadEnd.scenes)
            scenes += (scenes.empty() ? "" : ", ") + quoted(scene);
        const std::string place = storyplaces::scenePlace(walker.story(), deadEnd.scenes.front(), walker.directory());
        ryn::console::writeLine(
            place + ": error: no ending can be reached from scene" + (deadEnd.scenes.size() == 1 ? " " : "s ") + scenes
            + " (" + std::to_string(deadEnd.states) + (deadEnd.states == 1 ? " state" : " states") + "), first "
            + walker.describe(deadEnd.first) + "; reached by " + labels(deadEnd.path));
    }
}

void reportUntakenChoices(const StoryWalker& walker, const StoryWalker::Exploration& found)
{
    const Story& story = walker.story();
    for (const StoryWalker::ChoiceRef& choice : walker.untakenChoices(found)) {
        const Scene& scene = story.scenes().at(choice.scene);
        ryn::console::writeLine(storyplaces::choicePlace(story, choice.scene, choice.index, walker.directory())
                                + ": warning: choice " + std::to_string(choice.index) + " of scene "
                                + quoted(choice.scene) + ", "
                                + quoted(oneLine(scene.choices[choice.index].briefDescription)) + ", is never taken");
    }
}

/// The continuity proof over the annotated facts: prints its errors and the facts known at each
/// ending; answers how many errors it found.
std::size_t proveFacts(const StoryWalker& walker)
{
    const std::vector<sf::String>& suspects = walker.story().suspects();
    const std::vector<SourceText> sources = readSourceTexts(walker.directory(), suspects);
    FactFlow flow(walker.story(), sources);
    if (!flow.hasAnnotations())
        return 0;
    flow.solve();
    std::size_t errors = 0;
    std::vector<StoryFinding> findings = flow.findings();
    sortFindings(findings);
    for (const StoryFinding& finding : findings) {
        if (finding.severity == StoryFinding::SEVERITY::NOTE)
            continue;
        ryn::console::writeLine(formatFinding(finding));
        errors += finding.severity == StoryFinding::SEVERITY::ERROR ? 1 : 0;
    }
    for (const auto& [ending, facts] : flow.factsAtEndings()) {
        std::string list;
        for (const sf::String& fact : facts)
            list += (list.empty() ? "" : ", ") + utf8(fact);
        ryn::console::writeLine("facts known on every path to " + quoted(ending) + ": "
                                + (list.empty() ? "none" : list));
    }
    return errors;
}

/// The walk of a story with more states than the walk would visit: proved scene by scene.
int proveBySets(const StoryWalker& walker)
{
    const Story& story = walker.story();
    const SuspectSetProof proof(story);
    ryn::console::writeLine("suspects: " + std::to_string(story.suspects().size()) + ", so "
                            + std::to_string(std::uint64_t{1} << story.suspects().size())
                            + " sets of suspects investigated; play comes back to the hub with "
                            + std::to_string(proof.setsAtHub())
                            + " of them. Too many states to walk one by one: each scene is explored once, and the "
                              "sets are weighed at the hub and the arrest scene, where alone they matter");
    for (const Story::SceneId ending : {story.endScene(), story.gameOverScene()})
        ryn::console::writeLine("ending " + quoted(story.sceneName(ending)) + ": "
                                + (proof.reaches(ending) ? "reached" : "never reached"));
    std::size_t stuckScenes = 0;
    for (const SuspectSetProof::DeadEnd& deadEnd : proof.deadEnds()) {
        std::string scenes;
        for (const sf::String& scene : deadEnd.scenes)
            scenes += (scenes.empty() ? "" : ", ") + quoted(scene);
        stuckScenes += deadEnd.scenes.size();
        const std::string place = storyplaces::scenePlace(story, deadEnd.scenes.front(), walker.directory());
        ryn::console::writeLine(place + ": error: no ending can be reached from scene"
                                + (deadEnd.scenes.size() == 1 ? " " : "s ") + scenes + ", for one "
                                + walker.describe(deadEnd.example));
    }
    StoryWalker::Exploration found;
    for (const auto& [scene, choice] : proof.takenChoices())
        found.takenChoices.insert(StoryWalker::ChoiceRef{scene, choice});
    reportUntakenChoices(walker, found);
    const bool endReached = proof.reaches(story.endScene());
    const bool sound = endReached && proof.deadEnds().empty();
    std::string verdict = sound         ? "every state can end and \"end\" is reachable"
                          : !endReached ? "\"end\" is never reached"
                                        : "states in " + std::to_string(stuckScenes) + " scenes cannot end";
    const std::size_t missedNeeds = proveFacts(walker);
    if (missedNeeds > 0)
        verdict += "; " + std::to_string(missedNeeds) + " facts needed where a path does not set them";
    ryn::console::writeLine("orane-story walk: " + verdict);
    return sound && missedNeeds == 0 ? 0 : 1;
}

int walk(const std::string& directory)
{
    const StoryWalker walker(directory);
    if (!storyLoads(walker, directory))
        return 1;
    if (walker.tooManyStates())
        return proveBySets(walker);
    const StoryWalker::Exploration found = walker.explore();
    ryn::console::writeLine("states: " + std::to_string(found.states)
                            + ", choices taken: " + std::to_string(found.choicesTaken));
    if (!found.complete)
        ryn::console::writeLine("note: the walk stopped at " + std::to_string(found.states)
                                + " states, before it had seen them all; what follows holds for those states only");
    reportEndings(found);
    reportDeadEnds(walker, found);
    if (found.complete)
        reportUntakenChoices(walker, found);
    const bool endReached = found.shortestPaths.count(END_SCENE_NAME) > 0;
    const bool sound = endReached && found.stuckStates == 0;
    std::string verdict = sound         ? "every state can end and \"end\" is reachable"
                          : !endReached ? "\"end\" is never reached"
                                        : std::to_string(found.stuckStates) + " states cannot end";
    if (!found.complete)
        verdict = "stopped early, after " + std::to_string(found.states)
                  + " states: " + (sound ? "no state seen is stuck and \"end\" is reachable" : verdict)
                  + "; the states beyond were not explored, so more may be stuck";
    const std::size_t missedNeeds = proveFacts(walker);
    if (missedNeeds > 0)
        verdict += "; " + std::to_string(missedNeeds) + " facts needed where a path does not set them";
    ryn::console::writeLine("orane-story walk: " + verdict);
    return sound && found.complete && missedNeeds == 0 ? 0 : 1;
}

int walkRandomly(const std::string& directory, std::size_t count, std::uint64_t seed)
{
    const StoryWalker walker(directory);
    if (!storyLoads(walker, directory))
        return 1;
    const StoryWalker::RandomPlay play = walker.playRandomly(count, seed);
    ryn::console::writeLine(std::to_string(count) + " random playthroughs, seed " + std::to_string(seed) + ":");
    for (const auto& [ending, times] : play.endings)
        ryn::console::writeLine("  ended at " + quoted(ending) + ": " + std::to_string(times));
    ryn::console::writeLine("  stuck without a choice: " + std::to_string(play.stuck)
                            + ", still going after 10000 choices: " + std::to_string(play.unfinished));
    if (count > 0)
        ryn::console::writeLine("  choices per playthrough: fewest " + std::to_string(play.fewestChoices) + ", mean "
                                + std::to_string(play.totalChoices / count) + ", most "
                                + std::to_string(play.mostChoices));
    ryn::console::writeLine("visits per scene:");
    std::vector<std::pair<std::size_t, sf::String>> byVisits;
    for (const auto& [scene, visits] : play.visits)
        byVisits.emplace_back(visits, scene);
    std::stable_sort(byVisits.begin(), byVisits.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& [visits, scene] : byVisits) {
        std::string number = std::to_string(visits);
        number.insert(0, number.size() < 8 ? 8 - number.size() : 0, ' ');
        ryn::console::writeLine(number + "  " + utf8(scene));
    }
    const bool allEnded = play.stuck == 0 && play.unfinished == 0;
    ryn::console::writeLine(std::string("orane-story walk: ")
                            + (allEnded ? "every playthrough reached an ending"
                                        : std::to_string(play.stuck + play.unfinished) + " playthroughs did not end"));
    return allEnded ? 0 : 1;
}

bool endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int graph(const std::string& directory, const std::string& output)
{
    const LoadedStory story(directory);
    const std::string dot = StoryMap(story).dot();
    if (output.empty()) {
        ryn::console::write(dot);
        return 0;
    }
    if (endsWith(output, ".dot")) {
        std::ofstream file(output);
        file << dot;
        return file ? 0 : 1;
    }
    const std::string format = endsWith(output, ".svg") ? "svg" : endsWith(output, ".png") ? "png" : "";
    if (format.empty()) {
        ryn::console::writeLine("graph: FILE must end in .dot, .svg or .png");
        return EXIT_USAGE;
    }
    // The file name goes to dot as one quoted word.
    std::string quotedOutput = "'";
    for (char c : output)
        quotedOutput += c == '\'' ? std::string("'\\''") : std::string(1, c);
    quotedOutput += "'";
    FILE* pipe = popen(("dot -T" + format + " -o " + quotedOutput).c_str(), "w");
    if (pipe == nullptr) {
        ryn::console::writeLine("graph: cannot start Graphviz's dot");
        return 1;
    }
    std::fwrite(dot.data(), 1, dot.size(), pipe);
    if (pclose(pipe) != 0) {
        ryn::console::writeLine("graph: Graphviz's dot failed (is the graphviz package installed?)");
        return 1;
    }
    return 0;
}

bool readNumber(const char* text, std::uint64_t& number)
{
    try {
        std::size_t used = 0;
        number = std::stoull(text, &used);
        return text[used] == '\0' && text[0] != '-';
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

std::string executableDirectory()
{
    const std::string path = executablePath();
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

int runStoryCommand(int argc, char* argv[])
{
    // Faults of the story must end in a report, never in a debugger break.
    ryn::setAssertHandler(ryn::reportOnlyAssertHandler);
    if (argc < 3) {
        ryn::console::writeLine(USAGE);
        return EXIT_USAGE;
    }
    const std::string command = argv[1];
    const std::string directory = argv[2];
    if (command == "check") {
        AuthorCheckOptions options;
        const std::map<std::string, bool*> switches{{"--no-continuity", &options.continuity},
                                                    {"--no-spelling", &options.spelling},
                                                    {"--no-typography", &options.typography},
                                                    {"--no-glyphs", &options.glyphs},
                                                    {"--no-slips", &options.slips}};
        StoryChecker::FORMAT format = StoryChecker::FORMAT::TEXT;
        bool known = true;
        for (int index = 3; index < argc && known; ++index) {
            const std::string option = argv[index];
            const auto found = switches.find(option);
            if (found != switches.end())
                *found->second = false;
            else if (option == "--format=json" || option == "--format=text")
                format = option == "--format=json" ? StoryChecker::FORMAT::JSON : StoryChecker::FORMAT::TEXT;
            else
                known = false;
        }
        if (known)
            return check(directory, options, format);
    }
    if (command == "walk" && argc == 3)
        return walk(directory);
    std::uint64_t count = 0;
    std::uint64_t seed = 0;
    if (command == "walk" && argc == 7 && std::string(argv[3]) == "--random" && readNumber(argv[4], count)
        && std::string(argv[5]) == "--seed" && readNumber(argv[6], seed))
        return walkRandomly(directory, count, seed);
    if (command == "graph" && argc == 3)
        return graph(directory, {});
    if (command == "graph" && argc == 5 && std::string(argv[3]) == "-o")
        return graph(directory, argv[4]);
    if (command == "play" && argc == 3)
        return TerminalPlayer(std::cin).play(directory);
    if (command == "preview") {
        std::string error;
        const std::optional<PreviewOptions> options = PreviewOptions::parse({argv + 2, argv + argc}, error);
        if (!options) {
            ryn::console::writeLine(error);
            ryn::console::writeLine(USAGE);
            return EXIT_USAGE;
        }
        return runPreview(*options, executableDirectory());
    }
    ryn::console::writeLine(USAGE);
    return EXIT_USAGE;
}

} // namespace orane
