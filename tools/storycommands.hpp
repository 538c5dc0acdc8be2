#pragma once

#include <string>

namespace orane
{

/// The command line of orane-story: "check", "walk", "graph" or "play" and a story directory.
/// Answers the process's exit status.
int runStoryCommand(int argc, char* argv[]);

/// The folder of the running program (where a build keeps the game's resources).
std::string executableDirectory();

} // namespace orane
