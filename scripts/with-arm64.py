#!/usr/bin/env python3
"""Runs a command where programs for 64-bit ARM start like the machine's own, by qemu.

with-arm64.py COMMAND [ARGUMENT...]

The command and all that it starts see the foreign libraries of build/arm64-root (scripts/check-arm64.sh makes it) under
/usr/lib, after the machine's. Both are true in a user and mount name space of the command alone, so that nothing is left on
the machine. Users and groups are those outside, as many as the caller may give: all for root, itself for another. Root may not make
devices there.

Needs qemu-user-static, and a kernel that keeps the list of foreign programs for each name space (6.7 and newer) or has
qemu in the machine's own list, where systemd enters it when that package is installed.
"""

import ctypes
import errno
import os
import pathlib
import struct
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent / "build/arm64-root"
QEMU = "/usr/bin/qemu-aarch64-static"
LIST = "/proc/sys/fs/binfmt_misc"
# The first twenty bytes of a program: ELF, 64 bits, the least byte first; any system; a program, also one that may be
# loaded anywhere; the processor. P: argv[0] stays. F: qemu is opened now, so that name spaces below need not have it.
MAGIC = rb"\x7fELF\x02\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\xb7\x00"
MASK = rb"\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff"
ENTRY = b":zucmtr-arm64:M::%s:%s:%s:PF" % (MAGIC, MASK, QEMU.encode())

CLONE_NEWNS, CLONE_NEWUSER = 0x00020000, 0x10000000
MS_REC, MS_PRIVATE = 0x4000, 0x40000
libc = ctypes.CDLL(None, use_errno=True)


def main(command):
    if not (ROOT / "packages").exists():
        sys.exit("with-arm64.py: no build/arm64-root; make it first: scripts/check-arm64.sh --download")
    user, superuser = (os.geteuid(), os.getegid()), (0, 0)
    enter_name_space(CLONE_NEWNS, one_user(superuser, user) if user[0] else all_users())
    mount("none", "/", None, MS_REC | MS_PRIVATE)
    mount("overlay", "/usr/lib", "overlay", 0, f"lowerdir=/usr/lib:{ROOT}/usr/lib")
    if not foreign_programs_run():
        try:
            mount("binfmt_misc", LIST, "binfmt_misc")
            pathlib.Path(LIST, "register").write_bytes(ENTRY)
        except OSError as error:
            sys.exit(f"with-arm64.py: programs for 64-bit ARM do not run here ({error}); have qemu entered in the "
                     "machine's list, as root: apt-get install qemu-user-static && systemctl restart systemd-binfmt")
    hide_waiting_by_pidfd()
    if user[0]:
        enter_name_space(0, one_user(user, superuser))
    os.execvp(command[0], command)


def enter_name_space(kinds, maps):
    """New name spaces for this process, the one of users with its maps. They are written from outside, as root's map of all
    users has to be."""
    entered_read, entered_write = os.pipe()
    here = os.getpid()
    writer = os.fork()
    if writer == 0:
        os.close(entered_write)
        os.read(entered_read, 1)
        for name, rows in maps.items():
            pathlib.Path("/proc", str(here), name).write_text(rows)
        os._exit(0)
    os.close(entered_read)
    check(libc.unshare(CLONE_NEWUSER | kinds), "unshare")
    os.close(entered_write)
    if os.waitpid(writer, 0)[1] != 0:
        sys.exit("with-arm64.py: no name space of users")


def all_users():
    """The maps of root: all that its own name space has, as they are."""
    maps = {}
    for name in ("uid_map", "gid_map"):
        rows = [row.split() for row in pathlib.Path("/proc/self", name).read_text().splitlines()]
        maps[name] = "".join(f"{inner} {inner} {count}\n" for inner, _, count in rows)
    return maps


def one_user(inner, outer):
    """The maps that anybody may make: of one user and group, under other numbers."""
    return {"setgroups": "deny", "uid_map": f"{inner[0]} {outer[0]} 1\n", "gid_map": f"{inner[1]} {outer[1]} 1\n"}


def foreign_programs_run():
    """Whether the machine starts foreign programs already: the loader of the C library is one."""
    try:
        return subprocess.run(["/usr/lib/ld-linux-aarch64.so.1", "--version"], stdout=subprocess.DEVNULL,
                              check=False).returncode == 0
    except OSError:
        return False


def hide_waiting_by_pidfd():
    """Makes waitid(P_PIDFD) fail as on kernels that lack it. Qt takes its presence for that of clone(CLONE_PIDFD), which qemu
    7.2 refuses: QProcess would start nothing. Without it Qt waits by signals."""
    load, equal, leave = 0x20, 0x15, 0x06 # of a word; jumps over so many instructions; with a result
    instructions = [(load, 0, 0, 4), (equal, 0, 5, 0xC000003E), # the processor: x86-64
                    (load, 0, 0, 0), (equal, 0, 3, 247),        # the call: waitid
                    (load, 0, 0, 16), (equal, 0, 1, 3),         # its first argument: P_PIDFD
                    (leave, 0, 0, 0x00050000 | errno.EINVAL), (leave, 0, 0, 0x7FFF0000)]
    code = b"".join(struct.pack("=HBBI", *instruction) for instruction in instructions)
    buffer = ctypes.create_string_buffer(code, len(code))
    program = struct.pack("@HP", len(instructions), ctypes.addressof(buffer))
    check(libc.prctl(22, ctypes.c_ulong(2), program), "prctl") # PR_SET_SECCOMP, SECCOMP_MODE_FILTER


def mount(source, target, kind, flags=0, options=None):
    words = [word.encode() if word else None for word in (source, target, kind)]
    check(libc.mount(*words, ctypes.c_ulong(flags), options.encode() if options else None), target)


def check(result, what):
    if result != 0:
        number = ctypes.get_errno()
        raise OSError(number, os.strerror(number), what)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    main(sys.argv[1:])
