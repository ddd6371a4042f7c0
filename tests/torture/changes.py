"""Scenarios in which the recordings change under the program: exchanged, rewritten, grown, continued too late."""
import os
import threading
import time

import bench as benches
import recordings
import system

FIRST = "rec1.ZU"
SECOND, THIRD = recordings.chain_name(FIRST, 1), recordings.chain_name(FIRST, 2)


class Operator:
    """Changes the input of a station and keeps the books of it. Its own files are beside the directories."""

    def __init__(self, station, ledger):
        self.station, self.ledger = station, ledger
        self.hand = station.root / "hand"

    def _in_hand(self, content):
        self.hand.write_bytes(content)
        return self.hand

    def swap(self, path, content):
        """Renames a file over another, or into its free place; what lay there comes back to the operator."""
        target = self.station.input / path
        hand = self._in_hand(content)
        while True:
            try:
                system.exchange(hand, target)
                self.ledger.take_back(hand.read_bytes())
                hand.unlink()
                break
            except FileNotFoundError:
                pass
            try:
                system.rename_to_free(hand, target)
                break
            except FileExistsError:
                pass
        self.ledger.put(path, content)

    def add(self, path, content):
        """A file that comes late, in one step, if its name is free."""
        hand = self._in_hand(content)
        try:
            system.rename_to_free(hand, self.station.input / path)
            self.ledger.put(path, content)
        except FileExistsError:
            hand.unlink()

    def rewrite(self, path, content):
        """Writes over a file of the same size."""
        self._write(path, content, 0, False)

    def forge(self, path, content):
        """Writes over a file of the same size and puts its time of change back."""
        self._write(path, content, 0, True)

    def grow(self, path, whole):
        """Appends what a file lacks."""
        self._write(path, whole, None, False)

    def _write(self, path, content, start, back):
        target = self.station.input / path
        try:
            file = os.open(target, os.O_RDWR)
        except FileNotFoundError:
            return
        try:
            before = os.fstat(file)
            old = os.pread(file, before.st_size, 0)
            if start is None and (content[:len(old)] != old or len(old) == len(content)):
                return
            start = len(old) if start is None else start
            self.ledger.take_back(old)
            os.pwrite(file, content[start:], start)
            if back:
                os.utime(file, ns=(before.st_atime_ns, before.st_mtime_ns))
            # Of a file that the program has moved away meanwhile nobody can say which came first.
            if os.stat(target).st_ino == before.st_ino:
                self.ledger.put(path, content)
        except FileNotFoundError:
            pass
        finally:
            os.close(file)


def excuse(station, ledger):
    """Recordings that may fail: files of other content have their names in the archive, or the names of parts there (a
    killed run gave the file a second name, and the operator took the first one, so that the part may be all that is left
    of it); or the recording was changed after its record was made, which nothing may replace now."""
    def excused(path):
        if ledger.has_former_record(path):
            return True
        if not station.case.mode.startswith(("archive", "elsewhere")):
            return False
        first = recordings.first_name(path)
        for name, key in ledger.current.items():
            if recordings.first_name(name) != first:
                continue
            for there in (station.archive / name, station.archive / f"{name}.part"):
                if there.exists() and recordings.digest(there.read_bytes()) != key:
                    return True
        return False
    return excused


def _actions(bench, operator):
    """What is done while the program is stopped before a call."""
    other = recordings.chain(bench.seed, 50, 3)
    whole = recordings.chain(bench.seed, 1, 3)
    return {
        "swap": lambda: operator.swap(FIRST, other[0]),
        "swap-continuation": lambda: operator.swap(SECOND, other[1]),
        "rewrite": lambda: operator.rewrite(FIRST, other[0]),
        "forge": lambda: operator.forge(FIRST, other[0]),
        "forge-continuation": lambda: operator.forge(SECOND, other[1]),
        "rewrite-continuation": lambda: operator.rewrite(SECOND, other[1]),
        "grow": lambda: operator.grow(THIRD, whole[2]),
        "late": lambda: operator.add(THIRD, whole[2]),
    }


