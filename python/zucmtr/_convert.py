"""Recordings converted into COMTRADE records, verified."""

from __future__ import annotations

import json
import warnings
from collections.abc import Mapping
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Optional, Union

from . import _core
from ._errors import SalvageWarning, failure
from ._paths import PathLike, absolute, absolute_or_none, check_directory, check_readable, text_of


@dataclass(frozen=True)
class Salvaged:
    """What a record has of a damaged recording, and what is lost.

    Attributes
    ----------
    analog, digital : int
        Number of channels of the record.
    channels : int
        Number of channels of the recording, analog and digital ones together.
    lost : tuple of str
        Names of the channels that are not in the record.
    nameless : int
        Number of further ones, whose names are lost too.
    lost_files : tuple of pathlib.Path
        Files of the recording that are not in the record.
    """

    analog: int
    digital: int
    channels: int
    lost: tuple[str, ...]
    nameless: int
    lost_files: tuple[Path, ...]

    def __str__(self) -> str:
        parts = [f"{self.analog + self.digital} of {self.channels} channels were salvaged"]
        parts += [f"lost: {', '.join(self.lost)}"] if self.lost else []
        parts += [f"without a name: {self.nameless}"] if self.nameless else []
        parts += [f"lost files: {', '.join(map(str, self.lost_files))}"] if self.lost_files else []
        return "; ".join(parts)


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
    def salvaged(self) -> Optional[Salvaged]:
        """What the record has of a damaged recording (``salvage=True``); None if the recording is whole."""
        fields = self.data.get("salvaged")
        if fields is None:
            return None
        return Salvaged(
            analog=fields["analog"],
            digital=fields["discrete"],
            channels=fields["channels"],
            lost=tuple(fields["lost"]),
            nameless=fields["nameless"],
            lost_files=tuple(Path(file) for file in fields["lostFiles"]),
        )

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
    layout: str = "",
    again: bool = False,
    overwrite: bool = False,
    salvage: bool = False,
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
    layout
        Directories below ``out`` and names of the records, as ``"{station}/{year}-{month}/{name}"``; ``zucmtr help convert``
        lists the placeholders. Without it a record has the converter's own name, in ``out`` itself.
    again
        Convert even if the right record is there already.
    overwrite
        Replace the record of another recording that has the same name.
    salvage
        Of a recording that is cut off or damaged, convert the channels that are whole; without it, it fails.
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
    ValueError
        An argument is wrong, or contradicts another one.

    Warns
    -----
    SalvageWarning
        The recording is damaged, and was salvaged in part; ``salvaged`` of the result has the details.
    """
    words = {"form": form, "data": data, "revision": str(revision), "encoding": encoding}
    allowed = {"form": "cfg cff", "data": "ascii binary", "revision": "1999 2013", "encoding": "utf8 cp1251"}
    for name, word in words.items():
        if word and word not in allowed[name].split():
            raise ValueError(f"{name} is {word!r}; it is one of {allowed[name].replace(' ', ', ')}")
    if form == "cff" and words["revision"] == "1999":
        raise ValueError("a CFF file is of revision 2013; leave form or revision out")
    options: dict[str, Union[str, bool]] = {
        **words,
        "layout": layout,
        "again": again,
        "overwrite": overwrite,
        "salvage": salvage,
        "sync": sync,
    }
    check_readable(recording)
    check_directory(out)
    if ini:
        check_readable(ini)
    path = absolute(recording)
    report = _core.convert(path, text_of(out), absolute_or_none(ini), defaults, device, options)
    conversion = Conversion(json.loads(report))
    if conversion.data["status"] == "failed":
        raise failure("ConversionError", f"{path}: {conversion.data['error']}")
    if conversion.salvaged:
        warnings.warn(f"{path}: {conversion.salvaged}", SalvageWarning, stacklevel=2)
    return conversion
