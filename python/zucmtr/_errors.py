"""What can go wrong, under the built-in exceptions that callers already catch."""

from __future__ import annotations

__all__ = ["Error", "FileError", "RecordError", "ConversionError", "ChannelError", "MissingPackageError"]


class Error(Exception):
    """Any failure of this package. Its text names the file and the reason."""


class FileError(Error, OSError):
    """A file that does not exist or cannot be read or written; ``filename`` is its path."""


class RecordError(Error, ValueError):
    """A record that cannot be read: the text says in which file and line, and what is wrong."""


class ConversionError(Error, ValueError):
    """A recording that cannot be converted, a record that is not right, or an ini file that does not load."""


class ChannelError(Error, KeyError):
    """A channel that the record does not have, or of which it has several."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ""


class MissingPackageError(Error, ImportError):
    """An optional package that the call needs is not installed; ``name`` is its name."""
