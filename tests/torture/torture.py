"""Torture of the program: nothing may be lost, cut short or left behind, whatever happens.

    torture.py ZUCMTR SHIM [--scenario NAME...] [--short [--times N]] [--seed N] [--minutes M] [--jobs N] [--place DIR]

ZUCMTR is the program, SHIM the library that is loaded into it (shim.cpp). --short draws some points of each
scenario by lot, --times N so many times as many; without it every point is tried, which takes about an hour and a half on two cores. --minutes is the
length of the soak. Prints a table of what was tried and found, and the first findings of each row; exit code 1 if
there are any. As root, it works in memory, in a mount namespace of its own; other users have no read-only and no small
file systems, so limits of the size of a file stand in for full disks.
"""
import argparse
import collections
import os
import pathlib
import sys
import tempfile
import time

import bench as benches
import changes
import ledger as books
import memory
import outages
import points
import powerfailure
import soak
import station as stations
import system

SCENARIOS = {
    "kill": points.kill,
    "kill-twice": points.twice_killed,
    "faults": points.faults,
    "unreadable": points.unreadable,
    "full-disk": points.full_disk,
    "exchange": changes.exchange,
    "random-exchange": changes.random_exchange,
    "forged": changes.forged,
    "late": changes.late,
    "names": changes.names,
    "outages": outages.outages,
    "memory": memory.memory,
    "power-failure": powerfailure.power_failure,
    "soak": soak.soak,
}
LONG_ONLY = ["forged"]  # unless they are named
SHOWN = 2  # findings of each kind in a row


def parse(words):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("shim", type=pathlib.Path)
    parser.add_argument("--scenario", nargs="+", choices=SCENARIOS, default=None)
    parser.add_argument("--short", action="store_true")
    parser.add_argument("--times", type=int, default=1)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--minutes", type=float, default=None, help="of the soak: 15, in the short form 0.1")
    parser.add_argument("--jobs", type=int, default=min(2, os.cpu_count() or 1))
    parser.add_argument("--place", default=None, help="where the stations are; else in memory, or in TMPDIR")
    parser.add_argument("--all-findings", action="store_true")
    options = parser.parse_args(words)
    if options.minutes is None:
        options.minutes = 0.1 if options.short else 15
    if options.scenario is None:
        options.scenario = [name for name in SCENARIOS if not (options.short and name in LONG_ONLY)]
    return options


HEAD = f"{'scenario':<16}{'command':<9}{'mode':<11}{'form':<6}{'points':>7}" + \
    "".join(f"{column:>9}" for column in books.COLUMNS) + f"{'seconds':>9}"


def show(row, most):
    case = row.case
    counts = "".join(f"{row.findings.counts[column]:>9}" for column in books.COLUMNS)
    print(f"{row.scenario:<16}{case.command:<9}{case.mode:<11}{case.form:<6}{row.points:>7}{counts}{row.seconds:>9.1f}")
    shown = collections.Counter()
    for line in row.findings.details:
        kind = line.split(": ")[1]
        shown[kind] += 1
        if most is None or shown[kind] <= most:
            print("    " + line)
    sys.stdout.flush()


def main():
    options = parse(sys.argv[1:])
    mounts = options.place is None and system.own_mounts() if os.geteuid() == 0 else False
    started = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="zucmtr-torture-", dir=options.place) as directory:
        places = stations.Places(directory, mounts)
        try:
            bench = benches.Bench(places, options.program.absolute(), options.shim.absolute(), short=options.short,
                                  seed=options.seed, minutes=options.minutes, jobs=options.jobs, times=options.times)
            bench.report = lambda row: show(row, None if options.all_findings else SHOWN)
            print(f"seed {options.seed}, {'short' if options.short else 'long'} form, "
                  f"{'in memory' if places.mounts else directory}")
            print(HEAD)
            for name in options.scenario:
                SCENARIOS[name](bench)
        finally:
            places.close()
    total = sum(sum(row.findings.counts.values()) for row in bench.rows)
    tried = sum(row.points for row in bench.rows)
    print(f"{tried} points, {total} findings, {time.monotonic() - started:.0f} s")
    return 1 if total else 0


if __name__ == "__main__":
    sys.exit(main())
