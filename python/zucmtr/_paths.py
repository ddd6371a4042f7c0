"""Paths as the extension takes them: texts that are UTF-8, of files that can be read."""

from __future__ import annotations

import builtins
import errno
import os
import stat
from typing import Optional, Union

from ._errors import FileError, MissingFileError

PathLike = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


def text_of(path: PathLike) -> str:
    """The path as a text."""
    text = os.fsdecode(path)
    if "\0" in text:
        raise FileError(errno.EINVAL, "A path cannot have a null character", text)
    try:
        text.encode("utf-8")
    except UnicodeEncodeError:
        raise FileError(errno.EILSEQ, "The name is not UTF-8, rename the file", text) from None
    return text


def absolute(path: PathLike) -> str:
    """The same that stays valid when the current directory changes; an empty path stays empty."""
    text = text_of(path)
    return os.path.abspath(text) if text else ""


def absolute_or_none(path: Optional[PathLike]) -> str:
    """The same of a path that may be left out."""
    return "" if path is None else absolute(path)


def check_readable(path: PathLike) -> None:
    """Raise FileError unless it is a file that can be read. A pipe is not opened, as that would wait for its writer."""
    text = text_of(path)
    try:
        mode = os.stat(text).st_mode
        if not stat.S_ISREG(mode) and not stat.S_ISDIR(mode):
            raise OSError(errno.EINVAL, "Not a regular file")
        with builtins.open(text, "rb"):
            pass
    except OSError as error:
        raise _file_error(error, text) from None


def check_directory(path: PathLike) -> None:
    """Raise FileError unless it is a directory."""
    text = text_of(path)
    try:
        if not stat.S_ISDIR(os.stat(text).st_mode):
            raise NotADirectoryError(errno.ENOTDIR, os.strerror(errno.ENOTDIR))
    except OSError as error:
        raise _file_error(error, text) from None


def _file_error(error: OSError, path: str) -> FileError:
    kind = MissingFileError if isinstance(error, FileNotFoundError) else FileError
    return kind(error.errno, error.strerror, path)
