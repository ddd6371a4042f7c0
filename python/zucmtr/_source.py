"""What a record and its channels share: the reader, and what was already asked for."""

from __future__ import annotations

import threading
from typing import Optional

import numpy as np
import numpy.typing as npt

from . import _core

FloatArray = npt.NDArray[np.float64]


class Source:
    """Owns the reader until the record is closed. Arrays that were handed out keep the samples themselves alive."""

    def __init__(self, core: _core.Record) -> None:
        self._core: Optional[_core.Record] = core
        self._time: Optional[FloatArray] = None
        self._lock = threading.Lock()

    @property
    def core(self) -> _core.Record:
        core = self._core
        if core is None:
            raise ValueError("the record is closed")
        return core

    @property
    def time(self) -> FloatArray:
        with self._lock:
            if self._time is None:
                self._time = self.core.times()
            return self._time

    @property
    def is_closed(self) -> bool:
        return self._core is None

    def close(self) -> None:
        self._core = None
        self._time = None
