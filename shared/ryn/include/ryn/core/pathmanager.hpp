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

    virtual std::string fontsPath() const;
    virtual std::string resourcesPath() const;
    virtual std::string shadersPath() const;
    virtual std::string texturesPath() const;
    [[nodiscard]] virtual bool init();
};

} // namespace ryn
