"""The soak: everything at once and at random, in rounds with an account at the end of each."""
import concurrent.futures
import itertools
import signal
import threading
import time

import bench as benches
import changes
import outages
import points
import station as stations

ROUND = 20  # seconds


def soak(bench):
    """Rounds over all commands and modes until the time is up."""
    started = time.monotonic()
    end = started + bench.minutes * 60
    length = min(ROUND, bench.minutes * 60 / 4)
    cases = list(bench.cases(all_forms=False))
    row = benches.Row("soak", stations.Case("both", "all", "all"))
    numbers, lock = itertools.count(), threading.Lock()

    def work():
        while time.monotonic() < end:
            number = next(numbers)
            case = cases[number % len(cases)]
            with bench.station() as station:
                findings = Round(bench, station, case, number, length).run()
            with lock:
                row.points += 1
                row.findings.take(findings, f"soak {case.command} {case.mode} {case.form} {number}")

    with concurrent.futures.ThreadPoolExecutor(bench.jobs) as pool:
        for job in [pool.submit(work) for _ in range(bench.jobs)]:
            job.result()
    row.seconds = time.monotonic() - started
    bench.add(row)


class Round:
    """One command and mode for a while."""

    def __init__(self, bench, station, case, number, length):
        self.bench, self.station, self.case = bench, station, case
        self.words = ("soak", case, number)
        self.rng = bench.rng(*self.words)
        self.end = time.monotonic() + length
        station.set_up(case, quiet=5 if case.command == "watch" else 0,
                       options=outages.OPTIONS if case.command == "watch" else [])
        self.ledger = benches.fill(station, bench.seed, chains=((1, 2), (2, 1), (3, 1)))
        self.ledger.lock = threading.Lock()  # held while the input is away

    def run(self):
        hand = threading.Thread(target=changes.exchange_at_random,
                                args=(self.bench, self.station, self.ledger, self.end, self.words, 0.03))
        hand.start()
        while time.monotonic() < self.end:
            self.ledger.note(self.rng.choice([self.undisturbed, self.killed, self.killed_in_time, self.failing,
                                              self.with_outage])())
        hand.join()
        return benches.conclude(self.station, self.ledger, changes.excuse(self.station, self.ledger))

    def undisturbed(self):
        return self.station.run()

    def killed(self):
        return self.station.run(f"kill {self.rng.randint(1, 80)}", benches.CHANGING)

    def killed_in_time(self):
        return self._for_a_while(signal.SIGKILL, self.rng.random() * 0.1)

    def failing(self):
        error = self.rng.choice(list(points.ERRORS))
        number, kinds = points.ERRORS[error]
        word = self.rng.choice(points.words(error))
        return self.station.run(f"{word} {self.rng.randint(1, 200)} {number}", kinds)

    def with_outage(self):
        places = {"in": self.station.input, "out": self.station.out, "state": self.station.state}
        if self.case.mode == "archive":
            places["archive"] = self.station.archive
        what = self.rng.choice(list(places))
        kinds = [outages.Away] + ([outages.ReadOnly] if self.bench.places.mounts and what != "in" else [])
        outage = self.rng.choice(kinds)(self.station, places[what])
        return self._for_a_while(signal.SIGTERM, self.rng.random() * 0.3, outage, what == "in")

    def _for_a_while(self, end, seconds, outage=None, alone=False):
        """The program until a signal; a service, or a single run. alone: nobody else may check meanwhile."""
        self.station.forget_texts()
        self.station.log.unlink(missing_ok=True)
        child = self.station.start(once=self.rng.random() < 0.3)
        time.sleep(seconds / 2)
        if outage:
            if alone:
                self.ledger.lock.acquire()
            outage.begin()
        time.sleep(seconds / 2)
        if outage:
            outage.end()
            if alone:
                self.ledger.lock.release()
            time.sleep(seconds)
        child.send_signal(end)
        return self.station.result(child)
