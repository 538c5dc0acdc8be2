#pragma once

#include "looptrack.hpp"

#include <cstdint>
#include <vector>

namespace orane::audiogen
{

/// A seamless stereo loop: two wrapping tracks and a constant-power pan.
class StereoLoop
{
public:
    explicit StereoLoop(std::size_t frames);

    [[nodiscard]] std::size_t frames() const { return left_.frames(); }
    LoopTrack& left() { return left_; }
    LoopTrack& right() { return right_; }
    [[nodiscard]] const LoopTrack& left() const { return left_; }
    [[nodiscard]] const LoopTrack& right() const { return right_; }

    /// pan from -1 (left) to 1 (right); the sum of the channels' powers stays gain².
    void add(std::int64_t start, const std::vector<float>& sound, float gain, float pan);
    /// Adds another loop of the same length, sample for sample.
    void mix(const StereoLoop& other, float gain);
    void scale(float gain);

    [[nodiscard]] float peak() const;
    [[nodiscard]] float rms() const;

private:
    LoopTrack left_;
    LoopTrack right_;
};

} // namespace orane::audiogen
