"""The Python module against the C++ reader and against plain Python, on a large recording and its records.

pythonmodule.py ZUCMTR READRECORD DIR [--quick]; the module is found by PYTHONPATH. Prints the rows of docs/performance.md.
"""

import subprocess
import sys
import time
from pathlib import Path

import numpy as np
import plainreader
import zucmtr

PROGRAM, READER, DIRECTORY = sys.argv[1:4]
QUICK = "--quick" in sys.argv
ROUNDS = 3 if QUICK else 9

# What a process does whose memory is measured: opens a small record, so that what is loaded once is there, then the large
# one; reads its samples, closes it. Prints the resident bytes that each step added, and the peak above the first.
MEMORY = """
import re, sys, zucmtr
def resident():
    status = open("/proc/self/status").read()
    return [1024 * int(re.search(key + r":\\s+(\\d+)", status).group(1)) for key in ("VmRSS", "VmHWM")]
def read(path):
    record = zucmtr.open(path)
    for channel in record.analog:
        channel.codes
    for channel in record.digital:
        channel.changes
    return record
read(sys.argv[2]).close()
before, _ = resident()
record = read(sys.argv[1])
opened, peak = resident()
record.close()
del record
closed, _ = resident()
print(opened - before, peak - before, closed - before)
"""


def run(*words):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True).stdout


def seconds(work):
    """Of the processor: all is the work of one thread, and other programs on the machine do not count."""
    start = time.process_time()
    work()
    return time.process_time() - start


def read_all(path):
    with zucmtr.open(path) as record:
        for channel in record.analog:
            channel.codes


def report(name, limit, value, better, detail):
    """Prints a row; whether the target is met."""
    met = value <= limit if better == "most" else value >= limit
    print(f"| {name} | {detail} | {value:.2f} | at {better} {limit:g} | {'met' if met else 'MISSED'} |", flush=True)
    return met


def compare_with_reader(name, path):
    """Rounds of module and reader take turns; the fastest of each count."""
    module, reader = [], []
    for _ in range(ROUNDS):
        module.append(seconds(lambda: read_all(path)))
        reader.append(float(run(READER, 1, path)))
    detail = f"reader {1000 * min(reader):.0f} ms | {1000 * min(module):.0f} ms"
    return min(module), report(f"open and all codes, {name}", 1.3, min(module) / min(reader), "most", detail)


def compare_with_plain(name, path, module, limit):
    """Plain Python once, and every value of it against the module's."""
    start = time.process_time()
    plain = plainreader.Record(path)
    taken = time.process_time() - start
    with zucmtr.open(path) as record:
        for mine, theirs in zip(record.analog, plain.analog):
            np.testing.assert_array_equal(mine.codes, np.asarray(theirs))
        for mine, theirs in zip(record.digital, plain.digital):
            np.testing.assert_array_equal(mine.values, np.frombuffer(theirs, np.uint8))
    return report(f"plain Python, {name}", limit, taken / module, "least", f"{taken:.1f} s | {1000 * module:.0f} ms")


def compare_memory(path, small):
    with zucmtr.open(path) as record:
        samples = 2 * len(record) * len(record.analog)  # without the states
    opened, peak, closed = map(int, run(sys.executable, "-c", MEMORY, path, small).split())
    size = f"codes {samples / 1e6:.0f} MB"
    met = report("memory of an open record, BINARY", 1.1, opened / samples, "most", f"{size} | {opened / 1e6:.0f} MB")
    met &= report("its peak", 1.1, peak / samples, "most", f"{size} | {peak / 1e6:.0f} MB")
    return met & report("what is left when it is closed", 0.02, closed / samples, "most", f"{size} | {closed / 1e6:.1f} MB")


def values_speed(path):
    with zucmtr.open(path) as record:
        channel = record.analog[0]
        codes = channel.codes
        product = min(seconds(lambda: channel.a * codes + channel.b) for _ in range(5 * ROUNDS))
        values = min(seconds(lambda: channel.values) for _ in range(5 * ROUNDS))
    return report("`values` of a channel", 1.5, values / product, "most",
                  f"NumPy's `a * codes + b` {1000 * product:.1f} ms | {1000 * values:.1f} ms")


def make_recording(directory):
    """A recording whose analog samples take 123 MB, and a small one."""
    for name, size in (("large", ("--rate", 4800, "--seconds", 5 if QUICK else 50, "--segments", 4)), ("small", ())):
        run(PROGRAM, "sample", "--out", directory / name, "--plain", "--analog", 64, "--discrete", 128, *size)
        first, *others = sorted((directory / name).glob("*.ZU"))
        for other in others:
            for part in other.parent.glob(other.stem + ".*"):
                part.unlink()
        yield first


def main():
    met = True
    directory = Path(DIRECTORY)
    recording, small = make_recording(directory)
    records = {}
    for data in ("binary", "ascii"):
        (directory / data).mkdir()
        records[data] = zucmtr.convert(recording, directory / data, form="cfg", data=data, encoding="utf8").record
    for data in ("binary32", "float32"):
        records[data] = directory / f"{data}.cfg"
        run(PROGRAM, "export", "--form", "cfg", "--data", data, "--out", records[data], records["binary"])
    print("| Workload | Limit | Measured | Ratio | Target | |\n|---|---|---|---|---|---|")
    module = {}
    for data, path in {**records, "the recording itself": recording}.items():
        module[data], fast = compare_with_reader(data if path == recording else data.upper(), path)
        met &= fast
    met &= values_speed(records["binary"])
    met &= compare_memory(records["binary"], small)
    met &= compare_with_plain("BINARY", records["binary"], module["binary"], 20)
    met &= compare_with_plain("ASCII", records["ascii"], module["ascii"], 50)
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main())
