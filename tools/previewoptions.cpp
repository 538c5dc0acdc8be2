#include "previewoptions.hpp"

#include "scene/storytext.hpp"
#include "scenemanager/fixedscenes.hpp"

namespace orane
{
namespace
{

/// "Dupont, Leroy" names two suspects, trimmed as the game trims suspects.ini.
std::vector<sf::String> splitNames(const std::string& list)
{
    std::vector<sf::String> names;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t comma = list.find(',', begin);
        const std::string piece = list.substr(begin, comma == std::string::npos ? std::string::npos : comma - begin);
        const sf::String name = trimWhitespace(sf::String::fromUtf8(piece.begin(), piece.end()));
        if (!name.isEmpty())
            names.push_back(name);
        if (comma == std::string::npos)
            return names;
        begin = comma + 1;
    }
}

} // namespace

std::optional<PreviewOptions> PreviewOptions::parse(const std::vector<std::string>& arguments, std::string& error)
{
    PreviewOptions options;
    options.start.scene = START_SCENE_NAME;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        const bool hasValue = index + 1 < arguments.size();
        if (argument == "--scene" && hasValue) {
            const std::string& name = arguments[++index];
            options.start.scene = sf::String::fromUtf8(name.begin(), name.end());
        } else if (argument == "--investigated" && hasValue) {
            options.start.investigated = splitNames(arguments[++index]);
        } else if (argument == "--hub-seen") {
            options.start.hubSeen = true;
        } else if (argument == "--scene" || argument == "--investigated") {
            error = "preview: " + argument + " needs a value";
            return std::nullopt;
        } else if (argument.rfind("--", 0) == 0 || !options.directory.empty()) {
            error = "preview: unexpected argument " + argument;
            return std::nullopt;
        } else {
            options.directory = argument;
        }
    }
    if (options.directory.empty()) {
        error = "preview: DIR is missing";
        return std::nullopt;
    }
    if (options.start.scene.isEmpty()) {
        error = "preview: --scene needs a scene name";
        return std::nullopt;
    }
    if (options.directory.back() != '/')
        options.directory += '/';
    return options;
}

} // namespace orane
