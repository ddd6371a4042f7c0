"""A tour through a fault: fault.py RECORD [FIGURE.png]

Prints what happened, and draws the faulted circuit with the moments of the protection.
"""

from __future__ import annotations

import sys

import numpy as np
import zucmtr


def rms(values: np.ndarray, samples: int) -> np.ndarray:
    """RMS over the last period at each sample; NaN within the first one."""
    squares = np.cumsum(np.insert(values**2, 0, 0.0))
    result = np.full(len(values), np.nan)
    result[samples - 1 :] = np.sqrt((squares[samples:] - squares[:-samples]) / samples)
    return result


def main() -> None:
    record = zucmtr.open(sys.argv[1])
    summary = record.summary()
    print(record)
    print(summary)
    for event in summary.events:
        print(f"{1000 * event.time:8.1f} ms  {event.name} -> {event.state}")

    fault = summary.fault
    if fault is None:
        return
    circuit = [channel for channel in record.analog if channel.circuit == fault.circuit]
    period = round(record.rates[0].hertz / record.frequency)
    for channel in circuit:
        print(f"{channel.name:30} {np.nanmax(rms(channel.values, period)):12.1f} {channel.unit} RMS at most")

    if len(sys.argv) > 2:
        figure = record.plot(circuit, span=(fault.onset - 0.06, fault.onset + 0.2))
        for axis in figure.axes:
            axis.axvspan(fault.onset, record.time[-1] if fault.clearing is None else fault.clearing, color="C3", alpha=0.1,
                         zorder=0)
        figure.savefig(sys.argv[2], dpi=100)


if __name__ == "__main__":
    main()
