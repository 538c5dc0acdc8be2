#include "bloodpainter.hpp"

#include "../common/random.hpp"
#include "gradientnoise.hpp"

#include <algorithm>
#include <cmath>

namespace orane::texturegen
{

namespace
{

constexpr Rgb DEEP_RED = Rgb::bytes(92, 7, 11);
constexpr Rgb BRIGHT_RED = Rgb::bytes(136, 16, 16);
constexpr Rgb RUST = Rgb::bytes(116, 48, 22);
constexpr Rgb DRIED_RIM = Rgb::bytes(56, 19, 12);
constexpr Rgb SERUM = Rgb::bytes(168, 112, 70);

struct Point
{
    float x = 0.f;
    float y = 0.f;
};

void raise(ScalarField& field, int x, int y, float value)
{
    if (x >= 0 && y >= 0 && x < field.width() && y < field.height() && field.at(x, y) < value)
        field.set(x, y, value);
}

/// A drop that struck the page at an angle: an ellipse stretched along its flight.
void addDrop(ScalarField& cover, ScalarField& thickness, Point centre, float radius, float stretch, float angle,
             float depth)
{
    const float cosA = std::cos(angle);
    const float sinA = std::sin(angle);
    const int reach = static_cast<int>(std::ceil(radius * stretch + 2.f));
    for (int y = static_cast<int>(centre.y) - reach; y <= static_cast<int>(centre.y) + reach; ++y) {
        for (int x = static_cast<int>(centre.x) - reach; x <= static_cast<int>(centre.x) + reach; ++x) {
            const float dx = static_cast<float>(x) + 0.5f - centre.x;
            const float dy = static_cast<float>(y) + 0.5f - centre.y;
            const float along = (dx * cosA + dy * sinA) / stretch;
            const float across = -dx * sinA + dy * cosA;
            const float distance = std::hypot(along, across);
            const float amount = std::clamp(radius + 0.5f - distance, 0.f, 1.f);
            if (amount > 0.f) {
                raise(cover, x, y, amount);
                raise(thickness, x, y, depth * amount);
            }
        }
    }
}

Point quadratic(Point a, Point control, Point b, float t)
{
    const float u = 1.f - t;
    return {u * u * a.x + 2.f * u * t * control.x + t * t * b.x, u * u * a.y + 2.f * u * t * control.y + t * t * b.y};
}

} // namespace

BloodPainter::BloodPainter(std::uint64_t seed)
    : seed_(seed)
{}

BloodPainter::Stain BloodPainter::paintStain(int width, int height) const
{
    Stain stain{ScalarField(width, height), ScalarField(width, height)};
    assetgen::Random random(seed_);
    const GradientNoise ragged(seed_ + 1);

    // The pool, low on the spread and straddling the spine: overlapping lobes with a ragged rim.
    const Point impact{static_cast<float>(width) * 0.52f, static_cast<float>(height) * 0.74f};
    struct Lobe
    {
        Point centre;
        float deviation;
    };
    std::vector<Lobe> lobes{{impact, 26.f}};
    for (int lobe = 0; lobe < 15; ++lobe) {
        const float angle = static_cast<float>(random.uniform(0, 6.2831853));
        const float distance = static_cast<float>(random.uniform(12, 58));
        lobes.push_back({{impact.x + std::cos(angle) * distance, impact.y + std::sin(angle) * distance * 0.75f},
                         static_cast<float>(random.uniform(5, 20) * (1.0 - distance / 120.0))});
    }
    for (int y = static_cast<int>(impact.y) - 110; y <= static_cast<int>(impact.y) + 110; ++y) {
        for (int x = static_cast<int>(impact.x) - 130; x <= static_cast<int>(impact.x) + 130; ++x) {
            float field = 0.f;
            for (const Lobe& lobe : lobes) {
                const float dx = static_cast<float>(x) - lobe.centre.x;
                const float dy = static_cast<float>(y) - lobe.centre.y;
                field += std::exp(-(dx * dx + dy * dy) / (2.f * lobe.deviation * lobe.deviation));
            }
            field += 0.16f * ragged.fractal(static_cast<float>(x) / 24.f, static_cast<float>(y) / 24.f, 2)
                     + 0.07f * ragged.fractal(static_cast<float>(x) / 6.f + 50.f, static_cast<float>(y) / 6.f, 2);
            // The edge is about two pixels wide in this field; steeper would alias, softer would blur.
            const float amount = smoothstep(0.40f, 0.47f, field);
            raise(stain.cover, x, y, amount);
            raise(stain.thickness, x, y, amount * std::min(1.f, 0.55f + field * 0.5f));
        }
    }

    // Spatter thrown from the pool, mostly up and to the left, stretched along its flight,
    // smaller the further it flew; some drops trail a tiny satellite.
    for (int drop = 0; drop < 95; ++drop) {
        const float angle = static_cast<float>(random.normal() * 0.9 - 2.3);
        const float distance = static_cast<float>(55 + std::pow(random.uniform(), 1.6) * 300);
        const Point centre{impact.x + std::cos(angle) * distance, impact.y + std::sin(angle) * distance};
        const float radius = static_cast<float>(std::max(0.7, (5.5 - distance / 70.0) * random.uniform(0.4, 1.1)));
        const float stretch = 1.f + distance / 160.f * static_cast<float>(random.uniform(0.6, 1.4));
        addDrop(stain.cover, stain.thickness, centre, radius, stretch, angle, 0.85f);
        if (random.chance(0.35)) {
            const float gap = radius * stretch + static_cast<float>(random.uniform(2, 7));
            addDrop(stain.cover, stain.thickness, {centre.x + std::cos(angle) * gap, centre.y + std::sin(angle) * gap},
                    radius * 0.35f, 1.3f, angle, 0.8f);
        }
    }

    // A fine mist around the impact.
    for (int speck = 0; speck < 260; ++speck) {
        const float angle = static_cast<float>(random.uniform(0, 6.2831853));
        const float distance = static_cast<float>(40 + std::pow(random.uniform(), 2.0) * 260);
        addDrop(stain.cover, stain.thickness,
                {impact.x + std::cos(angle) * distance, impact.y + std::sin(angle) * distance * 0.85f},
                static_cast<float>(random.uniform(0.35, 1.1)), 1.f, angle, 0.7f);
    }

    // A smear: fingers dragged out of the pool across the right page, thinning and breaking up.
    // Each pixel remembers how far along the drag it lies and how far across it, so that the
    // streaks can follow the stroke.
    ScalarField smear(width, height);
    ScalarField along(width, height);
    ScalarField across(width, height);
    const Point start{impact.x + 26.f, impact.y + 10.f};
    const Point control{static_cast<float>(width) * 0.70f, static_cast<float>(height) * 0.95f};
    const Point end{static_cast<float>(width) * 0.88f, static_cast<float>(height) * 0.83f};
    const GradientNoise pressure(seed_ + 4);
    for (int finger = 0; finger < 5; ++finger) {
        const float offset = (static_cast<float>(finger) - 2.f) * 7.5f + static_cast<float>(random.normal() * 1.2);
        const float reach = static_cast<float>(random.uniform(0.75, 1.0));
        for (float t = 0.f; t <= reach; t += 0.002f) {
            const Point here = quadratic(start, control, end, t);
            const Point ahead = quadratic(start, control, end, t + 0.002f);
            const float length = std::max(std::hypot(ahead.x - here.x, ahead.y - here.y), 1e-4f);
            const float normalX = -(ahead.y - here.y) / length;
            const float normalY = (ahead.x - here.x) / length;
            const float spread = offset * (1.f - 0.2f * t);
            const Point at{here.x + normalX * spread, here.y + normalY * spread};
            const float radius = 6.5f * (1.f - 0.45f * t);
            const float strength = 0.8f + 0.2f * pressure.at(t * 9.f, static_cast<float>(finger) * 3.7f);
            for (int y = static_cast<int>(at.y - radius - 1); y <= static_cast<int>(at.y + radius + 1); ++y)
                for (int x = static_cast<int>(at.x - radius - 1); x <= static_cast<int>(at.x + radius + 1); ++x) {
                    const float dx = static_cast<float>(x) + 0.5f - here.x;
                    const float dy = static_cast<float>(y) + 0.5f - here.y;
                    const float amount = std::clamp(radius + 0.5f
                                                        - std::hypot(static_cast<float>(x) + 0.5f - at.x,
                                                                     static_cast<float>(y) + 0.5f - at.y),
                                                    0.f, 1.f)
                                         * strength;
                    if (amount > 0.f && x >= 0 && y >= 0 && x < width && y < height && amount > smear.at(x, y)) {
                        smear.set(x, y, amount);
                        along.set(x, y, t);
                        across.set(x, y, dx * normalX + dy * normalY);
                    }
                }
        }
    }
    const GradientNoise drag(seed_ + 2);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float amount = smear.at(x, y);
            if (amount <= 0.f)
                continue;
            const float t = along.at(x, y);
            const float grain = 0.5f + 0.5f * drag.fractal(t * 40.f, across.at(x, y) / 2.f, 3);
            const float threshold = 0.10f + 0.75f * std::pow(t, 1.3f);
            const float kept = smoothstep(threshold - 0.06f, threshold + 0.06f, grain);
            const float cover = amount * kept;
            if (cover > stain.cover.at(x, y)) {
                stain.cover.set(x, y, cover);
                stain.thickness.set(x, y, cover * (0.7f - 0.6f * t) * (0.6f + 0.4f * grain));
            }
        }
    }

    // Two stray drops that fell straight down: round, with a little crown.
    for (const Point centre : {Point{static_cast<float>(width) * 0.12f, static_cast<float>(height) * 0.86f},
                               Point{static_cast<float>(width) * 0.93f, static_cast<float>(height) * 0.12f}}) {
        const float radius = static_cast<float>(random.uniform(5.5, 8));
        addDrop(stain.cover, stain.thickness, centre, radius, 1.f, 0.f, 0.95f);
        // The rim is scalloped by small bulges, and a few satellites landed a little further out.
        for (int point = 0; point < 7; ++point) {
            const float angle = static_cast<float>(random.uniform(0, 6.2831853));
            const float distance = radius * static_cast<float>(random.uniform(0.75, 0.95));
            addDrop(stain.cover, stain.thickness,
                    {centre.x + std::cos(angle) * distance, centre.y + std::sin(angle) * distance},
                    radius * static_cast<float>(random.uniform(0.25, 0.45)), 1.f, angle, 0.95f);
        }
        for (int point = 0; point < 4; ++point) {
            const float angle = static_cast<float>(random.uniform(0, 6.2831853));
            const float distance = radius + static_cast<float>(random.uniform(3, 12));
            addDrop(stain.cover, stain.thickness,
                    {centre.x + std::cos(angle) * distance, centre.y + std::sin(angle) * distance},
                    static_cast<float>(random.uniform(0.5, 1.1)), 1.4f, angle, 0.85f);
        }
    }
    return stain;
}

