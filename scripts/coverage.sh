#!/bin/sh
# Runs all tests in a build with counters and prints which lines and branches of src/ they did not reach. Branches that
# only an exception takes are left out.
set -eu
cd "$(dirname "$0")/.."
root=$PWD
jobs=$(nproc)

# The threads of the thread tests count in the same places: without atomic counters these come out negative.
cmake --preset coverage -DCMAKE_CXX_FLAGS=-fprofile-update=atomic >/dev/null
cmake --build --preset coverage -j "$jobs"
find build/coverage -name '*.gcda' -delete
ctest --preset coverage -j "$jobs"

# gcov leaves its intermediate files where it runs, so that is not the working copy. The counters are read once; the
# tables are made of what comes out.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
branches='--exclude-throw-branches --exclude-unreachable-branches'
# shellcheck disable=SC2086 # two options
gcovr --root "$root" --filter "$root/src/" $branches -j "$jobs" --json counters.json "$root/build/coverage"
report() {
    # shellcheck disable=SC2086
    gcovr --root "$root" $branches --add-tracefile counters.json "$@"
}
printf '\n== lines\n'
report --txt
printf '\n== branches\n'
report --txt --branches
printf '\n== both\n'
report --print-summary --txt /dev/null
report --html-details "$root/build/coverage/report.html"
printf '\nIn detail: build/coverage/report.html\n'
