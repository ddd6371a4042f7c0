"""A record: its configuration, its channels, and what can be made of it."""

from __future__ import annotations

import datetime
import html
import json
import os
from collections.abc import Sequence
from dataclasses import dataclass
from types import TracebackType
from typing import Any, NamedTuple, Optional, Union

import numpy as np
import numpy.typing as npt

from . import _plot, _tables
from ._aliases import Aliases
from ._channels import AnalogChannel, Channels, DigitalChannel
from ._events import Event, Fault, Summary, moment
from ._paths import PathLike, absolute, absolute_or_none, check_readable, text_of
from ._source import Source


class Rate(NamedTuple):
    """A sampling rate, and the last sample (counted from 1) that was taken at it."""

    hertz: float  #: 0: only the times of the samples are known
    last: int


@dataclass(frozen=True)
class Finding:
    """Something in the files of a record that the standard does not allow, but that has only one meaning."""

    file: str
    line: int  #: from 1; 0: of the whole file
    column: int  #: from 1; 0: of the whole line
    severity: str  #: ``"note"``, ``"warning"`` or ``"error"``
    reason: str  #: a word for programs; docs/json.md lists them
    text: str

    def __str__(self) -> str:
        place = ":".join([self.file] + [str(number) for number in (self.line, self.column) if number])
        return f"{place}: {self.severity}: {self.text}"


