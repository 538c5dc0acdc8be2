#include "storymap.hpp"

#include "storygraph.hpp"
#include "tooltext.hpp"

#include "scene/tokens.hpp"
#include "scenemanager/fixedscenes.hpp"

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

const char* specialStyle(const sf::String& name)
{
    if (name == SPECIAL_SCENE_NAMES[0])
        return "shape=doubleoctagon, style=filled, fillcolor=palegreen";
    if (name == SPECIAL_SCENE_NAMES[1])
        return "shape=doubleoctagon, style=filled, fillcolor=lightcoral";
    if (name == SPECIAL_SCENE_NAMES[2])
        return "shape=hexagon, style=filled, fillcolor=lightskyblue";
    return "shape=hexagon, style=filled, fillcolor=gold";
}

} // namespace

StoryMap::StoryMap(const LoadedStory& story)
    : story_(story)
{
}

std::string StoryMap::dot() const
{
    const SceneManager& all = story_.allScenes();
    const StoryGraph graph(all.scenes(), story_.game().suspectsVisited());
    const std::set<sf::String> reached = graph.reachableFrom(START_SCENE_NAME);

    std::map<std::string, std::vector<sf::String>> scenesByFile;
    std::vector<sf::String> special;
    for (const sf::String& name : graph.scenes()) {
        const std::optional<SceneManager::SceneOrigin> origin = all.findOrigin(name);
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
    std::size_t cluster = 0;
    for (const auto& [file, names] : scenesByFile) {
        out << "    subgraph cluster_" << cluster++ << " {\n"
            << "        label=" << dotString(fileNameOf(file)) << ";\n"
            << "        style=filled; color=gray92;\n";
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
    out << "    { rank=sink; " << dotString(utf8(SPECIAL_SCENE_NAMES[0])) << "; "
        << dotString(utf8(SPECIAL_SCENE_NAMES[1])) << "; }\n";

    for (const StoryGraph::Edge& edge : graph.edges()) {
        out << "    " << dotString(utf8(edge.from)) << " -> " << dotString(utf8(edge.to)) << " [";
        if (edge.kind == StoryGraph::Edge::KIND::FORWARD)
            out << "label=\"FORWARD\", style=dashed";
        else
            out << "label=" << dotString(shortLabel(edge.label));
        if (edge.kind == StoryGraph::Edge::KIND::COMPOSED)
            out << ", color=steelblue, fontcolor=steelblue";
        if (graph.isBroken(edge))
            out << ", color=red, fontcolor=red";
        out << "];\n";
    }
    for (const StoryGraph::Edge& edge : graph.edges()) {
        if (graph.isBroken(edge))
            out << "    " << dotString(utf8(edge.to)) << " [label=" << dotString(utf8(edge.to) + " (missing)")
                << ", color=red, fontcolor=red, shape=box, style=dashed];\n";
    }
    out << "}\n";
    return out.str();
}

} // namespace orane
