#!/bin/sh
# Tries docs/fleet.md on several machines, by ssh and with Slurm. The machines are namespaces of this one, with a network,
# processes and mounts of their own, and all of that goes with the process that has them, however this ends. What stays
# are the packages that are installed, and a temporary directory if this script itself is killed.
#   scripts/check-fleet.sh [ZUCMTR]       the program; by default that of the release build
#
# It needs root (or sudo), and takes some minutes.
set -eu
cd "$(dirname "$0")/.."
program=${1:-build/release/tools/zucmtr/zucmtr}
PATH=$PATH:/usr/sbin:/sbin
as_root=
[ "$(id -u)" -eq 0 ] || as_root=sudo

# What the tests must leave as it is.
state() {
    ip -o link show | cut -d: -f2 | sort
    grep -F "$place" /proc/self/mounts || true
    pgrep -a -f "$place" || true
    cat /etc/passwd /etc/hosts
}

scripts/install-packages.sh test fleet
place=$(mktemp -d)
trap '$as_root rm -rf --one-file-system "$place"' EXIT
trap 'exit 130' INT TERM
chmod 755 "$place" # the database server is not root
before=$(state)
for test in machines slurm; do
    printf '\n== fleet: %s\n' "$test"
    $as_root setpriv --pdeathsig KILL \
        unshare --mount --pid --net --uts --ipc --fork --kill-child --mount-proc \
        env TMPDIR="$place" PATH="$PATH" LC_ALL=C.UTF-8 ZUCMTR_QT_MESSAGES=fail \
        /usr/bin/python3 -B "tests/fleet/${test}_test.py" "$program" docs/fleet.md
done
if [ "$before" != "$(state)" ] || [ -n "$(ls -A "$place")" ]; then
    echo 'check-fleet.sh: something is left on this machine' >&2
    exit 1
fi
scripts/check-machine.sh
