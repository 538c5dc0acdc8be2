#!/bin/sh
# Runs a command, then checks its exit status and that its output holds each given text.
# usage: expect_output.sh STATUS TEXT... -- COMMAND [ARGUMENT...]
expected_status=$1
shift
texts_file=$(mktemp)
trap 'rm -f "$texts_file" "$texts_file.out"' EXIT
while [ "$#" -gt 0 ] && [ "$1" != "--" ]; do
    printf '%s\n' "$1" >> "$texts_file"
    shift
done
shift
"$@" > "$texts_file.out" 2>&1
status=$?
cat "$texts_file.out"
failed=0
if [ "$status" -ne "$expected_status" ]; then
    echo "FAIL: exit status $status, expected $expected_status"
    failed=1
fi
while IFS= read -r text; do
    if ! grep -qF -- "$text" "$texts_file.out"; then
        echo "FAIL: missing from the output: $text"
        failed=1
    fi
done < "$texts_file"
exit $failed
