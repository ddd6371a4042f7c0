#!/usr/bin/env python3
"""How right `zucmtr events` is: analysisfaults.py ZUCMTR [--faults FIRST-LAST] [--quiet FIRST-LAST] [--list] [--without-speed]

Simulates faults and recordings without one by `zucmtr sample`, asks `zucmtr events --json` and compares the answers with
the truth beside the recordings. Prints one row for each target; exit code 1 if one is missed. --list names the
recordings that were answered wrongly.
"""
import argparse
import json
import math
import subprocess
import sys
import tempfile
import time
from pathlib import Path

LOW = 5.0  # ohms
BATCH = 100


def batches(items):
    return [items[i:i + BATCH] for i in range(0, len(items), BATCH)]


def ask(program, directory):
    """The answers of all recordings of a directory: [(truth, answer)]."""
    pairs = []
    for paths in batches(sorted(directory.glob("*.ZU"))):
        run = subprocess.run([program, "events", "--json", *map(str, paths)], stdout=subprocess.PIPE, check=False)
        if run.returncode != 0:
            sys.exit(f"zucmtr events ended with {run.returncode}")
        for path, line in zip(paths, run.stdout.decode().splitlines()):
            truth = json.loads(path.with_name(path.stem + ".truth.json").read_text(encoding="utf-8"))
            pairs.append((truth, json.loads(line)))
    return pairs


def sample(program, directory, option, seeds):
    subprocess.run([program, "sample", "--out", str(directory), option, seeds], stdout=subprocess.DEVNULL, check=True)


def quantile(values, part):
    values = sorted(values)
    return values[min(len(values) - 1, int(part * len(values)))] if values else float("nan")


class Table:
    def __init__(self):
        self.met = True
        self.rows = [("What", "Must reach", "Measured", "Result")]

    def row(self, what, target, measured, met):
        self.met = self.met and met
        self.rows.append((what, target, measured, "met" if met else "NOT MET"))

    def line(self, what, measured):
        self.rows.append((what, "", measured, ""))

    def append(self, other):
        self.met = self.met and other.met
        self.rows += other.rows[1:]

    def print(self):
        widths = [max(map(len, column)) for column in zip(*self.rows)]
        lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in self.rows]
        lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
        print("\n".join(lines))


def best_distance(answer):
    """The distance nearest to the truth, of all methods, in percent; None without one."""
    methods = answer["fault"]["distance"]
    return None if not methods else [method["percent"] for method in methods.values()]


def same_kind(one, other):
    return one == other or {one, other} == {"ABC", "ABCG"}  # balanced: the ground carries nothing


