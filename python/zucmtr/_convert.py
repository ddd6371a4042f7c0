"""Recordings converted into COMTRADE records, verified."""

from __future__ import annotations

import json
from collections.abc import Mapping
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Optional, Union

from . import _core
from ._errors import failure
from ._paths import PathLike, absolute, absolute_or_none, check_directory, check_readable, text_of


@dataclass(frozen=True)
class Conversion:
    """What became of a recording.

    Attributes
    ----------
    data : dict
        The whole report, as ``zucmtr convert --json`` gives it; docs/json.md lists its keys.
    """

    data: Mapping[str, Any]

    @property
    def files(self) -> tuple[Path, ...]:
        """The files of the record, in the directory that was asked for."""
        return tuple(Path(file) for file in self.data["files"])

    @property
    def record(self) -> Path:
        """The file to open: the ``.cfg`` or ``.cff``."""
        return next(file for file in self.files if file.suffix in (".cfg", ".cff"))

    @property
    def notes(self) -> tuple[str, ...]:
        """What is worth knowing about the recording."""
        return tuple(self.data["notes"])

    @property
    def is_new(self) -> bool:
        """False if the right record was there already."""
        return bool(self.data["status"] == "converted")


def convert(
    recording: PathLike,
    out: PathLike = ".",
    *,
    ini: Optional[PathLike] = None,
    defaults: str = "",
    device: str = "",
    form: str = "",
    data: str = "",
    revision: Union[int, str] = "",
    encoding: str = "",
    again: bool = False,
    replace: bool = False,
    sync: bool = False,
) -> Conversion:
    """Convert a recording into a COMTRADE record, and compare the record with the recording.

    Threads may convert at once. They do so with the same ini file, sections and form; calls that differ in these wait for
    each other.

    Parameters
    ----------
    recording
        First file of the recording (``.ZU``); continuation files are found beside it.
    out
        Existing directory for the record.
    ini, defaults, device
        The recorder's ini file and its sections; found as ``zucmtr convert`` finds them.
    form, data, revision, encoding
        ``"cfg"`` or ``"cff"``; ``"ascii"`` or ``"binary"``; 1999 or 2013; ``"utf8"`` or ``"cp1251"``. What is not given is
        as the ini file has it.
    again
        Convert even if the right record is there already.
    replace
        Replace the record of another recording that has the same name.
    sync
        Return only when the record is on the disk.

    Returns
    -------
    Conversion
        ``record`` is the file to open.

    Raises
    ------
    FileError
        The recording, the ini file or the directory cannot be read.
    ConversionError
        Nothing was converted, or the record is not right; the text says why and what to do.
    """
    words = {"form": form, "data": data, "revision": str(revision), "encoding": encoding}
    allowed = {"form": "cfg cff", "data": "ascii binary", "revision": "1999 2013", "encoding": "utf8 cp1251"}
    for name, word in words.items():
        if word and word not in allowed[name].split():
            raise ValueError(f"{name} is {word!r}; it is one of {allowed[name].replace(' ', ', ')}")
    if form == "cff" and words["revision"] == "1999":
        raise ValueError("a CFF file is of revision 2013; leave form or revision out")
    options: dict[str, Union[str, bool]] = {**words, "again": again, "replace": replace, "sync": sync}
    check_readable(recording)
    check_directory(out)
    if ini:
        check_readable(ini)
    path = absolute(recording)
    report = _core.convert(path, text_of(out), absolute_or_none(ini), defaults, device, options)
    conversion = Conversion(json.loads(report))
    if conversion.data["status"] == "failed":
        raise failure("ConversionError", f"{path}: {conversion.data['error']}")
    return conversion
