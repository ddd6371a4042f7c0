#!/bin/sh
# Tries the README's two commands where nothing is prepared: in a bare Debian root made by debootstrap, with device nodes of
# its own, on clones of this repository (what is committed), as root and as an ordinary user with sudo.
#   scripts/fresh.sh [--release NAME] [--orders SEQUENCE,...] [DIRECTORY]
# --release   Debian's code name; default: bookworm
# --orders    what runs in each clone, d for ./demo.sh and t for ./test.sh, first root's, then the user's;
#             default: dtd,tdt, which has each command before and after the other
# DIRECTORY   for the root and the logs (4 GB), removed at the end if it was made here; default: under /var/tmp
# Needs root, debootstrap and apt sources of Debian, of whatever release: the root takes its own suites from the same mirror.
# Nothing of the machine is bound into the root; its mounts go with the process.
set -eu

release=bookworm
orders=dtd,tdt
while [ $# -gt 0 ]; do
    case $1 in
    --release) release=$2; shift 2 ;;
    --orders) orders=$2; shift 2 ;;
    -*) sed -n '2,11s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    *) break ;;
    esac
done
[ "$(id -u)" -eq 0 ] || { echo 'fresh.sh: run as root: it makes device nodes and mounts' >&2; exit 1; }
command -v debootstrap >/dev/null || { echo 'fresh.sh: install debootstrap' >&2; exit 1; }
# The mounts of the root are this process's alone.
if [ -z "${FRESH_NAMESPACE:-}" ]; then
    cd "$(dirname "$0")/.."
    top=${1:-}
    [ -n "$top" ] || { top=$(mktemp -d /var/tmp/zucmtr-fresh.XXXXXX); export FRESH_REMOVE=1; }
    FRESH_NAMESPACE=1 exec unshare --mount --pid --fork --kill-child \
        "$PWD/scripts/fresh.sh" --release "$release" --orders "$orders" "$top"
fi

top=$1
root=$top/root
source=$PWD
mkdir -p "$root"
mount --bind "$root" "$root" # what becomes the root of all mounts has to be one
leave() {
    code=$?
    trap - EXIT
    for mounted in dev/pts dev/shm sys proc .; do
        umount -l "$root/$mounted" 2>/dev/null || true
    done
    [ -z "${FRESH_REMOVE:-}" ] || rm -rf --one-file-system "$top"
    exit "$code"
}
trap leave EXIT
trap 'exit 130' INT TERM

say() { printf '\n== %s\n' "$*"; }
# inside COMMAND...: with the root as that of all mounts: in one by chroot, the system lets nobody make namespaces of users,
# as tests do that have mounts of their own and are not root.
inside() {
    # shellcheck disable=SC2016
    unshare --mount sh -c 'cd "$1" && pivot_root . . && umount -l . && cd / && shift && exec "$@"' sh "$root" \
        /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM=dumb HOME=/root "$@"
}

say "a bare root of $release"
scripts/bare-root.sh "$release" "$root"
inside env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends sudo >"$top/sudo.log" 2>&1
inside useradd --create-home --shell /bin/sh engineer
echo 'engineer ALL=(ALL) NOPASSWD: ALL' >"$root/etc/sudoers.d/engineer"

# run_as USER HOME ORDER: a clone in the user's home, and the commands in it. They see no terminal and no input.
run_as() {
    user=$1 home=$2 order=$3
    git clone -q "$source" "$root$home/zucmtr"
    inside chown -R "$user:" "$home/zucmtr"
    step=0
    for command in $(printf '%s' "$order" | sed 's/d/demo.sh /g; s/t/test.sh /g'); do
        step=$((step + 1))
        log=$top/$user-$step-$command.log
        start=$(date +%s)
        code=0
        inside setpriv --reuid="$user" --regid="$user" --init-groups \
            env HOME="$home" USER="$user" sh -c "cd '$home/zucmtr' && exec './$command'" \
            </dev/null >"$log" 2>&1 || code=$?
        say "$user, step $step: ./$command: exit $code, $((($(date +%s) - start) / 60)) min"
        grep -E 'tests passed|tests failed|no finding' "$log" || tail -n 2 "$log"
        if [ "$code" -ne 0 ]; then
            tail -n 60 "$log"
            exit 1
        fi
        printf '/dev/null in the root: %s\n' "$(stat -c %F "$root/dev/null")"
    done
    left=$(find "$root/tmp" "$root/var/tmp" -mindepth 1 2>/dev/null || true)
    [ -z "$left" ] || { say "$user: left in the temporary directory"; printf '%s\n' "$left"; exit 1; }
}
run_as root /root "${orders%,*}"
run_as engineer /home/engineer "${orders#*,}"
say 'both commands hold in a bare root, as root and as an ordinary user'
