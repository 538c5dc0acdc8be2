#pragma once

#include "scene/codepoints.hpp"
#include "scenemanager/scenemap.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orane
{

/// The stored scenes in name order and by name in a hash table, for the checks that visit every
/// scene and look up every link of a story: stepping through or searching down the ordered map
/// costs a cache miss at each node.
class SceneIndex
{
public:
    using Entry = SceneMap::value_type;

    /// Refers to `scenes`, which must outlive the index and stay unchanged.
    explicit SceneIndex(const SceneMap& scenes);

    /// Every stored name and scene, in the map's order.
    [[nodiscard]] const std::vector<const Entry*>& entries() const { return entries_; }

    /// The stored name and scene; null when no scene has that name.
    [[nodiscard]] const Entry* find(CodePointView name) const;
    /// Its place in entries(); empty when no scene has that name.
    [[nodiscard]] std::optional<std::size_t> findPosition(CodePointView name) const;

private:
    /// A name is compared with its copy in names_, close to the other names, rather than with
    /// the map's key, which lies in a node of its own.
    struct Slot
    {
        std::size_t hash = 0;
        std::uint32_t nameStart = 0;
        std::uint32_t nameLength = 0;
        std::uint32_t position = 0;
        const Entry* entry = nullptr;
    };

    static std::size_t hashOf(CodePointView name);
    [[nodiscard]] const Slot* findSlot(CodePointView name) const;

    std::vector<const Entry*> entries_;
    std::vector<sf::Uint32> names_;
    /// Open addressing with linear probing, at most half full; its size is a power of two.
    std::vector<Slot> slots_;
};

} // namespace orane
