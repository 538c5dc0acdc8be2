#include "factbits.hpp"

namespace orane
{
namespace
{

constexpr std::size_t WORD_BITS = 64;

} // namespace

FactBits::FactBits(std::size_t factCount, bool all)
    : words_((factCount + WORD_BITS - 1) / WORD_BITS, all ? ~std::uint64_t{0} : 0)
{}

bool FactBits::contains(std::uint32_t fact) const
{
    return ((words_[fact / WORD_BITS] >> (fact % WORD_BITS)) & 1u) != 0;
}

void FactBits::insert(std::uint32_t fact)
{
    words_[fact / WORD_BITS] |= std::uint64_t{1} << (fact % WORD_BITS);
}

void FactBits::unite(const FactBits& other)
{
    for (std::size_t word = 0; word < words_.size(); ++word)
        words_[word] |= other.words_[word];
}

bool FactBits::intersect(const FactBits& other)
{
    bool dropped = false;
    for (std::size_t word = 0; word < words_.size(); ++word) {
        const std::uint64_t kept = words_[word] & other.words_[word];
        dropped = dropped || kept != words_[word];
        words_[word] = kept;
    }
    return dropped;
}

} // namespace orane
