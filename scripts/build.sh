#!/bin/sh
# Configures (once, with the everyday preset) and builds incrementally into the folder given,
# "build" by default. Extra arguments go to CMake's first configuration.
set -e
build_dir=${1:-build}
[ $# -gt 0 ] && shift
if [ ! -f "$build_dir/CMakeCache.txt" ]; then
    cmake --preset default -B "$build_dir" "$@" >/dev/null
fi
cmake --build "$build_dir" --parallel "$(nproc)"
