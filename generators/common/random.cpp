#include "random.hpp"

#include <cmath>

namespace orane::assetgen
{

namespace
{

std::uint64_t rotateLeft(std::uint64_t value, int bits)
{
    return (value << bits) | (value >> (64 - bits));
}

} // namespace

std::uint64_t hashBits(std::uint64_t value)
{
    value += 0x9e3779b97f4a7c15ULL;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
    return value ^ (value >> 31);
}

Random::Random(std::uint64_t seed)
{
    for (auto& word : state_) {
        seed = hashBits(seed);
        word = seed;
    }
}

std::uint64_t Random::next()
{
    const std::uint64_t result = rotateLeft(state_[1] * 5, 7) * 9;
    const std::uint64_t shifted = state_[1] << 17;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= shifted;
    state_[3] = rotateLeft(state_[3], 45);
    return result;
}

double Random::uniform()
{
    return static_cast<double>(next() >> 11) * (1.0 / 9007199254740992.0);
}

double Random::uniform(double low, double high)
{
    return low + (high - low) * uniform();
}

int Random::integer(int low, int high)
{
    const auto span = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low + 1);
    return low + static_cast<int>(next() % span);
}

bool Random::chance(double probability)
{
    return uniform() < probability;
}

double Random::normal()
{
    // Box-Muller; 1 - uniform() keeps the logarithm away from zero.
    const double radius = std::sqrt(-2.0 * std::log(1.0 - uniform()));
    return radius * std::cos(6.283185307179586 * uniform());
}

} // namespace orane::assetgen
