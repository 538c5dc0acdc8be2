// Loading and checking a whole generated story from disk, as the play state does at start-up.

#include "scenemanager/scenemanager.hpp"
#include "temporarystory.hpp"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace
{

// Generated once per size and kept for the whole run: writing 10,000 scenes is not what is
// measured.
const orane::bench::TemporaryStory& storyOf(int sceneCount)
{
    static std::map<int, std::unique_ptr<orane::bench::TemporaryStory>> stories;
    auto& story = stories[sceneCount];
    if (!story)
        story = std::make_unique<orane::bench::TemporaryStory>(sceneCount);
    return *story;
}

void LoadStory(benchmark::State& state)
{
    const int sceneCount = static_cast<int>(state.range(0));
    const orane::bench::TemporaryStory& story = storyOf(sceneCount);
    if (!story.ok()) {
        state.SkipWithError("cannot write the generated story");
        return;
    }
    for (auto _ : state) {
        orane::SceneManager manager(nullptr);
        manager.setNewSceneCallback([](const orane::Scene& scene) { benchmark::DoNotOptimize(&scene); });
        manager.setChoiceAppliedCallback([](const orane::Choice&) {});
        if (!manager.loadStoryFrom(story.directory())) {
            state.SkipWithError("the generated story does not load");
            return;
        }
        benchmark::DoNotOptimize(manager.scenes().size());
    }
    state.SetItemsProcessed(state.iterations() * sceneCount);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(story.totalBytes()));
}

} // namespace

BENCHMARK(LoadStory)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
