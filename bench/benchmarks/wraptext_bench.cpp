// The notebook's line breaker against the literal quadratic algorithm it replaces, on French
// prose set in Nathan's hand on a page of the default width.

#include "book/linebreaker.hpp"
#include "frenchprose.hpp"
#include "referencelinebreaker.hpp"

#include <SFML/Graphics/Font.hpp>

#include <benchmark/benchmark.h>

#include <map>

namespace
{

constexpr unsigned int CHARACTER_SIZE = 20;
// The page width less the text padding on both sides.
constexpr float MAX_WIDTH = 360.f;

const sf::Font* nathanFont()
{
    static sf::Font font;
    static const bool loaded = font.loadFromFile(ORANE_RESOURCES_DIR "fonts/nathan.ttf");
    return loaded ? &font : nullptr;
}

// Paragraphs of a few sentences, as a long page of the story reads, cut to exactly `size`
// characters.
sf::String prose(std::size_t size)
{
    orane::bench::FrenchProse generator(7);
    std::string text;
    for (int sentence = 1; text.size() < 2 * size; ++sentence) {
        text += generator.observation();
        text += sentence % 4 == 0 ? '\n' : ' ';
    }
    sf::String wide = sf::String::fromUtf8(text.begin(), text.end());
    return wide.substring(0, size);
}

// The two breakers must agree before their speeds mean anything; checked once per size.
bool breakersAgree(const sf::String& text, const sf::Font& font)
{
    static std::map<std::size_t, bool> agreement;
    const auto known = agreement.find(text.getSize());
    if (known != agreement.end())
        return known->second;
    const bool same = orane::breakLines(text, font, CHARACTER_SIZE, MAX_WIDTH)
                      == orane::breakLinesReference(text, font, CHARACTER_SIZE, MAX_WIDTH);
    agreement[text.getSize()] = same;
    return same;
}

template <sf::String (*breaker)(const sf::String&, const sf::Font&, unsigned int, float)>
void wrap(benchmark::State& state)
{
    const sf::Font* font = nathanFont();
    if (font == nullptr) {
        state.SkipWithError("cannot load fonts/nathan.ttf: build the orane_resources target");
        return;
    }
    const sf::String text = prose(static_cast<std::size_t>(state.range(0)));
    if (!breakersAgree(text, *font)) {
        state.SkipWithError("the line breaker and the reference break the text differently");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(breaker(text, *font, CHARACTER_SIZE, MAX_WIDTH));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void WrapText(benchmark::State& state)
{
    wrap<&orane::breakLines>(state);
}

void WrapTextReference(benchmark::State& state)
{
    wrap<&orane::breakLinesReference>(state);
}

} // namespace

BENCHMARK(WrapText)->Arg(500)->Arg(2000)->Arg(8000)->Unit(benchmark::kMicrosecond);
BENCHMARK(WrapTextReference)->Arg(500)->Arg(2000)->Arg(8000)->Unit(benchmark::kMillisecond);
