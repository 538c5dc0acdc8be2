# Shared by the measuring scripts; sourced from the project root.

# Builds the targets given into $build (configured once, with the bench preset); the build's chatter is
# kept aside and shown only when it fails.
build_targets() {
    local log
    log=$(mktemp)
    if ! { [ -f "$build/CMakeCache.txt" ] || cmake --preset bench -B "$build"; } \
            >"$log" 2>&1 ||
       ! cmake --build "$build" --target "$@" -j2 >>"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}

# The median of the numbers read, one a line, printed with one decimal after dividing by $1.
median() {
    sort -n | awk -v scale="${1:-1}" '{ v[NR] = $1 }
        END { m = (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2; printf "%.1f", m / scale }'
}
