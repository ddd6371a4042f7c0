"""A record as a figure of matplotlib."""

from __future__ import annotations

import math
from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, Optional, Union

import numpy as np
import numpy.typing as npt

from ._channels import AnalogChannel, DigitalChannel
from ._optional import optional

if TYPE_CHECKING:
    from ._record import Record

FloatArray = npt.NDArray[np.float64]
Choice = Sequence[Union[int, str, tuple[str, str], AnalogChannel]]
Span = tuple[float, float]

MOST_DIGITAL = 24
MOST_ON_AN_AXIS = 12  # more do not fit beside it
MOST_POINTS = 8000  # of a curve; a screen has fewer columns
STATE_COLOR = "#4c72b0"
PHASE_COLORS = {"A": "#c9a000", "B": "#1a9641", "C": "#d7191c"}  # as phases are painted in Russian substations
LATIN = str.maketrans("АВС", "ABC")  # Cyrillic letters that look alike


def plot(record: Record, channels: Optional[Choice], digital: bool, span: Optional[Span], figure: Any) -> Any:
    chosen = list(record.analog) if channels is None else [_channel(record, key) for key in channels]
    window = _window(record.time, span)
    states = _changing(record.digital, window) if digital else []
    groups = _groups(chosen)
    ratios = [1.0] * len(groups) + ([0.25 + 0.11 * len(states)] if states else [])
    if figure is None:
        pyplot = optional("matplotlib.pyplot", "matplotlib")
        figure = pyplot.figure(figsize=(11, 1.2 + 1.7 * max(sum(ratios), 1)), layout="constrained")
    ratios = ratios if len(record) else []
    figure.suptitle(f"{record.station} · {record.trigger:%d.%m.%Y %H:%M:%S.%f}")
    if not ratios:
        return figure
    grid = {"height_ratios": ratios}
    axes = figure.subplots(len(ratios), 1, sharex=True, squeeze=False, gridspec_kw=grid)[:, 0]
    for axis, (title, unit, group) in zip(axes, groups):
        _plot_group(axis, record.time, window, group)
        axis.ticklabel_format(axis="y", useOffset=False)
        axis.set_ylabel(unit)
        axis.set_title(title, loc="left", fontsize="small")
    if states:
        _plot_states(axes[-1], record.time[window], window.start, states)
    axes[-1].set_xlim(record.time[window][0], record.time[window][-1])
    _mark_trigger(axes, bool(states))
    axes[-1].set_xlabel("seconds from the trigger")
    return figure


def _mark_trigger(axes: Any, has_states: bool) -> None:
    for axis in axes:
        axis.axvline(0, color="0.3", linewidth=0.9, linestyle=":")
        axis.grid(alpha=0.3, axis="x" if has_states and axis is axes[-1] else "both")
    first, last = axes[-1].get_xlim()
    if not first <= 0 <= last:
        return
    axes[0].text(
        0, 1.01, "trigger", transform=axes[0].get_xaxis_transform(), ha="center", va="bottom", fontsize="x-small",
        color="0.3", clip_on=False,
    )  # fmt: skip


def _channel(record: Record, key: Union[int, str, tuple[str, str], AnalogChannel]) -> AnalogChannel:
    return key if isinstance(key, AnalogChannel) else record.analog[key]


def _window(time: FloatArray, span: Optional[Span]) -> slice:
    """The samples within the span."""
    if span is None:
        return slice(0, len(time))
    first, end = np.searchsorted(time, span, side="left")
    if first == end:
        raise ValueError(f"no sample is from {span[0]} to {span[1]} s; the record is from {time[0]} to {time[-1]} s")
    return slice(int(first), int(end))


def _changing(channels: Sequence[DigitalChannel], window: slice) -> list[DigitalChannel]:
    changing = []
    for channel in channels:
        samples = channel.changes.samples
        if np.any((samples > window.start) & (samples < window.stop)):
            changing.append(channel)
    return changing[:MOST_DIGITAL]


def _groups(channels: Sequence[AnalogChannel]) -> list[tuple[str, str, list[AnalogChannel]]]:
    """Channels of one circuit and unit share an axis."""
    groups: dict[tuple[str, str], list[AnalogChannel]] = {}
    for channel in channels:
        groups.setdefault((channel.circuit, channel.unit), []).append(channel)
    return [
        (circuit, unit, group[first : first + MOST_ON_AN_AXIS])
        for (circuit, unit), group in groups.items()
        for first in range(0, len(group), MOST_ON_AN_AXIS)
    ]


def _plot_group(axis: Any, time: FloatArray, window: slice, group: Sequence[AnalogChannel]) -> None:
    used: list[str] = []
    for channel in group:
        color = PHASE_COLORS.get(channel.phase.upper().translate(LATIN).rstrip("N"))
        style = "--" if color in used else "-"
        used += [color] if color else []
        axis.plot(*envelope(time[window], channel.values[window]), label=_short(channel), color=color,
                  linestyle=style, linewidth=0.8)  # fmt: skip
    axis.legend(loc="upper left", bbox_to_anchor=(1, 1.05), fontsize="x-small", frameon=False, labelspacing=0.2)


def envelope(time: FloatArray, values: FloatArray) -> tuple[FloatArray, FloatArray]:
    """A curve of MOST_POINTS at most: the least and the greatest value of each stretch."""
    step = math.ceil(2 * len(values) / MOST_POINTS)
    if step <= 2:
        return time, values
    starts = np.arange(0, len(values), step)
    both = np.column_stack([np.fmin.reduceat(values, starts), np.fmax.reduceat(values, starts)])
    return np.repeat(time[starts], 2), both.ravel()


def _short(channel: AnalogChannel) -> str:
    """The name without the circuit, which is the title."""
    return channel.name.removesuffix(channel.circuit).rstrip() or channel.name


def _plot_states(axis: Any, time: FloatArray, first: int, states: Sequence[DigitalChannel]) -> None:
    for row, channel in enumerate(reversed(states)):
        axis.axhline(row + 0.4, color="0.8", linewidth=0.5, zorder=0)
        axis.broken_barh(_bars(time, first, channel), (row + 0.1, 0.6), color=STATE_COLOR)
    axis.set_ylim(-0.2, len(states) - 0.1)
    axis.set_yticks([row + 0.4 for row in range(len(states))])
    axis.set_yticklabels([channel.name for channel in reversed(states)], fontsize="x-small")


def _bars(time: FloatArray, first: int, channel: DigitalChannel) -> list[tuple[float, float]]:
    """Where the channel is 1 within the window, as (time, seconds)."""
    samples = channel.changes.samples
    inside = (samples > first) & (samples < first + len(time))
    edges = [0, *map(int, samples[inside] - first), len(time) - 1]
    state = channel[first]
    bars = []
    for start, end in zip(edges, edges[1:]):
        if state:
            bars.append((float(time[start]), float(time[end] - time[start])))
        state = 1 - state
    return bars