def fault_rows(table, pairs, listed):
    kinds = {True: [], False: []}
    last_kinds, onsets, clearings, lost = [], [], [], 0
    errors = {True: [], False: []}
    flagged = {True: [], False: []}
    for truth, answer in pairs:
        want, got = truth["fault"], answer["fault"]
        low = want["resistance"] <= LOW
        right = got is not None and same_kind(want["kind"], got["kind"]) and \
            want["circuit"].split()[-1] == got["circuit"].split()[-1]
        kinds[low].append(right)
        if len([part for part in want["parts"] if part["onset"] <= (want["clearing"] or 1e9)]) > 1:
            last_kinds.append(right)
        if got is None:
            print(f"  {truth['file']}: no fault found") if listed else None
            continue
        onsets.append(abs(got["onset"] - want["onset"]))
        if (want["clearing"] is None) != (got["clearing"] is None):
            lost += 1
        elif want["clearing"] is not None:
            clearings.append(abs(got["clearing"] - want["clearing"]) * truth["frequency"])
        distances = best_distance(answer)
        if distances and not want["saturation"]:
            error = min(abs(percent - want["distance"]["percent"]) for percent in distances)
            errors[low].append(error)
            chosen = answer["fault"]["distance"][answer["fault"]["best"]]["percent"]
            flagged[low].append(abs(chosen - want["distance"]["percent"]))
            if listed and error > 4:
                print(f"  {truth['file']}: {want['kind']} {want['resistance']:.1f} ohm, distance wrong by {error:.1f} %, "
                      f"range {answer['fault']['range']}")
        if listed and (not right or onsets[-1] > 0.001):
            print(f"  {truth['file']}: {want['kind']} {want['resistance']:.1f} ohm: {got['kind']} in {got['circuit']}, "
                  f"onset {1e3 * (got['onset'] - want['onset']):+.2f} ms")
    every = kinds[True] + kinds[False]
    table.row(f"kind, phases and circuit, {len(every)} faults", "all up to 5 ohm, 99 % over all",
              f"{sum(kinds[True])} of {len(kinds[True])}, {100 * sum(every) / len(every):.2f} %",
              all(kinds[True]) and sum(every) >= 0.99 * len(every))
    table.row("onset", "within 2 ms, 95 % within 1 ms",
              f"{1e3 * max(onsets):.2f} ms, 95 % within {1e3 * quantile(onsets, 0.95):.2f} ms",
              max(onsets) <= 0.002 and quantile(onsets, 0.95) <= 0.001)
    table.row("clearing", "within half a period", f"{max(clearings):.3f} periods, 95 % within "
              f"{quantile(clearings, 0.95):.3f}", max(clearings) <= 0.5 and lost == 0)
    table.row(f"distance up to 5 ohm, best method ({len(errors[True])})", "median 0.3, 95 % below 4",
              f"median {quantile(errors[True], 0.5):.3f}, 95 % below {quantile(errors[True], 0.95):.2f}",
              quantile(errors[True], 0.5) <= 0.3 and quantile(errors[True], 0.95) < 4)
    table.row(f"distance 5 to 20 ohm, best method ({len(errors[False])})", "median 1",
              f"median {quantile(errors[False], 0.5):.3f}, 95 % below {quantile(errors[False], 0.95):.2f}",
              quantile(errors[False], 0.5) <= 1)
    for text, values in (("up to 5 ohm", flagged[True]), ("5 to 20 ohm", flagged[False])):
        table.line(f"distance {text}, the method that the answer calls best",
                   f"median {quantile(values, 0.5):.3f}, 95 % below {quantile(values, 0.95):.2f}")
    table.row(f"evolving faults: the last kind ({len(last_kinds)})", "9 of 10", f"{sum(last_kinds)}",
              sum(last_kinds) >= 0.9 * len(last_kinds))


def quiet_row(table, pairs, listed):
    called = [truth for truth, answer in pairs if answer["fault"] is not None]
    for truth in called if listed else []:
        print(f"  {truth['file']}: {truth['cause']} is called a fault")
    table.row(f"{len(pairs)} recordings without a fault", "none called a fault", f"{len(called)} called", not called)


ROUNDING = 2e-6  # s: times have six decimals
GRID_ERROR = 3e-7  # s, of the mean over all events


def as_sampled(history, anchor, step):
    """The changes that a record of these samples can show, as (time in the truth, state): each at the first sample at or after it; of
    several between two samples the last one, if it is one."""
    def sample_of(event):
        return math.ceil((event["time"] - anchor - GRID_ERROR) / step)
    sampled = []
    state = None if not history else 1 - history[0]["state"]
    for event, following in zip(history, [*history[1:], None]):
        if (following is None or sample_of(following) != sample_of(event)) and event["state"] != state:
            sampled.append((event["time"], event["state"]))
            state = event["state"]
    return sampled


def is_sample_of(time_found, time_true, step):
    """Whether the one is the first sample at or after the other."""
    return -ROUNDING <= time_found - time_true <= step + ROUNDING


def events_wrong(truth, answer, step):
    """How many events are not those of the truth; the changes of a bouncing contact are one event."""
    if not answer["events"]:
        return len(truth["events"])
    anchor = anchor_of(answer, step)
    wrong = 0
    for name in {event["name"] for event in truth["events"]}:
        history = as_sampled([event for event in truth["events"] if event["name"] == name], anchor, step)
        bay, signal = name.split(":")
        position = 0
        for event in answer["events"]:
            if signal not in event["name"] or bay.split()[-1] not in event["circuit"]:
                continue
            folded = history[position:position + event["changes"]]
            position += event["changes"]
            wrong += not folded or not is_sample_of(event["time"], folded[0][0], step) or folded[-1][1] != event["state"]
        wrong += abs(len(history) - position)
    return wrong


def anchor_of(answer, step):
    """The time of a sample: the mean of what the events say of it, as each is rounded."""
    times = [event["time"] for event in answer["events"]]
    first = times[0] if times else 0
    parts = [time - first - round((time - first) / step) * step for time in times]
    return first + sum(parts) / max(len(parts), 1)


BREAK = 0.1  # s: a contact that bounces is not off for so long


