#include "scenemanager/sceneindex.hpp"

namespace orane
{

SceneIndex::SceneIndex(const SceneMap& scenes)
{
    entries_.reserve(scenes.size());
    for (const Entry& entry : scenes)
        entries_.push_back(&entry);
    std::size_t capacity = 16;
    while (capacity < 2 * entries_.size())
        capacity *= 2;
    slots_.resize(capacity);
    // Keys are unique in the map: each one takes the first free slot of its run.
    for (const Entry* const& entry : entries_) {
        const CodePointView name = viewOf(entry->first);
        const auto nameStart = static_cast<std::uint32_t>(names_.size());
        names_.insert(names_.end(), name.begin(), name.end());
        const std::size_t hash = hashOf(name);
        std::size_t at = hash & (capacity - 1);
        while (slots_[at].entry != nullptr)
            at = (at + 1) & (capacity - 1);
        const auto position = static_cast<std::uint32_t>(&entry - entries_.data());
        slots_[at] = Slot{hash, nameStart, static_cast<std::uint32_t>(name.size()), position, entry};
    }
}

const SceneIndex::Entry* SceneIndex::find(CodePointView name) const
{
    const Slot* slot = findSlot(name);
    return slot == nullptr ? nullptr : slot->entry;
}

std::optional<std::size_t> SceneIndex::findPosition(CodePointView name) const
{
    const Slot* slot = findSlot(name);
    if (slot == nullptr)
        return std::nullopt;
    return slot->position;
}

const SceneIndex::Slot* SceneIndex::findSlot(CodePointView name) const
{
    const std::size_t mask = slots_.size() - 1;
    const std::size_t hash = hashOf(name);
    for (std::size_t at = hash & mask; slots_[at].entry != nullptr; at = (at + 1) & mask) {
        const Slot& slot = slots_[at];
        if (slot.hash == hash && CodePointView(names_.data() + slot.nameStart, slot.nameLength) == name)
            return &slot;
    }
    return nullptr;
}

std::size_t SceneIndex::hashOf(CodePointView name)
{
    // FNV-1a over the code points, whose last characters are often all that sets names apart;
    // the final mix spreads them over the low bits that pick a slot.
    std::size_t hash = 14695981039346656037ULL;
    for (sf::Uint32 codePoint : name) {
        hash ^= codePoint;
        hash *= 1099511628211ULL;
    }
    return hash ^ (hash >> 29);
}

} // namespace orane
