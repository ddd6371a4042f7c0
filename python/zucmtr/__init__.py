"""Recordings of digital fault recorders and COMTRADE records as NumPy arrays.

``zucmtr.open`` gives a :class:`Record`, ``zucmtr.convert`` makes records of recordings; docs/python.md has examples.
"""

from __future__ import annotations

from ._channels import AnalogChannel, Changes, Channels, DigitalChannel
from ._convert import Conversion, Salvaged, convert
from ._errors import (
    ChannelError,
    ConversionError,
    Error,
    FileError,
    FilePresentError,
    MissingPackageError,
    RecordError,
    SalvageWarning,
    SaveError,
    SaveWarning,
)
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
    "FilePresentError",
    "Finding",
    "MissingPackageError",
    "Rate",
    "Record",
    "RecordError",
    "SalvageWarning",
    "Salvaged",
    "SaveError",
    "SaveWarning",
    "Summary",
    "convert",
    "open",
]
