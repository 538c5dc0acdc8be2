#pragma once

#include "workspace.hpp"

#include <map>
#include <string>

namespace orane::lsp
{

/// A private copy of the stories directory as the editor sees it, for checks that read a
/// directory: open buffers are written out, the other story files are links to the real ones.
/// Only what changed is written again. The copy is removed with this object.
class StagedStory
{
public:
    StagedStory() = default;
    ~StagedStory();
    StagedStory(const StagedStory&) = delete;
    StagedStory& operator=(const StagedStory&) = delete;

    /// Brings the copy up to date; answers its directory (ending with '/'), empty on failure.
    [[nodiscard]] std::string stage(Workspace& workspace);
    /// The real file behind a path inside the copy; the path itself when it is not inside.
    [[nodiscard]] std::string realPath(const std::string& stagedPath, const Workspace& workspace) const;

private:
    void place(const std::string& path, Workspace& workspace);

    std::string directory_;
    /// File name in the copy -> the revision written there (0 for a link to the real file).
    std::map<std::string, std::uint64_t> placed_;
};

} // namespace orane::lsp
