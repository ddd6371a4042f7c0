"""Parts of a configuration, and where it is."""

from __future__ import annotations

import os
from dataclasses import dataclass
from typing import NamedTuple, Optional


class Rate(NamedTuple):
    """A sampling rate.

    Attributes
    ----------
    hertz : float
        Samples per second; 0 if only the times of the samples are known.
    last : int
        The last sample that was taken at it, counted from 1.
    """

    hertz: float
    last: int


@dataclass(frozen=True)
class Finding:
    """Something in the files of a record that the standard does not allow, but that has only one meaning.

    Attributes
    ----------
    file : str
        The file.
    line, column : int
        Where in it, from 1; 0 stands for the whole file or line.
    severity : str
        ``"note"``, ``"warning"`` or ``"error"``.
    reason : str
        A word for programs; docs/json.md lists them.
    text : str
        What is there, and how it was read.
    """

    file: str
    line: int
    column: int
    severity: str
    reason: str
    text: str

    def __str__(self) -> str:
        place = ":".join([self.file] + [str(number) for number in (self.line, self.column) if number])
        return f"{place}: {self.severity}: {self.text}"


def is_record(path: str) -> bool:
    return path.lower().endswith((".cfg", ".cff"))


def configuration_of(path: str) -> Optional[str]:
    """The configuration beside another file of a record; None if there is none, or it is no such file."""
    stem, suffix = os.path.splitext(path)
    if suffix.lower() not in (".dat", ".hdr", ".inf"):
        return None
    return next((stem + cfg for cfg in (".cfg", ".CFG", ".Cfg") if os.path.exists(stem + cfg)), None)
