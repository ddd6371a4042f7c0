"""The bench on which all scenarios work: stations for several threads, rows of the table, the budget of points."""
import concurrent.futures
import contextlib
import dataclasses
import itertools
import queue
import random
import time

import ledger as books
import recordings
import station as stations

# Calls that change something outside the program: a kill before any other finds what the one before it left.
CHANGING = ["create", "write", "rename", "link", "unlink", "mkdir", "rmdir", "truncate", "attribute", "copy", "sync",
            "lock"]


@dataclasses.dataclass
class Row:
    """A line of the table."""
    scenario: str
    case: stations.Case
    points: int = 0
    findings: books.Findings = dataclasses.field(default_factory=books.Findings)
    seconds: float = 0


class Bench:
    """short: points are drawn by lot, so that all takes less than a minute; times as many. seed: of everything that is
    drawn."""

    def __init__(self, places, program, shim, *, short, seed, minutes, jobs, times=1):
        self.places, self.program, self.shim = places, program, shim
        self.short, self.seed, self.minutes, self.jobs, self.times = short, seed, minutes, jobs, times
        self.free = queue.Queue()
        self.numbers = itertools.count()
        self.rows = []
        self.report = lambda row: None

    def rng(self, *words):
        return random.Random("/".join(map(str, (self.seed, *words))))

    @contextlib.contextmanager
    def station(self):
        """A station that nobody else uses at the time."""
        try:
            station = self.free.get_nowait()
        except queue.Empty:
            station = self.new_station()
        standard = dict(vars(station))
        try:
            yield station
        finally:
            vars(station).update(standard)  # its directories are where they were
            self.free.put(station)

    def new_station(self):
        name = f"s{next(self.numbers)}"
        return stations.Station(self.places.directory / name, self.program, self.shim, self.places.other(name))

    def cases(self, commands=tuple(stations.COMMANDS), modes=tuple(stations.MODES), all_forms=True):
        """Every command, mode and form; in the short form each command and mode with one form in turn."""
        forms = list(stations.FORMS)
        turn = self.rng("forms").randrange(len(forms))
        for command in commands:
            for mode in modes:
                turn += 1
                for form in (forms if all_forms and not self.short else [forms[turn % len(forms)]]):
                    yield stations.Case(command, mode, form)

    def draw(self, points, most, *words):
        """All points; in the short form at most so many, drawn by lot."""
        points = list(points)
        most *= self.times
        if self.short and len(points) > most:
            chosen = self.rng("draw", *words).sample(range(len(points)), most)
            return [points[index] for index in sorted(chosen)]
        return points

    def each(self, scenario, case, points, work):
        """work(station, point) returns the findings of a point; several are worked on at once."""
        row = Row(scenario, case)
        started = time.monotonic()

        def one(point):
            with self.station() as station:
                return point, work(station, point)

        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            for point, findings in pool.map(one, points):
                row.points += 1
                row.findings.take(findings, f"{scenario} {case.command} {case.mode} {case.form} {point}")
        row.seconds = time.monotonic() - started
        self.add(row)

    def add(self, row):
        self.rows.append(row)
        self.report(row)


def fill(station, seed, *, points=40, chains=((1, 3), (2, 1))):
    """Puts recordings (number, files) into the input of an empty station; returns the ledger that has them."""
    ledger = books.Ledger(station)
    for number, files in chains:
        contents = recordings.chain(seed, number, files, points)
        for n, content in enumerate(contents):
            put(station, ledger, recordings.chain_name(f"rec{number}.ZU", n), content)
        ledger.changes[f"rec{number}.ZU"] = 1  # they came together
    return ledger


def put(station, ledger, path, content):
    target = station.input / path
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_bytes(content)
    ledger.put(path, content)


def conclude(station, ledger, excused=lambda path: False):
    """The normal run that follows, and the accounts."""
    run = station.run()
    ledger.note(run)
    ledger.check(run, excused)
    return ledger.findings
