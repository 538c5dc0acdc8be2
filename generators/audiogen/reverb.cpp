#include "reverb.hpp"

namespace orane::audiogen
{

namespace
{

// Mutually prime delay lengths at 44.1 kHz; the right side is detuned by a few samples so that the
// two sides decorrelate into a wide image.
constexpr int COMB_LENGTHS[] = {1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617};
constexpr int ALL_PASS_LENGTHS[] = {556, 441, 341, 225};
constexpr int STEREO_SPREAD = 23;
constexpr float INPUT_GAIN = 0.015f;

} // namespace

Reverb::Reverb(double sampleRate, float roomSize, float damping)
    : feedback_(0.7f + 0.28f * roomSize)
    , damping_(0.4f * damping)
{
    const double scale = sampleRate / 44100.0;
    for (int side = 0; side < 2; ++side) {
        for (int length : COMB_LENGTHS)
            combs_[side].push_back(
                {std::vector<float>(static_cast<std::size_t>((length + side * STEREO_SPREAD) * scale)), 0, 0.f});
        for (int length : ALL_PASS_LENGTHS)
            allPasses_[side].push_back(
                {std::vector<float>(static_cast<std::size_t>((length + side * STEREO_SPREAD) * scale)), 0});
    }
}

float Reverb::runComb(Comb& comb, float input) const
{
    const float output = comb.buffer[comb.position];
    comb.memory = output * (1.f - damping_) + comb.memory * damping_;
    comb.buffer[comb.position] = input + comb.memory * feedback_;
    if (++comb.position == comb.buffer.size())
        comb.position = 0;
    return output;
}

float Reverb::runAllPass(AllPass& allPass, float input)
{
    const float delayed = allPass.buffer[allPass.position];
    allPass.buffer[allPass.position] = input + delayed * 0.5f;
    if (++allPass.position == allPass.buffer.size())
        allPass.position = 0;
    return delayed - input;
}

std::pair<float, float> Reverb::process(float input)
{
    float out[2] = {0.f, 0.f};
    for (int side = 0; side < 2; ++side) {
        for (Comb& comb : combs_[side])
            out[side] += runComb(comb, input * INPUT_GAIN);
        for (AllPass& allPass : allPasses_[side])
            out[side] = runAllPass(allPass, out[side]);
    }
    return {out[0], out[1]};
}

} // namespace orane::audiogen
