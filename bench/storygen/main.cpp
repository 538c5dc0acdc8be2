// orane-storygen: writes a generated story of N scenes for the game, and optionally the same
// story in ink.
//
//   orane-storygen SCENES DIRECTORY [--ink FILE] [--seed SEED] [--suspects N]

#include "inkstorywriter.hpp"
#include "oranestorywriter.hpp"
#include "storyplanner.hpp"

#include <cstdlib>
#include <iostream>
#include <string>

namespace
{

int usage()
{
    std::cerr << "usage: orane-storygen SCENES DIRECTORY [--ink FILE] [--seed SEED] [--suspects N]\n"
              << "  SCENES is at least " << orane::bench::StoryPlanner::MIN_SCENES << ".\n";
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return usage();
    const int scenes = std::atoi(argv[1]);
    const std::string directory = argv[2];
    std::string inkPath;
    unsigned long seed = 1;
    int suspects = 5;
    for (int i = 3; i + 1 < argc; i += 2) {
        const std::string option = argv[i];
        if (option == "--ink")
            inkPath = argv[i + 1];
        else if (option == "--seed")
            seed = std::strtoul(argv[i + 1], nullptr, 10);
        else if (option == "--suspects")
            suspects = std::atoi(argv[i + 1]);
        else
            return usage();
    }
    if (scenes < orane::bench::StoryPlanner::MIN_SCENES || (argc - 3) % 2 != 0)
        return usage();

    const orane::bench::StoryPlan plan =
        orane::bench::StoryPlanner(static_cast<std::uint32_t>(seed), suspects).plan(scenes);
    if (!orane::bench::OraneStoryWriter().write(plan, directory)) {
        std::cerr << "orane-storygen: cannot write the story into " << directory << '\n';
        return 1;
    }
    if (!inkPath.empty() && !orane::bench::InkStoryWriter().write(plan, inkPath)) {
        std::cerr << "orane-storygen: cannot write " << inkPath << '\n';
        return 1;
    }
    return 0;
}
