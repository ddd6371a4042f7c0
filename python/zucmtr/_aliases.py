"""The words of other COMTRADE readers for what records and channels have, so that scripts written for them find their way.

docs/python.md ("Coming from other readers") lists them beside the words of this package.
"""

from __future__ import annotations

import datetime
from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt

if TYPE_CHECKING:
    from ._channels import AnalogChannel, Channels, DigitalChannel
    from ._configuration import Rate
    from ._record import Record


class ChannelAliases:
    """Other names for what :class:`zucmtr.Channel` has under its own."""

    if TYPE_CHECKING:

        @property
        def number(self) -> int: ...
        @property
        def phase(self) -> str: ...
        @property
        def circuit(self) -> str: ...

    @property
    def n(self) -> int:
        """Alias of ``number``."""
        return self.number

    @property
    def ph(self) -> str:
        """Alias of ``phase``."""
        return self.phase

    @property
    def ccbm(self) -> str:
        """Alias of ``circuit``."""
        return self.circuit


class AnalogAliases:
    """Other names for what :class:`zucmtr.AnalogChannel` has under its own."""

    if TYPE_CHECKING:

        @property
        def unit(self) -> str: ...
        @property
        def min(self) -> float: ...
        @property
        def max(self) -> float: ...
        @property
        def side(self) -> str: ...

    @property
    def uu(self) -> str:
        """Alias of ``unit``."""
        return self.unit

    @property
    def cmin(self) -> float:
        """Alias of ``min``."""
        return self.min

    @property
    def cmax(self) -> float:
        """Alias of ``max``."""
        return self.max

    @property
    def pors(self) -> str:
        """Alias of ``side``."""
        return self.side


class DigitalAliases:
    """Other names for what :class:`zucmtr.DigitalChannel` has under its own."""

    if TYPE_CHECKING:

        @property
        def normal(self) -> int: ...

    @property
    def y(self) -> int:
        """Alias of ``normal``."""
        return self.normal


class Aliases:
    """Other names for what :class:`zucmtr.Record` has under its own."""

    if TYPE_CHECKING:
        analog: Channels[AnalogChannel]
        digital: Channels[DigitalChannel]

        @property
        def station(self) -> str: ...
        @property
        def device(self) -> str: ...
        @property
        def revision(self) -> int: ...
        @property
        def rates(self) -> tuple[Rate, ...]: ...
        @property
        def start(self) -> datetime.datetime: ...
        @property
        def trigger(self) -> datetime.datetime: ...
        @property
        def header(self) -> str: ...
        @property
        def information(self) -> bytes: ...
        @property
        def data_type(self) -> str: ...
        def __len__(self) -> int: ...

    @property
    def cfg(self: Record) -> Record:  # type: ignore[misc]
        """The record itself: what the configuration says are its own attributes."""
        return self

    @property
    def station_name(self) -> str:
        """Alias of ``station``."""
        return self.station

    @property
    def rec_dev_id(self) -> str:
        """Alias of ``device``."""
        return self.device

    @property
    def rev_year(self) -> str:
        """Alias of ``revision``, as a text."""
        return str(self.revision)

    @property
    def ft(self) -> str:
        """Alias of ``data_type``."""
        return self.data_type

    @property
    def analog_channels(self) -> Channels[AnalogChannel]:
        """Alias of ``analog``."""
        return self.analog

    @property
    def status(self) -> Channels[DigitalChannel]:
        """Alias of ``digital``."""
        return self.digital

    @property
    def status_channels(self) -> Channels[DigitalChannel]:
        """Alias of ``digital``."""
        return self.digital

    @property
    def analog_count(self) -> int:
        """Alias of ``len(record.analog)``."""
        return len(self.analog)

    @property
    def status_count(self) -> int:
        """Alias of ``len(record.digital)``."""
        return len(self.digital)

    @property
    def channels_count(self) -> int:
        """Number of analog and digital channels together."""
        return len(self.analog) + len(self.digital)

    @property
    def analog_channel_ids(self) -> list[str]:
        """Alias of ``record.analog.keys()``."""
        return self.analog.keys()

    @property
    def analog_phases(self) -> list[str]:
        """The ``phase`` of each analog channel."""
        return [channel.phase for channel in self.analog]

    @property
    def analog_units(self) -> list[str]:
        """The ``unit`` of each analog channel."""
        return [channel.unit for channel in self.analog]

    @property
    def status_channel_ids(self) -> list[str]:
        """Alias of ``record.digital.keys()``."""
        return self.digital.keys()

    @property
    def status_phases(self) -> list[str]:
        """The ``phase`` of each digital channel."""
        return [channel.phase for channel in self.digital]

    @property
    def total_samples(self) -> int:
        """Alias of ``len(record)``."""
        return len(self)

    @property
    def nrates(self) -> int:
        """Alias of ``len(record.rates)``."""
        return len(self.rates)

    @property
    def sample_rates(self) -> list[list[float]]:
        """The ``rates``, each as [hertz, last sample]."""
        return [[rate.hertz, rate.last] for rate in self.rates]

    @property
    def start_timestamp(self) -> datetime.datetime:
        """Alias of ``start``."""
        return self.start

    @property
    def trigger_timestamp(self) -> datetime.datetime:
        """Alias of ``trigger``."""
        return self.trigger

    @property
    def trigger_time(self) -> float:
        """Seconds from the first sample to the trigger. (``time`` here counts from the trigger, not from the start.)"""
        return (self.trigger - self.start).total_seconds()

    @property
    def hdr(self) -> str:
        """Alias of ``header``."""
        return self.header

    @property
    def inf(self) -> bytes:
        """Alias of ``information``."""
        return self.information

    def to_numpy(self) -> npt.NDArray[np.float64]:
        """The primary values of all analog channels, shape (samples, channels), float64."""
        columns: list[Any] = [channel.values for channel in self.analog]
        return np.column_stack(columns) if columns else np.empty((len(self), 0))
