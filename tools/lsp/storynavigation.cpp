#include "storynavigation.hpp"

#include "uri.hpp"

#include <algorithm>
#include <cctype>
#include <map>

namespace orane::lsp
{
namespace
{

constexpr int SYMBOL_FILE = 1;
constexpr int SYMBOL_CLASS = 5;
constexpr int SYMBOL_CONSTANT = 14;
constexpr int SYMBOL_EVENT = 24;

const std::vector<std::string> SPECIAL_SCENES = {"end", "game_over", "hub", "arrest"};
const std::vector<std::string> TOKENS = {"SCENE", "ORANE", "NATHAN", "FORWARD", "*", "->"};

bool holds(const Span& span, std::size_t offset)
{
    return span.begin <= offset && offset <= span.end;
}

bool endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::string fileName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Why `name` cannot name a scene in the story language, or empty when it can.
std::string sceneNameFault(const std::string& name)
{
    if (name.empty())
        return "a scene name cannot be empty";
    if (name.find_first_of(" \t\r\n\v\f") != std::string::npos)
        return "a scene name is one word, without blanks";
    if (name[0] == '#')
        return "a line that starts with # is a comment";
    for (const std::string& token : TOKENS) {
        if (name.find(token) != std::string::npos)
            return "a scene name cannot hold \"" + token + "\": the line would read as that token";
    }
    return {};
}

std::string factNameFault(const std::string& name)
{
    const bool word = !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || byte == '_' || std::isalnum(byte) != 0;
    });
    return word ? std::string() : "a fact is one word of letters, digits and _";
}

std::string suspectNameFault(const std::string& name)
{
    if (name.empty())
        return "a suspect's name cannot be empty";
    if (name.find_first_of(" \t\r\n\v\f") == 0 || name.find_last_of(" \t\r\n\v\f") == name.size() - 1)
        return "the game trims blanks around a suspect's name";
    if (name.find('/') != std::string::npos || name == "." || name == "..")
        return "a suspect's name also names a file: no / in it";
    std::string fault;
    for (const std::string& scene : StoryNavigation::derivedScenes(name)) {
        if (fault.empty())
            fault = sceneNameFault(scene);
    }
    return fault;
}

} // namespace

std::vector<std::string> StoryNavigation::derivedScenes(const std::string& suspect)
{
    return {suspect + "_begin", suspect + "_arrest"};
}

std::optional<NamedThing> StoryNavigation::thingAt(const std::string& path, std::size_t offset) const
{
    for (const StoryIndex::Suspect& suspect : index_.suspectLines()) {
        if (suspect.span.file == path && holds(suspect.span, offset) && !suspect.name.empty())
            return NamedThing{NamedThing::KIND::SUSPECT, suspect.name, suspect.span};
    }
    const StoryIndex::File* file = index_.file(path);
    if (file == nullptr)
        return std::nullopt;
    for (const StoryIndex::Scene& scene : file->scenes) {
        if (holds(scene.nameSpan, offset) && !scene.name.empty())
            return NamedThing{NamedThing::KIND::SCENE, scene.name, scene.nameSpan};
    }
    for (const StoryIndex::Link& link : file->links) {
        if (holds(link.span, offset) && !link.target.empty())
            return NamedThing{NamedThing::KIND::SCENE, link.target, link.span};
    }
    for (const StoryIndex::Fact& fact : file->facts) {
        if (holds(fact.span, offset))
            return NamedThing{NamedThing::KIND::FACT, fact.name, fact.span};
    }
    return std::nullopt;
}

std::string StoryNavigation::suspectOf(const std::string& sceneName) const
{
    for (const std::string& suffix : {std::string("_begin"), std::string("_arrest")}) {
        if (endsWith(sceneName, suffix)) {
            const std::string suspect = sceneName.substr(0, sceneName.size() - suffix.size());
            if (index_.isSuspect(suspect))
                return suspect;
        }
    }
    return {};
}

Json StoryNavigation::definition(const Json& params) const
{
    const std::string path = locator_.path(params);
    const std::optional<NamedThing> thing = thingAt(path, locator_.offset(path, params.at("position")));
    if (!thing.has_value())
        return nullptr;
    switch (thing->kind) {
    case NamedThing::KIND::SCENE:
        if (const StoryIndex::Scene* scene = index_.definition(thing->name))
            return locator_.location(scene->nameSpan);
        return nullptr;
    case NamedThing::KIND::SUSPECT: {
        const std::string file = locator_.workspace().directory() + thing->name + ".txt";
        if (!locator_.workspace().exists(file))
            return nullptr;
        return locator_.location(Span{file, 0, 0});
    }
    case NamedThing::KIND::FACT: break;
    }
    Json places = Json::array();
    for (const StoryIndex::Fact* fact : index_.factUses(thing->name)) {
        if (fact->sets)
            places.push_back(locator_.location(fact->span));
    }
    return places;
}

