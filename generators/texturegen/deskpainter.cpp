#include "deskpainter.hpp"

#include "../common/random.hpp"
#include "gradientnoise.hpp"

#include <cmath>
#include <vector>

namespace orane::texturegen
{

namespace
{

constexpr Rgb WOOD_DARK = Rgb::bytes(26, 15, 9);
constexpr Rgb WOOD_MID = Rgb::bytes(58, 34, 20);
constexpr Rgb WOOD_LIGHT = Rgb::bytes(92, 58, 34);
constexpr Rgb LEATHER = Rgb::bytes(66, 24, 19);
constexpr Rgb LEATHER_WORN = Rgb::bytes(104, 52, 38);
constexpr Rgb PAGE_EDGE = Rgb::bytes(222, 198, 152);
constexpr Rgb GLASS_RING = Rgb::bytes(120, 86, 58);

constexpr int PLANK_HEIGHT = 150;
constexpr int COVER_MARGIN = 16;
constexpr int PAGE_STACK = 6;

/// Signed distance to a rectangle with rounded corners: negative inside.
float roundedBoxDistance(float x, float y, float left, float top, float right, float bottom, float radius)
{
    const float centreX = (left + right) * 0.5f;
    const float centreY = (top + bottom) * 0.5f;
    const float qx = std::abs(x - centreX) - (right - left) * 0.5f + radius;
    const float qy = std::abs(y - centreY) - (bottom - top) * 0.5f + radius;
    const float outside = std::hypot(std::max(qx, 0.f), std::max(qy, 0.f));
    return outside + std::min(std::max(qx, qy), 0.f) - radius;
}

} // namespace

DeskPainter::DeskPainter(std::uint64_t seed, sf::IntRect spread)
    : seed_(seed)
    , spread_(spread)
{}

Rgb DeskPainter::woodAt(int x, int y) const
{
    const GradientNoise figure(seed_ + 1);
    const GradientNoise streaks(seed_ + 2);
    const int plank = y / PLANK_HEIGHT;
    const float withinPlank = static_cast<float>(y - plank * PLANK_HEIGHT);
    const auto plankBits = assetgen::hashBits(seed_ * 131 + static_cast<std::uint64_t>(plank));
    const float plankTone = static_cast<float>(plankBits % 1000) / 1000.f - 0.5f;

    // Growth rings: wavy lines along the plank, pinched and spread by a slow warp.
    const float warp = 22.f
                       * figure.fractal(static_cast<float>(x) / 420.f + static_cast<float>(plank) * 7.f,
                                        static_cast<float>(y) / 90.f, 3);
    const float ringPhase =
        (withinPlank + warp) / (7.f + 2.f * figure.at(static_cast<float>(x) / 300.f, static_cast<float>(plank) * 3.f));
    const float ring = std::pow(0.5f + 0.5f * std::sin(ringPhase * 6.2831853f), 4.f);
    // Fine pores and streaks, stretched along the grain.
    const float streak = streaks.fractal(static_cast<float>(x) / 160.f + static_cast<float>(plank) * 11.f,
                                         static_cast<float>(y) / 1.6f, 4);
    float tone = 0.45f + 0.28f * plankTone + 0.22f * streak - 0.25f * ring;
    Rgb wood = tone < 0.5f ? mix(WOOD_DARK, WOOD_MID, clamp01(tone * 2.f))
                           : mix(WOOD_MID, WOOD_LIGHT, clamp01(tone * 2.f - 1.f));

    // Seams between planks, and the staggered butt joints along each plank.
    const float seam = std::min(withinPlank, PLANK_HEIGHT - 1 - withinPlank);
    float darken = seam < 1.5f ? 0.35f : (seam < 3.f ? 0.75f : 1.f);
    const int joint = static_cast<int>((plankBits >> 16) % 900) + 350;
    const int jointDistance = std::abs(x - joint);
    if (jointDistance < 2)
        darken = std::min(darken, 0.45f);
    return wood * darken;
}

float DeskPainter::lampAt(float x, float y, int width, int height) const
{
    // The lamp stands off the top left; its pool of light falls on the notebook.
    const float poolX = static_cast<float>(spread_.left) + static_cast<float>(spread_.width) * 0.42f;
    const float poolY = static_cast<float>(spread_.top) + static_cast<float>(spread_.height) * 0.35f;
    const float distance = std::hypot((x - poolX) / (static_cast<float>(width) * 0.55f),
                                      (y - poolY) / (static_cast<float>(height) * 0.75f));
    const float pool = std::exp(-distance * distance * 1.6f);
    // The corners fall away to near black.
    const float cornerX = (x / static_cast<float>(width) - 0.5f) * 2.f;
    const float cornerY = (y / static_cast<float>(height) - 0.5f) * 2.f;
    const float vignette = 1.f - 0.55f * std::pow(std::min(1.f, (cornerX * cornerX + cornerY * cornerY) / 2.f), 1.3f);
    return (0.28f + 1.05f * pool) * vignette;
}

FloatImage DeskPainter::paint(int width, int height) const
{
    const float left = static_cast<float>(spread_.left);
    const float top = static_cast<float>(spread_.top);
    const float right = left + static_cast<float>(spread_.width);
    const float bottom = top + static_cast<float>(spread_.height);
    const float coverRadius = 10.f;
    const GradientNoise leather(seed_ + 3);
    const GradientNoise scuffs(seed_ + 4);
    const GradientNoise ringWobble(seed_ + 5);

    FloatImage desk(width, height, Rgb{});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float px = static_cast<float>(x) + 0.5f;
            const float py = static_cast<float>(y) + 0.5f;
            const float light = lampAt(px, py, width, height);
            // The open pages are drawn unlit over this picture, so the book around them takes
            // only a little of the lamp's falloff, or its edges would look grey beside them.
            const float bookLight = 0.88f + 0.12f * std::min(light, 1.f);
            Rgb colour = woodAt(x, y) * light;

            // The pale ring a whisky glass left on the desk, long ago.
            const float ringCentre = std::hypot(px - 170.f, py - 690.f);
            if (std::abs(ringCentre - 44.f) < 10.f) {
                const float ringDistance = ringCentre + 2.f * ringWobble.at(px / 12.f, py / 12.f);
                const float ringMark = std::exp(-std::pow((ringDistance - 44.f) / 1.6f, 2.f))
                                       * (0.5f + 0.5f * ringWobble.at(px / 40.f + 5.f, py / 40.f));
                colour = mix(colour, GLASS_RING * light, 0.22f * ringMark);
            }

            // The notebook's shadow on the desk, cast away from the lamp.
            const float shadowDistance =
                roundedBoxDistance(px - 9.f, py - 12.f, left - COVER_MARGIN, top - COVER_MARGIN, right + COVER_MARGIN,
                                   bottom + COVER_MARGIN, coverRadius);
            colour = colour * (1.f - 0.75f * (1.f - smoothstep(-14.f, 24.f, shadowDistance)));

            // The leather cover, worn lighter along its edge.
            const float coverDistance = roundedBoxDistance(px, py, left - COVER_MARGIN, top - COVER_MARGIN,
                                                           right + COVER_MARGIN, bottom + COVER_MARGIN, coverRadius);
            if (coverDistance < 1.f) {
                const float grain = leather.fractal(px / 2.2f, py / 2.2f, 3);
                const float crease = std::abs(leather.fractal(px / 28.f + 40.f, py / 28.f, 3));
                const float wear =
                    smoothstep(-7.f, -1.f, coverDistance) * (0.55f + 0.45f * scuffs.fractal(px / 9.f, py / 9.f, 3));
                Rgb cover = LEATHER * (1.f + 0.22f * grain - 0.25f * smoothstep(0.0f, 0.08f, 0.08f - crease));
                cover = mix(cover, LEATHER_WORN, 0.7f * wear);
                // A dark lip where the cover turns down to the desk.
                cover = cover * (1.f - 0.6f * smoothstep(-1.5f, 0.5f, coverDistance));
                colour = mix(cover * bookLight, colour, smoothstep(0.f, 1.f, coverDistance));
            }

            // The stacked edges of the pages under the open ones, shaded towards the cover.
            const float stackDistance = roundedBoxDistance(px, py, left - PAGE_STACK, top - PAGE_STACK / 2,
                                                           right + PAGE_STACK, bottom + PAGE_STACK, 3.f);
            if (stackDistance < 1.f) {
                const float edgeX = std::max(left - px, px - right);
                const float edgeY = std::max(top - py, py - bottom);
                // Under the open pages (hidden in play) the block is plain paper.
                const float layer = std::max(std::max(edgeX, edgeY), 0.f);
                // Leaves about a pixel and a half apart, each a little deeper in shadow.
                const float leaf = 0.88f + 0.12f * std::cos(layer * 3.1415927f * 1.4f);
                const Rgb edge = PAGE_EDGE * leaf * (1.f - 0.05f * layer);
                colour = mix(edge * bookLight, colour, smoothstep(0.f, 1.f, stackDistance));
            }

            desk.set(x, y, colour);
        }
    }
    return desk;
}

} // namespace orane::texturegen
