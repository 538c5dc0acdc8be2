// The authors' checks of `orane-story check`, each on its own and all together, over the
// generated 10,000-scene story and over our own story (story already loaded: the loader has its
// own benchmark). Spelling is measured with its verdicts cached, as every check after the first.

#include "authorchecks.hpp"
#include "scenemanager/scenemanager.hpp"
#include "spellingcheck.hpp"
#include "temporarystory.hpp"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace
{

struct LoadedForChecks
{
    explicit LoadedForChecks(const std::string& directory)
        : cache(std::string(ORANE_BINARY_DIR) + "/bench-spelling-" + std::to_string(std::hash<std::string>()(directory))
                + ".cache")
    {
        manager.setNewSceneCallback([](const orane::Scene&) {});
        manager.setChoiceAppliedCallback([](const orane::Choice&) {});
        loads = manager.loadStoryFrom(directory);
        story.story = &manager.story();
        for (const auto& suspect : manager.suspectsVisited())
            story.suspects.push_back(suspect.first);
        story.sources = orane::readSourceTexts(directory, story.suspects);
        story.directory = directory;
        options.oraneFont = std::string(ORANE_RESOURCES_DIR) + "fonts/orane.ttf";
        options.nathanFont = std::string(ORANE_RESOURCES_DIR) + "fonts/nathan.ttf";
        options.spellingCache = cache;
        // Fills the spelling cache, as the first check of a story does.
        benchmark::DoNotOptimize(orane::runAuthorChecks(story, options).size());
    }
    ~LoadedForChecks() { std::remove(cache.c_str()); }
    LoadedForChecks(const LoadedForChecks&) = delete;
    LoadedForChecks& operator=(const LoadedForChecks&) = delete;

    std::string cache;
    orane::SceneManager manager{nullptr};
    bool loads = false;
    orane::AuthorStory story;
    orane::AuthorCheckOptions options;
};

/// 0: the generated 10,000-scene story; 1: our own.
LoadedForChecks& storyOf(int which)
{
    static std::unique_ptr<orane::bench::TemporaryStory> generated;
    static std::map<int, std::unique_ptr<LoadedForChecks>> loaded;
    auto& story = loaded[which];
    if (!story) {
        if (which == 0 && !generated)
            generated = std::make_unique<orane::bench::TemporaryStory>(10000);
        story = std::make_unique<LoadedForChecks>(which == 0 ? generated->directory()
                                                             : std::string(ORANE_SOURCE_DIR) + "/resources/stories/");
    }
    return *story;
}

enum CHECK
{
    CONTINUITY,
    SPELLING,
    TYPOGRAPHY,
    GLYPHS,
    SLIPS,
    ALL,
};

void AuthorChecks(benchmark::State& state)
{
    LoadedForChecks& loaded = storyOf(static_cast<int>(state.range(0)));
    if (!loaded.loads) {
        state.SkipWithError("the story does not load");
        return;
    }
    orane::AuthorCheckOptions options = loaded.options;
    const auto only = static_cast<CHECK>(state.range(1));
    if (only != ALL) {
        options.continuity = only == CONTINUITY;
        options.spelling = only == SPELLING;
        options.typography = only == TYPOGRAPHY;
        options.glyphs = only == GLYPHS;
        options.slips = only == SLIPS;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(orane::runAuthorChecks(loaded.story, options).size());
}

void ReadSourceTexts(benchmark::State& state)
{
    LoadedForChecks& loaded = storyOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(orane::readSourceTexts(loaded.story.directory, loaded.story.suspects).size());
}

} // namespace

// Arguments: the story (0 generated, 1 ours), then the check (see CHECK; 5 for all of them).
BENCHMARK(AuthorChecks)
    ->ArgNames({"story", "check"})
    ->ArgsProduct({{0}, {CONTINUITY, SPELLING, TYPOGRAPHY, GLYPHS, SLIPS, ALL}})
    ->Args({1, ALL})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ReadSourceTexts)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
