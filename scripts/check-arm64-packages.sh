#!/bin/sh
# Builds the Debian packages for 64-bit ARM in a bare root of Debian, by the commands of docs/packages.md, and looks into them
# (scripts/inspect-packages.sh). Then installs them there, and holds what they do, by qemu, against the packages of this
# machine: the program, and hosts that are compiled against the libraries for Qt 5 and Qt 6.
#   scripts/check-arm64-packages.sh [--release NAME] PACKAGES [DIRECTORY]
# --release   Debian's code name; default: bookworm
# PACKAGES    the directory of this machine's packages, as scripts/check-packages.sh keeps it; its libraries are installed here
# DIRECTORY   for the root, the logs and the packages (4 GB), in packages/, removed at the end if it was made here; default:
#             under /var/tmp
# Needs root and the machine's apt sources, which the root takes over. Its mounts go with the process.
set -eu

release=bookworm
while [ $# -gt 0 ]; do
    case $1 in
    --release) release=$2; shift 2 ;;
    -*) sed -n '2,10s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    *) break ;;
    esac
done
[ $# -ge 1 ] || { sed -n '2,10s/^# \{0,1\}//p' "$0" >&2; exit 2; }
native=$(cd "$1" && pwd)
"$(dirname "$0")/install-packages.sh" build package
# shellcheck source=scripts/in-bare-root.sh
. "$(dirname "$0")/in-bare-root.sh"
own_mounts "${2:-}" --release "$release" "$native"
cd "$(dirname "$0")/.."
packages=$top/packages
export LC_ALL=C.UTF-8

printf '\n== a bare root of %s, packages for 64-bit ARM\n' "$release"
scripts/bare-root.sh "$release" "$root"
printf 'APT::Get::Assume-Yes "true";\nAPT::Install-Recommends "false";\n' >"$root/etc/apt/apt.conf.d/98packages"
# The commands go by the document, from the directory of the sources.
commands=$(sed -n '/^    sudo dpkg --add-architecture arm64/,/^$/s/^    //p' docs/packages.md | sed 's/sudo //g')
echo "$commands"
rm -rf "$root/packages" "$packages"
mkdir -p "$root/packages/source"
tree=$(git stash create)
git archive "${tree:-HEAD}" | tar -x -m --no-same-permissions -C "$root/packages/source"
inside DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 DEB_BUILD_OPTIONS="parallel=$(nproc)" \
    sh -euxc "cd /packages/source; $commands" >"$top/build.log" 2>&1 </dev/null || { tail -n 60 "$top/build.log" >&2; exit 1; }
mkdir "$packages"
mv "$root"/packages/*_arm64.* "$root"/packages/*_all.deb "$root"/packages/*.dsc "$root"/packages/*.tar.* "$packages"
(cd "$packages" && sha256sum -- *_arm64.deb)

scripts/inspect-packages.sh "$packages" "$top/build.log"

printf '\n== processor\n'
rm -rf "$top/arm64" "$top/native"
rm -f "$root"/packages/*.deb
for package in "$packages"/*_arm64.deb; do
    case $package in
    *-dbgsym_*) ;;
    *) dpkg-deb -x "$package" "$top/arm64"; cp "$package" "$root/packages" ;;
    esac
done
for package in "$native"/zucmtr_*.deb "$native"/libzucmtrconverter2_*.deb; do
    dpkg-deb -x "$package" "$top/native"
done
find "$top/arm64" -type f \( -name '*.so*' -o -path '*/bin/*' \) | sort | while read -r binary; do
    machine=$(readelf -h "$binary" | sed -n 's/^ *Machine: *//p')
    echo "$machine: ${binary#"$top/arm64"}"
    [ "$machine" = AArch64 ]
done

printf '\n== installed, by qemu\n'
work=$root/packages/work
mkdir "$work"
inside DEBIAN_FRONTEND=noninteractive sh -euc 'apt-get -q install /packages/*_arm64.deb' >"$top/install.log" 2>&1 </dev/null ||
    { tail -n 40 "$top/install.log" >&2; exit 1; }
native_zucmtr() {
    LD_LIBRARY_PATH=$(echo "$top"/native/usr/lib/*-linux-gnu) "$top/native/usr/bin/zucmtr" "$@"
}
inside LC_ALL=C.UTF-8 sh -eu -s >"$top/use.log" 2>&1 <<'END' || { tail -n 40 "$top/use.log" >&2; exit 1; }
cd /packages/work
qemu-aarch64 /usr/bin/zucmtr --version
qemu-aarch64 /usr/bin/zucmtr sample --out station
qemu-aarch64 /usr/bin/zucmtr convert --out program --make-out station
for package in zucmtrconverter zucmtrconverterqt6; do
    aarch64-linux-gnu-g++ -std=c++17 -fPIC ../source/examples/host.cpp -o host-$package \
        $(PKG_CONFIG_LIBDIR=/usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig pkg-config --cflags --libs $package)
    mkdir $package
    cp station/ZuDrv.ini $package
    (cd $package && qemu-aarch64 ../host-$package ../station/*.ZU && rm ZuDrv.ini)
done
END
native_zucmtr sample --out "$top/native/station" >/dev/null
native_zucmtr convert --out "$top/native/records" --make-out "$top/native/station" >"$top/native.log" 2>&1 ||
    { cat "$top/native.log" >&2; exit 1; }
grep ' converted and verified' "$top/use.log"
diff -r "$top/native/station" "$work/station"
for records in program zucmtrconverter zucmtrconverterqt6; do
    diff -r -x zucmtr.log "$top/native/records" "$work/$records"
    echo "$records: $(find "$work/$records" -type f ! -name zucmtr.log | wc -l) files as on this machine"
done
diff -r -x 'libzucmtrconverter*' "$top/native/usr/share" "$top/arm64/usr/share"
echo 'manual pages and completions as on this machine'
