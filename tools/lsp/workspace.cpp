#include "workspace.hpp"

#include <fstream>
#include <set>
#include <sstream>
#include <sys/stat.h>

namespace orane::lsp
{
namespace
{

bool isGameWhitespace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

} // namespace

std::string trimmedLikeTheGame(std::string_view text)
{
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isGameWhitespace(text[begin]))
        ++begin;
    while (end > begin && isGameWhitespace(text[end - 1]))
        --end;
    return std::string(text.substr(begin, end - begin));
}

void Workspace::setDirectory(std::string directory)
{
    if (!directory.empty() && directory.back() != '/')
        directory += '/';
    directory_ = std::move(directory);
}

void Workspace::open(const std::string& path, std::string text)
{
    FileState& file = open_[path];
    file.document.setText(std::move(text));
    file.readable = true;
    file.revision = nextRevision_++;
}

void Workspace::close(const std::string& path)
{
    open_.erase(path);
    // The file on disk may differ from the buffer that was dropped.
    disk_.erase(path);
}

TextDocument* Workspace::openDocument(const std::string& path)
{
    const auto found = open_.find(path);
    return found == open_.end() ? nullptr : &found->second.document;
}

std::vector<std::string> Workspace::openPaths() const
{
    std::vector<std::string> paths;
    for (const auto& entry : open_)
        paths.push_back(entry.first);
    return paths;
}

void Workspace::changed(const std::string& path)
{
    const auto found = open_.find(path);
    if (found != open_.end())
        found->second.revision = nextRevision_++;
}

const TextDocument& Workspace::document(const std::string& path)
{
    return state(path).document;
}

bool Workspace::exists(const std::string& path)
{
    return state(path).readable;
}

std::uint64_t Workspace::revision(const std::string& path)
{
    return state(path).revision;
}

Workspace::FileState& Workspace::state(const std::string& path)
{
    const auto found = open_.find(path);
    if (found != open_.end())
        return found->second;
    const auto [file, added] = disk_.try_emplace(path);
    if (added)
        readFromDisk(path, file->second);
    return file->second;
}

void Workspace::readFromDisk(const std::string& path, FileState& file)
{
    struct stat status = {};
    const bool found = ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    file.modified = found ? static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec : -1;
    file.size = found ? static_cast<std::int64_t>(status.st_size) : -1;
    std::ifstream stream(path, std::ios::binary);
    file.readable = found && stream.good();
    std::ostringstream content;
    if (file.readable)
        content << stream.rdbuf();
    file.document.setText(content.str());
    file.revision = nextRevision_++;
}

void Workspace::checkDisk()
{
    for (auto& [path, file] : disk_) {
        struct stat status = {};
        const bool found = ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
        const std::int64_t modified =
            found ? static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec : -1;
        const std::int64_t size = found ? static_cast<std::int64_t>(status.st_size) : -1;
        if (modified != file.modified || size != file.size)
            readFromDisk(path, file);
    }
}

std::vector<std::string> Workspace::suspects()
{
    const TextDocument& list = document(suspectsPath());
    std::set<std::string> names;
    if (!exists(suspectsPath()))
        return {};
    for (std::size_t index = 0; index < list.lineCount(); ++index) {
        // The game reads a last line only when it holds something.
        if (index + 1 == list.lineCount() && list.line(index).empty())
            break;
        names.insert(trimmedLikeTheGame(list.line(index)));
    }
    return {names.begin(), names.end()};
}

std::vector<std::string> Workspace::storyFiles()
{
    std::vector<std::string> files{directory_ + "story.txt"};
    for (const std::string& suspect : suspects())
        files.push_back(directory_ + suspect + ".txt");
    return files;
}

} // namespace orane::lsp
