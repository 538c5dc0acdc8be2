#pragma once

#include "scenemanager/textfile.hpp"

#include <string>

namespace orane
{

/// Where the story loader gets the bytes of a story file: the disk for the game, open editor
/// buffers in front of the disk for an editor's language server. Paths are the loader's own:
/// the stories directory (ending with '/') followed by the file's name.
class StorySource
{
public:
    virtual ~StorySource() = default;

    /// The file at `path`, read and checked as TextFile::load does (CANNOT_OPEN when there is
    /// no such file, TOO_LARGE beyond TextFile::MAX_BYTES).
    [[nodiscard]] virtual TextFile read(const std::string& path) const = 0;
};

} // namespace orane
