#include "storyassist.hpp"

#include "pagemeasure.hpp"
#include "scene/scene.hpp"

#include <ryn/core/console.hpp>

#include <cmath>

namespace orane::lsp
{
namespace
{

constexpr int COMPLETION_CLASS = 7;
constexpr int COMPLETION_VARIABLE = 6;
constexpr int COMPLETION_KEYWORD = 14;

const std::vector<std::string> SPECIAL_SCENES = {"end", "game_over", "hub", "arrest"};

struct Keyword
{
    const char* label;
    const char* insert;
    const char* detail;
};

const Keyword KEYWORDS[] = {
    {"SCENE", "SCENE ", "opens a scene: SCENE name"},
    {"ORANE", "ORANE", "the lines below are Orane's (left page)"},
    {"NATHAN", "NATHAN", "the lines below are Nathan's (right page)"},
    {"FORWARD", "FORWARD ", "goes on to a scene without a choice"},
    {"*", "* ", "a choice: the rest of the line is its label"},
    {"->", "-> ", "the scene the choice leads to"},
    {"# sets:", "# sets: ", "facts the reader knows once this is shown or chosen"},
    {"# needs:", "# needs: ", "facts this text presumes the reader knows"},
};

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

std::string fileName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string percent(float part, float whole)
{
    return std::to_string(static_cast<long>(std::lround(100.f * part / whole))) + " %";
}

std::string pixels(float value)
{
    return std::to_string(static_cast<long>(std::ceil(value))) + " px";
}

/// The scene as the game reads it, from its lines in the editor's text.
orane::Scene gameScene(const TextDocument& document, const StoryIndex::Scene& scene)
{
    std::vector<sf::String> lines;
    for (std::size_t index = scene.firstLine; index <= scene.lastLine && index < document.lineCount(); ++index) {
        const std::string_view line = document.line(index);
        if (!line.empty() && line[0] == '#')
            continue;
        lines.push_back(sf::String::fromUtf8(line.begin(), line.end()));
    }
    // Its faults are the diagnostics' business; only the texts matter here.
    const ryn::console::Capture quiet;
    orane::Scene read;
    static_cast<void>(read.deserialize(lines, 0));
    return read;
}

Json completionItem(const std::string& label, const std::string& text, int kind, const std::string& detail,
                    const Json& range)
{
    return Json{
        {"label", label}, {"kind", kind}, {"detail", detail}, {"textEdit", {{"range", range}, {"newText", text}}}};
}

} // namespace

Json StoryAssist::completion(const Json& params) const
{
    const std::string path = locator_.path(params);
    const std::size_t offset = locator_.offset(path, params.at("position"));
    const TextDocument& document = locator_.workspace().document(path);
    Json items = Json::array();
    if (index_.file(path) == nullptr)
        return items;
    const Position cursor = document.positionAt(offset, PositionEncoding::UTF8);
    const std::string_view prefix = document.line(cursor.line).substr(0, cursor.character);
    const std::size_t lineStart = document.lineStart(cursor.line);
    const auto rangeFrom = [&](std::size_t column) { return locator_.range(Span{path, lineStart + column, offset}); };
    const auto wordStart = [&prefix](std::string_view separators) {
        const std::size_t at = prefix.find_last_of(separators);
        return at == std::string_view::npos ? 0 : at + 1;
    };

    // Only the names that begin as typed: a long story's every name would be sent at each key.
    const auto typedFrom = [&prefix](std::size_t column) { return prefix.substr(std::min(column, prefix.size())); };
    if (startsWith(prefix, "# needs:") || startsWith(prefix, "# sets:")) {
        const Json range = rangeFrom(wordStart(":, "));
        const std::string_view typed = typedFrom(wordStart(":, "));
        for (const std::string& fact : index_.factNames()) {
            if (startsWith(fact, typed))
                items.push_back(completionItem(fact, fact, COMPLETION_VARIABLE, "fact", range));
        }
        return items;
    }
    const bool afterArrow = prefix.find("->") != std::string_view::npos && prefix.find('*') == std::string_view::npos;
    const std::size_t forward = prefix.find("FORWARD");
    const bool afterForward = forward != std::string_view::npos && prefix.find(' ', forward) != std::string_view::npos;
    if (afterArrow || afterForward) {
        const std::size_t nameStart = afterArrow ? std::max(wordStart(" \t"), prefix.find("->") + 2) : wordStart(" ");
        const Json range = rangeFrom(nameStart);
        const std::string_view typed = typedFrom(nameStart);
        // Each name once, with the file of the scene the game keeps.
        std::map<std::string, std::string> scenes;
        for (const StoryIndex::File& file : index_.files()) {
            for (const StoryIndex::Scene& scene : file.scenes) {
                if (!scene.name.empty() && startsWith(scene.name, typed))
                    scenes.emplace(scene.name, fileName(file.path));
            }
        }
        for (const auto& [name, file] : scenes)
            items.push_back(completionItem(name, name, COMPLETION_CLASS, file, range));
        for (const std::string& name : SPECIAL_SCENES) {
            if (startsWith(name, typed))
                items.push_back(completionItem(name, name, COMPLETION_CLASS, "composed by the game", range));
        }
        return items;
    }
    // A token is the first thing on its line.
    if (prefix.find(' ') == std::string_view::npos || startsWith(prefix, "#")) {
        const Json range = rangeFrom(0);
        for (const Keyword& keyword : KEYWORDS) {
            if (startsWith(keyword.label, prefix) || prefix.empty())
                items.push_back(
                    completionItem(keyword.label, keyword.insert, COMPLETION_KEYWORD, keyword.detail, range));
        }
    }
    return items;
}

Json StoryAssist::hover(const Json& params) const
{
    const std::string path = locator_.path(params);
    const StoryNavigation navigation(index_, locator_);
    const std::optional<NamedThing> thing = navigation.thingAt(path, locator_.offset(path, params.at("position")));
    if (!thing.has_value())
        return nullptr;
    std::string text;
    if (thing->kind == NamedThing::KIND::FACT) {
        std::size_t setters = 0;
        std::size_t needers = 0;
        for (const StoryIndex::Fact* use : index_.factUses(thing->name))
            ++(use->sets ? setters : needers);
        text = "**fact " + thing->name + "**: set in " + std::to_string(setters) + " place" + (setters == 1 ? "" : "s")
               + ", needed in " + std::to_string(needers);
    } else if (thing->kind == NamedThing::KIND::SUSPECT) {
        text = "**suspect " + thing->name + "**: scenes in " + thing->name + ".txt; the hub opens " + thing->name
               + "_begin, the arrest page " + thing->name + "_arrest";
    } else {
        const StoryIndex::File* file = nullptr;
        const StoryIndex::Scene* scene = index_.definition(thing->name, &file);
        if (scene == nullptr) {
            const bool special =
                std::find(SPECIAL_SCENES.begin(), SPECIAL_SCENES.end(), thing->name) != SPECIAL_SCENES.end();
            text = "**" + thing->name + "**: " + (special ? "composed by the game" : "no scene of this name");
        } else {
            const Position at =
                locator_.workspace().document(file->path).positionAt(scene->nameSpan.begin, PositionEncoding::UTF8);
            text = "**SCENE " + thing->name + "** (" + fileName(file->path) + ":" + std::to_string(at.line + 1)
                   + ")\n\n" + pagesOf(*file, *scene) + "\n\n" + waysInto(thing->name);
            const auto known = factsKnown();
            const auto facts = known.find(thing->name);
            std::string list;
            if (facts != known.end()) {
                for (const std::string& fact : facts->second)
                    list += (list.empty() ? "" : ", ") + fact;
            }
            text += "\n\nFacts known here: "
                    + (facts == known.end() ? std::string("(never reached from begin)")
                       : list.empty()       ? std::string("none")
                                            : list);
        }
    }
    return Json{{"contents", {{"kind", "markdown"}, {"value", text}}}, {"range", locator_.range(thing->span)}};
}

std::string StoryAssist::pagesOf(const StoryIndex::File& file, const StoryIndex::Scene& scene) const
{
    if (measure_ == nullptr)
        return "Pages not measured: " + unmeasuredReason_;
    const orane::Scene read = gameScene(locator_.workspace().document(file.path), scene);
    const sf::Vector2f area = measure_->writingArea();
    const float left = measure_->textBottom(read.oraneText, PageWriter::ORANE);
    std::vector<sf::String> labels;
    for (const orane::Choice& choice : read.choices)
        labels.push_back(choice.briefDescription);
    float right = measure_->textBottom(read.nathanText, PageWriter::NATHAN);
    std::string how;
    for (std::size_t index = 0; index < read.choices.size(); ++index) {
        const float bottom =
            measure_->buttonsBottom(measure_->withAnswer(read.nathanText, read.choices[index].longDescription), labels);
        if (bottom > right) {
            right = bottom;
            how = ", fullest with the answer of choice " + std::to_string(index) + " and the buttons";
        }
    }
    return "Orane's page: " + pixels(left) + " of " + pixels(area.y) + " (" + percent(left, area.y) + ")\n\n"
           + "Nathan's page: " + pixels(right) + " of " + pixels(area.y) + " (" + percent(right, area.y) + how + ")";
}

std::string StoryAssist::waysInto(const std::string& sceneName) const
{
    std::string ways;
    const auto add = [&ways](const std::string& way) { ways += "\n- " + way; };
    if (sceneName == "begin")
        add("the story starts here");
    for (const auto& [file, link] : index_.linksTo(sceneName)) {
        const StoryIndex::Scene& from = file->scenes[static_cast<std::size_t>(link->scene)];
        const Position at =
            locator_.workspace().document(file->path).positionAt(link->span.begin, PositionEncoding::UTF8);
        const std::string place = " (" + fileName(file->path) + ":" + std::to_string(at.line + 1) + ")";
        if (link->choice == StoryIndex::FORWARD_LINK) {
            add("FORWARD from " + from.name + place);
        } else {
            std::string label = from.choices[static_cast<std::size_t>(link->choice)].label;
            label.erase(0, label.find_first_not_of(' '));
            add("choice " + std::to_string(link->choice) + " of " + from.name + ", « " + label + " »" + place);
        }
    }
    for (const std::string& suffix : {std::string("_begin"), std::string("_arrest")}) {
        if (sceneName.size() > suffix.size()
            && sceneName.compare(sceneName.size() - suffix.size(), suffix.size(), suffix) == 0
            && index_.isSuspect(sceneName.substr(0, sceneName.size() - suffix.size())))
            add(std::string(suffix == "_begin" ? "the hub" : "the arrest page") + ", for the suspect "
                + sceneName.substr(0, sceneName.size() - suffix.size()));
    }
    return ways.empty() ? "No way in." : "Ways in:" + ways;
}

std::map<std::string, std::set<std::string>> StoryAssist::factsKnown() const
{
    // Each way into a scene carries what was known before the scene it leaves, what that scene
    // sets, and what the choice taken sets; a scene knows what every way into it carries.
    struct Way
    {
        std::string from;
        std::string to;
        std::set<std::string> sets;
    };
    std::map<std::string, std::set<std::string>> sceneSets;
    std::vector<Way> ways;
    std::vector<std::string> suspects;
    for (const StoryIndex::Suspect& suspect : index_.suspectLines())
        suspects.push_back(suspect.name);
    for (const StoryIndex::File& file : index_.files()) {
        std::map<std::pair<std::size_t, int>, std::set<std::string>> choiceSets;
        for (const StoryIndex::Fact& fact : file.facts) {
            if (fact.sets && fact.choice == StoryIndex::FORWARD_LINK)
                sceneSets[file.scenes[fact.scene].name].insert(fact.name);
            else if (fact.sets)
                choiceSets[{fact.scene, fact.choice}].insert(fact.name);
        }
        for (const StoryIndex::Link& link : file.links)
            ways.push_back(Way{file.scenes[link.scene].name, link.target, choiceSets[{link.scene, link.choice}]});
    }
    for (const std::string& suspect : suspects) {
        ways.push_back(Way{"hub", suspect + "_begin", {}});
        ways.push_back(Way{"arrest", suspect + "_arrest", {}});
    }
    ways.push_back(Way{"hub", "arrest", {}});
    ways.push_back(Way{"arrest", "hub", {}});

    std::map<std::string, std::set<std::string>> known{{"begin", {}}};
    for (bool changed = true; changed;) {
        changed = false;
        for (const Way& way : ways) {
            const auto from = known.find(way.from);
            if (from == known.end() || way.to == "begin")
                continue;
            std::set<std::string> carried = from->second;
            carried.insert(sceneSets[way.from].begin(), sceneSets[way.from].end());
            carried.insert(way.sets.begin(), way.sets.end());
            const auto [to, added] = known.try_emplace(way.to, carried);
            if (added) {
                changed = true;
                continue;
            }
            std::set<std::string> both;
            std::set_intersection(to->second.begin(), to->second.end(), carried.begin(), carried.end(),
                                  std::inserter(both, both.end()));
            if (both.size() != to->second.size()) {
                to->second = std::move(both);
                changed = true;
            }
        }
    }
    return known;
}

} // namespace orane::lsp
