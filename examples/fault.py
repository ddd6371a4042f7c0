"""A tour of a fault, cell by cell: fault.py RECORD [FIGURE.png]

Editors that know "# %%" run it as a notebook. It prints what happened and draws the faulted circuit.
"""

# %% Open it: a recording (.ZU) or a COMTRADE record (.cfg, .cff)
import sys

import numpy as np
import zucmtr

record = zucmtr.open(sys.argv[1])
print(record)
print(f"{len(record)} samples at {record.rates[0].hertz:g} Hz, trigger {record.trigger - record.start} after the start")

# %% What happened, in a few sentences
summary = record.summary()
print(summary)

# %% The sequence of events, in milliseconds from the trigger
for event in summary.events:
    print(f"{1000 * event.time:8.1f} ms  {event.name} -> {event.state}")

# %% The fault: times are in seconds from the trigger, as those of record.time
fault = summary.fault
if fault is None:
    sys.exit("no short circuit in this record")
clearing = record.time[-1] if fault.clearing is None else fault.clearing
if fault.distance:
    print(f"{fault.kind} {fault.direction}, {fault.distance.km:.1f} km away, {fault.distance.resistance:.1f} ohm")


# %% RMS values over the last period, before the fault and in it
def rms(values: np.ndarray, samples: int) -> np.ndarray:
    """RMS over so many samples up to each one; NaN where there are fewer."""
    squares = np.cumsum(np.insert(values**2, 0, 0.0))
    result = np.full(len(values), np.nan)
    result[samples - 1 :] = np.sqrt((squares[samples:] - squares[:-samples]) / samples)
    return result


period = round(record.rates[0].hertz / record.frequency)
circuit = [channel for channel in record.analog if channel.circuit == fault.circuit]
before, during = np.searchsorted(record.time, [fault.onset, clearing]) - 1
for channel in circuit:
    values = rms(channel.values, period)
    print(f"{channel.name:30} {values[before]:10.1f} -> {values[during]:8.1f} {channel.unit} RMS")

# %% A figure of the circuit around the fault, which is shaded
if len(sys.argv) > 2:
    figure = record.plot(circuit, span=(fault.onset - 0.06, fault.onset + 0.2))
    for axis in figure.axes:
        axis.axvspan(fault.onset, clearing, color="C3", alpha=0.1, zorder=0)
    figure.savefig(sys.argv[2], dpi=100)
