#pragma once

#include <ryn/core/assert.hpp>

#include <map>
#include <memory>
#include <stdexcept>
#include <string>

/// Owns resources loaded from files (fonts, textures) under identifiers. A resource keeps its
/// address until the holder is destroyed, so references handed out stay valid.
template <typename Resource, typename Identifier>
class ResourceHolder
{
public:
    /// Throws std::runtime_error "ResourceHolder::load - Failed to load <filename>" when the
    /// file cannot be loaded. Loading an id twice is a contract violation; the first stays.
    void load(Identifier id, const std::string& filename);
    /// The resource loaded under `id`, which must exist. If the report of a missing id lets
    /// the program go on, an empty resource stands in for it.
    Resource& get(Identifier id);
    [[nodiscard]] const Resource& get(Identifier id) const;

private:
    static Resource& standIn()
    {
        static Resource empty;
        return empty;
    }

    std::map<Identifier, std::unique_ptr<Resource>> mResourceMap;
};

template <typename Resource, typename Identifier>
void ResourceHolder<Resource, Identifier>::load(Identifier id, const std::string& filename)
{
    std::unique_ptr<Resource> resource(new Resource());
    if (!resource->loadFromFile(filename))
        throw std::runtime_error("ResourceHolder::load - Failed to load " + filename);

    auto inserted = mResourceMap.insert(std::make_pair(id, std::move(resource)));
    RYN_ASSERT(inserted.second);
}

template <typename Resource, typename Identifier>
Resource& ResourceHolder<Resource, Identifier>::get(Identifier id)
{
    auto found = mResourceMap.find(id);
    RYN_ASSERT(found != mResourceMap.end());
    return found != mResourceMap.end() ? *found->second : standIn();
}

template <typename Resource, typename Identifier>
const Resource& ResourceHolder<Resource, Identifier>::get(Identifier id) const
{
    auto found = mResourceMap.find(id);
    RYN_ASSERT(found != mResourceMap.end());
    return found != mResourceMap.end() ? *found->second : standIn();
}
