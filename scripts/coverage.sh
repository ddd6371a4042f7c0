#!/bin/sh
# Runs all tests in a build with counters and prints which lines and branches of src/ they did not reach. Branches that
# only an exception takes are left out.
set -eu
cd "$(dirname "$0")/.."

cmake --preset coverage >/dev/null
cmake --build --preset coverage -j "$(nproc)"
find build/coverage -name '*.gcda' -delete
ctest --preset coverage -j "$(nproc)"

report() {
    gcovr --root . --filter 'src/' --exclude-throw-branches --exclude-unreachable-branches \
        --gcov-ignore-parse-errors -j "$(nproc)" build/coverage "$@"
}
printf '\n== lines\n'
report --txt -
printf '\n== branches\n'
report --txt - --branches
report --html-details build/coverage/report.html >/dev/null 2>&1 || true
