#!/bin/sh
# Installs packages, builds, makes the sample station, converts it and shows what came out, also as a page.
#   ./demo.sh [DIRECTORY]      the station goes there; default: demo-station, which is replaced
set -eu
cd "$(dirname "$0")"
station=${1:-demo-station}

scripts/install-packages.sh build
cmake --preset release >/dev/null
cmake --build --preset product -j "$(nproc)"
zucmtr=build/release/tools/zucmtr/zucmtr

rm -rf "$station"
mkdir -p "$station"
printf '\n== The sample station\n'
"$zucmtr" sample --out "$station"
ls -l "$station"

# convert NAME SED-SCRIPT: converts the station with its ini file changed by the script.
convert() {
    printf '\n== %s\n' "$1"
    mkdir -p "$station/$1"
    sed "$2" "$station/ZuDrv.ini" >"$station/$1/ZuDrv.ini"
    "$zucmtr" convert --ini "$station/$1/ZuDrv.ini" --defaults Default --device Vostochnaya \
        --out "$station/$1" "$station"/*.ZU
    ls -l "$station/$1"
}
convert comtrade-2013 ''
convert comtrade-2013-cff 's/^\(Тип Comtrade CFF\)=.*/\1=1/'
convert comtrade-1999 's/^\(Тип Comtrade 1999\)=.*/\1=1/'

printf '\n== The fault report of one recording\n'
set -- "$station"/comtrade-2013/*.hdr
cat "$1"

printf '\n== The same recording as a page: open it in a browser\n'
"$zucmtr" view "$station/Vostochnaya_000123.ZU" -o "$station/fault.html"
