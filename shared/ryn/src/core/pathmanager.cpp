#include <ryn/core/pathmanager.hpp>

namespace ryn
{

std::string PathManager::fontsPath() const
{
    return resourcesPath() + "fonts/";
}

std::string PathManager::resourcesPath() const
{
    return "resources/";
}

std::string PathManager::shadersPath() const
{
    return resourcesPath() + "shaders/";
}

std::string PathManager::texturesPath() const
{
    return resourcesPath() + "textures/";
}

bool PathManager::init()
{
    return true;
}

} // namespace ryn
