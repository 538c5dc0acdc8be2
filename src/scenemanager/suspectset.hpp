#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orane
{

/// Which suspects have been investigated, by their index in Story::suspects(). The first 64 are
/// held in the value itself: a play position copies without allocating for any real story.
class SuspectSet
{
public:
    [[nodiscard]] bool contains(std::size_t suspect) const;
    void insert(std::size_t suspect);
    [[nodiscard]] bool empty() const;
    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] std::size_t hash() const;

    bool operator==(const SuspectSet& other) const;
    bool operator!=(const SuspectSet& other) const { return !(*this == other); }

private:
    static constexpr std::size_t WORD_BITS = 64;

    std::uint64_t first_ = 0;
    /// Suspects from the 65th on; no word is kept once its bits are all zero at its end.
    std::vector<std::uint64_t> more_;
};

} // namespace orane
