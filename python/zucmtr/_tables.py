"""Records as tables of pandas and datasets of xarray."""

from __future__ import annotations

from collections import Counter
from typing import TYPE_CHECKING, Any

import numpy as np

from ._optional import optional

if TYPE_CHECKING:
    from ._record import Record


def unique_names(record: Record) -> tuple[list[str], list[str]]:
    """Names of the analog and of the digital channels, each once: a name that is there twice gets its number."""
    analog = [(channel.name or f"A{channel.number}", f"A{channel.number}") for channel in record.analog]
    digital = [(channel.name or f"D{channel.number}", f"D{channel.number}") for channel in record.digital]
    counts = Counter(name for name, _ in analog + digital)
    names = [name if counts[name] == 1 else f"{name} ({mark})" for name, mark in analog + digital]
    return names[: len(analog)], names[len(analog) :]


def dataframe(record: Record) -> Any:
    pandas = optional("pandas", "pandas")
    analog, digital = unique_names(record)
    columns: dict[str, Any] = {name: channel.values for name, channel in zip(analog, record.analog)}
    columns.update((name, channel.values) for name, channel in zip(digital, record.digital))
    table = pandas.DataFrame(columns, index=pandas.Index(record.time, name="time"), copy=False)
    table.attrs.update(station=record.station, device=record.device, trigger=record.trigger.isoformat())
    table.attrs["units"] = {name: channel.unit for name, channel in zip(analog, record.analog)}
    return table


def dataset(record: Record) -> Any:
    xarray = optional("xarray", "xarray")
    analog, digital = unique_names(record)
    variables: dict[str, Any] = {}
    for name, channel in zip(analog, record.analog):
        about = {"units": channel.unit, "phase": channel.phase, "circuit": channel.circuit, "number": channel.number}
        variables[name] = ("time", channel.values, about)
    for name, state in zip(digital, record.digital):
        about = {"phase": state.phase, "circuit": state.circuit, "number": state.number, "normal": state.normal}
        variables[name] = ("time", state.values.astype(np.bool_), about)
    time = ("time", record.time, {"units": "s", "long_name": "time from the trigger"})
    attributes = {"station": record.station, "device": record.device, "trigger": record.trigger.isoformat()}
    return xarray.Dataset(variables, coords={"time": time}, attrs=attributes)
