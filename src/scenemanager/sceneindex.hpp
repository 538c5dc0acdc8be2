#pragma once

#include "scene/codepoints.hpp"
#include "scenemanager/scenemap.hpp"

#include <cstddef>
#include <unordered_map>

namespace orane
{

/// The stored scenes by name in a hash table: the checks look up every link of a story, and a
/// search down the ordered map costs a cache miss at each of its levels.
class SceneIndex
{
public:
    /// Refers to `scenes`, which must outlive the index and stay unchanged.
    explicit SceneIndex(const SceneMap& scenes);

    /// The stored name and scene; null when no scene has that name.
    const SceneMap::value_type* find(CodePointView name) const;

private:
    struct NameHash
    {
        std::size_t operator()(CodePointView name) const;
    };

    std::unordered_map<CodePointView, const SceneMap::value_type*, NameHash> scenes_;
};

} // namespace orane
