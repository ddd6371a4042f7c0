"""Channels of a record, and lists of them."""

from __future__ import annotations

import html
import operator
from collections.abc import Iterator, Mapping, Sequence
from typing import TYPE_CHECKING, Any, Generic, NamedTuple, Optional, SupportsIndex, TypeVar, Union, overload

import numpy as np
import numpy.typing as npt

from ._aliases import AnalogAliases, ChannelAliases, DigitalAliases
from ._errors import ChannelError

if TYPE_CHECKING:
    from typing_extensions import TypeGuard

    from ._source import Source

FloatArray = npt.NDArray[np.float64]
ByteArray = npt.NDArray[np.uint8]
Name = Union[str, tuple[str, str]]
Key = Union[SupportsIndex, Name]

SIDES = ("primary", "secondary", "stored")


class Channel(ChannelAliases):
    """What analog and digital channels share: a row of samples with a name.

    ``len(channel)``, ``channel[100]``, ``channel[-50:]``, ``for value in channel`` and NumPy's functions work on its
    ``values``. A single value is looked up, not taken from all of them.
    """

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
        """One value for each sample, shape (samples,)."""
        raise NotImplementedError

    def __array__(self, dtype: npt.DTypeLike = None) -> npt.NDArray[Any]:
        return np.asarray(self.values, dtype=dtype)

    def __len__(self) -> int:
        return self._source.core.count()

    def __iter__(self) -> Iterator[Any]:
        return iter(self.values)

    def __reversed__(self) -> Iterator[Any]:
        return iter(self.values[::-1])

    def __contains__(self, value: object) -> bool:
        return bool(np.any(self.values == value))


class AnalogChannel(Channel, AnalogAliases):
    """An analog channel. NumPy takes it for its ``values``.

    The samples of a record are read from its files when those of the first channel are asked for.

    Examples
    --------
    ``channel.values.max()`` in primary units, ``channel.codes`` as stored, ``channel[-1]`` the last primary value.
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
        """Least code that the configuration announces."""
        return float(self._fields["min"])

    @property
    def max(self) -> float:
        """Greatest code that the configuration announces."""
        return float(self._fields["max"])

    @property
    def primary(self) -> float:
        """Primary factor of the instrument transformer's ratio, such as 1000 of 1000/5; 1 if there is none."""
        return float(self._fields["primary"])

    @property
    def secondary(self) -> float:
        """Secondary factor of the instrument transformer's ratio, such as 5 of 1000/5; 1 if there is none."""
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
        """Values of the primary or the secondary side, whichever of them the record stores.

        Parameters
        ----------
        side
            ``"primary"``, ``"secondary"``, or ``"stored"`` for ``a * codes + b``.

        Returns
        -------
        numpy.ndarray
            In ``unit``, shape (samples,), float64; NaN where a value is missing.

        Raises
        ------
        ValueError
            ``side`` is none of the three.
        """
        if side not in SIDES:
            raise ValueError(f"side is {side!r}; it is one of {', '.join(SIDES)}")
        return self._source.core.values(self._index, self._factor(side))

    @overload
    def __getitem__(self, place: int) -> float: ...

    @overload
    def __getitem__(self, place: Union[slice, Sequence[int], npt.NDArray[Any]]) -> FloatArray: ...

    def __getitem__(self, place: Any) -> Any:
        codes = self.codes[place]
        stored = self.a * np.asarray(codes, np.float64) + self.b
        if codes.dtype.kind == "i":
            stored = np.where(codes == np.iinfo(codes.dtype).min, np.nan, stored)
        values = np.asarray(stored * self._factor("primary"))
        values.flags.writeable = False
        return values[()]

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
    """Changes of a digital channel, in the order of time.

    Attributes
    ----------
    samples : numpy.ndarray
        First sample with the new state, counted from 0; shape (changes,), int64.
    times : numpy.ndarray
        Its time, seconds from the trigger; shape (changes,), float64.
    states : numpy.ndarray
        The new state, 0 or 1; shape (changes,), uint8.
    """

    samples: npt.NDArray[np.int64]
    times: FloatArray
    states: ByteArray


