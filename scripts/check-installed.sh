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
packages=$(cd "$1" && pwd)
"$(dirname "$0")/install-packages.sh" package
# shellcheck source=scripts/in-bare-root.sh
. "$(dirname "$0")/in-bare-root.sh"
own_mounts "${2:-}" --release "$release" "$packages"
cd "$(dirname "$0")/.."

printf '\n== a bare root of %s\n' "$release"
scripts/bare-root.sh "$release" "$root"
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
autopkgtest --output-dir "$top/log" --no-built-binaries "$@" "$top/source//" -- chroot "$root" >"$top/autopkgtest.log" 2>&1 ||
    code=$?
[ "$code" -eq 0 ] || tail -n 80 "$top/autopkgtest.log"
cat "$top/log/summary"
[ "$code" -eq 0 ]
