#pragma once

#include <cstdint>
#include <vector>

namespace orane::audiogen
{

/// One pistol shot in a small room, mono: the crack of the muzzle blast, a body of shaped noise
/// with a low boom under it, early reflections and a short tail, silent at the end.
class PistolShot
{
public:
    PistolShot(double sampleRate, std::uint64_t seed);

    /// About a second of sound, peaking at PEAK.
    [[nodiscard]] std::vector<float> render() const;

    static constexpr double SECONDS = 1.0;
    static constexpr float PEAK = 0.891f; ///< -1 dBFS

private:
    [[nodiscard]] std::vector<float> renderBlast() const;
    void addRoom(std::vector<float>& sound) const;

    double sampleRate_ = 44100.0;
    std::uint64_t seed_ = 0;
};

} // namespace orane::audiogen
