#!/bin/sh
# install_test.sh BUILD_DIR EXAMPLES_DIR OUTSIDE_PROJECT PACKAGE, the name of the CMake package
set -eu
build=$1 examples=$2 outside=$3 package=$4
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

cmake --install "$build" --prefix "$root/usr" >/dev/null

echo "-- the shared object has its soname and its links"
lib=$(dirname "$(find "$root/usr" -name "lib$package.so")")
test "$(readlink "$lib/lib$package.so")" = "lib$package.so.2"
case $(readlink "$lib/lib$package.so.2") in
"lib$package".so.2.*.*) ;;
*) echo "so.2 does not point at so.2.x.y"; exit 1 ;;
esac
readelf -d "$lib/lib$package.so" | grep -q "soname: \[lib$package.so.2\]"

echo "-- an outside project finds the CMake package"
cmake -S "$outside" -B "$root/outside" -DCMAKE_PREFIX_PATH="$root/usr" -DHOST_SOURCE="$examples/host.cpp" \
    -DPACKAGE="$package" >/dev/null
cmake --build "$root/outside" >/dev/null
(cd "$root" && outside/host no-such-recording.ZU) | grep -q 'bad ZuDrv.ini'

echo "-- pkg-config finds it too"
export PKG_CONFIG_PATH="$lib/pkgconfig"
# shellcheck disable=SC2046
g++ -std=c++17 -fPIC "$examples/host.cpp" -o "$root/host" \
    $(pkg-config --cflags --libs "$(echo "$package" | tr "[:upper:]" "[:lower:]")")
(cd "$root" && LD_LIBRARY_PATH="$lib" ./host no-such-recording.ZU) | grep -q 'bad ZuDrv.ini'

echo "-- the installed program draws by its module, and says so where that is missing"
program=$root/usr/bin/zucmtr
[ -x "$program" ] || exit 0 # a build of the library alone
"$program" sample --out "$root/station" >/dev/null
"$program" view "$root/station/Vostochnaya_000123.ZU" --svg "$root/fault.svg" >/dev/null
grep -q '<svg' "$root/fault.svg"
mv "$lib/zucmtr/picture.so" "$root/away.so"
code=0
LC_ALL=C.UTF-8 "$program" view "$root/station/Vostochnaya_000123.ZU" --svg "$root/none.svg" 2>"$root/message" || code=$?
test "$code" -eq 1
test ! -e "$root/none.svg"
grep -q "cannot be loaded: '$lib/zucmtr/picture.so' is not there; install the program again" "$root/message"
