#!/bin/sh
# Installs packages, builds, runs all tests.
#
#   ./test.sh              plain build, address and undefined-behaviour sanitizers, fuzzers (5 s each), format,
#                          shell scripts, lint of what changed
#   ./test.sh --all        the thread sanitizer, Qt 6, the fleet of machines, 64-bit ARM and the Debian packages as well,
#                          fuzzers for a minute each, four times as many points of the torture, others each day, and
#                          clang-tidy over all files
#   ./test.sh --plain      the plain build and its tests alone
#   ./test.sh --coverage   tests with coverage of src/, printed as a table
set -eu
cd "$(dirname "$0")"

mode=short
case ${1:-} in
'') ;;
--all) mode=all ;;
--plain) mode=plain ;;
--coverage) mode=coverage ;;
*)
    sed -n '2,10s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac
jobs=$(nproc)

scripts/check-machine.sh

# build_and_test PRESET: configures, builds and runs what the preset's test filter takes.
build_and_test() {
    printf '\n== %s\n' "$1"
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1" -j "$jobs"
    twice=$(ctest --preset "$1" -N | sed -n 's/^ *Test *#[0-9]*: //p' | sort | uniq -d)
    [ -z "$twice" ] || { echo "test.sh: of tests with one name only the last runs: $twice" >&2; return 1; }
    ctest --preset "$1" -j $((jobs + 1)) # tests wait now and then
    scripts/check-machine.sh # the tests have left it as it was
}

scripts/install-packages.sh build test python view
case $mode in
coverage)
    scripts/install-packages.sh coverage
    scripts/coverage.sh
    exit
    ;;
plain)
    build_and_test release
    exit
    ;;
esac
scripts/install-packages.sh lint fuzz
build_and_test release
build_and_test asan
printf '\n== fuzzers\n'
[ $mode = all ] && seconds=60 || seconds=5
fuzz/run.sh "$seconds"
scripts/update-translations.sh --check
if [ $mode = all ]; then
    build_and_test tsan
    scripts/install-packages.sh qt6
    build_and_test qt6
    printf '\n== torture\n'
    python3 -B tests/torture/torture.py build/release/tools/zucmtr/zucmtr build/release/tests/torture/libtorture_shim.so \
        --short --times 4 --seed "$(date +%F)"
    printf '\n== 64-bit ARM\n'
    scripts/check-arm64.sh
    printf '\n== fleet\n'
    scripts/check-fleet.sh
    scripts/check-packages.sh
    scripts/lint.sh
else
    scripts/lint.sh --changed
fi
