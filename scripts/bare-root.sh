#!/bin/sh
# Makes a bare Debian root by debootstrap, with device nodes and mounts of its own, and packages from where this machine has
# them; one that is there is only mounted.
#   scripts/bare-root.sh RELEASE ROOT
# Needs root, debootstrap and a mount namespace that ends with the caller: nobody unmounts anything.
set -eu
release=$1 root=$2
# shellcheck source=scripts/in-bare-root.sh
. "$(dirname "$0")/in-bare-root.sh"

# archive LABEL: where the machine has the packages of this label from.
archive() {
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Label: $1" | head -n 1
}
mirror=$(archive Debian)
security=$(archive Debian-Security)

ready=$root/etc/apt/apt.conf.d/99fresh # what is written last
if [ ! -e "$ready" ]; then
    [ -n "$mirror" ] || { echo 'bare-root.sh: the apt sources of this machine have no archive of Debian' >&2; exit 1; }
    debootstrap --variant=minbase "$release" "$root" "$mirror" >"$root.log" || { tail -n 20 "$root.log" >&2; exit 1; }
fi
for node in null:1:3 zero:1:5 full:1:7 random:1:8 urandom:1:9 tty:5:0; do
    IFS=: read -r name major minor <<END
$node
END
    rm -f "$root/dev/$name"
    mknod -m 666 "$root/dev/$name" c "$major" "$minor"
done
mkdir -p "$root/dev/pts" "$root/dev/shm"
mount -t proc proc "$root/proc"
mount -t sysfs -o ro sysfs "$root/sys"
mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
mount -t devpts -o newinstance,ptmxmode=666,mode=620 devpts "$root/dev/pts"
ln -sfn pts/ptmx "$root/dev/ptmx"
ln -sfn /proc/self/fd "$root/dev/fd"
for stream in stdin:0 stdout:1 stderr:2; do
    ln -sfn "/proc/self/fd/${stream#*:}" "$root/dev/${stream%:*}"
done
[ ! -e "$ready" ] || exit 0
# Packages come from where the machine has Debian's, in the suites of the root's release.
for setting in /etc/resolv.conf /etc/hosts; do
    [ ! -e "$setting" ] || cp -L "$setting" "$root/etc/"
done
[ ! -e /etc/apt/auth.conf.d ] || cp -a /etc/apt/auth.conf.d "$root/etc/apt/"
{
    echo "deb $mirror $release main"
    echo "deb $mirror $release-updates main"
    [ -z "$security" ] || echo "deb $security $release-security main"
} >"$root/etc/apt/sources.list"
echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/fresh" # the root need not outlive a power failure
apt-config dump | grep '^Acquire::\(Check-\|http\)' >"$root/apt.conf" || true
inside apt-get -c /apt.conf update -qq
mv "$root/apt.conf" "$ready"
