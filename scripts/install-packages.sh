#!/bin/sh
# Installs what the given jobs need from Debian's packages; does nothing if all of it is there.
#   scripts/install-packages.sh [build] [test] [python] [view] [lint] [fuzz] [bench] [coverage] [fleet] [arm64] [qt6]
#                               [package]
set -eu

packages=
for job in "${@:-build}"; do
    case $job in
    build) packages="$packages g++ cmake ninja-build pkgconf qtbase5-dev qttools5-dev qttools5-dev-tools libcli11-dev libeigen3-dev libhwy-dev libqt5svg5-dev libsqlite3-dev libuchardet-dev libmatio-dev nettle-dev pybind11-dev python3-dev libjs-dygraphs fonts-dejavu-core python3 libgtest-dev" ;;
    test) packages="$packages apparmor binutils dpkg-dev libqt5sql5-psql man-db parallel postgresql python3-jsonschema python3-prometheus-client python3-scipy strace systemd zsh" ;;
    python) packages="$packages python3-dbg python3-numpy python3-pandas python3-xarray python3-matplotlib python3-dask mypy python3-pip python3-skbuild python3-setuptools python3-wheel" ;;
    view) packages="$packages chromium chromium-driver chromium-headless-shell python3-selenium" ;;
    lint) packages="$packages clang-format-19 clang-tidy-19 git shellcheck" ;; # as in scripts/lint.sh
    fuzz) packages="$packages clang libclang-rt-dev" ;;
    bench) packages="$packages libbenchmark-dev" ;;
    qt6) packages="$packages qt6-base-dev qt6-tools-dev qt6-l10n-tools qt6-svg-dev libqt6sql6-psql" ;;
    arm64) packages="$packages g++-aarch64-linux-gnu qemu-user-static" ;;
    coverage) packages="$packages gcovr" ;;
    package) packages="$packages autopkgtest build-essential debhelper debootstrap devscripts dh-apparmor dh-python diffoscope-minimal dpkg-dev git lintian locales qt6-base-dev" ;;
    fleet) packages="$packages iproute2 munge openssh-client openssh-server openssl parallel slurm-client slurmctld slurmd" ;;
    *)
        echo "install-packages.sh: no such job: $job (build, test, python, view, lint, fuzz, bench, coverage, fleet, arm64, qt6, package)" >&2
        exit 2
        ;;
    esac
done

set -- # what is missing
for package in $packages; do
    if ! dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
        set -- "$@" "$package"
    fi
done
[ $# -gt 0 ] || exit 0

as_root=
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "install-packages.sh: run as root, or install sudo; missing: $*" >&2; exit 1; }
    as_root=sudo
fi
echo "Installing: $*"
# The tests start servers of their own: none of the packages is to start one on this machine.
policy=/usr/sbin/policy-rc.d
if [ ! -e "$policy" ]; then
    trap '$as_root rm -f "$policy"' EXIT
    trap 'exit 130' INT TERM
    # shellcheck disable=SC2016
    $as_root sh -c 'printf "#!/bin/sh\nexit 101\n" >"$1" && chmod 755 "$1"' sh "$policy"
fi
$as_root dpkg --configure -a # what an interrupted run has left
$as_root apt-get update -qq
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >/dev/null
