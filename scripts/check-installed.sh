#!/bin/sh
# Installs the Debian packages in a bare root made by debootstrap, and runs the tests of debian/tests there, by autopkgtest.
#   scripts/check-installed.sh [--release NAME] PACKAGES [DIRECTORY]
# --release   Debian's code name; default: bookworm. The packages have to be built there
# PACKAGES    the directory of the packages, as scripts/check-packages.sh keeps it
# DIRECTORY   for the root and the log (3 GB), removed at the end if it was made here; default: under /var/tmp
# Needs root and the machine's apt sources, which the root takes over. Its mounts go with the process.
set -eu

release=bookworm
while [ $# -gt 0 ]; do
    case $1 in
    --release) release=$2; shift 2 ;;
    -*) sed -n '2,7s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    *) break ;;
    esac
done
[ $# -ge 1 ] || { sed -n '2,7s/^# \{0,1\}//p' "$0" >&2; exit 2; }
[ "$(id -u)" -eq 0 ] || { echo 'check-installed.sh: run as root: it makes device nodes and mounts' >&2; exit 1; }
packages=$(cd "$1" && pwd)
top=${2:-}
# The mounts of the root are this process's alone.
if [ -z "${INSTALLED_NAMESPACE:-}" ]; then
    cd "$(dirname "$0")/.."
    scripts/install-packages.sh package
    [ -n "$top" ] || { top=$(mktemp -d /var/tmp/zucmtr-installed.XXXXXX); export INSTALLED_REMOVE=1; }
    INSTALLED_NAMESPACE=1 exec unshare --mount --pid --fork --kill-child --mount-proc \
        "$PWD/scripts/check-installed.sh" --release "$release" "$packages" "$top"
fi
mkdir -p "$top"
top=$(cd "$top" && pwd)
leave() {
    code=$?
    trap - EXIT
    for mounted in dev/pts dev/shm sys proc; do
        umount -l "$top/root/$mounted" 2>/dev/null || true
    done
    [ -z "${INSTALLED_REMOVE:-}" ] || rm -rf --one-file-system "$top"
    exit "$code"
}
trap leave EXIT
trap 'exit 130' INT TERM

printf '\n== a bare root of %s\n' "$release"
scripts/bare-root.sh "$release" "$top/root"
rm -rf "$top/source" "$top/log"
mkdir "$top/source"
tree=$(git stash create)
git archive "${tree:-HEAD}" | tar -x -C "$top/source"
set -- # without the debug information
for package in "$packages"/*.deb; do
    case $package in
    *-dbgsym_*) ;;
    *) set -- "$@" "$package" ;;
    esac
done
printf '\n== the tests of the installed packages\n'
code=0
autopkgtest --output-dir "$top/log" --no-built-binaries "$@" "$top/source//" -- chroot "$top/root" >"$top/autopkgtest.log" 2>&1 ||
    code=$?
[ "$code" -eq 0 ] || tail -n 80 "$top/autopkgtest.log"
cat "$top/log/summary"
[ "$code" -eq 0 ]
