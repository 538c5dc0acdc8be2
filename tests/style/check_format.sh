#!/bin/sh
# Fails when a C++ file that git knows is not in the house style of .clang-format, naming the
# file and the lines; `clang-format -i FILE` puts it right. Exits 77 (skipped) where it cannot
# check: without clang-format or outside a git checkout.
cd "$(dirname "$0")/../.."
if ! command -v clang-format >/dev/null 2>&1; then
    echo "skipped: clang-format is missing (sh scripts/setup.sh installs it), so the style is not checked"
    exit 77
fi
if ! git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    echo "skipped: not a git checkout, so there is no list of the project's files to check"
    exit 77
fi
git ls-files -z '*.cpp' '*.hpp' | xargs -0 clang-format --dry-run --Werror || {
    echo "Not in the house style: run clang-format -i on the files named above"
    exit 1
}
