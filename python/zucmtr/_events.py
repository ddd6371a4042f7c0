"""What happened in a record: the analysis of ``zucmtr events``."""

from __future__ import annotations

import datetime
from collections.abc import Mapping
from dataclasses import dataclass
from typing import Any, Optional


@dataclass(frozen=True)
class Event:
    """A change of a digital channel."""

    time: float  #: seconds from the trigger
    at: str  #: the same as a date and time, ISO 8601
    channel: int  #: number of the channel
    name: str
    circuit: str
    kind: str  #: what the channel is: ``"start"``, ``"trip"``, ``"breaker"`` ...
    state: int  #: the new one, 0 or 1
    active: bool  #: whether it means that the channel is active
    changes: int  #: above 1: contact bounce, folded into one event
    bounce: bool  #: the channel bounced back into its old state

    @classmethod
    def of(cls, fields: Mapping[str, Any]) -> Event:
        return cls(**{name: fields[name] for name in cls.__dataclass_fields__})


@dataclass(frozen=True)
class Distance:
    """The distance to a fault by one method."""

    method: str  #: ``"reactance"``, ``"takagi"`` or ``"modifiedTakagi"``
    percent: float  #: of the length of the line
    km: float  #: from the recorder
    resistance: Optional[float]  #: of the fault, ohms


@dataclass(frozen=True)
class FaultPart:
    """A stretch of a fault with the same phases."""

    kind: str  #: ``"AG"`` to ``"ABCG"``
    onset: float  #: seconds from the trigger
    clearing: Optional[float]  #: likewise; None if the record ends first
    after_reclosing: bool  #: the line was dead before it
    distance: Optional[Distance]  #: by the best method
    distances: tuple[Distance, ...]  #: by all methods
    range: Optional[tuple[float, float]]  #: what the distance can be, percent of the line
    lack: Optional[str]  #: why there is no distance

    @property
    def duration(self) -> Optional[float]:
        """Seconds from onset to clearing; None if the record ends first."""
        return None if self.clearing is None else self.clearing - self.onset

    @classmethod
    def fields_of(cls, fields: Mapping[str, Any]) -> dict[str, Any]:
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
    """A short circuit; the distance is that of its longest part that has one."""

    circuit: str
    direction: str  #: ``"forward"`` is into the circuit, ``"reverse"`` to the busbar; or ``"unknown"``
    parts: tuple[FaultPart, ...]

    @classmethod
    def of(cls, fields: Mapping[str, Any]) -> Fault:
        parts = tuple(FaultPart(**FaultPart.fields_of(part)) for part in fields["parts"])
        return cls(
            **FaultPart.fields_of(fields), circuit=fields["circuit"], direction=fields["direction"], parts=parts
        )


@dataclass(frozen=True)
class Summary:
    """What happened in a record, as ``zucmtr events --json`` says it."""

    data: Mapping[str, Any]  #: the whole object; docs/json.md lists its keys

    @property
    def fault(self) -> Optional[Fault]:
        """The short circuit; None if there is none."""
        return None if self.data["fault"] is None else Fault.of(self.data["fault"])

    @property
    def events(self) -> tuple[Event, ...]:
        """The sequence of events, by time."""
        return tuple(Event.of(fields) for fields in self.data["events"])

    @property
    def text(self) -> str:
        """What happened in a few sentences."""
        return " ".join(self.data["text"])

    def __str__(self) -> str:
        return self.text


def moment(parts: tuple[int, int, int, int], offset: Optional[int]) -> datetime.datetime:
    """A point in time of a record, to the microsecond."""
    year, month, day, nanoseconds = parts
    zone = None if offset is None else datetime.timezone(datetime.timedelta(minutes=offset))
    return datetime.datetime(year, month, day, tzinfo=zone) + datetime.timedelta(microseconds=nanoseconds // 1000)
