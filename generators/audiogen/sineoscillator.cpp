#include "sineoscillator.hpp"

#include <cmath>

namespace orane::audiogen
{

SineOscillator::SineOscillator(double frequency, double sampleRate, double phase)
    : real_(std::cos(phase))
    , imaginary_(std::sin(phase))
    , stepReal_(std::cos(6.283185307179586 * frequency / sampleRate))
    , stepImaginary_(std::sin(6.283185307179586 * frequency / sampleRate))
{}

double SineOscillator::next()
{
    const double value = imaginary_;
    const double real = real_ * stepReal_ - imaginary_ * stepImaginary_;
    imaginary_ = real_ * stepImaginary_ + imaginary_ * stepReal_;
    real_ = real;
    return value;
}

} // namespace orane::audiogen
