#include "biquad.hpp"

#include <algorithm>
#include <cmath>

namespace orane::audiogen
{

namespace
{

constexpr double TWO_PI = 6.283185307179586;

struct Angles
{
    double cosine;
    double alpha;
};

Angles anglesFor(double sampleRate, double frequency, double q)
{
    // Keep the corner below Nyquist so that sweeps cannot make the filter unstable.
    const double omega = TWO_PI * std::min(frequency, sampleRate * 0.45) / sampleRate;
    return {std::cos(omega), std::sin(omega) / (2.0 * q)};
}

} // namespace

Biquad Biquad::lowPass(double sampleRate, double cutoff, double q)
{
    Biquad filter;
    filter.retuneLowPass(sampleRate, cutoff, q);
    return filter;
}

Biquad Biquad::highPass(double sampleRate, double cutoff, double q)
{
    const Angles a = anglesFor(sampleRate, cutoff, q);
    Biquad filter;
    filter.setCoefficients((1 + a.cosine) / 2, -(1 + a.cosine), (1 + a.cosine) / 2, 1 + a.alpha, -2 * a.cosine,
                           1 - a.alpha);
    return filter;
}

Biquad Biquad::bandPass(double sampleRate, double centre, double q)
{
    const Angles a = anglesFor(sampleRate, centre, q);
    Biquad filter;
    filter.setCoefficients(a.alpha, 0, -a.alpha, 1 + a.alpha, -2 * a.cosine, 1 - a.alpha);
    return filter;
}

void Biquad::retuneLowPass(double sampleRate, double cutoff, double q)
{
    const Angles a = anglesFor(sampleRate, cutoff, q);
    setCoefficients((1 - a.cosine) / 2, 1 - a.cosine, (1 - a.cosine) / 2, 1 + a.alpha, -2 * a.cosine, 1 - a.alpha);
}

void Biquad::setCoefficients(double b0, double b1, double b2, double a0, double a1, double a2)
{
    b0_ = b0 / a0;
    b1_ = b1 / a0;
    b2_ = b2 / a0;
    a1_ = a1 / a0;
    a2_ = a2 / a0;
}

float Biquad::process(float input)
{
    const double output = b0_ * input + b1_ * x1_ + b2_ * x2_ - a1_ * y1_ - a2_ * y2_;
    x2_ = x1_;
    x1_ = input;
    y2_ = y1_;
    y1_ = output;
    return static_cast<float>(output);
}

} // namespace orane::audiogen
