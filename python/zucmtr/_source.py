"""What a record and its channels share: the reader, and what was already asked for."""

from __future__ import annotations

from typing import Any, Optional

import numpy as np
import numpy.typing as npt

from . import _core

FloatArray = npt.NDArray[np.float64]


class Source:
    """Owns the reader until the record is closed. Arrays that were handed out keep the samples themselves alive.

    What is pickled is how the file was opened.
    """

    def __init__(self, path: str, options: dict[str, str]) -> None:
        self._opening = path, options
        self.again: Optional[tuple[Any, ...]] = None  # how it is pickled, if it is not by these
        self._core: Optional[_core.Record] = _core.Record(path, **options)
        self._time: Optional[FloatArray] = None

    @property
    def path(self) -> str:
        return self._opening[0]

    @property
    def core(self) -> _core.Record:
        core = self._core
        if core is None:
            raise ValueError("the record is closed")
        return core

    @property
    def time(self) -> FloatArray:
        # Without a lock, which a fork would copy as held: two threads may calculate the times, of which one's are kept.
        core = self.core
        time = self._time
        if time is None:
            time = self._time = core.times()
        return time

    @property
    def is_closed(self) -> bool:
        return self._core is None

    def close(self) -> None:
        self._core = None
        self._time = None

    def __reduce__(self) -> tuple[Any, ...]:
        return self.again or (Source, self._opening)