def _fill(bench, station, action):
    """A recording whose third file is not there yet, or is half written, and one that nobody touches."""
    ledger = benches.fill(station, bench.seed, chains=((2, 1),))
    contents = recordings.chain(bench.seed, 1, 3)
    for n, content in enumerate(contents[:2]):
        benches.put(station, ledger, recordings.chain_name(FIRST, n), content)
    if action == "grow":
        benches.put(station, ledger, THIRD, contents[2][:len(contents[2]) // 2])
    ledger.changes[FIRST] = 1
    return ledger


def _at_each_call(bench, scenario, actions, most):
    for case in bench.cases(all_forms=False):
        with bench.station() as station:
            station.set_up(case)
            _fill(bench, station, "")
            station.run("stop 1000000")
            count = sum(fields[0] != "print" for fields in station.calls())
        points = [(action, nth) for action in actions for nth in range(1, count + 2)]

        def work(station, point, case=case):
            action, nth = point
            station.set_up(case)
            ledger = _fill(bench, station, action)
            act = _actions(bench, Operator(station, ledger))[action]
            run = station.run_with_stop(nth, None, act)
            ledger.note(run)
            return benches.conclude(station, ledger, excuse(station, ledger))

        bench.each(scenario, case, bench.draw(points, most, scenario, case), work)


def exchange(bench):
    """Before each call of the program a file of a recording becomes another one."""
    _at_each_call(bench, "exchange", ["swap", "swap-continuation", "rewrite", "rewrite-continuation", "grow"], 8)


def forged(bench):
    """Before each call of the program a file is rewritten and its time put back. Between the last check of a file and
    the call that moves it aside nothing but reading it again can show that."""
    _at_each_call(bench, "forged", ["forge", "forge-continuation"], 10)


def late(bench):
    """Before each call of the program the last file of a recording comes."""
    _at_each_call(bench, "late", ["late"], 4)


def random_exchange(bench):
    """A second hand changes recordings at random moments while the program runs again and again."""
    for case in bench.cases(all_forms=False):
        def work(station, point, case=case):
            return _random_exchange(bench, station, case, point)

        bench.each("random-exchange", case, range(1 if bench.short else 6), work)


def _random_exchange(bench, station, case, point):
    station.set_up(case, quiet=5 if case.command == "watch" else 0)
    ledger = benches.fill(station, bench.seed, chains=((1, 2), (2, 1), (3, 1)))
    end = time.monotonic() + (1.0 if bench.short else 30.0)
    hand = threading.Thread(target=exchange_at_random, args=(bench, station, ledger, end, (case, point)))
    hand.start()
    while time.monotonic() < end:
        ledger.note(station.run())
    hand.join()
    return benches.conclude(station, ledger, excuse(station, ledger))


def exchange_at_random(bench, station, ledger, end, words, pause=0.004):
    """Exchanges, rewrites and adds recordings until the end, at random moments, so many seconds apart."""
    rng = bench.rng("random-exchange", *words)
    operator = Operator(station, ledger)
    number = 100
    while time.monotonic() < end:
        time.sleep(rng.expovariate(1) * pause)
        number += 1
        # The archive takes no second file of a name, so most names do not come again there.
        fresh = station.case.mode in ("archive", "elsewhere") and rng.random() < 0.8
        path = f"new{number}.ZU" if fresh else f"rec{rng.randint(1, 3)}.ZU"
        with ledger.lock:
            _change(operator, rng, path, recordings.chain(bench.seed, number, 2))


def _change(operator, rng, path, contents):
    doing = rng.choice(["swap", "swap", "rewrite", "continue"])
    if doing == "continue":
        operator.add(path, contents[0])
        time.sleep(rng.random() * 0.02)
        operator.add(recordings.chain_name(path, 1), contents[1])
    else:
        getattr(operator, doing)(path, contents[0])


def names(bench):
    """Recordings of one name: in two runs, and in directories below the input in one run."""
    for case in bench.cases(all_forms=False):
        bench.each("names", case, ["two runs"] + (["below"] if case.command == "convert" else []),
                   lambda station, point, case=case: _two_runs(bench, station, case) if point == "two runs"
                   else _below(bench, station, case))


def _two_runs(bench, station, case):
    """The second recording has the record name of the first one, which may be in its record alone."""
    station.set_up(case)
    ledger = benches.fill(station, bench.seed, chains=((1, 1),))
    ledger.note(station.run())
    benches.put(station, ledger, "other.ZU", recordings.chain(bench.seed + "'", 1)[0])
    # Whichever record stays, one of the two recordings has none.
    return benches.conclude(station, ledger, lambda path: path in ("other.ZU", FIRST))


def _below(bench, station, case):
    station.set_up(case, options=["--recursive"])
    ledger = benches.fill(station, bench.seed, chains=())
    for number in range(8):
        content = recordings.chain(f"{bench.seed}/{number}", 1)[0]
        benches.put(station, ledger, f"d{number}/rec.ZU", content)
    run = station.run()
    ledger.note(run)
    ledger.check_claims(run)
    return benches.conclude(station, ledger)


