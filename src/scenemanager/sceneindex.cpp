#include "scenemanager/sceneindex.hpp"

namespace orane
{

SceneIndex::SceneIndex(const SceneMap& scenes)
{
    scenes_.reserve(scenes.size());
    for (const auto& entry : scenes)
        scenes_.emplace(viewOf(entry.first), &entry);
}

const SceneMap::value_type* SceneIndex::find(CodePointView name) const
{
    const auto found = scenes_.find(name);
    return found == scenes_.end() ? nullptr : found->second;
}

std::size_t SceneIndex::NameHash::operator()(CodePointView name) const
{
    // FNV-1a over the code points: names differ mostly in their last characters, which a hash
    // of every character sees.
    std::size_t hash = 14695981039346656037ULL;
    for (sf::Uint32 codePoint : name) {
        hash ^= codePoint;
        hash *= 1099511628211ULL;
    }
    return hash;
}

} // namespace orane
