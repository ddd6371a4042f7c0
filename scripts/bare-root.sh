#!/bin/sh
# Makes a bare Debian root by debootstrap, with device nodes and mounts of its own, and packages from where this machine has
# them; one that is there is only mounted.
#   scripts/bare-root.sh RELEASE ROOT
# Needs root, debootstrap and a mount namespace that ends with the caller: nobody unmounts anything.
set -eu
release=$1 root=$2

inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM=dumb HOME=/root "$@"; }

ready=$root/etc/apt/apt.conf.d/99fresh # what is written last
if [ ! -e "$ready" ]; then
    # shellcheck disable=SC2016
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | grep '/debian/$' | head -n 1)
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
# Packages come from where the machine has them.
for setting in /etc/resolv.conf /etc/hosts; do
    [ ! -e "$setting" ] || cp -L "$setting" "$root/etc/"
done
rm -f "$root/etc/apt/sources.list"
for place in sources.list sources.list.d auth.conf.d trusted.gpg.d keyrings preferences.d; do
    [ ! -e "/etc/apt/$place" ] || cp -a "/etc/apt/$place" "$root/etc/apt/"
done
here=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
find "$root/etc/apt" -name '*.sources' -exec sed -i "s/\b$here\b/$release/g" {} +
apt-config dump | grep '^Acquire::\(Check-\|http\)' >"$root/apt.conf" || true
inside apt-get -c /apt.conf update -qq
mv "$root/apt.conf" "$ready"
