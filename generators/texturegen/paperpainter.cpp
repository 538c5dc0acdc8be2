#include "paperpainter.hpp"

#include "../common/random.hpp"
#include "gradientnoise.hpp"
#include "scalarfield.hpp"

#include <cmath>

namespace orane::texturegen
{

namespace
{

constexpr Rgb AGED = Rgb::bytes(214, 190, 146);
constexpr Rgb FOXING = Rgb::bytes(176, 128, 78);

/// Brightness changes: cloudy formation, fine grain and fibres, as a multiplier around 1.
ScalarField paintShade(int width, int height, std::uint64_t seed)
{
    const GradientNoise clouds(seed + 1);
    const GradientNoise mottle(seed + 2);
    ScalarField shade(width, height, 0.f);
    assetgen::Random grain(seed + 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float cloud =
                clouds.fractal(static_cast<float>(x) / 170.f, static_cast<float>(y) / 170.f, 4) * 0.030f;
            const float flocks = mottle.fractal(static_cast<float>(x) / 9.f, static_cast<float>(y) / 7.f, 3) * 0.016f;
            const float speck = static_cast<float>(grain.uniform() - 0.5) * 0.022f;
            shade.set(x, y, cloud + flocks + speck);
        }
    }

    // Fibres: short curling strands, most a shade darker, some catching the light.
    assetgen::Random random(seed + 4);
    const int fibreCount = width * height / 220;
    for (int fibre = 0; fibre < fibreCount; ++fibre) {
        float x = static_cast<float>(random.uniform(0, width));
        float y = static_cast<float>(random.uniform(0, height));
        float angle = static_cast<float>(random.uniform(0, 6.2831853));
        const float bend = static_cast<float>(random.normal() * 0.012);
        const int steps = random.integer(8, 40);
        const float strength =
            static_cast<float>(random.chance(0.7) ? -random.uniform(0.006, 0.020) : random.uniform(0.005, 0.013));
        for (int step = 0; step < steps; ++step) {
            shade.addGaussian(x, y, 0.45f, strength);
            angle += bend + static_cast<float>(random.normal() * 0.02);
            x += std::cos(angle) * 0.5f;
            y += std::sin(angle) * 0.5f;
        }
    }
    return shade;
}

/// How far ageing has yellowed each pixel, 0..1: strongest along the edges, ragged inwards.
ScalarField paintAgeing(int width, int height, std::uint64_t seed)
{
    const GradientNoise ragged(seed + 5);
    ScalarField age(width, height, 0.f);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float edge = static_cast<float>(std::min(std::min(x, width - 1 - x), std::min(y, height - 1 - y)));
            const float reach =
                16.f + 9.f * ragged.fractal(static_cast<float>(x) / 60.f, static_cast<float>(y) / 60.f, 3);
            const float border = std::exp(-edge / std::max(reach, 4.f));
            const float overall =
                0.10f + 0.06f * ragged.fractal(static_cast<float>(x) / 240.f + 9.f, static_cast<float>(y) / 240.f, 2);
            age.set(x, y, std::min(1.f, overall + 0.55f * border + 0.18f * std::exp(-edge / 2.5f)));
        }
    }
    return age;
}

/// Foxing: a few rusty spots with soft, uneven rims, mostly towards the edges of the sheet.
ScalarField paintFoxing(int width, int height, std::uint64_t seed)
{
    assetgen::Random random(seed + 6);
    const GradientNoise rim(seed + 7);
    ScalarField fox(width, height, 0.f);
    const int spots = random.integer(7, 11);
    for (int spot = 0; spot < spots; ++spot) {
        const bool nearEdge = random.chance(0.6);
        float cx = static_cast<float>(random.uniform(0, width));
        float cy = static_cast<float>(random.uniform(0, height));
        if (nearEdge) {
            if (random.chance(0.5))
                cx = random.chance(0.5) ? static_cast<float>(random.uniform(4, 40))
                                        : static_cast<float>(width) - static_cast<float>(random.uniform(4, 40));
            else
                cy = random.chance(0.5) ? static_cast<float>(random.uniform(4, 50))
                                        : static_cast<float>(height) - static_cast<float>(random.uniform(4, 50));
        }
        const float radius = static_cast<float>(random.uniform(2.5, 9.0));
        const float strength = static_cast<float>(random.uniform(0.10, 0.28));
        const int reach = static_cast<int>(radius * 3.f);
        for (int y = static_cast<int>(cy) - reach; y <= static_cast<int>(cy) + reach; ++y) {
            for (int x = static_cast<int>(cx) - reach; x <= static_cast<int>(cx) + reach; ++x) {
                const float wobble = 1.f
                                     + 0.45f
                                           * rim.at(static_cast<float>(x) / 4.f + static_cast<float>(spot) * 13.f,
                                                    static_cast<float>(y) / 4.f);
                const float distance =
                    std::hypot(static_cast<float>(x) - cx, static_cast<float>(y) - cy) / (radius * wobble);
                // A faint halo, a slightly darker ring, and a darker speck at the heart.
                const float halo = std::exp(-distance * distance * 1.3f) * 0.6f;
                const float ring = std::exp(-(distance - 0.8f) * (distance - 0.8f) * 18.f) * 0.35f;
                const float core = std::exp(-distance * distance * 14.f) * 0.5f;
                fox.add(x, y, strength * (halo + ring + core));
            }
        }
        // A sprinkle of tiny satellite specks around the larger spots.
        const int specks = random.integer(0, 6);
        for (int speck = 0; speck < specks; ++speck)
            fox.addGaussian(cx + static_cast<float>(random.normal() * radius * 2.5),
                            cy + static_cast<float>(random.normal() * radius * 2.5),
                            static_cast<float>(random.uniform(0.5, 1.3)), strength * 0.8f);
    }
    return fox;
}

} // namespace

PaperPainter::PaperPainter(std::uint64_t seed)
    : seed_(seed)
{}

FloatImage PaperPainter::paint(int width, int height) const
{
    const ScalarField shade = paintShade(width, height, seed_);
    const ScalarField age = paintAgeing(width, height, seed_);
    const ScalarField fox = paintFoxing(width, height, seed_);
    FloatImage paper(width, height, BASE);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Rgb colour = mix(BASE, AGED, age.at(x, y));
            colour = mix(colour, FOXING, std::min(fox.at(x, y), 0.6f));
            paper.set(x, y, colour * (1.f + shade.at(x, y)));
        }
    }
    return paper;
}

} // namespace orane::texturegen
