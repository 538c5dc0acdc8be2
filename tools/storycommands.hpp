#pragma once

namespace orane
{

/// The command line of orane-story: "check", "walk", "graph" or "play" and a story directory.
/// Answers the process's exit status.
int runStoryCommand(int argc, char* argv[]);

} // namespace orane
