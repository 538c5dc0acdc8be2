#include "iconpainter.hpp"

#include "../common/random.hpp"
#include "deskpainter.hpp"
#include "paperpainter.hpp"
#include "shadowpainter.hpp"

#include <cmath>

namespace orane::texturegen
{

namespace
{

// The game's page, at the game's own size: the icon's notebook is the one the player sees.
constexpr int PAGE_WIDTH = 440;
constexpr int PAGE_HEIGHT = 680;
constexpr int SPREAD_LEFT = (IconPainter::MASTER_SIZE - 2 * PAGE_WIDTH) / 2;
constexpr int SPREAD_TOP = 188;
constexpr float CORNER_RADIUS = 150.f;

// Orane's and Nathan's inks, as the notebook draws them.
constexpr Rgb ORANE_INK = Rgb::bytes(26, 20, 26);
constexpr Rgb NATHAN_INK = Rgb::bytes(38, 13, 26);

// Writing much larger than the game's, so that lines of it still read at 48 pixels.
constexpr int TEXT_INSET = 46;
constexpr int LINE_SPACING = 50;
constexpr float PEN_RADIUS = 3.f;
constexpr float LETTER_HEIGHT = 15.f;

/// How much of the pixel at (x, y) lies inside the square with rounded corners, 0 to 1.
float insideRoundedSquare(int x, int y)
{
    const float size = static_cast<float>(IconPainter::MASTER_SIZE);
    const float px = static_cast<float>(x) + 0.5f;
    const float py = static_cast<float>(y) + 0.5f;
    const float qx = std::max(std::abs(px - size / 2.f) - (size / 2.f - CORNER_RADIUS), 0.f);
    const float qy = std::max(std::abs(py - size / 2.f) - (size / 2.f - CORNER_RADIUS), 0.f);
    return clamp01(CORNER_RADIUS + 0.5f - std::hypot(qx, qy));
}

/// A round pen touching the paper at (x, y), its edge smoothed over one pixel.
void stamp(FloatImage& picture, float x, float y, Rgb ink)
{
    const int reach = static_cast<int>(PEN_RADIUS) + 2;
    for (int py = static_cast<int>(y) - reach; py <= static_cast<int>(y) + reach; ++py)
        for (int px = static_cast<int>(x) - reach; px <= static_cast<int>(x) + reach; ++px) {
            const float distance = std::hypot(static_cast<float>(px) + 0.5f - x, static_cast<float>(py) + 0.5f - y);
            picture.blend(px, py, ink, clamp01(PEN_RADIUS + 0.5f - distance) * 0.9f);
        }
}

} // namespace

IconPainter::IconPainter(std::uint64_t seed)
    : seed_(seed)
{}

FloatImage IconPainter::paint() const
{
    const sf::IntRect spread(SPREAD_LEFT, SPREAD_TOP, 2 * PAGE_WIDTH, PAGE_HEIGHT);
    FloatImage icon = DeskPainter(seed_, spread).paint(MASTER_SIZE, MASTER_SIZE);

    const FloatImage paper = PaperPainter(seed_ + 10).paint(PAGE_WIDTH, PAGE_HEIGHT);
    const FloatImage shadow = ShadowPainter().paint(PAGE_WIDTH, PAGE_HEIGHT);
    for (int y = 0; y < PAGE_HEIGHT; ++y)
        for (int x = 0; x < PAGE_WIDTH; ++x) {
            // The shadow is painted for a right page; the left page has it mirrored, at the spine.
            const int mirrored = PAGE_WIDTH - 1 - x;
            icon.set(SPREAD_LEFT + x, SPREAD_TOP + y, paper.colour(x, y));
            icon.blend(SPREAD_LEFT + x, SPREAD_TOP + y, shadow.colour(mirrored, y), shadow.alpha(mirrored, y));
            icon.set(SPREAD_LEFT + PAGE_WIDTH + x, SPREAD_TOP + y, paper.colour(x, y));
            icon.blend(SPREAD_LEFT + PAGE_WIDTH + x, SPREAD_TOP + y, shadow.colour(x, y), shadow.alpha(x, y));
        }
    // Orane's long letter, and Nathan's shorter answer.
    writeLines(icon, SPREAD_LEFT, 10, ORANE_INK, seed_ + 20);
    writeLines(icon, SPREAD_LEFT + PAGE_WIDTH, 5, NATHAN_INK, seed_ + 30);

    for (int y = 0; y < MASTER_SIZE; ++y)
        for (int x = 0; x < MASTER_SIZE; ++x)
            icon.set(x, y, icon.colour(x, y), insideRoundedSquare(x, y));
    return icon;
}

void IconPainter::writeLines(FloatImage& icon, int pageLeft, int lines, Rgb ink, std::uint64_t seed) const
{
    assetgen::Random random(seed);
    const float left = static_cast<float>(pageLeft + TEXT_INSET);
    const float right = static_cast<float>(pageLeft + PAGE_WIDTH - TEXT_INSET);
    // The last line of a letter is short.
    for (int line = 0; line < lines; ++line) {
        const float baseline = static_cast<float>(SPREAD_TOP + TEXT_INSET + 30 + line * LINE_SPACING);
        const float end = line + 1 == lines ? left + (right - left) * static_cast<float>(random.uniform(0.3, 0.6))
                                            : right - static_cast<float>(random.uniform(0.0, 40.0));
        float x = left;
        while (x < end - 30.f) {
            // One word: a run of joined loops, some rising into tall letters, leaning right.
            const float wordEnd = std::min(end, x + static_cast<float>(random.uniform(45.0, 120.0)));
            const float period = static_cast<float>(random.uniform(11.0, 15.0));
            const float phase = static_cast<float>(random.uniform(0.0, 6.2831853));
            for (float t = 0.f; x + t < wordEnd; t += 0.5f) {
                const auto letter = static_cast<std::uint64_t>(t / period);
                const auto bits = assetgen::hashBits(seed * 977 + static_cast<std::uint64_t>(line) * 64 + letter);
                const float height = LETTER_HEIGHT * ((bits % 5 == 0) ? 2.f : 1.f);
                const float rise = height * (0.5f - 0.5f * std::cos(6.2831853f * t / period + phase));
                stamp(icon, x + t + rise * 0.3f, baseline - rise, ink);
            }
            x = wordEnd + static_cast<float>(random.uniform(16.0, 24.0));
        }
    }
}

FloatImage IconPainter::reduce(const FloatImage& picture, int size)
{
    FloatImage reduced(size, size, Rgb{}, 0.f);
    const double ratio = static_cast<double>(picture.width()) / size;
    const int samples = static_cast<int>(std::ceil(ratio));
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            Rgb colour{};
            float alpha = 0.f;
            for (int sy = 0; sy < samples; ++sy)
                for (int sx = 0; sx < samples; ++sx) {
                    const int px = static_cast<int>((x + (sx + 0.5) / samples) * ratio);
                    const int py = static_cast<int>((y + (sy + 0.5) / samples) * ratio);
                    const float a = picture.alpha(px, py);
                    colour = colour + picture.colour(px, py) * a;
                    alpha += a;
                }
            const float count = static_cast<float>(samples * samples);
            reduced.set(x, y, alpha > 0.f ? colour * (1.f / alpha) : Rgb{}, alpha / count);
        }
    return reduced;
}

} // namespace orane::texturegen
