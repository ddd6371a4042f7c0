#!/bin/sh
# Runs all tests in a build with counters and prints which lines and branches of src/ they did not reach. Branches that
# only an exception takes are left out, and so is the test for a null pointer that the compiler puts into each delete.
set -eu
cd "$(dirname "$0")/.."
root=$PWD
build=$root/build/coverage
jobs=$(nproc)

# The preset's counters are atomic, as the threads of the thread tests count in the same places.
cmake --preset coverage >/dev/null
cmake --build --preset coverage -j "$jobs"
find "$build" -name '*.gcda' -delete
ctest --preset coverage -j "$jobs"

# The counters are read once; all tables are made from the result. gcov leaves its intermediate files where it runs:
# in the build, not in the working copy, should it be interrupted.
counters=$build/counters.json
report() {
    gcovr --root "$root" --exclude-throw-branches --exclude-unreachable-branches \
        --exclude-branches-by-pattern '^\s*delete ' "$@"
}
report --filter "$root/src/" --object-directory "$build" -j "$jobs" --json "$counters" "$build"
printf '\n== lines\n'
report --add-tracefile "$counters" --txt
printf '\n== branches\n'
report --add-tracefile "$counters" --txt --branches
printf '\n== total\n'
report --add-tracefile "$counters" --print-summary --txt /dev/null
report --add-tracefile "$counters" --html-details "$build/report.html"
printf '\nIn detail: build/coverage/report.html\n'