class DigitalChannel(Channel, DigitalAliases):
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
        """Where the state changes: samples, times in seconds from the trigger, and new states."""
        samples, states = self._source.core.changes(self._index)
        return Changes(samples, self._source.time[samples], states)

    @overload
    def __getitem__(self, place: int) -> int: ...

    @overload
    def __getitem__(self, place: Union[slice, Sequence[int], npt.NDArray[Any]]) -> ByteArray: ...

    def __getitem__(self, place: Any) -> Any:
        if isinstance(place, (int, np.integer)):
            count = len(self)
            sample = operator.index(place) + (count if place < 0 else 0)
            if not 0 <= sample < count:
                raise IndexError(f"there is no sample {place}; the record has {count}")
            return self._source.core.state(self._index, sample)
        return self.values[place]

    def __repr__(self) -> str:
        return f"<DigitalChannel {self.number} {self.name!r}>"


C = TypeVar("C", bound=Channel)
Other = TypeVar("Other")


def _is_name(key: object) -> TypeGuard[Name]:
    """Whether it is a name, or a pair of circuit and signal."""
    return isinstance(key, str) or (
        isinstance(key, tuple) and len(key) == 2 and isinstance(key[0], str) and isinstance(key[1], str)
    )


class Channels(Sequence[C], Generic[C]):
    """The channels of one kind, as a sequence; by name they are found as in a mapping.

    ``channels[0]``, ``channels[-1]``, ``channels["Ua"]``, ``channels["ВЛ-110 Восточная:Ua"]`` and
    ``channels["ВЛ-110 Восточная", "Ua"]`` (the circuit, then the name or the phase) give a channel, ``channels[2:5]``
    several. Iteration gives channels, as that of a list does: ``keys`` has the names, and ``dict(channels)`` makes a
    mapping. Places count from 0, whatever numbers the channels have.

    Raises
    ------
    ChannelError
        There is no channel of that name, or there are several.
    IndexError
        There is none at that place.
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
            place = operator.index(key)
            if not -len(self) <= place < len(self):
                raise IndexError(f"there is no channel at place {place}; there are {len(self)}")
            return self._channels[place]
        found = self._one(key)
        if found is None:
            raise ChannelError(f"there is no channel {key!r}; there are: {', '.join(self.keys()) or 'none'}")
        return found

    def _one(self, key: Name) -> Optional[C]:
        """The channel, None if there is none; raises if there are several."""
        if not _is_name(key):
            raise TypeError(f"a channel is found by its place, its name, or circuit and signal, not by {key!r}")
        found = self._find(key)
        if len(found) > 1:
            places = [one.index for one in found]
            raise ChannelError(f"{len(found)} channels are {key!r}; take one by its place: {places}")
        return found[0] if found else None

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

    @overload
    def get(self, key: Key) -> Optional[C]: ...

    @overload
    def get(self, key: Key, default: Other) -> Union[C, Other]: ...

    def get(self, key: Key, default: Any = None) -> Any:
        """The channel of that place or name, or ``default`` if there is none.

        Raises
        ------
        ChannelError
            There are several.
        """
        if isinstance(key, SupportsIndex):
            place = operator.index(key)
            return self._channels[place] if -len(self) <= place < len(self) else default
        found = self._one(key)
        return default if found is None else found

    def keys(self) -> list[str]:
        """Names of the channels, in their order; a name may be there several times."""
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

    def _repr_html_(self) -> str:
        heads = ["Number", "Name", "Phase", "Circuit", "Unit"][: 5 if self._has_units() else 4]
        rows = [_row("th", heads), *(_row("td", _texts(one)[: len(heads)]) for one in self._channels)]
        return f"<table>{''.join(rows)}</table>"

    def _has_units(self) -> bool:
        return any(isinstance(one, AnalogChannel) for one in self._channels)

    def _ipython_key_completions_(self) -> list[str]:
        return self.keys()


def _texts(channel: Channel) -> list[str]:
    return [str(channel.number), channel.name, channel.phase, channel.circuit, getattr(channel, "unit", "")]


def _row(kind: str, texts: Sequence[str]) -> str:
    # Notebooks align cells to the right.
    cells = (f'<{kind} style="text-align: left">{html.escape(text)}</{kind}>' for text in texts)
    return f"<tr>{''.join(cells)}</tr>"