FloatImage BloodPainter::colourSpread(const FloatImage& spreadPaper, const Stain& stain) const
{
    const int width = spreadPaper.width();
    const int height = spreadPaper.height();
    const ScalarField inside = stain.cover.distanceInside(0.5f);
    ScalarField outsideCover(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            outsideCover.set(x, y, 1.f - stain.cover.at(x, y));
    const ScalarField outside = outsideCover.distanceInside(0.5f);
    const GradientNoise clot(seed_ + 3);

    FloatImage stained = spreadPaper;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Rgb paper = spreadPaper.colour(x, y);
            // The paper's own grain shows through the film of blood.
            const float texture = paper.luminance() / 0.88f;
            const float cover = stain.cover.at(x, y);
            if (cover <= 0.f) {
                // Serum creeps a little beyond the edge of the larger stains and yellows the paper.
                const float distance = outside.at(x, y);
                if (distance > 0.f && distance < 6.f)
                    stained.blend(x, y, SERUM * texture, 0.10f * std::exp(-distance / 2.f));
                continue;
            }
            const float thickness = stain.thickness.at(x, y);
            const float depth = inside.at(x, y);
            const float mottle =
                0.5f + 0.5f * clot.fractal(static_cast<float>(x) / 7.f, static_cast<float>(y) / 7.f, 3);
            Rgb blood = mix(RUST, mix(DEEP_RED, BRIGHT_RED, mottle * mottle), smoothstep(0.15f, 0.75f, thickness));
            // Blood dries first and darkest at the rim.
            // Pooled blood stays brighter in the middle; it dries first and darkest at the rim.
            blood = mix(blood, BRIGHT_RED, 0.35f * smoothstep(5.f, 30.f, depth));
            const float rim = 1.f - smoothstep(0.8f, 2.6f, depth);
            blood = mix(blood, DRIED_RIM, rim * 0.95f * smoothstep(0.2f, 0.6f, thickness));
            const float opacity = cover * (0.8f + 0.16f * thickness + 0.04f * rim);
            stained.blend(x, y, blood * texture, opacity);
        }
    }
    return stained;
}

std::pair<FloatImage, FloatImage> BloodPainter::paint(const FloatImage& paper) const
{
    const int pageWidth = paper.width();
    const int height = paper.height();
    FloatImage spread(pageWidth * 2, height, Rgb{});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < pageWidth; ++x) {
            spread.set(x, y, paper.colour(x, y));
            spread.set(x + pageWidth, y, paper.colour(x, y));
        }
    const FloatImage stained = colourSpread(spread, paintStain(pageWidth * 2, height));
    return {stained.crop(0, 0, pageWidth, height), stained.crop(pageWidth, 0, pageWidth, height)};
}

} // namespace orane::texturegen
