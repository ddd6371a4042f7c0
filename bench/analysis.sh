#!/bin/sh
# Installs packages, builds, and prints how exact the analysis is; exit code 1 if a number misses its target.
#   bench/analysis.sh
set -eu
cd "$(dirname "$0")/.."
build=build/bench

scripts/install-packages.sh build bench
cmake --preset bench >/dev/null
cmake --build "$build" -j "$(nproc)" --target analysis_bench
"$build/bench/analysis_bench" "$@"
