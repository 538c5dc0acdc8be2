#pragma once

#include <cstdint>

namespace orane::assetgen
{

/// A small seeded generator (xoshiro256**) whose sequence is the same on every run and platform,
/// unlike the standard distributions, so that generated assets are byte-for-byte reproducible.
class Random
{
public:
    explicit Random(std::uint64_t seed);

    /// The next 64 raw bits.
    std::uint64_t next();
    /// Uniform in [0, 1).
    double uniform();
    /// Uniform in [low, high).
    double uniform(double low, double high);
    /// Uniform integer in [low, high], both ends included.
    int integer(int low, int high);
    /// True with the given probability.
    bool chance(double probability);
    /// Normally distributed with mean 0 and deviation 1.
    double normal();

private:
    std::uint64_t state_[4] = {};
};

/// Mixes a 64-bit value into a well-spread hash (splitmix64 finaliser), for lattice noise.
std::uint64_t hashBits(std::uint64_t value);

} // namespace orane::assetgen