def dead_time(history):
    """From the first change of the breaker's contact to off to the one that ends the pause; None without it."""
    opened = next((moment for moment, state in history if state == 0), None)
    for (moment, state), (following, _) in zip(history, history[1:]):
        if opened is not None and state == 0 and following - moment > BREAK:
            return following - opened
    return None


SIGNALS = {"start": ("Пуск защит", 1), "trip": ("Откл. от защит", 1), "breaker": ("Выключатель включен", 0)}


def operating_wrong(truth, answer, step):
    """Operating times are from the onset found, or the start of the protection; dead time from one contact to itself."""
    want, got = truth["operating"], answer["operating"]
    wrong = 0
    anchor = anchor_of(answer, step)
    breaker = f"{truth['line']['circuit']}:Выключатель включен"
    for key, (signal, active) in SIGNALS.items() if got["from"] is not None else ():
        history = as_sampled([event for event in truth["events"] if event["name"] == f"{truth['line']['circuit']}:{signal}"],
                             anchor, step)
        first = next((moment for moment, state in history if state == active), None)
        if (first is None) != (got[key] is None):
            wrong += 1
        elif first is not None:
            wrong += not is_sample_of(got[key] + got["from"], first, step)
    if (want["deadTime"] is None) != (got["deadTime"] is None):
        wrong += 1
    elif want["deadTime"] is not None:
        history = as_sampled([event for event in truth["events"] if event["name"] == breaker], anchor, step)
        dead = dead_time(history) or want["deadTime"]
        wrong += abs(got["deadTime"] - dead) > step + ROUNDING
    return wrong + (want["reclosed"] != {None: None, True: "success", False: "fault"}[got["reclosed"]])


def events_row(table, pairs, listed):
    events = operating = total = 0
    for truth, answer in pairs:
        step = 1 / answer["rate"]
        one, other = events_wrong(truth, answer, step), operating_wrong(truth, answer, step)
        if listed and one + other:
            print(f"  {truth['file']}: {one} events and {other} operating times are wrong")
        events += one
        operating += other
        total += len(truth["events"])
    table.row(f"{total} changes of discrete signals, operating times", "exact, to the sample",
              f"{events} and {operating} wrong", events + operating == 0)


def seconds_each(program, paths):
    """Of one more file in a run of `zucmtr events`: the start of the program does not count."""
    def run(files):
        start = time.monotonic()
        subprocess.run([program, "events", "--json", *map(str, files)], stdout=subprocess.DEVNULL, check=True)
        return time.monotonic() - start
    rounds = [(run([paths[0]] * 21) - run([paths[0]])) / 20 for _ in range(3)]
    return min(rounds)


def speed_rows(table, program, directory):
    for what, options, limit in (("a typical recording: 32 analog channels, 2 s", [], 0.010),
                                 ("64 analog channels of 48,000 samples", ["--analog", "64", "--seconds", "20"], 0.2)):
        place = directory / ("speed" + str(limit))
        subprocess.run([program, "sample", "--out", str(place), *options], stdout=subprocess.DEVNULL, check=True)
        first = sorted(place.glob("*.ZU"))[0]
        record = place / "record"
        record.mkdir()
        subprocess.run([program, "convert", "--ini", place / "ZuDrv.ini", "--out", record, first],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        for kind, path in (("recording", first), ("record", next(record.rglob("*.cfg")))):
            seconds = seconds_each(program, [path])
            table.row(f"events of {what} ({kind})", f"at most {1e3 * limit:.0f} ms", f"{1e3 * seconds:.1f} ms",
                      seconds <= limit)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--faults", default="1-1000")
    parser.add_argument("--quiet", default="1-200")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--without-speed", action="store_true")
    options = parser.parse_args()
    program = str(Path(options.program).resolve())
    table = Table()
    memory = Path("/dev/shm")
    with tempfile.TemporaryDirectory(dir=memory if memory.is_dir() else None) as name:
        directory = Path(name)
        speed = Table()  # first, as a virtual machine gets slower under a long load; its rows stand last
        if not options.without_speed:
            speed_rows(speed, program, directory)
        sample(program, directory / "faults", "--random-fault", options.faults)
        sample(program, directory / "quiet", "--random-quiet", options.quiet)
        faults = ask(program, directory / "faults")
        quiet = ask(program, directory / "quiet")
        fault_rows(table, faults, options.list)
        quiet_row(table, quiet, options.list)
        events_row(table, faults + quiet, options.list)
    table.append(speed)
    table.print()
    return 0 if table.met else 1


if __name__ == "__main__":
    sys.exit(main())
