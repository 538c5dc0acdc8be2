#pragma once

namespace ryn
{

class Application;

/// What a program entry does with its application: `init`, then `run` only if `init`
/// succeeded. An exception that escapes (a font or texture that cannot be loaded) is written
/// on the console and answers EXIT_FAILURE instead of aborting; otherwise EXIT_SUCCESS,
/// whether or not `init` succeeded (a failed start-up has reported itself already).
int runApplication(Application& application);

} // namespace ryn
