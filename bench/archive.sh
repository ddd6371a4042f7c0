#!/bin/sh
# Ten questions to a catalogue of a million entries: bench/archive.sh [PROGRAM [ENTRIES]]. It is made up in memory (2 GB) and
# removed at the end; that takes minutes.
set -eu
cd "$(dirname "$0")/.."
program=$(realpath "${1:-build/release/tools/zucmtr/zucmtr}")
place=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$place"' EXIT
python3 bench/archivedata.py "$program" "$place/zucmtr-archive.db" "${2:-1000000}"
python3 bench/archivequestions.py "$program" "$place/zucmtr-archive.db"