class Record(Aliases):
    """A COMTRADE record, or a recording as the record that it makes.

    The configuration is read at once, the samples when they are first asked for. They stay in memory until the record is
    closed and the arrays made of it are gone. A record is a context manager; closing it twice does no harm. It can be
    pickled: what is kept is how it was opened.
    """

    def __init__(
        self, path: PathLike, *, encoding: str = "", ini: Optional[PathLike] = None, defaults: str = "", device: str = ""
    ) -> None:
        self._path = text_of(path)
        check_readable(self._path)
        self._options = {"encoding": encoding, "ini": absolute_or_none(ini), "defaults": defaults, "device": device}
        self._source = Source(absolute(path), self._options)
        self._fields = self._source.core.configuration()
        self.analog = Channels(
            [AnalogChannel(self._source, i, fields) for i, fields in enumerate(self._fields["analog"])]
        )
        self.digital = Channels(
            [DigitalChannel(self._source, i, fields) for i, fields in enumerate(self._fields["digital"])]
        )

    @property
    def path(self) -> str:
        """The file that was opened, as it was given."""
        return self._path

    @property
    def station(self) -> str:
        """Name of the station."""
        return str(self._fields["station"])

    @property
    def device(self) -> str:
        """Identification of the recorder."""
        return str(self._fields["device"])

    @property
    def revision(self) -> int:
        """Revision of COMTRADE: 1991, 1999 or 2013."""
        return int(self._fields["revision"])

    @property
    def data_type(self) -> str:
        """``"ASCII"``, ``"BINARY"``, ``"BINARY32"`` or ``"FLOAT32"``."""
        return str(self._fields["data_type"])

    @property
    def frequency(self) -> float:
        """Nominal line frequency, Hz; 0 if the record has none."""
        return float(self._fields["frequency"])

    @property
    def rates(self) -> tuple[Rate, ...]:
        """Sampling rates, in the order of their samples."""
        return tuple(Rate(*rate) for rate in self._fields["rates"])

    @property
    def start(self) -> datetime.datetime:
        """Time of the first sample, to the microsecond; aware if the record says its zone."""
        return moment(self._fields["start"], self._fields["utc_offset"])

    @property
    def trigger(self) -> datetime.datetime:
        """Time of the trigger, to the microsecond; aware if the record says its zone."""
        return moment(self._fields["trigger"], self._fields["utc_offset"])

    @property
    def time(self) -> npt.NDArray[np.float64]:
        """Time of each sample, seconds from the trigger, shape (samples,), read-only."""
        return self._source.time

    @property
    def numbers(self) -> npt.NDArray[np.uint32]:
        """Number of each sample as stored, usually 1, 2, 3 ..., shape (samples,), uint32, read-only."""
        return self._source.core.numbers()

    @property
    def header(self) -> str:
        """Text of the HDR file, the fault report, its lines ended by a line feed; empty if there is none."""
        return self._source.core.header().replace("\r\n", "\n")

    @property
    def information(self) -> bytes:
        """The INF file as stored; empty if there is none."""
        return self._source.core.information()

    @property
    def findings(self) -> tuple[Finding, ...]:
        """What was forgiven when the record was read; complete once its samples have been."""
        return tuple(Finding(*fields) for fields in self._source.core.forgiven())

    def summary(self, lines: Optional[PathLike] = None) -> Summary:
        """What happened: fault, events, operating times.

        Parameters
        ----------
        lines
            File with the data of the lines (``lines.ini``), for the distance to the fault; found as ``zucmtr events``
            finds it if it is not given.
        """
        return Summary(json.loads(self._source.core.summary(absolute_or_none(lines))))

    def events(self) -> tuple[Event, ...]:
        """The sequence of events; see :meth:`summary`."""
        return self.summary().events

    def fault(self, lines: Optional[PathLike] = None) -> Optional[Fault]:
        """The short circuit, None if there is none; see :meth:`summary`."""
        return self.summary(lines).fault

    def to_dataframe(self) -> Any:
        """A ``pandas.DataFrame``: a column for each channel, the seconds from the trigger as index.

        Units and station are in ``attrs``. Needs pandas.
        """
        return _tables.dataframe(self)

    def to_xarray(self) -> Any:
        """An ``xarray.Dataset``: a variable for each channel, with unit, phase and circuit. Needs xarray."""
        return _tables.dataset(self)

    def plot(
        self, channels: Optional[Sequence[Union[int, str]]] = None, *, digital: bool = True, figure: Any = None
    ) -> Any:
        """A figure with the channels, those of one circuit and unit on one axis. Needs matplotlib.

        Parameters
        ----------
        channels
            Analog channels, by place or name; all of them if it is None.
        digital
            Draw the digital channels that change.
        figure
            Figure of matplotlib to draw in; a new one if it is None.
        """
        return _plot.plot(self, channels, digital, figure)

    def close(self) -> None:
        """Let the samples go. Arrays that were taken stay valid; nothing more can be asked of the record."""
        self._source.close()

    @property
    def closed(self) -> bool:
        """Whether the record is closed."""
        return self._source.is_closed

    def __enter__(self) -> Record:
        return self

    def __exit__(
        self,
        kind: Optional[type[BaseException]],
        error: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None:
        self.close()

    def __len__(self) -> int:
        return self._source.core.count()

    def __bool__(self) -> bool:
        return True

    def __reduce__(self) -> tuple[Any, ...]:
        return _reopen, (type(self), self._source.path, self._options)

    def __repr__(self) -> str:
        return (
            f"<Record {os.path.basename(self._path)!r} of {self.station!r}, {self.trigger.isoformat()}: "
            f"{len(self.analog)} analog, {len(self.digital)} digital channels>"
        )

    def _repr_html_(self) -> str:
        facts = [
            ("Station", self.station),
            ("Device", self.device),
            ("Trigger", self.trigger.isoformat(sep=" ")),
            ("Rates", ", ".join(f"{rate.hertz:g} Hz" for rate in self.rates) or "none"),
            ("Channels", f"{len(self.analog)} analog, {len(self.digital)} digital"),
            ("Form", f"revision {self.revision}, {self.data_type}"),
        ]
        rows = "".join(f"<tr><th>{name}</th><td>{html.escape(value)}</td></tr>" for name, value in facts)
        channels = "".join(
            f"<tr><td>{one.number}</td><td>{html.escape(one.name)}</td><td>{html.escape(one.phase)}</td>"
            f"<td>{html.escape(one.circuit)}</td><td>{html.escape(one.unit)}</td></tr>"
            for one in self.analog
        )
        return (
            f"<b>{html.escape(os.path.basename(self._path))}</b><table>{rows}</table>"
            f"<details><summary>Analog channels</summary><table>{channels}</table></details>"
        )


def _reopen(kind: type[Record], path: str, options: dict[str, str]) -> Record:
    return kind(path, **options)


def open(
    path: PathLike, *, encoding: str = "", ini: Optional[PathLike] = None, defaults: str = "", device: str = ""
) -> Record:
    """Open a recording (``.ZU``) or a COMTRADE record (``.cfg``, ``.cff``; any form, any revision).

    Parameters
    ----------
    path
        The file. A recording's continuation files are found beside it.
    encoding
        Encoding of a record's texts, such as ``"cp866"``; found out if it is empty.
    ini, defaults, device
        For a recording: the recorder's ini file and its sections. Found as ``zucmtr convert`` finds them if they are not given;
        without an ini file the recording is converted without a sorting dictionary.

    Raises
    ------
    FileError
        The file cannot be read.
    RecordError
        It is no record, or a damaged one.
    ConversionError
        The recording cannot be converted.
    """
    return Record(path, encoding=encoding, ini=ini, defaults=defaults, device=device)
