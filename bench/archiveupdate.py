#!/usr/bin/env python3
"""Times `zucmtr archive update`: archiveupdate.py PROGRAM DIRECTORY [NEW [UNCHANGED]]

2000 new typical recordings (32 analog and 64 discrete channels, 2 s) are catalogued, fault analysis included, and converted
without verification into records, both with two processes and in turn; then 20,000 catalogued recordings of which none has
changed are updated. The shortest times count, on the clock and in processor time, which other work on the machine prolongs
less. Everything is made in the directory, which should be in memory and empty; exit code 1 if a row misses its target.
"""
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import time

ROUNDS = 4
MOST_RATIO = 1.5
MOST_SECONDS = 1.0
TIMES = (233, 241)  # bytes before the start and the trigger in a recording's header: seconds since 1970
TOGETHER = 1000  # recordings in a directory


def now():
    """On the clock, and processor time of children that have ended; s."""
    used = os.times()
    return time.perf_counter(), used.children_user + used.children_system


def timed(*words):
    start = now()
    subprocess.run(list(map(str, words)), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    return [after - before for before, after in zip(start, now())]


def make(program, place, count, *options):
    """Recordings of different contents: those of the sample station, each a minute after the one before."""
    sample = place / "sample"
    subprocess.run([program, "sample", "--out", sample, *options], stdout=subprocess.DEVNULL, check=True)
    contents = [file.read_bytes() for file in sorted(sample.glob("*.ZU"))]
    for number in range(count):
        recording = bytearray(contents[number % len(contents)])
        for offset in TIMES:
            seconds, = struct.unpack_from("<I", recording, offset)
            struct.pack_into("<I", recording, offset, seconds + 60 * number)
        directory = place / f"{number // TOGETHER:03}"
        directory.mkdir(exist_ok=True)
        (directory / f"{number:06}.ZU").write_bytes(recording)
    shutil.move(str(sample / "ZuDrv.ini"), place / "ZuDrv.ini")
    shutil.rmtree(sample)


def remove_catalogue(place):
    for file in place.glob("zucmtr-archive.db*"):
        file.unlink()


def new_row(program, place, count):
    make(program, place, count)
    records = place.with_name("records")
    times = []
    for _ in range(ROUNDS):
        records.mkdir()
        converted = timed(program, "convert", "--no-verify", "--recursive", "-j", 2, "--out", records, place)
        shutil.rmtree(records)
        remove_catalogue(place)
        times.append((converted, timed(program, "archive", "update", "-j", 2, place)))
    (clock, processor), (whole, used) = (map(min, zip(*side)) for side in zip(*times))
    print(f"| update of {count} new typical recordings, two processes | unverified conversion {clock:.2f} s, processor "
          f"{processor:.2f} s | {whole:.2f} s, processor {used:.2f} s | {whole / clock:.2f}, of processor time "
          f"{used / processor:.2f} | at most {MOST_RATIO} |", flush=True)
    return whole <= MOST_RATIO * clock


def unchanged_row(program, place, count):
    make(program, place, count, "--analog", "4", "--discrete", "4", "--seconds", "0.1")
    timed(program, "archive", "update", place)
    whole, used = map(min, zip(*(timed(program, "archive", "update", place) for _ in range(ROUNDS))))
    print(f"| update over {count} unchanged recordings | | {whole:.2f} s, processor {used:.2f} s | | at most "
          f"{MOST_SECONDS:.0f} s |", flush=True)
    return whole <= MOST_SECONDS


def main(program, directory, new="2000", unchanged="20000"):
    program, directory = pathlib.Path(program).resolve(), pathlib.Path(directory)
    print("| Workload | Limit | Measured | Ratio | Target |\n|---|---|---|---|---|")
    met = True
    for row, count in ((new_row, int(new)), (unchanged_row, int(unchanged))):
        place = directory / row.__name__
        place.mkdir()
        met = row(program, place, count) and met
        shutil.rmtree(place)
    return 0 if met else 1


if __name__ == "__main__":
    if not 3 <= len(sys.argv) <= 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
