#include "scenemanager/suspectset.hpp"

#include <bitset>

namespace orane
{

bool SuspectSet::contains(std::size_t suspect) const
{
    if (suspect < WORD_BITS)
        return (first_ >> suspect & 1u) != 0;
    const std::size_t word = suspect / WORD_BITS - 1;
    return word < more_.size() && (more_[word] >> (suspect % WORD_BITS) & 1u) != 0;
}

void SuspectSet::insert(std::size_t suspect)
{
    if (suspect < WORD_BITS) {
        first_ |= std::uint64_t{1} << suspect;
        return;
    }
    const std::size_t word = suspect / WORD_BITS - 1;
    if (more_.size() <= word)
        more_.resize(word + 1, 0);
    more_[word] |= std::uint64_t{1} << (suspect % WORD_BITS);
}

bool SuspectSet::empty() const
{
    return first_ == 0 && more_.empty();
}

std::size_t SuspectSet::size() const
{
    std::size_t count = std::bitset<WORD_BITS>(first_).count();
    for (std::uint64_t word : more_)
        count += std::bitset<WORD_BITS>(word).count();
    return count;
}

std::size_t SuspectSet::hash() const
{
    std::size_t mixed = static_cast<std::size_t>(first_ * 0x9E3779B97F4A7C15ULL);
    for (std::uint64_t word : more_)
        mixed = (mixed ^ static_cast<std::size_t>(word)) * 0x100000001B3ULL;
    return mixed;
}

bool SuspectSet::operator==(const SuspectSet& other) const
{
    return first_ == other.first_ && more_ == other.more_;
}

} // namespace orane
