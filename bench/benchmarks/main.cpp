// orane-bench: Google Benchmark's own main, then the game (if a benchmark started it) closed
// while SFML can still release its window.

#include "gamedriver.hpp"

#include <benchmark/benchmark.h>

#include <memory>
namespace orane::bench
{
std::unique_ptr<GameDriver>& sharedGame();
}

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    orane::bench::sharedGame().reset();
    return 0;
}
