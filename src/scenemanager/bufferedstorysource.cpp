#include "scenemanager/bufferedstorysource.hpp"

#include <filesystem>

namespace orane
{

BufferedStorySource::BufferedStorySource(const StorySource* fallback)
    : fallback_(fallback != nullptr ? fallback : &disk_)
{}

void BufferedStorySource::setBuffer(const std::string& path, std::string bytes)
{
    buffers_[keyOf(path)] = std::move(bytes);
}

void BufferedStorySource::removeBuffer(const std::string& path)
{
    buffers_.erase(keyOf(path));
}

bool BufferedStorySource::holdsBuffer(const std::string& path) const
{
    return buffers_.count(keyOf(path)) > 0;
}

TextFile BufferedStorySource::read(const std::string& path) const
{
    const auto found = buffers_.find(keyOf(path));
    if (found == buffers_.end())
        return fallback_->read(path);
    return TextFile::fromBytes(found->second);
}

std::string BufferedStorySource::keyOf(const std::string& path)
{
    return std::filesystem::path(path).lexically_normal().string();
}

} // namespace orane
