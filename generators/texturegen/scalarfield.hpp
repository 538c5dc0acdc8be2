#pragma once

#include <vector>

namespace orane::texturegen
{

/// One float per pixel: a layer of shading, coverage or thickness that painters build up
/// before it is turned into colour.
class ScalarField
{
public:
    ScalarField(int width, int height, float fill = 0.f);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    [[nodiscard]] float at(int x, int y) const { return values_[index(x, y)]; }
    /// Bilinear read; outside the field it reads the nearest edge.
    [[nodiscard]] float sample(float x, float y) const;
    void set(int x, int y, float value) { values_[index(x, y)] = value; }
    /// Adds to a pixel; outside the field nothing happens.
    void add(int x, int y, float amount);

    /// Adds amount at the centre falling off as a Gaussian of the given deviation (in pixels).
    void addGaussian(float centreX, float centreY, float deviation, float amount);
    /// Raises pixels towards amount over a filled disc with an antialiased rim (maximum, not sum).
    void raiseDisc(float centreX, float centreY, float radius, float amount);

    /// Distance in pixels from every pixel at or above the threshold to the nearest one below it
    /// (0 for pixels below; pixels beyond the edge do not count); a two-pass chamfer estimate,
    /// good to a few percent.
    [[nodiscard]] ScalarField distanceInside(float threshold) const;

private:
    [[nodiscard]] std::size_t index(int x, int y) const { return static_cast<std::size_t>(y) * width_ + x; }

    int width_ = 0;
    int height_ = 0;
    std::vector<float> values_;
};

} // namespace orane::texturegen
