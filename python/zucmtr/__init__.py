"""Recordings of digital fault recorders and COMTRADE records as NumPy arrays.

``zucmtr.open`` gives a :class:`Record`, ``zucmtr.convert`` makes records of recordings; docs/python.md has examples.
"""

from __future__ import annotations

from . import _core

_core.refuse_subinterpreter()

from ._channels import AnalogChannel, Changes, Channels, DigitalChannel
from ._convert import Conversion, convert
from ._errors import ChannelError, ConversionError, Error, FileError, MissingPackageError, RecordError
from ._events import Distance, Event, Fault, FaultPart, Summary
from ._record import Finding, Rate, Record, open

__all__ = [
    "AnalogChannel",
    "Changes",
    "ChannelError",
    "Channels",
    "Conversion",
    "ConversionError",
    "DigitalChannel",
    "Distance",
    "Error",
    "Event",
    "Fault",
    "FaultPart",
    "FileError",
    "Finding",
    "MissingPackageError",
    "Rate",
    "Record",
    "RecordError",
    "Summary",
    "convert",
    "open",
]
