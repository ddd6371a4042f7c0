"""Scenarios in which a directory is gone, shut or full for a while under a running `watch`."""
import os
import pwd
import shutil
import signal
import time

import bench as benches
import recordings
import station as stations
import system

OUTAGE = 0.6  # seconds; many times as long as the pause after a failure
PATIENCE = 10  # seconds until the service has gone on
OPTIONS = ["--rescan", "0.05", "--retry-after", "0.05", "--attempts", "3"]


class Away:
    """The directory has another name. One that the program made in its place is moved out of the way: nobody
    searches there, as nobody sees below a file system that is mounted again."""

    def __init__(self, _station, path):
        self.path, self.elsewhere = path, path.with_name(path.name + ".away")
        shutil.rmtree(path.with_name(path.name + ".anew"), ignore_errors=True)

    def begin(self):
        self.path.rename(self.elsewhere)

    def end(self):
        if self.path.exists():
            self.path.rename(self.path.with_name(self.path.name + ".anew"))
        self.elsewhere.rename(self.path)


class ReadOnly:
    """Nothing can be created below the directory."""

    def __init__(self, _station, path):
        self.path = path

    def begin(self):
        system.cover_read_only(self.path)

    def end(self):
        system.unmount(self.path)


class Shut:
    """The program's user has no rights to the directory."""

    def __init__(self, _station, path):
        self.path = path

    def begin(self):
        self.path.chmod(0)

    def end(self):
        self.path.chmod(0o755)


class Full:
    """No room is left on the directory's disk."""

    def __init__(self, station, path):
        self.filler = path.parent / "filler"

    def begin(self):
        with open(self.filler, "wb", buffering=0) as file:
            try:
                while file.write(bytes(4096)) == 4096:
                    pass
            except OSError:
                pass

    def end(self):
        self.filler.unlink()


KINDS = {"Away": Away, "ReadOnly": ReadOnly, "Shut": Shut, "Full": Full}


def outages(bench):
    """Each directory, each kind of outage that this user can bring about."""
    for case in bench.cases(commands=["watch"], all_forms=False):
        points = []
        for what in ["in", "out", "state"] + (["archive"] if case.mode == "archive" else []):
            points += [(what, "Away")]
            if bench.places.mounts and what != "in":
                points += [(what, "ReadOnly"), (what, "Full")]
            if os.geteuid() != 0 or (what == "in" and user_who_may_run(bench.program)):
                points += [(what, "Shut")]
            if what == "archive":
                points = [point for point in points if point[0] == "archive"] + points[:1]
        bench.each("outages", case, bench.draw(points, 4, "outages", case),
                   lambda station, point, case=case: _outage(bench, station, case, point[0], KINDS[point[1]]))


def user_who_may_run(program):
    """An ordinary user, for whom rights count, if it may reach the program; else None."""
    try:
        nobody = pwd.getpwnam("nobody")
    except KeyError:
        return None
    reachable = all(os.stat(path).st_mode & 0o001 for path in [program, *program.parents])
    return nobody.pw_uid if reachable else None


def _outage(bench, station, case, what, kind):
    if kind is Full:  # the directory on a disk of its own
        small = bench.places.small(station.root.name, 256 * 1024) / "there"
        small.mkdir()
        setattr(station, {"out": "out", "state": "state", "archive": "archive_here"}[what], small)
    station.set_up(case, options=OPTIONS)
    user = user_who_may_run(bench.program) if kind is Shut and os.geteuid() == 0 else None
    if user is not None:
        for directory in [station.root, *station.directories()]:
            os.chown(directory, user, -1)
    path = {"in": station.input, "out": station.out, "state": station.state, "archive": station.archive}[what]
    return _watch_through(bench, station, kind(station, path), what, user)


def _watch_through(bench, station, outage, what, user):
    """A recording before the outage, one during it (where it can come), one after it."""
    ledger = benches.fill(station, bench.seed, chains=((1, 2),))
    station.forget_texts()
    child = station.start(once=False, user=user)
    try:
        _wait(station, child, ["rec1.ZU"])
        outage.begin()
        if what != "in":
            benches.put(station, ledger, "rec2.ZU", recordings.chain(bench.seed, 2)[0])
        time.sleep(OUTAGE)
        outage.end()
        benches.put(station, ledger, "rec3.ZU", recordings.chain(bench.seed, 3)[0])
        wanted = [path for path in ledger.current if path.endswith("U")]
        missing = _wait(station, child, wanted)
        ended = child.poll()
    finally:
        if child.poll() is None:
            child.send_signal(signal.SIGTERM)
        run = station.result(child)
    if what == "state" and ended == 1:
        pass  # what cannot be remembered is not started: the service is started again
    elif ended is not None:
        ledger.findings.add("stuck", f"the service ended with {ended}: {ledger.complaint(run)}")
    elif missing:
        ledger.findings.add("stuck", f"the service did not go on with {missing}: {ledger.complaint(run)}")
    ledger.note(run)
    return benches.conclude(station, ledger)


def _wait(station, child, wanted):
    """Waits until the recordings are converted; returns those that are not after a while."""
    end = time.monotonic() + PATIENCE
    missing = list(wanted)
    while missing and time.monotonic() < end and child.poll() is None:
        time.sleep(0.02)
        events = stations.parse_events(station.texts())
        if any(event.get("event") == "failed" and event.get("retrySeconds") is None for event in events):
            end = min(end, time.monotonic() + 1)  # given up: it will not come any more
        done = {str(event["file"]).rpartition("/")[2] for event in events if event.get("event") == "converted"}
        missing = [path for path in wanted if path not in done]
    return missing
