#!/bin/sh
# What the verification costs: bench/verified.sh [PROGRAM [ROUNDS]]. `zucmtr convert -j 1` of 2000 typical recordings, and
# of a large one in ASCII, with and without it, in turn. All is made in memory (3 GB) and removed at the end. Exit code 1 if
# a target is missed.
set -eu
cd "$(dirname "$0")/.."
program=$(realpath "${1:-build/release/tools/zucmtr/zucmtr}")
place=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$place"' EXIT
trap 'exit 130' INT TERM
echo "Load: $(cut -d ' ' -f 1-3 /proc/loadavg)"
python3 bench/verified.py "$program" "$place" "${2:-9}"
