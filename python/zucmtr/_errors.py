"""What can go wrong, under the built-in exceptions that callers already catch."""

from __future__ import annotations


class Error(Exception):
    """Any failure of this package. Its text names the file and the reason."""


class FileError(Error, OSError):
    """A file that cannot be read or written.

    Attributes
    ----------
    filename : str
        The file, as it was given.
    errno : int
        Why, as in the module ``errno``.
    """


class MissingFileError(FileError, FileNotFoundError):
    """A file that does not exist; see ``FileError``."""


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
    """An optional package that the call needs is not installed.

    Attributes
    ----------
    name : str
        The package, by the name that it is imported by.
    """


class SaveWarning(UserWarning):
    """What :meth:`zucmtr.Record.save` had to change, leave out or read in a forgiving way, without being asked to."""


class SalvageWarning(UserWarning):
    """A damaged recording of which :func:`zucmtr.convert` converted a part."""


# Files that were linked or written elsewhere to be read, and what the user knows them by.
own_names: dict[str, str] = {}


def with_own_names(text: str) -> str:
    """The text with the files as the user knows them."""
    for linked, own in list(own_names.items()):
        text = text.replace(linked, own)
    return text


def failure(kind: str, text: str) -> Exception:
    """The exception of this module for a failure of the C++ code, which raises it."""
    kinds: dict[str, type[Error]] = {one.__name__: one for one in (RecordError, ConversionError, SaveError, ChannelError)}
    return kinds[kind](with_own_names(text))
