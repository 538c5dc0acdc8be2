#!/bin/sh
# Runs clang-tidy, with the checks of .clang-tidy, over every source file of ours that a build
# folder compiles (build/ by default: the presets write its compile_commands.json), one file per
# core at a time. Prints each finding once (a header's findings would otherwise come again with
# every file that includes it) and fails when there is any.
#     sh scripts/lint.sh                      everything the everyday build compiles
#     sh scripts/lint.sh build src/book       only the files under the folders or files named
#     sh scripts/lint.sh build-fuzz fuzz      the fuzz targets (cmake --preset fuzz first)
# The whole tree takes about a quarter of an hour on two cores: name the folders you changed.
set -e
cd "$(dirname "$0")/.."
top=$(pwd)
build_dir=${1:-build}
[ $# -gt 0 ] && shift
if ! command -v clang-tidy >/dev/null 2>&1; then
    echo "clang-tidy is missing: sh scripts/setup.sh installs it" >&2
    exit 2
fi
if [ ! -f "$build_dir/compile_commands.json" ]; then
    echo "$build_dir/compile_commands.json is missing: configure with a preset first (cmake --preset default)" >&2
    exit 2
fi

files=$(python3 - "$top" "$build_dir/compile_commands.json" "$@" <<'PY'
import json, os, sys
top, database, wanted = sys.argv[1], sys.argv[2], [os.path.normpath(w) for w in sys.argv[3:]]
ours = ("shared/", "src/", "tools/", "tests/", "generators/", "bench/", "fuzz/")
seen = set()
for entry in json.load(open(database)):
    path = os.path.relpath(os.path.join(entry["directory"], entry["file"]), top)
    if not path.startswith(ours) or path in seen:
        continue
    if wanted and not any(path == w or path.startswith(w.rstrip("/") + "/") for w in wanted):
        continue
    seen.add(path)
    print(path)
PY
)
if [ -z "$files" ]; then
    echo "no source file of ours in $build_dir matches: $*" >&2
    exit 2
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
# Clang's -Wconversion takes in sign conversions, GCC's (the build's) does not: the compiler's
# warnings are the build's business, with -Werror in CI.
echo "$files" | xargs -P "$(nproc)" -n 1 clang-tidy -p "$build_dir" --quiet --extra-arg=-Wno-sign-conversion \
    >"$log" 2>/dev/null || true
# One line per finding, paths relative to the project, in file order.
findings=$(grep -E '^[^ ].*:[0-9]+:[0-9]+: (warning|error):' "$log" | sed "s|^$top/||; s|/[^/]*/\.\./|/|g" | sort -u | sort -t: -k1,1 -k2,2n -k3,3n)
count=$(echo "$files" | wc -l)
if [ -n "$findings" ]; then
    echo "$findings"
    echo "clang-tidy: $(echo "$findings" | wc -l) findings in $count files"
    exit 1
fi
echo "clang-tidy: no findings in $count files"
