"""Records in the forms of ``zucmtr export``."""

from __future__ import annotations

import datetime
import errno
import numbers
import operator
import os
import warnings
from collections.abc import Iterable
from pathlib import Path
from typing import TYPE_CHECKING, Any, Optional, Union, cast

import numpy as np

from . import _core
from ._channels import AnalogChannel, Channel, DigitalChannel
from ._errors import ChannelError, FileError, SaveWarning

if TYPE_CHECKING:
    from ._record import Record

Moment = Union[float, str, datetime.datetime, np.datetime64]
ChannelKey = Union[str, int, tuple[str, str], Channel]
ChannelChoice = Union[ChannelKey, Iterable[ChannelKey]]


def save(record: Record, path: str, channels: Optional[ChannelChoice], options: dict[str, Any]) -> Path:
    core = record._source.core
    words: dict[str, Any] = {name: "" if value is None else value for name, value in options.items()}
    for name in ("start", "stop"):
        words[name] = moment_word(name, options[name])
    words["window"] = number_word(options["window"])
    words["revision"] = str(words["revision"])
    words["every"] = None if options["every"] is None else limited(operator.index(options["every"]))
    words["rate"] = None if options["rate"] is None else float(options["rate"])
    words["channels"], words["analog"], words["digital"] = chosen(record, channels)
    check_directory(path)
    if path == "-":  # standard output for the program, a name here
        path = "./-"
    written, notes = _core.save(record._source.path, core.path(), record._options["encoding"], path, words)
    for note in notes:
        warnings.warn(note, SaveWarning, stacklevel=3)
    return Path(written)


def limited(number: int) -> int:
    """The number, or one that is as wrong and has no more than 32 bits."""
    return min(max(number, -(2**31)), 2**31 - 1)


def number_word(number: Union[float, str, None]) -> str:
    if number is None or isinstance(number, str):
        return number or ""
    return str(np.format_float_positional(float(number), trim="-"))


def moment_word(name: str, moment: Optional[Moment]) -> str:
    if moment is None or isinstance(moment, str):
        return moment or ""
    if isinstance(moment, datetime.datetime):
        return moment.isoformat()
    if isinstance(moment, np.datetime64):
        return str(moment)
    if isinstance(moment, numbers.Real):
        return number_word(float(moment))
    raise TypeError(f"{name} is of {type(moment).__name__}; give seconds from the trigger or a datetime")


def chosen(record: Record, channels: Optional[ChannelChoice]) -> tuple[list[str], list[int], list[int]]:
    """Patterns of names, and places of analog and of digital channels."""
    if channels is None:
        return [], [], []
    is_one = isinstance(channels, (str, int, np.integer, Channel))
    keys: list[Any] = [channels] if is_one else list(cast("Iterable[ChannelKey]", channels))
    if not keys:
        raise ValueError("channels is empty; None keeps all of them")
    patterns: list[str] = []
    found: list[Channel] = []
    for key in keys:
        if isinstance(key, Channel):
            found.append(key)
        elif isinstance(key, (int, np.integer)):
            found.append(record.analog[int(key)])
        elif isinstance(key, tuple):
            of_circuit = named(record, key)
            if not of_circuit:
                raise ChannelError(f"{record._path}: there is no channel {key!r}")
            found += of_circuit
        elif isinstance(key, str):
            of_circuit = named(record, key) if ":" in key else []
            found += of_circuit
            patterns += [] if of_circuit else [key]
        else:
            raise TypeError(f"a channel is of {type(key).__name__}; give a name, a place or a channel")
    if any(channel._source is not record._source for channel in found):
        raise ValueError("a channel is of another record")
    analog = [channel.index for channel in found if isinstance(channel, AnalogChannel)]
    digital = [channel.index for channel in found if isinstance(channel, DigitalChannel)]
    return patterns, analog, digital


def named(record: Record, key: Any) -> list[Channel]:
    """The channels of both kinds that circuit and signal name."""
    return [*record.analog._find(key), *record.digital._find(key)]


def check_directory(path: str) -> None:
    directory = path if path.endswith("/") else os.path.dirname(path) or "."
    code = 0
    if not os.path.exists(directory):
        code = errno.ENOENT
    elif not os.path.isdir(directory):
        code = errno.ENOTDIR
    elif not os.access(directory, os.W_OK | os.X_OK):
        code = errno.EACCES
    if code:
        raise FileError(code, os.strerror(code), directory)
