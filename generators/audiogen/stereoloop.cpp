#include "stereoloop.hpp"

#include <algorithm>
#include <cmath>

namespace orane::audiogen
{

StereoLoop::StereoLoop(std::size_t frames)
    : left_(frames)
    , right_(frames)
{}

void StereoLoop::add(std::int64_t start, const std::vector<float>& sound, float gain, float pan)
{
    const float angle = (std::clamp(pan, -1.f, 1.f) + 1.f) * 0.78539816f;
    left_.add(start, sound, gain * std::cos(angle));
    right_.add(start, sound, gain * std::sin(angle));
}

void StereoLoop::mix(const StereoLoop& other, float gain)
{
    const std::size_t count = std::min(frames(), other.frames());
    for (std::size_t frame = 0; frame < count; ++frame) {
        left_.at(frame) += other.left_.at(frame) * gain;
        right_.at(frame) += other.right_.at(frame) * gain;
    }
}

void StereoLoop::scale(float gain)
{
    left_.scale(gain);
    right_.scale(gain);
}

float StereoLoop::peak() const
{
    return std::max(left_.peak(), right_.peak());
}

float StereoLoop::rms() const
{
    const float l = left_.rms();
    const float r = right_.rms();
    return std::sqrt((l * l + r * r) * 0.5f);
}

} // namespace orane::audiogen
