"""What happened in a record: the analysis of ``zucmtr events``."""

from __future__ import annotations

import datetime
from collections.abc import Mapping
from dataclasses import dataclass
from typing import Any, Optional


@dataclass(frozen=True)
class Event:
    """A change of a digital channel.

    Attributes
    ----------
    time : float
        Seconds from the trigger.
    at : str
        The same as a date and time, ISO 8601.
    channel : int
        Number of the channel in the record.
    name, circuit : str
        Its name, and the circuit it belongs to.
    kind : str
        What the channel is: ``"start"``, ``"trip"``, ``"breaker"`` ...; docs/json.md lists them.
    state : int
        The new state, 0 or 1.
    active : bool
        Whether that state means that the signal is there; of a breaker, that it is closed.
    changes : int
        Number of changes; more than one are contact bounce, folded into one event.
    bounce : bool
        The channel bounced back into its old state.
    """

    time: float
    at: str
    channel: int
    name: str
    circuit: str
    kind: str
    state: int
    active: bool
    changes: int
    bounce: bool

    @classmethod
    def _of(cls, fields: Mapping[str, Any]) -> Event:
        event: dict[str, Any] = {name: fields[name] for name in cls.__dataclass_fields__}
        event["time"] = float(event["time"])
        return cls(**event)


@dataclass(frozen=True)
class Distance:
    """The distance to a fault by one method.

    Attributes
    ----------
    method : str
        ``"reactance"``, ``"takagi"`` or ``"modifiedTakagi"``; docs/analysis.md explains them.
    percent : float
        Percent of the length of the line.
    km : float
        Kilometres from the recorder.
    resistance : float or None
        Resistance of the fault, ohms; None if the method does not give it.
    """

    method: str
    percent: float
    km: float
    resistance: Optional[float]


@dataclass(frozen=True)
class FaultPart:
    """A stretch of a fault with the same phases.

    Attributes
    ----------
    kind : str
        The phases, with G for earth: ``"AG"`` to ``"ABCG"``.
    onset : float
        Seconds from the trigger.
    clearing : float or None
        Likewise; None if the record ends first.
    after_reclosing : bool
        The line was dead before it.
    distance : Distance or None
        By the best method.
    distances : tuple of Distance
        By all methods.
    range : tuple of float or None
        What the distance can be: least and greatest, percent of the line.
    lack : str or None
        Why there is no distance, as a word of docs/json.md.
    """

    kind: str
    onset: float
    clearing: Optional[float]
    after_reclosing: bool
    distance: Optional[Distance]
    distances: tuple[Distance, ...]
    range: Optional[tuple[float, float]]
    lack: Optional[str]

    @property
    def duration(self) -> Optional[float]:
        """Seconds from onset to clearing; None if the record ends first."""
        return None if self.clearing is None else self.clearing - self.onset

    @classmethod
    def _fields_of(cls, fields: Mapping[str, Any]) -> dict[str, Any]:
        distances = tuple(Distance(method, **values) for method, values in (fields["distance"] or {}).items())
        best = next((one for one in distances if one.method == fields["best"]), None)
        limits = fields["range"]
        return {
            "kind": fields["kind"],
            "onset": fields["onset"],
            "clearing": fields["clearing"],
            "after_reclosing": fields.get("afterReclosing", False),
            "distance": best,
            "distances": distances,
            "range": None if limits is None else (limits["from"], limits["to"]),
            "lack": fields["lack"],
        }


@dataclass(frozen=True)
class Fault(FaultPart):
    """A short circuit. What it shares with its parts is of the whole; the distance is that of its longest part with one.

    Attributes
    ----------
    circuit : str
        The circuit that it was seen on.
    direction : str
        ``"forward"`` is into the circuit, ``"reverse"`` to the busbar; or ``"unknown"``.
    parts : tuple of FaultPart
        Its stretches with the same phases, in the order of time.
    """

    circuit: str
    direction: str
    parts: tuple[FaultPart, ...]

    @classmethod
    def _of(cls, fields: Mapping[str, Any]) -> Fault:
        parts = tuple(FaultPart(**FaultPart._fields_of(part)) for part in fields["parts"])
        return cls(
            **FaultPart._fields_of(fields), circuit=fields["circuit"], direction=fields["direction"], parts=parts
        )


@dataclass(frozen=True)
class Summary:
    """What happened in a record, as ``zucmtr events --json`` says it. As a text it is ``text``.

    Attributes
    ----------
    data : dict
        The whole object; docs/json.md lists its keys.
    """

    data: Mapping[str, Any]

    @property
    def fault(self) -> Optional[Fault]:
        """The short circuit; None if there is none."""
        return None if self.data["fault"] is None else Fault._of(self.data["fault"])

    @property
    def events(self) -> tuple[Event, ...]:
        """The sequence of events, in the order of time."""
        return tuple(Event._of(fields) for fields in self.data["events"])

    @property
    def text(self) -> str:
        """What happened in a few sentences, in English."""
        return " ".join(self.data["text"])

    def __str__(self) -> str:
        return self.text


def moment(parts: tuple[int, int, int, int], offset: Optional[int]) -> datetime.datetime:
    """A point in time of a record, to the microsecond."""
    year, month, day, nanoseconds = parts
    zone = None if offset is None else datetime.timezone(datetime.timedelta(minutes=offset))
    return datetime.datetime(year, month, day, tzinfo=zone) + datetime.timedelta(microseconds=nanoseconds // 1000)
