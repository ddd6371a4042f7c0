#!/bin/sh
# Builds all of the project for 64-bit ARM and runs its tests on this machine, by qemu.
#   scripts/check-arm64.sh [--download] [-j N]
# --download   only prepares the root for `cmake --preset arm64`, build/arm64-root: the libraries of the foreign machine,
#              unpacked from Debian's packages. The machine's own packages stay as they are.
# -j N         as many jobs at once; default: one for each processor
# docs/testing.md says which tests are left out, and why.
set -eu
cd "$(dirname "$0")/.."
root=$PWD/build/arm64-root
jobs=$(nproc)
download=
while [ $# -gt 0 ]; do
    case $1 in
    --download) download=yes ;;
    -j) shift; jobs=$1 ;;
    *) sed -n '2,8s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    esac
    shift
done

scripts/install-packages.sh build arm64
packages="fonts-dejavu-core libc6-dev libcli11-dev libeigen3-dev libgtest-dev libhwy-dev libjs-dygraphs libmatio-dev
          libqt5sql5-psql libqt5svg5-dev libsqlite3-dev
          libstdc++-$(aarch64-linux-gnu-gcc -dumpversion)-dev libuchardet-dev nettle-dev qtbase5-dev qttools5-dev
          qttools5-dev-tools"

# apt with a state and a cache of its own, for another architecture. Of the machine it has the sources and their keys.
foreign_apt() {
    apt-get -qq -o APT::Architecture=arm64 -o APT::Architectures=arm64 -o APT::Install-Recommends=false \
        -o Dir::State="$root.apt" -o Dir::State::status="$root.apt/status" -o Dir::Cache="$root.apt/cache" \
        -o Dir::Log="$root.apt" -o APT::Sandbox::User= "$@"
}

# The root stands for the packages' names: another list makes another root.
if [ "$(cat "$root/packages" 2>/dev/null)" != "$packages" ]; then
    rm -rf "$root" "$root.apt"
    mkdir -p "$root.apt/lists/partial" "$root.apt/cache/archives/partial" "$root/usr/lib" "$root/usr/bin" "$root/usr/sbin"
    : >"$root.apt/status"
    ln -s usr/lib usr/bin usr/sbin "$root"
    foreign_apt update
    # shellcheck disable=SC2086
    foreign_apt install --yes --download-only $packages
    for package in "$root.apt"/cache/archives/*.deb; do
        dpkg-deb --fsys-tarfile "$package" | tar -x --keep-directory-symlink -C "$root"
    done
    # Links lead to places in the root, not on this machine.
    find "$root" -type l -lname '/*' | while read -r link; do
        ln -sfn "$root$(readlink "$link")" "$link"
    done
    # Programs that the build runs are this machine's.
    for tool in "$root"/usr/lib/qt5/bin/*; do
        ln -sf "/usr/lib/qt5/bin/$(basename "$tool")" "$tool"
    done
    rm -rf "$root.apt"
    printf '%s' "$packages" >"$root/packages"
fi
[ -z "$download" ] || exit 0

cmake --preset arm64 >/dev/null
cmake --build --preset arm64 -j "$jobs"
scripts/with-arm64.py ctest --preset arm64 -j "$jobs"

# What was run: the log of ctest has the sums of each GoogleTest program.
log=build/arm64/Testing/Temporary/LastTest.log
printf '\n64-bit ARM: %s entries of ctest passed; in them %s GoogleTest tests' "$(grep -c '^Test Passed\.$' "$log")" \
    "$(awk '/^\[  PASSED  \]/ {sum += $4} END {print sum}' "$log")"
shared=../shared
if [ -d "$shared/conformance" ]; then
    # The host of the cases is built for the library's processor.
    export PKG_CONFIG_SYSROOT_DIR="$root"
    export PKG_CONFIG_LIBDIR="$root/usr/lib/aarch64-linux-gnu/pkgconfig:$root/usr/share/pkgconfig"
    printf '; conformance: '
    CXX="aarch64-linux-gnu-g++ --sysroot=$root" scripts/with-arm64.py \
        python3 "$shared/conformance/check.py" --lib build/arm64/src -j "$jobs"
else
    printf '\n'
fi
