#pragma once

#include <string>

namespace ryn
{

/// Directories of the resource tree, relative to the working directory, each ending with "/".
/// The sub-directories follow `resourcesPath()`, so a derived manager moves them all at once.
class PathManager
{
public:
    virtual ~PathManager() = default;

    [[nodiscard]] virtual std::string fontsPath() const;
    [[nodiscard]] virtual std::string resourcesPath() const;
    [[nodiscard]] virtual std::string shadersPath() const;
    [[nodiscard]] virtual std::string texturesPath() const;
    [[nodiscard]] virtual bool init();
};

} // namespace ryn
