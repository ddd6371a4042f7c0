"""Channels of a record, and lists of them."""

from __future__ import annotations

import operator
from collections.abc import Iterator, Mapping, Sequence
from typing import TYPE_CHECKING, Any, Generic, NamedTuple, SupportsIndex, TypeVar, Union, overload

import numpy as np
import numpy.typing as npt

from ._errors import ChannelError

if TYPE_CHECKING:
    from typing_extensions import TypeGuard

    from ._source import Source

FloatArray = npt.NDArray[np.float64]
ByteArray = npt.NDArray[np.uint8]
Name = Union[str, tuple[str, str]]
Key = Union[SupportsIndex, Name]

SIDES = ("primary", "secondary", "stored")


class Channel:
    """What analog and digital channels share: a sequence of samples with a name."""

    def __init__(self, source: Source, index: int, fields: Mapping[str, Any]) -> None:
        self._source = source
        self._index = index
        self._fields = fields

    @property
    def number(self) -> int:
        """Number of the channel in the record, usually from 1."""
        return int(self._fields["number"])

    @property
    def index(self) -> int:
        """Place among the channels of its kind, from 0."""
        return self._index

    @property
    def name(self) -> str:
        """Name of the channel."""
        return str(self._fields["name"])

    @property
    def phase(self) -> str:
        """Phase, as stored; often empty."""
        return str(self._fields["phase"])

    @property
    def circuit(self) -> str:
        """Circuit or component that the channel belongs to; often empty."""
        return str(self._fields["circuit"])

    @property
    def values(self) -> npt.NDArray[Any]:
        """One value for each sample."""
        raise NotImplementedError

    def __array__(self, dtype: npt.DTypeLike = None) -> npt.NDArray[Any]:
        return np.asarray(self.values, dtype=dtype)

    def __len__(self) -> int:
        return self._source.core.count()

    def __iter__(self) -> Iterator[Any]:
        return iter(self.values)

    def __getitem__(self, place: Any) -> Any:
        return self.values[place]


class AnalogChannel(Channel):
    """An analog channel. NumPy takes it for its ``values``.

    The samples of a record are read from its files when those of the first channel are asked for.
    """

    @property
    def unit(self) -> str:
        """Unit of the values, such as ``"kV"``."""
        return str(self._fields["unit"])

    @property
    def a(self) -> float:
        """Multiplier: the stored value is ``a * code + b``."""
        return float(self._fields["a"])

    @property
    def b(self) -> float:
        """Offset: the stored value is ``a * code + b``."""
        return float(self._fields["b"])

    @property
    def skew(self) -> float:
        """Time from the beginning of the sample period to this channel's sample, microseconds."""
        return float(self._fields["skew"])

    @property
    def min(self) -> float:
        """Least code that the record announces."""
        return float(self._fields["min"])

    @property
    def max(self) -> float:
        """Greatest code that the record announces."""
        return float(self._fields["max"])

    @property
    def primary(self) -> float:
        """Primary factor of the instrument transformer."""
        return float(self._fields["primary"])

    @property
    def secondary(self) -> float:
        """Secondary factor of the instrument transformer."""
        return float(self._fields["secondary"])

    @property
    def side(self) -> str:
        """``"P"`` if ``a`` and ``b`` give primary values, ``"S"`` if secondary ones."""
        return str(self._fields["side"])

    @property
    def codes(self) -> npt.NDArray[Any]:
        """The stored numbers, shape (samples,): read-only, without a copy.

        Their type is the narrowest that holds all of them: int16, int32, float32 or float64. A missing value is the
        least number of an integer type, or NaN.
        """
        return self._source.core.codes(self._index)

    @property
    def values(self) -> FloatArray:
        """Primary values in ``unit``, shape (samples,), float64; NaN where a value is missing.

        They are calculated at each call: keep the array if it is used several times.
        """
        return self.scaled("primary")

    def scaled(self, side: str) -> FloatArray:
        """Values of the ``"primary"`` or ``"secondary"`` side, or as ``"stored"``; see ``values``.

        Raises
        ------
        ValueError
            ``side`` is none of the three.
        """
        if side not in SIDES:
            raise ValueError(f"side is {side!r}; it is one of {', '.join(SIDES)}")
        stored = self._source.core.values(self._index)
        factor = self._factor(side)
        if factor == 1:
            return stored
        values = stored * factor
        values.flags.writeable = False
        return values

    def _factor(self, side: str) -> float:
        to_primary = float(self._fields["primary_factor"])
        if side == "primary":
            return to_primary
        if side == "secondary" and self.side == "P" and self.primary > 0 and self.secondary > 0:
            return self.secondary / self.primary
        return 1.0

    def __repr__(self) -> str:
        return f"<AnalogChannel {self.number} {self.name!r}, {self.unit or 'no unit'}>"


