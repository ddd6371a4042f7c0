"""What can go wrong, under the built-in exceptions that callers already catch."""

from __future__ import annotations

__all__ = ["Error", "FileError", "RecordError", "ConversionError", "SaveError", "ChannelError", "FilePresentError",
           "MissingPackageError", "SaveWarning", "SalvageWarning"]


class Error(Exception):
    """Any failure of this package. Its text names the file and the reason."""


class FileError(Error, OSError):
    """A file that does not exist or cannot be read or written; ``filename`` is its path."""


class FilePresentError(FileError, FileExistsError):
    """A file that is there already and is not to be replaced."""


class RecordError(Error, ValueError):
    """A record that cannot be read: the text says in which file and line, and what is wrong."""


class ConversionError(Error, ValueError):
    """A recording that cannot be converted, a record that is not right, or an ini file that does not load."""


class SaveError(Error, ValueError):
    """A record that cannot be saved as it was asked for: the form does not hold it, or there is nothing of what was chosen.

    The text names the place and, where there is one, a form that holds it.
    """


class ChannelError(Error, KeyError):
    """A channel that the record does not have, or of which it has several."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ""


class MissingPackageError(Error, ImportError):
    """An optional package that the call needs is not installed; ``name`` is its name."""


class SaveWarning(UserWarning):
    """What :meth:`zucmtr.Record.save` had to change, leave out or read in a forgiving way, without being asked to."""


class SalvageWarning(UserWarning):
    """A damaged recording of which :func:`zucmtr.convert` converted a part."""