Json StoryNavigation::references(const Json& params) const
{
    const std::string path = locator_.path(params);
    const std::optional<NamedThing> thing = thingAt(path, locator_.offset(path, params.at("position")));
    if (!thing.has_value())
        return Json::array();
    const bool withDeclaration = params.value("/context/includeDeclaration"_json_pointer, false);
    std::vector<Span> places;
    const auto addScene = [&](const std::string& name) {
        if (withDeclaration) {
            for (const auto& definition : index_.definitions(name))
                places.push_back(definition.second->nameSpan);
        }
        for (const auto& link : index_.linksTo(name))
            places.push_back(link.second->span);
    };
    const auto addSuspectLines = [&](const std::string& name) {
        for (const StoryIndex::Suspect& suspect : index_.suspectLines()) {
            if (suspect.name == name)
                places.push_back(suspect.span);
        }
    };
    switch (thing->kind) {
    case NamedThing::KIND::SCENE:
        addScene(thing->name);
        // The hub and the arrest page link to a suspect's scenes through suspects.ini.
        if (!suspectOf(thing->name).empty())
            addSuspectLines(suspectOf(thing->name));
        break;
    case NamedThing::KIND::FACT:
        for (const StoryIndex::Fact* fact : index_.factUses(thing->name)) {
            if (withDeclaration || !fact->sets)
                places.push_back(fact->span);
        }
        break;
    case NamedThing::KIND::SUSPECT:
        if (withDeclaration)
            addSuspectLines(thing->name);
        for (const std::string& scene : derivedScenes(thing->name))
            addScene(scene);
        break;
    }
    Json found = Json::array();
    for (const Span& span : places)
        found.push_back(locator_.location(span));
    return found;
}

NamedThing StoryNavigation::renamable(const Json& params) const
{
    const std::string path = locator_.path(params);
    const std::optional<NamedThing> thing = thingAt(path, locator_.offset(path, params.at("position")));
    if (!thing.has_value())
        throw RequestError(error::REQUEST_FAILED, "only a scene, a fact or a suspect can be renamed");
    if (thing->kind != NamedThing::KIND::SCENE)
        return *thing;
    if (std::find(SPECIAL_SCENES.begin(), SPECIAL_SCENES.end(), thing->name) != SPECIAL_SCENES.end())
        throw RequestError(error::REQUEST_FAILED,
                           "\"" + thing->name + "\" is one of the game's own scenes: its name is fixed");
    const std::string suspect = suspectOf(thing->name);
    if (!suspect.empty())
        throw RequestError(error::REQUEST_FAILED, "\"" + thing->name + "\" is named after the suspect \"" + suspect
                                                      + "\": rename the suspect in suspects.ini and it follows");
    if (index_.definitions(thing->name).empty())
        throw RequestError(error::REQUEST_FAILED, "no scene \"" + thing->name + "\" to rename: the link leads nowhere");
    return *thing;
}

Json StoryNavigation::prepareRename(const Json& params) const
{
    const NamedThing thing = renamable(params);
    return Json{{"range", locator_.range(thing.span)}, {"placeholder", thing.name}};
}

Json StoryNavigation::rename(const Json& params, bool documentChanges) const
{
    const NamedThing thing = renamable(params);
    const std::string newName = params.at("newName").get<std::string>();
    std::map<std::string, std::vector<std::pair<Span, std::string>>> edits;
    const auto renameScene = [&](const std::string& from, const std::string& to) {
        for (const auto& definition : index_.definitions(from))
            edits[definition.second->nameSpan.file].emplace_back(definition.second->nameSpan, to);
        for (const auto& link : index_.linksTo(from))
            edits[link.second->span.file].emplace_back(link.second->span, to);
    };
    std::string fault;
    std::string renamedFile;
    switch (thing.kind) {
    case NamedThing::KIND::SCENE:
        fault = sceneNameFault(newName);
        if (fault.empty() && newName != thing.name && !index_.definitions(newName).empty())
            fault = "a scene \"" + newName + "\" exists already";
        if (fault.empty() && !suspectOf(newName).empty())
            fault = "\"" + newName + "\" is the name of a suspect's scene";
        renameScene(thing.name, newName);
        break;
    case NamedThing::KIND::FACT:
        fault = factNameFault(newName);
        for (const StoryIndex::Fact* fact : index_.factUses(thing.name))
            edits[fact->span.file].emplace_back(fact->span, newName);
        break;
    case NamedThing::KIND::SUSPECT:
        fault = suspectNameFault(newName);
        if (fault.empty() && newName != thing.name && index_.isSuspect(newName))
            fault = "a suspect \"" + newName + "\" exists already";
        for (const StoryIndex::Suspect& suspect : index_.suspectLines()) {
            if (suspect.name == thing.name)
                edits[suspect.span.file].emplace_back(suspect.span, newName);
        }
        for (std::size_t k = 0; k < derivedScenes(thing.name).size(); ++k)
            renameScene(derivedScenes(thing.name)[k], derivedScenes(newName)[k]);
        renamedFile = locator_.workspace().directory() + thing.name + ".txt";
        if (!locator_.workspace().exists(renamedFile))
            renamedFile.clear();
        else if (!documentChanges)
            fault = "renaming a suspect renames its file, and this editor cannot rename files";
        break;
    }
    if (!fault.empty())
        throw RequestError(error::REQUEST_FAILED, fault);
    const auto textEdits = [&](const std::vector<std::pair<Span, std::string>>& list) {
        Json array = Json::array();
        for (const auto& [span, text] : list)
            array.push_back(Json{{"range", locator_.range(span)}, {"newText", text}});
        return array;
    };
    if (!documentChanges) {
        Json changes = Json::object();
        for (const auto& [file, list] : edits)
            changes[uriFromPath(file)] = textEdits(list);
        return Json{{"changes", changes}};
    }
    Json changes = Json::array();
    for (const auto& [file, list] : edits)
        changes.push_back(
            Json{{"textDocument", {{"uri", uriFromPath(file)}, {"version", nullptr}}}, {"edits", textEdits(list)}});
    // Edits name the file as it is now, so its renaming comes last.
    if (!renamedFile.empty())
        changes.push_back(Json{{"kind", "rename"},
                               {"oldUri", uriFromPath(renamedFile)},
                               {"newUri", uriFromPath(locator_.workspace().directory() + newName + ".txt")}});
    return Json{{"documentChanges", changes}};
}

