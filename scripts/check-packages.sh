#!/bin/sh
# Builds the Debian packages twice, as two people would: in different directories, one after the other, with different umasks,
# locales, time zones and numbers of jobs. They have to be the same to the byte. Then looks into them
# (scripts/inspect-packages.sh).
#   scripts/check-packages.sh [DIRECTORY]      keeps the packages in DIRECTORY/first and DIRECTORY/second
# With DEB_BUILD_OPTIONS=nocheck the first build, too, leaves out the tests.
#
# It builds what git knows of the working copy, in a temporary directory, and takes twice as long as ./demo.sh.
set -eu
cd "$(dirname "$0")/.."
scripts/install-packages.sh build package
place=${1:-}
if [ -n "$place" ]; then
    mkdir -p "$place"
    place=$(cd "$place" && pwd)
else
    place=$(mktemp -d /var/tmp/zucmtr-packages.XXXXXX)
    trap 'rm -rf "$place"' EXIT
    trap 'exit 130' INT TERM
fi
version=$(dpkg-parsechangelog -SVersion)
tree=$(git stash create)
tree=${tree:-$(git rev-parse HEAD)} # both builds are of this one, whatever is committed meanwhile
failed=

# The machine may have no Russian locale.
mkdir -p "$place/locales"
localedef -i ru_RU -f UTF-8 "$place/locales/ru_RU.UTF-8"

# build NAME UMASK LOCALE TIMEZONE OPTIONS: the packages, in the directory NAME. Of the caller's environment nothing gets
# there, so that neither its compiler flags nor its ccache have a part in the result.
build() {
    printf '\n== packages: %s (umask %s, %s, %s, DEB_BUILD_OPTIONS="%s")\n' "$@"
    source=$place/$1/zucmtrconverter-$version
    rm -rf "${place:?}/$1"
    mkdir -p "$source"
    (
        umask "$2"
        git archive "$tree" | tar -x -m --no-same-permissions -C "$source"
        cd "$source"
        env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME="$place" LOCPATH="$place/locales" LC_ALL="$3" TZ="$4" \
            DEB_BUILD_OPTIONS="$5" dpkg-buildpackage -us -uc
    ) >"$place/$1.log" 2>&1 || { tail -n 60 "$place/$1.log" >&2; exit 1; }
    grep 'tests passed' "$place/$1.log" || echo 'without tests'
    rm -rf "$source"
}
case " ${DEB_BUILD_OPTIONS:-} " in
*' nocheck '*) build first 022 C.UTF-8 UTC "nocheck parallel=$(nproc)" ;;
*) build first 022 C.UTF-8 UTC "parallel=$(nproc)" ;;
esac
build second 002 ru_RU.UTF-8 Asia/Vladivostok 'nocheck parallel=1'

printf '\n== the same to the byte\n'
cd "$place"
for package in first/*.deb first/*.dsc first/*.tar.*; do
    name=${package#first/}
    sha256sum "first/$name" "second/$name"
    if ! cmp -s "first/$name" "second/$name"; then
        echo "DIFFERENT: $name" >&2
        failed=yes
        ! command -v diffoscope >/dev/null || diffoscope --max-report-size 20000 "first/$name" "second/$name" >&2 || true
    fi
done

"$OLDPWD/scripts/inspect-packages.sh" first first.log || failed=yes
[ -z "$failed" ] || exit 1
