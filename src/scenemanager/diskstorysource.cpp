#include "scenemanager/diskstorysource.hpp"

namespace orane
{

TextFile DiskStorySource::read(const std::string& path) const
{
    return TextFile::load(path);
}

} // namespace orane
