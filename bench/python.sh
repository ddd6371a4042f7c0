#!/bin/sh
# Installs packages, builds the Python module and measures it: bench/python.sh [--quick]
set -eu
cd "$(dirname "$0")/.."
build=build/bench

scripts/install-packages.sh build bench python
cmake --preset bench >/dev/null
cmake --build "$build" -j "$(nproc)" --target zucmtr zucmtr_python readrecord
PYTHONPATH=$build/python PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 bench/pythonmodule.py \
    "$build/tools/zucmtr/zucmtr" "$build/bench/readrecord" "$@"
