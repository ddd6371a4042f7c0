"""A record as a figure of matplotlib."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, Optional, Union

from ._channels import AnalogChannel, DigitalChannel
from ._optional import optional

if TYPE_CHECKING:
    from ._record import Record

MOST_DIGITAL = 24
PHASE_COLORS = {"A": "#c9a000", "B": "#1a9641", "C": "#d7191c"}  # as phases are painted in Russian substations


def plot(record: Record, channels: Optional[Sequence[Union[int, str]]], digital: bool, figure: Any) -> Any:
    pyplot = optional("matplotlib.pyplot", "matplotlib")
    chosen = list(record.analog) if channels is None else [record.analog[key] for key in channels]
    states = [channel for channel in record.digital if len(channel.changes.samples)][:MOST_DIGITAL] if digital else []
    groups = _groups(chosen)
    rows = len(groups) + (1 if states else 0)
    if figure is None:
        figure = pyplot.figure(figsize=(11, 1.2 + 1.7 * max(rows, 1)), layout="constrained")
    figure.suptitle(f"{record.station} · {record.trigger:%d.%m.%Y %H:%M:%S.%f}")
    if rows == 0:
        return figure
    axes = figure.subplots(rows, 1, sharex=True, squeeze=False)[:, 0]
    for axis, ((title, unit), group) in zip(axes, groups.items()):
        for channel in group:
            color = PHASE_COLORS.get(channel.phase.upper()[:1])
            axis.plot(record.time, channel.values, label=_short(channel), color=color, linewidth=0.8)
        axis.set_ylabel(unit)
        axis.set_title(title, loc="left", fontsize="small")
        axis.legend(loc="upper left", bbox_to_anchor=(1, 1.05), fontsize="x-small", frameon=False)
    if states:
        _plot_states(axes[-1], record, states)
    for axis in axes:
        axis.axvline(0, color="0.5", linewidth=0.8)
        axis.grid(alpha=0.3)
    axes[-1].set_xlabel("s")
    return figure


def _groups(channels: Sequence[AnalogChannel]) -> dict[tuple[str, str], list[AnalogChannel]]:
    """Channels of one circuit and unit share an axis."""
    groups: dict[tuple[str, str], list[AnalogChannel]] = {}
    for channel in channels:
        groups.setdefault((channel.circuit, channel.unit), []).append(channel)
    return groups


def _short(channel: AnalogChannel) -> str:
    """The name without the circuit, which is the title."""
    return channel.name.removesuffix(channel.circuit).rstrip() or channel.name


def _plot_states(axis: Any, record: Record, states: Sequence[DigitalChannel]) -> None:
    for row, channel in enumerate(reversed(states)):
        axis.fill_between(record.time, row, row + 0.8 * channel.values, step="post", linewidth=0.5, color="#4c72b0")
    axis.set_yticks([row + 0.4 for row in range(len(states))])
    axis.set_yticklabels([channel.name for channel in reversed(states)], fontsize="x-small")
