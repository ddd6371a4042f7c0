"""The Python module against the C++ reader and against plain Python, on a large recording and its records.

pythonmodule.py ZUCMTR READRECORD [--quick]; the module is found by PYTHONPATH. Prints the rows of docs/performance.md.
"""

import subprocess
import sys
import tempfile
import time
from pathlib import Path

import numpy as np
import plainreader
import zucmtr

PROGRAM, READER = sys.argv[1:3]
QUICK = "--quick" in sys.argv
ROUNDS = 3 if QUICK else 7


def run(*words):
    return subprocess.run([str(word) for word in words], check=True, stdout=subprocess.PIPE, text=True).stdout


def fastest(work, rounds=ROUNDS):
    """Seconds of the fastest of some rounds."""
    seconds = []
    for _ in range(rounds):
        begin = time.perf_counter()
        work()
        seconds.append(time.perf_counter() - begin)
    return min(seconds)


def read_all(path):
    with zucmtr.open(path) as record:
        for channel in record.analog:
            channel.codes


def memory_of(path, small):
    """Resident bytes that an open record adds, and its samples in a DAT file of 16-bit codes."""
    script = """if True:
        import sys, zucmtr
        pages = lambda: int(open("/proc/self/statm").read().split()[1]) * 4096
        zucmtr.open(sys.argv[2]).analog[0].codes
        before = pages()
        record = zucmtr.open(sys.argv[1])
        record.analog[0].codes
        print(pages() - before, len(record) * (2 * len(record.analog) + len(record.digital) / 8))
    """
    added, samples = map(float, run(sys.executable, "-c", script, path, small).split())
    return added / samples


def report(name, limit, value, better, detail):
    met = value <= limit if better == "most" else value >= limit
    print(f"| {name} | at {better} {limit:g} | {value:.2f} | {detail} | {'met' if met else 'MISSED'} |")
    return met


def main():
    met = True
    with tempfile.TemporaryDirectory() as scratch:
        directory = Path(scratch)
        seconds = 8 if QUICK else 80
        run(PROGRAM, "sample", "--out", directory, "--analog", 64, "--discrete", 128, "--rate", 2500, "--seconds", seconds,
            "--recordings", 1)
        recording = next(directory.glob("*.ZU"))
        small = directory / "small"
        run(PROGRAM, "sample", "--out", small)
        records = {}
        print("| What | Must be | Measured | Times | Result |\n|---|---|---|---|---|")
        for data in ("binary", "ascii"):
            place = directory / data
            place.mkdir()
            record = zucmtr.convert(recording, place, form="cfg", data=data, encoding="utf8").record
            records[data] = record
            module = fastest(lambda: read_all(record))
            reader = float(run(READER, ROUNDS, record))
            plain = fastest(lambda: plainreader.Record(record), 1 if not QUICK else 2)
            check = plainreader.Record(record)
            with zucmtr.open(record) as opened:
                for mine, theirs in zip(opened.analog, check.analog):
                    np.testing.assert_array_equal(mine.codes, np.frombuffer(theirs, np.int16))
                for mine, theirs in zip(opened.digital, check.digital):
                    np.testing.assert_array_equal(mine.values, np.frombuffer(theirs, np.uint8))
            times = f"module {1000 * module:.0f} ms"
            name = data.upper()
            met &= report(f"{name}: `zucmtr.open` and all codes, times the C++ reader", 1.3, module / reader, "most",
                          f"{times}, reader {1000 * reader:.0f} ms")
            met &= report(f"{name}: plain Python, times the module", 50 if data == "ascii" else 20, plain / module, "least",
                          f"{times}, plain {plain:.2f} s")
        met &= report("memory of an open record, times its samples", 1.1, 
                      memory_of(records["binary"], next(small.glob("*.ZU"))), "most", "BINARY")
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main())
