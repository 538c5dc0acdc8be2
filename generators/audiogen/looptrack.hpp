#pragma once

#include <cstdint>
#include <vector>

namespace orane::audiogen
{

/// One channel of a seamless loop: whatever is written past the end comes back in at the start,
/// so a note or a tail that crosses the loop point is heard across the join, as in a live take.
class LoopTrack
{
public:
    explicit LoopTrack(std::size_t frames);

    [[nodiscard]] std::size_t frames() const { return samples_.size(); }
    [[nodiscard]] float at(std::size_t frame) const { return samples_[frame]; }
    float& at(std::size_t frame) { return samples_[frame]; }
    [[nodiscard]] const std::vector<float>& samples() const { return samples_; }

    /// Adds sound × gain from the given frame on; a negative start or a long sound wraps around.
    void add(std::int64_t start, const std::vector<float>& sound, float gain);
    void scale(float gain);

    [[nodiscard]] float peak() const;
    [[nodiscard]] float rms() const;

private:
    std::vector<float> samples_;
};

} // namespace orane::audiogen
