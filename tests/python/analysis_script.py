"""What a user writes with types; typing_test.py has mypy look at it and not run it."""

from __future__ import annotations

from pathlib import Path
from typing import Optional

import numpy as np
import numpy.typing as npt
import zucmtr


def highest(path: Path) -> dict[str, float]:
    with zucmtr.open(path) as record:
        return {channel.name: float(np.nanmax(channel.values)) for channel in record.analog if channel.unit == "kV"}


def first_trip(record: zucmtr.Record) -> Optional[float]:
    for event in record.events():
        if event.kind == "trip" and event.active:
            return event.time
    return None


def kilometres(record: zucmtr.Record) -> Optional[float]:
    fault = record.fault(lines=Path("lines.ini"))
    return None if fault is None or fault.distance is None else fault.distance.km


def around_trigger(record: zucmtr.Record, name: str) -> npt.NDArray[np.float64]:
    channel: zucmtr.AnalogChannel = record.analog[name]
    some: zucmtr.Channels[zucmtr.AnalogChannel] = record.analog[2:5]
    missing: Optional[zucmtr.DigitalChannel] = record.digital.get("Trip")
    last: float = channel[-1]
    state: int = record.digital[0][-1]
    codes: npt.NDArray[np.float64] = channel.scaled("secondary")
    assert len(some) == 3 and missing is not None and last == state
    return codes[record.time > 0]


def archive(recording: Path, out: str) -> zucmtr.Record:
    try:
        return zucmtr.open(zucmtr.convert(recording, out, form="cff", revision=2013).record)
    except zucmtr.FileError as error:
        print(error.filename, error.errno)
        raise
    except zucmtr.Error:
        return zucmtr.load("rec.cfg", Path("rec.dat"))


reveal_type(zucmtr.open("rec.cfg").analog[0].codes.dtype)  # noqa: F821
highest("rec.cfg")
