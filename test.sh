#!/bin/sh
# Installs what is missing, builds with warnings as errors (the ci preset, into build/), and runs
# every test. Without a display the tests get a virtual one: windows, fonts, textures and shaders
# need an OpenGL context.
# Then the Debian package: built, checked, installed, played from another folder and removed;
# then a short fuzzing run (FUZZ_SECONDS per target, 20 by default), a one-minute soak of the game,
# and the same suite again built with AddressSanitizer and UndefinedBehaviorSanitizer.
#     ./test.sh --quick     builds and runs the unit tests only, not the end-to-end ones
#     ORANE_QUICK=1 ./test.sh   stops after the first suite, end-to-end tests included
set -e
cd "$(dirname "$0")"
quick=0
case "${1:-}" in
    --quick) quick=1 ;;
    "") ;;
    *) echo "usage: ./test.sh [--quick]" >&2; exit 2 ;;
esac
sh scripts/setup.sh
# A build folder first configured without warnings as errors (by play.sh, say) is switched over.
if ! grep -qs '^ORANE_WERROR:BOOL=ON' build/CMakeCache.txt; then
    cmake --preset ci >/dev/null
fi
cmake --build build --parallel "$(nproc)"
export ALSOFT_DRIVERS=null

# Runs the tests of build folder $1; further arguments go to ctest.
suite() {
    dir=$1
    shift
    if [ -z "$DISPLAY" ]; then
        (cd "$dir" && xvfb-run -a -s "-screen 0 1920x1080x24 -noreset" ctest --output-on-failure --parallel 2 "$@")
    else
        (cd "$dir" && ctest --output-on-failure --parallel 2 "$@")
    fi
}

if [ $quick = 1 ]; then
    suite build --label-exclude e2e
    exit 0
fi
suite build
[ "${ORANE_QUICK:-0}" = 1 ] && exit 0

echo "== package"
sh tests/package/check.sh build

echo "== fuzzing"
FUZZ_SECONDS=${FUZZ_SECONDS:-20} fuzz/run

echo "== soak"
tests/soak/soak --game build/orane --resources build/resources --out build/soak-output --seconds 60

# Last, so that CTest's summary line ends the output.
echo "== sanitizers"
[ -f build-asan/CMakeCache.txt ] || cmake --preset asan-ubsan >/dev/null
cmake --build build-asan --parallel "$(nproc)"
# Mesa's software driver is unloaded at exit, before LeakSanitizer looks: what it still held
# would then read as leaks with no stack. Kept loaded, it stays reachable and nothing is hidden.
mesa_driver=$(ls /usr/lib/*/dri/swrast_dri.so 2>/dev/null | head -n 1)
(
    export ASAN_OPTIONS="detect_leaks=1:verify_asan_link_order=0"
    export LSAN_OPTIONS="suppressions=$(pwd)/tests/reliability/lsan.supp"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    [ -n "$mesa_driver" ] && export LD_PRELOAD="$mesa_driver"
    suite build-asan
)
