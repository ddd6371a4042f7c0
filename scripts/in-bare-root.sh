#!/bin/sh
# What the scripts share that work in a bare root (scripts/bare-root.sh). They source it before they change the directory:
#   own_mounts DIRECTORY ARGUMENT...
#       starts the script again, with these arguments and the directory after them, in a mount namespace of its own; there it
#       sets top to the directory and root to where the root belongs in it. An empty DIRECTORY stands for a new one under
#       /var/tmp, which is removed at the end. The mounts end in any case.
#   inside COMMAND...
#       runs a command in the root, with nothing of the caller's environment.

own_mounts() {
    top=$1
    shift
    if [ -z "${OWN_MOUNTS:-}" ]; then
        script=$(basename "$0")
        [ "$(id -u)" -eq 0 ] || { echo "$script: run as root: it makes device nodes and mounts" >&2; exit 1; }
        command -v debootstrap >/dev/null || { echo "$script: install debootstrap" >&2; exit 1; }
        OWN_MOUNTS=kept
        [ -n "$top" ] || { top=$(mktemp -d "/var/tmp/zucmtr-${script%.sh}.XXXXXX"); OWN_MOUNTS=removed; }
        export OWN_MOUNTS
        exec unshare --mount --pid --fork --kill-child --mount-proc "$(dirname "$0")/$script" "$@" "$top"
    fi
    mkdir -p "$top"
    top=$(cd "$top" && pwd)
    root=$top/root
    afterwards=$OWN_MOUNTS
    unset OWN_MOUNTS # it is for this script alone
    mkdir -p "$root"
    mount --bind "$root" "$root" # what becomes the root of all mounts has to be one
    trap leave_root EXIT
    trap 'exit 130' INT TERM
}

leave_root() {
    code=$?
    trap - EXIT
    for mounted in dev/pts dev/shm sys proc .; do
        umount -l "$root/$mounted" 2>/dev/null || true
    done
    [ "$afterwards" = kept ] || rm -rf --one-file-system "$top"
    exit "$code"
}

# The root becomes that of all mounts. In one by chroot the system lets nobody make namespaces of users, as tests do that have
# mounts of their own and are not root's.
inside() {
    # shellcheck disable=SC2016
    unshare --mount sh -c 'cd "$1" && pivot_root . . && umount -l . && cd / && shift && exec "$@"' sh "$root" \
        /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM=dumb HOME=/root "$@"
}
