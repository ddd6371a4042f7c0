"""A record: its configuration, its channels, and what can be made of it."""

from __future__ import annotations

import datetime
import html
import json
import os
from collections.abc import Sequence
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, Any, Optional, Union

import numpy as np
import numpy.typing as npt

from . import _plot, _tables
from ._aliases import Aliases
from ._channels import AnalogChannel, Channels, DigitalChannel
from ._configuration import Finding, Rate, configuration_of, is_record
from ._errors import RecordError, with_own_names
from ._events import Event, Fault, Summary, moment
from ._paths import PathLike, absolute, absolute_or_none, check_readable, text_of
from ._save import ChannelChoice, Moment, save
from ._source import Source

if TYPE_CHECKING:
    import matplotlib.figure
    import pandas
    import xarray


class Record(Aliases):
    """A COMTRADE record, or a recording as the record that it makes; ``zucmtr.open`` gives one.

    The configuration is read at once, the samples when they are first asked for. They stay in memory until the record is
    closed and the arrays made of it are gone. A record is a context manager; closing it twice does no harm. It can be
    used by any number of threads at once, and pickled: what is kept is how it was opened.

    Attributes
    ----------
    analog : Channels of AnalogChannel
        The analog channels.
    digital : Channels of DigitalChannel
        The digital (status) channels.
    """

    analog: Channels[AnalogChannel]
    digital: Channels[DigitalChannel]

    def __init__(
        self, path: PathLike, *, encoding: str = "", ini: Optional[PathLike] = None, defaults: str = "", device: str = ""
    ) -> None:
        check_readable(path)
        self._path = text_of(path)
        configuration = configuration_of(self._path)
        if configuration:
            raise RecordError(f"{self._path}: it is a part of a record; open its configuration {configuration}")
        if ini:
            check_readable(ini)
        self._options = {"encoding": encoding, "ini": absolute_or_none(ini), "defaults": defaults, "device": device}
        self._read(absolute(path))

    def _read(self, path: str) -> None:
        self._source = Source(path, self._options)
        self._fields = self._source.core.configuration()
        self.analog = Channels(
            [AnalogChannel(self._source, i, fields) for i, fields in enumerate(self._fields["analog"])]
        )
        self.digital = Channels(
            [DigitalChannel(self._source, i, fields) for i, fields in enumerate(self._fields["digital"])]
        )

    @property
    def path(self) -> Path:
        """The file that was opened, as it was given."""
        return Path(self._path)

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
        """What was forgiven when the record was read; complete once its samples have been. A recording has none."""
        if not is_record(self._path):
            return ()  # of the temporary record
        return tuple(Finding(with_own_names(fields[0]), *fields[1:]) for fields in self._source.core.forgiven())

    def summary(self, lines: Optional[PathLike] = None) -> Summary:
        """What happened: fault, events, operating times. It is found out at each call.

        Parameters
        ----------
        lines
            File with the data of the lines (``lines.ini``), for the distance to the fault; found as ``zucmtr events``
            finds it if it is not given.

        Raises
        ------
        FileError
            ``lines`` cannot be read.
        RecordError
            The samples cannot be read.
        """
        if lines:
            check_readable(lines)
        data = self._source.core.summary(absolute_or_none(lines))
        return Summary(json.loads(data))

    def events(self) -> tuple[Event, ...]:
        """The sequence of events, in the order of time, each time in seconds from the trigger; see ``summary``."""
        return self.summary().events

    def fault(self, lines: Optional[PathLike] = None) -> Optional[Fault]:
        """The short circuit, None if there is none; see ``summary`` for the parameter and what is raised."""
        return self.summary(lines).fault

    def to_dataframe(self) -> pandas.DataFrame:
        """The record as a table of pandas.

        Returns
        -------
        pandas.DataFrame
            A column for each channel, analog ones (primary values, float64) first, then digital ones (0 or 1, uint8);
            shape (samples, channels). The index is ``time``, seconds from the trigger. ``attrs`` has the units (a
            dictionary by columns), station, device and trigger. A name that is there twice gets the channel's number.

        Raises
        ------
        MissingPackageError
            pandas is not installed.
        """
        return _tables.dataframe(self)

    def to_xarray(self) -> xarray.Dataset:
        """The record as a dataset of xarray.

        Returns
        -------
        xarray.Dataset
            A variable for each channel over the coordinate ``time`` (seconds from the trigger): primary values as
            float64, states as bool. Their ``attrs`` have units, phase, circuit and number.

        Raises
        ------
        MissingPackageError
            xarray is not installed.
        """
        data: xarray.Dataset = _tables.dataset(self)
        return data

    def plot(
        self,
        channels: Optional[Sequence[Union[int, str, tuple[str, str], AnalogChannel]]] = None,
        *,
        digital: bool = True,
        span: Optional[tuple[float, float]] = None,
        figure: Optional[matplotlib.figure.Figure] = None,
    ) -> matplotlib.figure.Figure:
        """Draw the primary values over the seconds from the trigger, those of one circuit and unit on one axis.

        A long stretch is drawn by the least and the greatest value of each of some thousand parts, which looks the same.

        Parameters
        ----------
        channels
            Analog channels: places, names, or the channels themselves; all of them if it is None.
        digital
            Draw bars for the digital channels that change, 24 at most.
        span
            Draw what is between these two times, seconds from the trigger; all of it if it is None.
        figure
            Figure of matplotlib to draw in; a new one of ``pyplot`` if it is None.

        Returns
        -------
        matplotlib.figure.Figure
            One axis for each circuit and unit, then one for the states. A dotted line marks the trigger.

        Raises
        ------
        MissingPackageError
            matplotlib is not installed.
        ChannelError
            There is no such channel.
        """
        drawn: matplotlib.figure.Figure = _plot.plot(self, channels, digital, span, figure)
        return drawn

    def save(
        self,
        path: PathLike,
        *,
        form: Optional[str] = None,
        data: Optional[str] = None,
        revision: Union[int, str, None] = None,
        encoding: Optional[str] = None,
        side: Optional[str] = None,
        time: Optional[str] = None,
        decimal_comma: bool = False,
        start: Optional[Moment] = None,
        stop: Optional[Moment] = None,
        window: Union[float, str, None] = None,
        channels: Optional[ChannelChoice] = None,
        changing_only: bool = False,
        every: Optional[int] = None,
        rate: Optional[float] = None,
        overwrite: bool = False,
    ) -> Path:
        """Write the record, or a part of it, in another form; read it back and compare it.

        The words are those of ``zucmtr export`` (docs/export.md). The record is read from its files once more. Files appear
        under their names when all of them are written and compared; after a failure or an interrupt nothing is left of them.

        Parameters
        ----------
        path
            The file, whose suffix decides the form: ``.cfg`` (with ``.dat`` and, if there are texts, ``.hdr`` and ``.inf``
            beside it), ``.cff``, ``.csv`` or ``.mat``. Or an existing directory: the file gets the name of this one.
        form
            ``"cfg"``, ``"cff"``, ``"csv"`` or ``"mat"``, where the suffix does not say it; ``"cfg"`` by default.
        data
            Of COMTRADE: ``"ascii"``, ``"binary"``, ``"binary32"`` or ``"float32"``; by default as in the record.
        revision
            Of COMTRADE: 1999 or 2013; by default as in the record, if it allows the form.
        encoding
            Of the texts of COMTRADE: ``"utf8"``, the default, or ``"cp1251"``.
        side
            ``"primary"`` or ``"secondary"``: a and b are multiplied by the ratio of the factors; by default as stored.
        time
            Of a table: ``"seconds"`` from the trigger, the default, or ``"iso"``, date and time.
        decimal_comma
            Of a table: numbers with a decimal comma, columns separated by semicolons.
        start, stop
            Limits of a part, themselves included: seconds from the trigger, or a datetime (by the clock of the record if it is
            naive). A text is read as the program reads it: ``"200ms"``.
        window
            Seconds around the trigger, a third of them before it; or ``"fault"``: from 0.1 s before the fault to 0.1 s after it.
        channels
            Channels to keep: names, circuits or numbers (``"A3"``, ``"D5"``; ``*`` and ``?`` stand for any letters), circuit and
            signal, places of analog channels from 0, or channels of this record. One or several; all by default.
        changing_only
            Leave out digital channels that never change in the part.
        every
            Keep the first sample and each N-th after it, without a filter.
        rate
            Hertz: what the samples would have been at this rate, with a filter against aliasing.
        overwrite
            Replace files that are there. The files of this record are never replaced.

        Returns
        -------
        pathlib.Path
            The file; the ``.cfg`` of several.

        Raises
        ------
        SaveError
            The form cannot hold a value, or there is no sample, no fault, no factor for what was asked. The text names the
            place, and a form that holds it.
        ChannelError
            There is no such channel.
        FilePresentError
            A file is there already; it is a ``FileError`` and a ``FileExistsError``.
        FileError
            A file cannot be written.
        RecordError
            The record cannot be read.
        ValueError
            An argument is wrong, or contradicts another one.

        Warns
        -----
        SaveWarning
            Something was read in a forgiving way, rounded or left out without being asked for: the text says what.
        """
        options = {
            "form": form,
            "data": data,
            "revision": revision,
            "encoding": encoding,
            "side": side,
            "time": time,
            "decimal_comma": decimal_comma,
            "start": start,
            "stop": stop,
            "window": window,
            "changing_only": changing_only,
            "every": every,
            "rate": rate,
            "overwrite": overwrite,
        }
        return save(self, text_of(path), channels, options)

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
            ("Form", f"revision {self.revision}, {self.data_type}"),
        ]
        rows = "".join(f'<tr><th>{name}</th><td style="text-align: left">{html.escape(value)}</td></tr>' for name, value in facts)
        tables = [("analog", len(self.analog), self.analog._repr_html_())]
        tables += [("digital", len(self.digital), self.digital._repr_html_())]
        channels = "".join(
            f"<details><summary>{count} {kind} channels</summary>{table}</details>"
            for kind, count, table in tables
            if count
        )
        return f"<b>{html.escape(os.path.basename(self._path))}</b><table>{rows}</table>{channels}"


def _reopen(kind: type[Record], path: str, options: dict[str, str]) -> Record:
    return kind(path, **options)


def open(
    path: PathLike, *, encoding: str = "", ini: Optional[PathLike] = None, defaults: str = "", device: str = ""
) -> Record:
    """Open a recording (``.ZU``) or a COMTRADE record (``.cfg``, ``.cff``; any form, any revision).

    Parameters
    ----------
    path
        The file: a text or a ``pathlib.Path``. A recording's continuation files, and the other files of a record, are
        found beside it.
    encoding
        Encoding of a record's texts, such as ``"cp866"``; found out if it is empty.
    ini, defaults, device
        For a recording: the recorder's ini file and its sections. Found as ``zucmtr convert`` finds them if they are not given;
        without an ini file the recording is converted without a sorting dictionary.

    Returns
    -------
    Record
        It can be used in a ``with`` statement, which closes it.

    Raises
    ------
    FileError
        The file or the ini file cannot be read; ``MissingFileError`` if it does not exist.
    RecordError
        It is no record, or a damaged one. Damaged samples are found when they are first asked for.
    ConversionError
        The recording cannot be converted.
    """
    return Record(path, encoding=encoding, ini=ini, defaults=defaults, device=device)
