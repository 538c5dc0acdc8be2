#pragma once

#include <ryn/core/resourcemanager.hpp>

namespace orane
{

/// Loads the game's fonts and textures (see resourceids.hpp) from the path manager's folders.
class OraneResourceManager : public ryn::ResourceManager
{
public:
    [[nodiscard]] bool init() override;
    /// A file that cannot be loaded throws the holder's error; the files after it are not
    /// loaded.
    [[nodiscard]] bool load() override;
};

} // namespace orane
