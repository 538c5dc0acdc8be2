#pragma once

#include "../common/random.hpp"

#include <vector>

namespace orane::audiogen
{

/// A felt-hammer piano: stretched partials, a quick first decay and a long singing second one,
/// paired strings that beat gently, a hammer thump, and dampers that fall when the key is let go.
class Piano
{
public:
    explicit Piano(double sampleRate);

    std::vector<float> play(double pitch, double seconds, float velocity, assetgen::Random& random) const;

private:
    double sampleRate_ = 44100.0;
};

} // namespace orane::audiogen
