#!/bin/sh
# Installs packages, builds, and prints how exact the analysis is, first its numbers, then what `zucmtr events` says of
# simulated faults; exit code 1 if a number misses its target.
#   bench/analysis.sh [OPTIONS]   options: those of bench/analysisfaults.py
set -eu
cd "$(dirname "$0")/.."
build=build/bench

scripts/install-packages.sh build bench
cmake --preset bench >/dev/null
cmake --build "$build" -j "$(nproc)" --target analysis_bench zucmtr
result=0
"$build/bench/analysis_bench" || result=1
echo
python3 bench/analysisfaults.py "$build/tools/zucmtr/zucmtr" "$@" || result=1
exit "$result"
