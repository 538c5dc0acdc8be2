#include "stagedstory.hpp"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <unistd.h>

namespace orane::lsp
{
namespace
{

std::string fileName(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string temporaryRoot()
{
    // Memory-backed when the system offers it: the copy is rewritten on every edit.
    const char* const candidates[] = {std::getenv("XDG_RUNTIME_DIR"), "/dev/shm", std::getenv("TMPDIR"), "/tmp"};
    for (const char* candidate : candidates) {
        if (candidate != nullptr && *candidate != '\0' && ::access(candidate, W_OK) == 0)
            return candidate;
    }
    return "/tmp";
}

} // namespace

StagedStory::~StagedStory()
{
    if (directory_.empty())
        return;
    for (const auto& entry : placed_)
        std::remove((directory_ + entry.first).c_str());
    ::rmdir(directory_.c_str());
}

std::string StagedStory::stage(Workspace& workspace)
{
    if (directory_.empty()) {
        std::string pattern = temporaryRoot() + "/orane-story-lsp-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr)
            return {};
        directory_ = pattern + "/";
    }
    std::vector<std::string> paths = workspace.storyFiles();
    paths.push_back(workspace.suspectsPath());
    std::set<std::string> wanted;
    for (const std::string& path : paths) {
        wanted.insert(fileName(path));
        place(path, workspace);
    }
    for (auto entry = placed_.begin(); entry != placed_.end();) {
        if (wanted.count(entry->first) > 0) {
            ++entry;
            continue;
        }
        std::remove((directory_ + entry->first).c_str());
        entry = placed_.erase(entry);
    }
    return directory_;
}

void StagedStory::place(const std::string& path, Workspace& workspace)
{
    const std::string name = fileName(path);
    const std::string staged = directory_ + name;
    const bool open = workspace.isOpen(path);
    const std::uint64_t revision = open ? workspace.revision(path) : 0;
    const auto found = placed_.find(name);
    if (found != placed_.end() && found->second == revision)
        return;
    std::remove(staged.c_str());
    if (open) {
        std::ofstream(staged, std::ios::binary) << workspace.document(path).text();
    } else if (::symlink(path.c_str(), staged.c_str()) != 0) {
        return;
    }
    placed_[name] = revision;
}

std::string StagedStory::realPath(const std::string& stagedPath, const Workspace& workspace) const
{
    if (directory_.empty() || stagedPath.compare(0, directory_.size(), directory_) != 0)
        return stagedPath;
    return workspace.directory() + stagedPath.substr(directory_.size());
}

} // namespace orane::lsp
