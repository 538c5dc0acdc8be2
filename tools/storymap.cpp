#include "storymap.hpp"

#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"
#include "storygraph.hpp"
#include "tooltext.hpp"

#include <map>
#include <sstream>

namespace orane
{
namespace
{

/// `text` as a DOT string, quotes and backslashes escaped.
std::string dotString(const std::string& text)
{
    std::string escaped = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    return escaped + "\"";
}

std::string fileNameOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

/// Long labels are cut, so that the map stays readable.
std::string shortLabel(const sf::String& label)
{
    constexpr std::size_t MAX_LENGTH = 40;
    const std::string line = oneLine(label);
    sf::String text = sf::String::fromUtf8(line.begin(), line.end());
    if (text.getSize() <= MAX_LENGTH)
        return line;
    return utf8(text.substring(0, MAX_LENGTH - 1)) + "…";
}

bool isRead(const Story& story, const std::string& path)
{
    for (const Story::StoryFile& file : story.files()) {
        if (file.path == path)
            return file.status == Story::StoryFile::STATUS::READ;
    }
    return true;
}

const char* specialStyle(const sf::String& name)
{
    if (name == END_SCENE_NAME)
        return "shape=doubleoctagon, style=filled, fillcolor=palegreen";
    if (name == GAME_OVER_SCENE_NAME)
        return "shape=doubleoctagon, style=filled, fillcolor=lightcoral";
    if (name == HUB_SCENE_NAME)
        return "shape=hexagon, style=filled, fillcolor=lightskyblue";
    return "shape=hexagon, style=filled, fillcolor=gold";
}

} // namespace

StoryMap::StoryMap(const LoadedStory& story)
    : story_(story)
{}

std::string StoryMap::dot() const
{
    const Story& all = story_.story();
    const StoryGraph graph(all);
    const std::set<sf::String> reached = graph.reachableFrom(START_SCENE_NAME);

    std::map<std::string, std::vector<sf::String>> scenesByFile;
    std::vector<sf::String> special;
    for (const sf::String& name : graph.scenes()) {
        const std::optional<Story::SceneOrigin> origin = all.findOrigin(name);
        if (origin.has_value() && !isSpecialSceneName(name))
            scenesByFile[origin->file].push_back(name);
        else
            special.push_back(name);
    }

    std::ostringstream out;
    out << "digraph story {\n"
        << "    rankdir=LR;\n"
        << "    node [shape=box, style=rounded, fontname=\"Helvetica\"];\n"
        << "    edge [fontname=\"Helvetica\", fontsize=10];\n";
    // A file that could not be read to its end is drawn as such, even when none of its scenes
    // could be: the scenes it would have held are then not read, rather than missing.
    for (const Story::StoryFile& file : all.files()) {
        if (file.status != Story::StoryFile::STATUS::READ)
            scenesByFile[file.path];
    }
    std::size_t cluster = 0;
    for (const auto& [file, names] : scenesByFile) {
        const bool notRead = !isRead(all, file);
        out << "    subgraph cluster_" << cluster++ << " {\n"
            << "        label=" << dotString(fileNameOf(file) + (notRead ? " (not read)" : "")) << ";\n"
            << (notRead ? "        style=\"filled,dashed\"; color=red; fillcolor=gray92; fontcolor=red;\n"
                        : "        style=filled; color=gray92;\n");
        if (names.empty())
            out << "        " << dotString("(not read) " + fileNameOf(file))
                << " [label=\"(not read)\", shape=plaintext];\n";
        for (const sf::String& name : names) {
            out << "        " << dotString(utf8(name));
            if (name == START_SCENE_NAME)
                out << " [style=\"rounded,bold\", penwidth=2]";
            else if (reached.count(name) == 0)
                out << " [fontcolor=gray50, color=gray50, style=\"rounded,dashed\"]";
            out << ";\n";
        }
        out << "    }\n";
    }
    for (const sf::String& name : special)
        out << "    " << dotString(utf8(name)) << " [" << specialStyle(name) << "];\n";
    out << "    { rank=sink; " << dotString(utf8(END_SCENE_NAME)) << "; " << dotString(utf8(GAME_OVER_SCENE_NAME))
        << "; }\n";

    for (const StoryGraph::Edge& edge : graph.edges()) {
        out << "    " << dotString(utf8(edge.from)) << " -> " << dotString(utf8(edge.to)) << " [";
        if (edge.kind == StoryGraph::Edge::KIND::FORWARD)
            out << "label=\"FORWARD\", style=dashed";
        else
            out << "label=" << dotString(shortLabel(edge.label));
        if (edge.kind == StoryGraph::Edge::KIND::COMPOSED)
            out << ", color=steelblue, fontcolor=steelblue";
        if (graph.isBroken(edge))
            out << (story_.everyFileRead() ? ", color=red, fontcolor=red" : ", color=gray50, fontcolor=gray50");
        out << "];\n";
    }
    // A link to a scene that no file holds is broken only when every file was read to its end.
    const bool everyFileRead = story_.everyFileRead();
    for (const StoryGraph::Edge& edge : graph.edges()) {
        if (!graph.isBroken(edge))
            continue;
        if (everyFileRead)
            out << "    " << dotString(utf8(edge.to)) << " [label=" << dotString(utf8(edge.to) + " (missing)")
                << ", color=red, fontcolor=red, shape=box, style=dashed];\n";
        else
            out << "    " << dotString(utf8(edge.to)) << " [label=" << dotString(utf8(edge.to) + " (not read)")
                << ", color=gray50, fontcolor=gray50, shape=box, style=dashed];\n";
    }
    out << "}\n";
    return out.str();
}

} // namespace orane