class Changes(NamedTuple):
    """Changes of a digital channel, each array of shape (changes,)."""

    samples: npt.NDArray[np.int64]  #: the first sample with the new state, from 0
    times: FloatArray  #: its time, seconds from the trigger
    states: ByteArray  #: the new state, 0 or 1


class DigitalChannel(Channel):
    """A digital (status) channel. NumPy takes it for its ``values``."""

    @property
    def normal(self) -> int:
        """State in normal operation, 0 or 1."""
        return int(self._fields["normal"])

    @property
    def values(self) -> ByteArray:
        """States, shape (samples,), uint8: 0 or 1. They are unpacked at each call."""
        return self._source.core.states(self._index)

    @property
    def changes(self) -> Changes:
        """Where the state changes."""
        samples, states = self._source.core.changes(self._index)
        return Changes(samples, self._source.time[samples], states)

    def __repr__(self) -> str:
        return f"<DigitalChannel {self.number} {self.name!r}>"


C = TypeVar("C", bound=Channel)


def _is_name(key: object) -> TypeGuard[Name]:
    """Whether it is a name, or a pair of circuit and signal."""
    return isinstance(key, str) or (
        isinstance(key, tuple) and len(key) == 2 and isinstance(key[0], str) and isinstance(key[1], str)
    )


class Channels(Sequence[C], Generic[C]):
    """The channels of one kind: a sequence by place, a mapping by name.

    ``channels[0]``, ``channels["Ua"]``, ``channels["ВЛ-110 Восточная:Ua"]`` and ``channels["ВЛ-110 Восточная", "Ua"]``
    (the circuit, then the name or the phase) give a channel, ``channels[2:5]`` several.
    """

    def __init__(self, channels: Sequence[C]) -> None:
        self._channels = tuple(channels)

    @overload
    def __getitem__(self, key: Key) -> C: ...

    @overload
    def __getitem__(self, key: slice) -> Channels[C]: ...

    def __getitem__(self, key: Union[Key, slice]) -> Union[C, Channels[C]]:
        if isinstance(key, slice):
            return Channels(self._channels[key])
        if isinstance(key, SupportsIndex):
            return self._channels[operator.index(key)]
        if not _is_name(key):
            raise TypeError(
                f"a channel is found by its place, its name, or its circuit and signal, not by {type(key).__name__}"
            )
        found = self._find(key)
        if len(found) == 1:
            return found[0]
        if found:
            raise ChannelError(f"{len(found)} channels are {key!r}; take one by its place: {[one.index for one in found]}")
        raise ChannelError(f"there is no channel {key!r}; there are: {', '.join(self.keys()) or 'none'}")

    def _find(self, key: Name) -> list[C]:
        if isinstance(key, tuple):
            circuit, signal = key
            mine = [one for one in self._channels if one.circuit == circuit]
            # Many recorders repeat the circuit in the name: "Ua Line 1".
            named = [one for one in mine if one.name in (signal, f"{signal} {circuit}")]
            return named or [one for one in mine if one.phase == signal]
        exact = [one for one in self._channels if one.name == key]
        if exact or ":" not in key:
            return exact
        circuit, _, signal = key.rpartition(":")
        return self._find((circuit, signal))

    def get(self, key: Key, default: Any = None) -> Any:
        """The channel, or ``default`` if there is none."""
        try:
            return self[key]
        except LookupError:
            return default

    def keys(self) -> list[str]:
        """Names of the channels, in their order."""
        return [one.name for one in self._channels]

    def values(self) -> tuple[C, ...]:
        """The channels, in their order."""
        return self._channels

    def items(self) -> list[tuple[str, C]]:
        """Pairs of name and channel."""
        return [(one.name, one) for one in self._channels]

    def __len__(self) -> int:
        return len(self._channels)

    def __iter__(self) -> Iterator[C]:
        return iter(self._channels)

    def __contains__(self, key: object) -> bool:
        if _is_name(key):
            return bool(self._find(key))
        return any(key is one for one in self._channels)

    def __repr__(self) -> str:
        shown = ", ".join(self.keys()[:6])
        return f"<{len(self)} channels{': ' if shown else ''}{shown}{', ...' if len(self) > 6 else ''}>"
