#pragma once

#include "workspace.hpp"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orane::lsp
{

/// A stretch of one file, in byte offsets into its text.
struct Span
{
    std::string file;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Where every name of the story is written, read with the game's own line rules (comment
/// lines, the SCENE cut, the order in which tokens are tried) but without judging anything:
/// a scene the game would refuse is still indexed, so that navigation works while typing.
class StoryIndex
{
public:
    static constexpr int FORWARD_LINK = -1;

    struct Choice
    {
        std::string label;
        /// The "*" line, whole.
        Span line;
    };

    struct Scene
    {
        std::string name;
        Span nameSpan;
        /// From the SCENE line to the last line before the next scene (or the end of the file).
        std::size_t firstLine = 0;
        std::size_t lastLine = 0;
        std::vector<Choice> choices;
    };

    /// A FORWARD target or a choice's target.
    struct Link
    {
        std::string target;
        Span span;
        std::size_t scene = 0;
        /// The choice's index, or FORWARD_LINK.
        int choice = FORWARD_LINK;
    };

    /// A fact named in a "# sets:" or "# needs:" comment.
    struct Fact
    {
        std::string name;
        Span span;
        bool sets = false;
        std::size_t scene = 0;
        /// The choice whose lines hold the comment, or FORWARD_LINK for the scene itself.
        int choice = FORWARD_LINK;
    };

    struct File
    {
        std::string path;
        std::vector<Scene> scenes;
        std::vector<Link> links;
        std::vector<Fact> facts;
    };

    struct Suspect
    {
        std::string name;
        Span span;
    };

    /// Re-reads the files of `workspace` that changed since the last update.
    void update(Workspace& workspace);

    /// story.txt and the suspects' files, in the order the game reads them.
    [[nodiscard]] const std::vector<File>& files() const { return files_; }
    [[nodiscard]] const File* file(const std::string& path) const;
    /// suspects.ini's lines, one per suspect line (repeats included), in file order.
    [[nodiscard]] const std::vector<Suspect>& suspectLines() const { return suspectLines_; }
    [[nodiscard]] bool isSuspect(const std::string& name) const;

    /// The scene the game keeps under `name` (the first one read), or null.
    [[nodiscard]] const Scene* definition(const std::string& name, const File** in = nullptr) const;
    /// Every scene defined under `name`, the kept one first.
    [[nodiscard]] std::vector<std::pair<const File*, const Scene*>> definitions(const std::string& name) const;
    /// Every link to `name`.
    [[nodiscard]] std::vector<std::pair<const File*, const Link*>> linksTo(const std::string& name) const;
    /// Every mention of fact `name`.
    [[nodiscard]] std::vector<const Fact*> factUses(const std::string& name) const;
    /// Every scene name, sorted, without repeats.
    [[nodiscard]] std::vector<std::string> sceneNames() const;
    /// Every fact name, sorted, without repeats.
    [[nodiscard]] std::vector<std::string> factNames() const;

    /// The scene whose lines hold `line` of `file`, or null.
    [[nodiscard]] const Scene* sceneAt(const File& file, std::size_t line) const;

    /// Reads one story file.
    [[nodiscard]] static File read(const std::string& path, const TextDocument& document);
    /// The facts of an annotation line ("# sets: a, b"), with their offsets in the line; false
    /// when the line is no annotation. `sets` says which kind it is.
    static bool readAnnotation(std::string_view line, bool& sets,
                               std::vector<std::pair<std::size_t, std::string>>& facts);

private:
    void readSuspects(Workspace& workspace);

    std::vector<File> files_;
    std::map<std::string, std::uint64_t> revisions_;
    std::vector<Suspect> suspectLines_;
    std::uint64_t suspectsRevision_ = 0;
};

} // namespace orane::lsp
