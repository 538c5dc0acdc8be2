#pragma once

namespace orane::audiogen
{

/// Second-order filter (the usual audio cookbook designs), one channel, direct form I.
class Biquad
{
public:
    static Biquad lowPass(double sampleRate, double cutoff, double q = 0.7071);
    static Biquad highPass(double sampleRate, double cutoff, double q = 0.7071);
    static Biquad bandPass(double sampleRate, double centre, double q);

    float process(float input);
    /// Moves the corner of a low-pass to a new frequency, keeping the filter's memory (for sweeps).
    void retuneLowPass(double sampleRate, double cutoff, double q = 0.7071);

private:
    void setCoefficients(double b0, double b1, double b2, double a0, double a1, double a2);

    double b0_ = 1.0;
    double b1_ = 0.0;
    double b2_ = 0.0;
    double a1_ = 0.0;
    double a2_ = 0.0;
    double x1_ = 0.0;
    double x2_ = 0.0;
    double y1_ = 0.0;
    double y2_ = 0.0;
};

} // namespace orane::audiogen
