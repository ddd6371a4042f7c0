"""The words of other COMTRADE readers for what a record has, so that scripts written for them find their way.

docs/python.md ("Coming from other readers") lists them beside the words of this package.
"""

from __future__ import annotations

import datetime
from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt

if TYPE_CHECKING:
    from ._channels import AnalogChannel, Channels, DigitalChannel
    from ._record import Rate


class Aliases:
    """Each of these is another name for something that :class:`zucmtr.Record` has under its own."""

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
    def station_name(self) -> str:
        """``station``."""
        return self.station

    @property
    def rec_dev_id(self) -> str:
        """``device``."""
        return self.device

    @property
    def rev_year(self) -> str:
        """``revision``, as a text."""
        return str(self.revision)

    @property
    def ft(self) -> str:
        """``data_type``."""
        return self.data_type

    @property
    def status(self) -> Channels[DigitalChannel]:
        """``digital``."""
        return self.digital

    @property
    def analog_count(self) -> int:
        """``len(record.analog)``."""
        return len(self.analog)

    @property
    def status_count(self) -> int:
        """``len(record.digital)``."""
        return len(self.digital)

    @property
    def channels_count(self) -> int:
        """Analog and digital channels together."""
        return len(self.analog) + len(self.digital)

    @property
    def analog_channel_ids(self) -> list[str]:
        """``record.analog.keys()``."""
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
        """``record.digital.keys()``."""
        return self.digital.keys()

    @property
    def status_phases(self) -> list[str]:
        """The ``phase`` of each digital channel."""
        return [channel.phase for channel in self.digital]

    @property
    def total_samples(self) -> int:
        """``len(record)``."""
        return len(self)

    @property
    def sample_rates(self) -> list[list[float]]:
        """``rates``, each as [hertz, last sample]."""
        return [[rate.hertz, rate.last] for rate in self.rates]

    @property
    def start_timestamp(self) -> datetime.datetime:
        """``start``."""
        return self.start

    @property
    def trigger_timestamp(self) -> datetime.datetime:
        """``trigger``."""
        return self.trigger

    @property
    def trigger_time(self) -> float:
        """Seconds from the first sample to the trigger. (``time`` here counts from the trigger, not from the start.)"""
        return (self.trigger - self.start).total_seconds()

    @property
    def hdr(self) -> str:
        """``header``."""
        return self.header

    @property
    def inf(self) -> bytes:
        """``information``."""
        return self.information

    def to_numpy(self) -> npt.NDArray[np.float64]:
        """The values of all analog channels, shape (samples, channels)."""
        columns: list[Any] = [channel.values for channel in self.analog]
        return np.column_stack(columns) if columns else np.empty((len(self), 0))