Json StoryNavigation::documentSymbols(const Json& params) const
{
    const std::string path = locator_.path(params);
    Json symbols = Json::array();
    for (const StoryIndex::Suspect& suspect : index_.suspectLines()) {
        if (suspect.span.file == path && !suspect.name.empty())
            symbols.push_back(Json{{"name", suspect.name},
                                   {"kind", SYMBOL_CONSTANT},
                                   {"range", locator_.range(suspect.span)},
                                   {"selectionRange", locator_.range(suspect.span)}});
    }
    const StoryIndex::File* file = index_.file(path);
    if (file == nullptr)
        return symbols;
    const TextDocument& document = locator_.workspace().document(path);
    for (std::size_t sceneIndex = 0; sceneIndex < file->scenes.size(); ++sceneIndex) {
        const StoryIndex::Scene& scene = file->scenes[sceneIndex];
        const Span whole{path, document.lineStart(scene.firstLine),
                         document.lineStart(scene.lastLine) + document.line(scene.lastLine).size()};
        Json children = Json::array();
        for (const StoryIndex::Choice& choice : scene.choices) {
            std::string detail;
            for (const StoryIndex::Link& link : file->links) {
                if (link.scene == sceneIndex && link.choice == static_cast<int>(&choice - scene.choices.data()))
                    detail = "-> " + link.target;
            }
            const std::string label = choice.label.find_first_not_of(' ') == std::string::npos
                                          ? "*"
                                          : choice.label.substr(choice.label.find_first_not_of(' '));
            children.push_back(Json{{"name", label},
                                    {"detail", detail},
                                    {"kind", SYMBOL_EVENT},
                                    {"range", locator_.range(choice.line)},
                                    {"selectionRange", locator_.range(choice.line)}});
        }
        std::string detail;
        for (const StoryIndex::Link& link : file->links) {
            if (link.scene == sceneIndex && link.choice == StoryIndex::FORWARD_LINK)
                detail = "FORWARD " + link.target;
        }
        symbols.push_back(Json{{"name", scene.name.empty() ? std::string("SCENE") : scene.name},
                               {"detail", detail},
                               {"kind", SYMBOL_CLASS},
                               {"range", locator_.range(whole)},
                               {"selectionRange", locator_.range(scene.nameSpan)},
                               {"children", children}});
    }
    return symbols;
}

Json StoryNavigation::workspaceSymbols(const Json& params) const
{
    std::string query = params.value("query", std::string());
    const auto lower = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
        return text;
    };
    query = lower(query);
    // Letters of the query in order, as editors' fuzzy pickers expect.
    const auto matches = [&query, &lower](const std::string& name) {
        const std::string text = lower(name);
        std::size_t at = 0;
        for (char c : query) {
            at = text.find(c, at);
            if (at == std::string::npos)
                return false;
            ++at;
        }
        return true;
    };
    Json symbols = Json::array();
    for (const StoryIndex::File& file : index_.files()) {
        for (const StoryIndex::Scene& scene : file.scenes) {
            if (!scene.name.empty() && matches(scene.name))
                symbols.push_back(Json{{"name", scene.name},
                                       {"kind", SYMBOL_CLASS},
                                       {"containerName", fileName(file.path)},
                                       {"location", locator_.location(scene.nameSpan)}});
        }
    }
    for (const StoryIndex::Suspect& suspect : index_.suspectLines()) {
        if (!suspect.name.empty() && matches(suspect.name))
            symbols.push_back(Json{{"name", suspect.name},
                                   {"kind", SYMBOL_FILE},
                                   {"containerName", "suspects.ini"},
                                   {"location", locator_.location(suspect.span)}});
    }
    return symbols;
}

} // namespace orane::lsp
