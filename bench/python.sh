#!/bin/sh
# Installs packages, builds the Python module and measures it: bench/python.sh [--quick]
set -eu
cd "$(dirname "$0")/.."
build=build/bench

scripts/install-packages.sh build bench python
cmake --preset bench >/dev/null
cmake --build "$build" -j "$(nproc)" --target zucmtr zucmtr_python readrecord
echo "Load: $(cut -d ' ' -f 1-3 /proc/loadavg)"
# The records take gigabytes of memory, so they go even if the program is interrupted.
work=$(mktemp -d /dev/shm/zucmtr-bench.XXXXXX)
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
PYTHONPATH=$build/python PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 bench/pythonmodule.py \
    "$build/tools/zucmtr/zucmtr" "$build/bench/readrecord" "$work" "$@"
