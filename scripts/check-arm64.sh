#!/bin/sh
# Builds the unit tests of the vector code for 64-bit ARM and runs them on this machine, by qemu.
#   scripts/check-arm64.sh [--download]
# --download   only prepares the root for `cmake --preset arm64`, build/arm64-root: the libraries of the foreign machine,
#              unpacked from Debian's packages. The machine's own packages stay as they are.
set -eu
cd "$(dirname "$0")/.."
root=$PWD/build/arm64-root
packages='fonts-dejavu-core libc6-dev libcli11-dev libeigen3-dev libgtest-dev libhwy-dev libjs-dygraphs libmatio-dev
          libqt5svg5-dev libsqlite3-dev libssl-dev libstdc++-12-dev libuchardet-dev qtbase5-dev qttools5-dev
          qttools5-dev-tools'

scripts/install-packages.sh build arm64

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
[ "${1:-}" != --download ] || exit 0

cmake --preset arm64 >/dev/null
cmake --build --preset arm64 -j "$(nproc)"
ctest --preset arm64 -j "$(nproc)"
