#include "looptrack.hpp"

#include <cmath>

namespace orane::audiogen
{

LoopTrack::LoopTrack(std::size_t frames)
    : samples_(frames, 0.f)
{}

void LoopTrack::add(std::int64_t start, const std::vector<float>& sound, float gain)
{
    const auto length = static_cast<std::int64_t>(samples_.size());
    std::int64_t frame = ((start % length) + length) % length;
    for (float sample : sound) {
        samples_[static_cast<std::size_t>(frame)] += sample * gain;
        if (++frame == length)
            frame = 0;
    }
}

void LoopTrack::scale(float gain)
{
    for (float& sample : samples_)
        sample *= gain;
}

float LoopTrack::peak() const
{
    float peak = 0.f;
    for (float sample : samples_)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

float LoopTrack::rms() const
{
    double sum = 0.0;
    for (float sample : samples_)
        sum += static_cast<double>(sample) * sample;
    return samples_.empty() ? 0.f : static_cast<float>(std::sqrt(sum / static_cast<double>(samples_.size())));
}

} // namespace orane::audiogen
