#!/bin/sh
# Installs packages, builds the benchmarks, prints the machine and runs them.
#   bench/run.sh [OPTIONS]           the table of ratios; options: --dir --rounds --quick --row, see --help
#   bench/run.sh --micro [OPTIONS]   the micro-benchmarks; options: those of Google Benchmark
set -eu
cd "$(dirname "$0")/.."
program=conversion_bench
if [ "${1:-}" = --micro ]; then
    program=micro_bench
    shift
fi
build=build/bench

scripts/install-packages.sh build bench
cmake --preset bench >/dev/null
cmake --build "$build" -j "$(nproc)" --target "$program"

compiler=$(sed -n 's/^CMAKE_CXX_COMPILER:[^=]*=//p' "$build/CMakeCache.txt")
echo
echo "Processor: $(sed -n 's/^model name[^:]*: *//p' /proc/cpuinfo | head -n 1), $(uname -m), $(nproc) cores"
echo "Memory:    $(awk '$1 == "MemTotal:" { printf "%.1f GB", $2 / 1e6 }' /proc/meminfo)"
echo "Kernel:    $(uname -sr)"
echo "Compiler:  $("$compiler" --version | head -n 1)"
echo "Load:      $(cut -d ' ' -f 1-3 /proc/loadavg)"
echo
if [ "$program" = micro_bench ]; then
    exec "$build/bench/micro_bench" "$@"
fi
# The workloads take gigabytes of memory, so they go even if the program is interrupted.
work=$(mktemp -d /dev/shm/zucmtr-bench.XXXXXX)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
"$build/bench/conversion_bench" --dir "$work" "$@"
