#pragma once

namespace orane::audiogen
{

/// A sine by complex rotation: one multiply-add step per sample instead of a call to sin,
/// which is what makes rendering hundreds of additive notes take well under a second.
class SineOscillator
{
public:
    SineOscillator(double frequency, double sampleRate, double phase = 0.0);

    /// The current value, then one sample on.
    double next();

private:
    double real_ = 1.0;
    double imaginary_ = 0.0;
    double stepReal_ = 1.0;
    double stepImaginary_ = 0.0;
};

} // namespace orane::audiogen
