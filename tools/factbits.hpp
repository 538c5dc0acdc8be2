#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orane
{

/// A set of facts, by their number: what a reader knows, or what a scene or a choice sets.
/// Sets that are combined must be made for the same number of facts.
class FactBits
{
public:
    FactBits() = default;
    /// No fact, or every one of `factCount` when `all`.
    explicit FactBits(std::size_t factCount, bool all = false);

    [[nodiscard]] bool contains(std::uint32_t fact) const;
    void insert(std::uint32_t fact);
    /// Adds every fact of `other`.
    void unite(const FactBits& other);
    /// Keeps only the facts `other` holds too; answers whether anything was dropped.
    bool intersect(const FactBits& other);

    bool operator==(const FactBits& other) const { return words_ == other.words_; }
    bool operator!=(const FactBits& other) const { return !(*this == other); }

private:
    std::vector<std::uint64_t> words_;
};

} // namespace orane
