// orane-loadstory: loads and checks a story tree the way the game does at start-up, without a
// window, and answers through its exit status. The ink comparison times it as a whole process.
//
//   orane-loadstory [STORIES_DIRECTORY]

#include "scenemanager/scenemanager.hpp"

#include <ryn/core/console.hpp>

#include <chrono>
#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    std::string directory = argc > 1 ? argv[1] : orane::SceneManager::DEFAULT_STORIES_DIRECTORY;
    if (!directory.empty() && directory.back() != '/')
        directory += '/';

    // Never destroyed: the process ends right after, and the system takes its memory back
    // whole, where freeing ten thousand scenes string by string would double the run.
    auto& manager = *new orane::SceneManager(nullptr);
    std::size_t scenesShown = 0;
    manager.setNewSceneCallback([&scenesShown](const orane::Scene&) { ++scenesShown; });
    manager.setChoiceAppliedCallback([](const orane::Choice&) {});
    const auto start = std::chrono::steady_clock::now();
    if (!manager.loadStoryFrom(directory))
        return 1;
    const std::chrono::duration<double, std::milli> loading = std::chrono::steady_clock::now() - start;

    char milliseconds[32];
    std::snprintf(milliseconds, sizeof milliseconds, "%.1f", loading.count());
    ryn::console::writeLine(std::to_string(manager.scenes().size()) + " scenes, "
                            + std::to_string(manager.suspectsVisited().size()) + " suspects, "
                            + std::to_string(scenesShown) + " shown at start; loaded in " + milliseconds + " ms");
    return 0;
}
