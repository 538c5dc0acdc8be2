#include "storyindex.hpp"

#include <algorithm>
#include <set>

namespace orane::lsp
{
namespace
{

bool contains(std::string_view line, std::string_view token)
{
    return line.find(token) != std::string_view::npos;
}

bool isGameWhitespace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

/// [begin, end) of `text` within `line`, starting at `from`, without the game's white space.
std::pair<std::size_t, std::size_t> trimmedRange(std::string_view line, std::size_t from, std::size_t to)
{
    while (from < to && isGameWhitespace(line[from]))
        ++from;
    while (to > from && isGameWhitespace(line[to - 1]))
        --to;
    return {from, to};
}

/// The second blank-separated word of a SCENE or FORWARD line, trimmed: where the game reads
/// the name. Empty (at the line's end) when there is none.
std::pair<std::size_t, std::size_t> secondWord(std::string_view line)
{
    std::size_t at = line.find_first_not_of(' ');
    if (at == std::string_view::npos)
        return {line.size(), line.size()};
    at = line.find(' ', at);
    if (at == std::string_view::npos)
        return {line.size(), line.size()};
    const std::size_t begin = line.find_first_not_of(' ', at);
    if (begin == std::string_view::npos)
        return {line.size(), line.size()};
    const std::size_t end = std::min(line.find(' ', begin), line.size());
    return trimmedRange(line, begin, end);
}

bool isFactCharacter(unsigned char c)
{
    // Letters of any script arrive as UTF-8 bytes above 0x7F.
    return c >= 0x80 || c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

bool StoryIndex::readAnnotation(std::string_view line, bool& sets,
                                std::vector<std::pair<std::size_t, std::string>>& facts)
{
    static const std::string_view setsHead = "# sets:";
    static const std::string_view needsHead = "# needs:";
    std::size_t at = 0;
    if (line.substr(0, setsHead.size()) == setsHead) {
        sets = true;
        at = setsHead.size();
    } else if (line.substr(0, needsHead.size()) == needsHead) {
        sets = false;
        at = needsHead.size();
    } else {
        return false;
    }
    while (at <= line.size()) {
        const std::size_t comma = std::min(line.find(',', at), line.size());
        auto [begin, end] = trimmedRange(line, at, comma);
        std::size_t nameEnd = begin;
        while (nameEnd < end && isFactCharacter(static_cast<unsigned char>(line[nameEnd])))
            ++nameEnd;
        if (nameEnd > begin)
            facts.emplace_back(begin, std::string(line.substr(begin, nameEnd - begin)));
        at = comma + 1;
    }
    return true;
}

StoryIndex::File StoryIndex::read(const std::string& path, const TextDocument& document)
{
    File file;
    file.path = path;
    int choice = FORWARD_LINK;
    const auto span = [&](std::size_t line, std::size_t begin, std::size_t end) {
        const std::size_t start = document.lineStart(line);
        return Span{path, start + begin, start + end};
    };
    for (std::size_t index = 0; index < document.lineCount(); ++index) {
        const std::string_view line = document.line(index);
        // The empty "line" after a final line feed belongs to no scene.
        if (index + 1 == document.lineCount() && line.empty() && index > 0)
            break;
        if (!file.scenes.empty())
            file.scenes.back().lastLine = index;
        if (!line.empty() && line[0] == '#') {
            bool sets = false;
            std::vector<std::pair<std::size_t, std::string>> facts;
            if (!file.scenes.empty() && readAnnotation(line, sets, facts)) {
                for (auto& [at, name] : facts) {
                    const Span where = span(index, at, at + name.size());
                    file.facts.push_back(Fact{std::move(name), where, sets, file.scenes.size() - 1, choice});
                }
            }
            continue;
        }
        if (contains(line, "SCENE")) {
            const auto [begin, end] = secondWord(line);
            if (!file.scenes.empty())
                file.scenes.back().lastLine = index - 1;
            file.scenes.push_back(
                Scene{std::string(line.substr(begin, end - begin)), span(index, begin, end), index, index, {}});
            choice = FORWARD_LINK;
            continue;
        }
        if (file.scenes.empty() || line.empty())
            continue;
        const std::size_t scene = file.scenes.size() - 1;
        if (contains(line, "FORWARD")) {
            const auto [begin, end] = secondWord(line);
            file.links.push_back(
                Link{std::string(line.substr(begin, end - begin)), span(index, begin, end), scene, FORWARD_LINK});
        } else if (contains(line, "ORANE") || contains(line, "NATHAN")) {
            continue;
        } else if (contains(line, "*")) {
            file.scenes.back().choices.push_back(
                Choice{std::string(line.substr(line.find('*') + 1)), span(index, 0, line.size())});
            ++choice;
        } else if (contains(line, "->") && choice != FORWARD_LINK) {
            const auto [begin, end] = trimmedRange(line, line.find("->") + 2, line.size());
            file.links.push_back(
                Link{std::string(line.substr(begin, end - begin)), span(index, begin, end), scene, choice});
        }
    }
    return file;
}

void StoryIndex::update(Workspace& workspace)
{
    readSuspects(workspace);
    const std::vector<std::string> paths = workspace.storyFiles();
    std::vector<File> files;
    files.reserve(paths.size());
    for (const std::string& path : paths) {
        const std::uint64_t revision = workspace.revision(path);
        const auto old =
            std::find_if(files_.begin(), files_.end(), [&path](const File& file) { return file.path == path; });
        if (old != files_.end() && revisions_[path] == revision) {
            files.push_back(std::move(*old));
            continue;
        }
        files.push_back(read(path, workspace.document(path)));
        revisions_[path] = revision;
    }
    files_ = std::move(files);
}

void StoryIndex::readSuspects(Workspace& workspace)
{
    const std::string path = workspace.suspectsPath();
    const std::uint64_t revision = workspace.revision(path);
    if (revision == suspectsRevision_)
        return;
    suspectsRevision_ = revision;
    suspectLines_.clear();
    const TextDocument& list = workspace.document(path);
    for (std::size_t index = 0; index < list.lineCount(); ++index) {
        const std::string_view line = list.line(index);
        const auto [begin, end] = trimmedRange(line, 0, line.size());
        if (index + 1 == list.lineCount() && line.empty())
            break;
        const std::size_t start = list.lineStart(index);
        suspectLines_.push_back(
            Suspect{std::string(line.substr(begin, end - begin)), Span{path, start + begin, start + end}});
    }
}

const StoryIndex::File* StoryIndex::file(const std::string& path) const
{
    const auto found =
        std::find_if(files_.begin(), files_.end(), [&path](const File& each) { return each.path == path; });
    return found == files_.end() ? nullptr : &*found;
}

bool StoryIndex::isSuspect(const std::string& name) const
{
    return std::any_of(suspectLines_.begin(), suspectLines_.end(),
                       [&name](const Suspect& suspect) { return suspect.name == name; });
}

const StoryIndex::Scene* StoryIndex::definition(const std::string& name, const File** in) const
{
    for (const File& file : files_) {
        for (const Scene& scene : file.scenes) {
            if (scene.name == name) {
                if (in != nullptr)
                    *in = &file;
                return &scene;
            }
        }
    }
    return nullptr;
}

std::vector<std::pair<const StoryIndex::File*, const StoryIndex::Scene*>>
StoryIndex::definitions(const std::string& name) const
{
    std::vector<std::pair<const File*, const Scene*>> found;
    for (const File& file : files_) {
        for (const Scene& scene : file.scenes) {
            if (scene.name == name)
                found.emplace_back(&file, &scene);
        }
    }
    return found;
}

std::vector<std::pair<const StoryIndex::File*, const StoryIndex::Link*>>
StoryIndex::linksTo(const std::string& name) const
{
    std::vector<std::pair<const File*, const Link*>> found;
    for (const File& file : files_) {
        for (const Link& link : file.links) {
            if (link.target == name)
                found.emplace_back(&file, &link);
        }
    }
    return found;
}

std::vector<const StoryIndex::Fact*> StoryIndex::factUses(const std::string& name) const
{
    std::vector<const Fact*> found;
    for (const File& file : files_) {
        for (const Fact& fact : file.facts) {
            if (fact.name == name)
                found.push_back(&fact);
        }
    }
    return found;
}

std::vector<std::string> StoryIndex::sceneNames() const
{
    std::set<std::string> names;
    for (const File& file : files_) {
        for (const Scene& scene : file.scenes) {
            if (!scene.name.empty())
                names.insert(scene.name);
        }
    }
    return {names.begin(), names.end()};
}

std::vector<std::string> StoryIndex::factNames() const
{
    std::set<std::string> names;
    for (const File& file : files_) {
        for (const Fact& fact : file.facts)
            names.insert(fact.name);
    }
    return {names.begin(), names.end()};
}

const StoryIndex::Scene* StoryIndex::sceneAt(const File& file, std::size_t line) const
{
    for (const Scene& scene : file.scenes) {
        if (line >= scene.firstLine && line <= scene.lastLine)
            return &scene;
    }
    return nullptr;
}

} // namespace orane::lsp
