#!/bin/sh
# What an archive's catalogue costs: bench/archive.sh [PROGRAM [ENTRIES]]. Ten questions to one of a million entries, then
# updates over new and unchanged recordings. All is made in memory (2 GB) and removed at the end; that takes minutes. Exit
# code 1 if a target is missed.
set -eu
cd "$(dirname "$0")/.."
program=$(realpath "${1:-build/release/tools/zucmtr/zucmtr}")
place=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$place"' EXIT
trap 'exit 130' INT TERM
result=0
echo "Load: $(cut -d ' ' -f 1-3 /proc/loadavg)"
python3 bench/archiveupdate.py "$program" "$place" || result=1
echo
python3 bench/archivedata.py "$program" "$place/zucmtr-archive.db" "${2:-1000000}"
python3 bench/archivequestions.py "$program" "$place/zucmtr-archive.db" || result=1
exit "$result"
