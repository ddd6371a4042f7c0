#!/usr/bin/env python3
"""Conversions with and without their verification, in turn: verified.py PROGRAM DIRECTORY [ROUNDS].

The typical recordings are converted in batches, so that a round takes a second and what disturbs it is in few of them. The
shortest time of each batch counts on either side, on the clock and of the processor.
"""
import glob
import os
import shutil
import struct
import subprocess
import sys
import time

BATCHES = 10
BATCH = 200            # recordings
INTERVAL = 60          # seconds between two of them
START, TRIGGER = 233, 241  # where the seconds of the two moments are in a recorder's file
SIDES = ["--no-verify", "--verify"]


def sample(program, directory, *options):
    """Makes a station; returns its recordings."""
    subprocess.run([program, "sample", "--out", directory, *options], check=True, stdout=subprocess.DEVNULL)
    return sorted(glob.glob(directory + "/*.ZU"))


def later(recording, seconds):
    """The same recording at another time, so that its record has another name."""
    moved = bytearray(recording)
    for place in (START, TRIGGER):
        struct.pack_into("<I", moved, place, struct.unpack_from("<I", moved, place)[0] + seconds)
    return moved


def make_typical(program, place):
    """Directories of recordings of all kinds of start in turn: 32 analog, 64 discrete, 2 s at 2400 Hz, compressed."""
    kinds = []
    for path in sample(program, place + "/kinds"):
        with open(path, "rb") as file:
            kinds.append(file.read())
    batches = []
    for batch in range(BATCHES):
        directory = f"{place}/typical{batch}"
        os.mkdir(directory)
        shutil.copy(place + "/kinds/ZuDrv.ini", directory)
        for number in range(batch * BATCH, (batch + 1) * BATCH):
            with open(f"{directory}/rec_{number:06}.ZU", "wb") as file:
                file.write(later(kinds[number % len(kinds)], number * INTERVAL))
        batches.append(directory)
    return batches


def make_large(program, place):
    """One recording of 26 MB: 64 analog, 128 discrete, 42 s at 4800 Hz, plain."""
    paths = sample(program, place + "/large", "--analog", "64", "--discrete", "128", "--rate", "4800", "--seconds", "42",
                   "--plain")
    for path in paths[1:]:
        os.remove(path)
    return [place + "/large"]


def measure(program, place, recordings, side):
    """Seconds on the clock and of the processor."""
    out = place + "/out"
    shutil.rmtree(out, ignore_errors=True)
    command = [program, "convert", "--quiet", side, "-j", "1", "--data", "ascii", "--out", out, "--make-out", recordings]
    start = time.monotonic()
    process = subprocess.Popen(command)
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.monotonic() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(command)} ends with {process.returncode}")
    return seconds, usage.ru_utime + usage.ru_stime


def compare(name, program, place, batches, rounds, target):
    """Prints a row; whether it meets the target."""
    best = {side: [(float("inf"), float("inf"))] * len(batches) for side in SIDES}
    for _ in range(rounds):
        for batch, recordings in enumerate(batches):
            for side in SIDES:
                times = measure(program, place, recordings, side)
                best[side][batch] = tuple(map(min, best[side][batch], times))
    plain, verified = (tuple(map(sum, zip(*best[side]))) for side in SIDES)
    clock, processor = (verified[i] / plain[i] for i in range(2))
    print(f"| {name} | {plain[0]:.3f} s | {verified[0]:.3f} s | {clock:.2f} | {plain[1]:.3f} s | {verified[1]:.3f} s | "
          f"{processor:.2f} | at most {target} |", flush=True)
    return clock <= target


def main():
    program, place = sys.argv[1:3]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 9
    print("| `zucmtr convert -j 1` | `--no-verify` | verified | Ratio | processor | verified | Ratio | Target |")
    print("|---|---|---|---|---|---|---|---|", flush=True)
    good = compare(f"{BATCHES * BATCH} typical recordings", program, place, make_typical(program, place), rounds, 1.6)
    good = compare("a large one, ASCII (26 MB)", program, place, make_large(program, place), rounds, 1.5) and good
    sys.exit(0 if good else 1)


main()
