#pragma once

#include "protocol.hpp"
#include "storyindex.hpp"

#include <optional>
#include <string>

namespace orane::lsp
{

/// What a position in a story file or in suspects.ini names.
struct NamedThing
{
    enum class KIND
    {
        SCENE,
        FACT,
        SUSPECT,
    };
    KIND kind = KIND::SCENE;
    std::string name;
    /// Where it is written at that position.
    Span span;
};

/// Definition, references, rename and symbols over the story index.
class StoryNavigation
{
public:
    StoryNavigation(const StoryIndex& index, const Locator& locator)
        : index_(index)
        , locator_(locator)
    {}

    /// The scene, fact or suspect written at `offset` of `path`, if any.
    [[nodiscard]] std::optional<NamedThing> thingAt(const std::string& path, std::size_t offset) const;

    [[nodiscard]] Json definition(const Json& params) const;
    [[nodiscard]] Json references(const Json& params) const;
    [[nodiscard]] Json prepareRename(const Json& params) const;
    /// `documentChanges` when the client can rename files (needed to rename a suspect).
    [[nodiscard]] Json rename(const Json& params, bool documentChanges) const;
    [[nodiscard]] Json documentSymbols(const Json& params) const;
    [[nodiscard]] Json workspaceSymbols(const Json& params) const;

    /// The scenes the game derives from a suspect's name: "_begin" opened by the hub, "_arrest"
    /// opened by the arrest page.
    [[nodiscard]] static std::vector<std::string> derivedScenes(const std::string& suspect);

private:
    [[nodiscard]] NamedThing renamable(const Json& params) const;
    /// Every place that writes `thing`'s name, in the files they are in.
    [[nodiscard]] std::vector<Span> occurrences(const NamedThing& thing) const;
    [[nodiscard]] std::string suspectOf(const std::string& sceneName) const;

    const StoryIndex& index_;
    const Locator& locator_;
};

} // namespace orane::lsp
