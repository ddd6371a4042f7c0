"""Recordings of digital fault recorders and COMTRADE records as NumPy arrays.

    rec = zucmtr.open("fault.ZU")                   # or .cfg, .cff: any form, any revision
    ua = rec.analog["Line 1:Ua"]                    # or by place
    ua.values, ua.unit, ua.codes                    # primary values; the stored codes, without a copy
    rec.time, rec.trigger, rec.digital[0].changes   # time is in seconds from the trigger
    rec.fault(), rec.events()                       # what happened
    rec.to_dataframe(), rec.to_xarray(), rec.plot()
    zucmtr.convert("fault.ZU", "records")           # a COMTRADE record, verified

``open`` gives a ``Record``, ``convert`` makes records of recordings, ``load`` and ``read`` take what other COMTRADE readers
take. Failures are under ``Error``. docs/python.md has examples that can be run.
"""

from __future__ import annotations

from . import _core

_core.refuse_subinterpreter()

from ._channels import AnalogChannel, Changes, Channel, Channels, DigitalChannel
from ._configuration import Finding, Rate
from ._convert import Conversion, Salvaged, convert
from ._core import version as __version__
from ._errors import (
    ChannelError,
    ConversionError,
    Error,
    FileError,
    FilePresentError,
    MissingFileError,
    MissingPackageError,
    RecordError,
    SalvageWarning,
    SaveError,
    SaveWarning,
)
from ._events import Distance, Event, Fault, FaultPart, Summary
from ._load import load, read
from ._record import Record, open

__all__ = [
    "AnalogChannel",
    "Changes",
    "Channel",
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
    "MissingFileError",
    "MissingPackageError",
    "Rate",
    "Record",
    "RecordError",
    "SalvageWarning",
    "Salvaged",
    "SaveError",
    "SaveWarning",
    "Summary",
    "__version__",
    "convert",
    "load",
    "open",
    "read",
]
