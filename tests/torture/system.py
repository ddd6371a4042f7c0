"""What the standard library lacks: mounts, private namespaces, renames that exchange."""
import ctypes
import os

_LIBC = ctypes.CDLL(None, use_errno=True)
_CLONE_NEWNS = 0x20000
_MS_RDONLY, _MS_REMOUNT, _MS_BIND, _MS_REC, _MS_PRIVATE = 1, 32, 4096, 16384, 1 << 18
_NOREPLACE, _EXCHANGE = 1, 2
_AT_FDCWD = -100


def _check(result, path):
    if result != 0:
        error = ctypes.get_errno()
        raise OSError(error, os.strerror(error), str(path))


def own_mounts():
    """Moves the process into a private mount namespace; False if that is not permitted."""
    if _LIBC.unshare(_CLONE_NEWNS) != 0:
        return False
    _check(_LIBC.mount(b"none", b"/", None, ctypes.c_ulong(_MS_REC | _MS_PRIVATE), None), "/")
    return True


def mount_memory(path, size=None):
    """Mounts a file system in memory on an existing directory, of `size` bytes if it is given."""
    options = b"mode=755" + (b",size=%d" % size if size is not None else b"")
    _check(_LIBC.mount(b"tmpfs", os.fsencode(path), b"tmpfs", ctypes.c_ulong(0), options), path)


def resize_memory(path, size):
    """Gives such a file system another size."""
    _check(_LIBC.mount(b"none", os.fsencode(path), b"tmpfs", ctypes.c_ulong(_MS_REMOUNT), b"size=%d" % size), path)


def unmount(path):
    _LIBC.umount2(os.fsencode(path), 2)


def cover_read_only(path):
    """Covers a directory with a view of itself in which nothing can be written, until it is unmounted."""
    name = os.fsencode(path)
    _check(_LIBC.mount(name, name, None, ctypes.c_ulong(_MS_BIND), None), path)
    _check(_LIBC.mount(b"none", name, None, ctypes.c_ulong(_MS_REMOUNT | _MS_BIND | _MS_RDONLY), None), path)


def exchange(a, b):
    """Exchanges two files in one step; raises FileNotFoundError if one of them is gone."""
    _check(_LIBC.renameat2(_AT_FDCWD, os.fsencode(a), _AT_FDCWD, os.fsencode(b), _EXCHANGE), a)


def rename_to_free(a, b):
    """Renames a to b in one step; raises FileExistsError if there is a file b."""
    _check(_LIBC.renameat2(_AT_FDCWD, os.fsencode(a), _AT_FDCWD, os.fsencode(b), _NOREPLACE), a)
