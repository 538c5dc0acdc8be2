#pragma once

#include "scenemanager/storysource.hpp"

namespace orane
{

/// The story files as they stand on disk.
class DiskStorySource : public StorySource
{
public:
    [[nodiscard]] TextFile read(const std::string& path) const override;
};

} // namespace orane
