"""Scenarios in which the machine fails at one point: the process is killed, a call fails, the disk is full."""
import bench as benches
import recordings
import station as stations

OLDER_FORMS = {"cfg": (0, 1, 1), "1999": (0, 0, 0), "cff": (1, 0, 0)}  # of a record that is there already

# Kinds of calls at which an error happens.
ERRORS = {
    "EIO": (5, None),
    "ENOSPC": (28, ["create", "write", "rename", "link", "mkdir", "truncate", "copy", "sync"]),
    "EACCES": (13, ["open", "create", "list", "stat", "rename", "link", "unlink", "mkdir", "rmdir"]),
    "ENFILE": (23, ["open", "create", "list"]),
    "EINTR": (4, ["read", "write", "sync"]),
    "short": (0, ["read", "write"]),
}


def words(error):
    """How an error happens: once, or from some call on. One that says "again" for ever would be no machine's."""
    return {"short": ["short"], "EINTR": ["fail"]}.get(error, ["fail", "from"])


def _calls(bench, case, older=False):
    """The kinds of the calls of an undisturbed run."""
    with bench.station() as station:
        _prepare(bench, station, case, older)
        station.run("kill 1000000")
        return [fields[0] for fields in station.calls() if fields[0] != "print"]


def _prepare(bench, station, case, older):
    station.set_up(case)
    ledger = benches.fill(station, bench.seed)
    if older:
        _convert_in_older_form(station, case)
    return ledger


def _convert_in_older_form(station, case):
    """Records of the same recordings that were made with other settings."""
    text = station.ini.read_text(encoding="utf-8")
    cff, binary, old = OLDER_FORMS[case.form]
    station.ini.write_text(stations.INI.format(quiet=station.quiet, cff=cff, binary=binary, old=old),
                           encoding="utf-8")
    station.case = stations.Case("convert", "plain", case.form)
    station.run()
    station.case = case
    station.ini.write_text(text, encoding="utf-8")


def kill(bench):
    """A kill before every call that changes something; the normal run after it."""
    for older in (False, True):
        for case in bench.cases(modes=stations.MODES if not older else ["plain", "remove"]):
            count = sum(kind in benches.CHANGING for kind in _calls(bench, case, older))
            points = bench.draw(range(1, count + 2), 6 if not older else 3, "kill", case, older)

            def work(station, point, case=case, older=older):
                ledger = _prepare(bench, station, case, older)
                run = station.run(f"kill {point}", benches.CHANGING)
                ledger.note(run)
                ledger.check_claims(run)
                ledger.check_halves()
                return benches.conclude(station, ledger)

            bench.each("kill-older" if older else "kill", case, points, work)


def twice_killed(bench):
    """A kill, and another one in the run that repairs what the first one left."""
    for case in bench.cases():
        count = sum(kind in benches.CHANGING for kind in _calls(bench, case))
        rng = bench.rng("twice", case)
        points = [(rng.randint(1, count), rng.randint(1, count)) for _ in range(3 * bench.times if bench.short else 100)]

        def work(station, point, case=case):
            ledger = _prepare(bench, station, case, False)
            for nth in point:
                run = station.run(f"kill {nth}", benches.CHANGING)
                ledger.note(run)
                ledger.check_claims(run)
                ledger.check_halves()
            return benches.conclude(station, ledger)

        bench.each("kill-twice", case, points, work)


def faults(bench):
    """Each error, once at every call and at every call from that one on; the normal run after it."""
    for case in bench.cases(all_forms=False):
        calls = _calls(bench, case)
        points = []
        for error, (number, kinds) in ERRORS.items():
            count = sum(kinds is None or kind in kinds for kind in calls)
            points += [(error, word, nth) for word in words(error) for nth in range(1, count + 1)]

        def work(station, point, case=case):
            error, word, nth = point
            number, kinds = ERRORS[error]
            ledger = _prepare(bench, station, case, False)
            run = station.run(f"{word} {nth} {number}", kinds)
            ledger.note(run)
            ledger.check_claims(run)
            return benches.conclude(station, ledger)

        bench.each("faults", case, bench.draw(points, 10, "faults", case), work)


UNREADABLE = [("EIO", 5, "open"), ("EIO", 5, "read"), ("EIO", 5, "stat"), ("EACCES", 13, "open"), ("ENFILE", 23, "open"),
              ("ENOMEM", 12, "open"), ("ENOMEM", 12, "read"), ("ESTALE", 116, "read")]


def unreadable(bench):
    """One file of a recording cannot be read: never, or not at its n-th call, or from that one on."""
    for case in bench.cases(all_forms=False):
        points = [(n, error, kind, word, nth) for n in range(3) for error, _number, kind in UNREADABLE
                  for word in ("fail", "from") for nth in range(1, 7)]

        def work(station, point, case=case):
            n, error, kind, word, nth = point
            number = next(number for name, number, its in UNREADABLE if (name, its) == (error, kind))
            ledger = _prepare(bench, station, case, False)
            only = [station.input / recordings.chain_name("rec1.ZU", n)]
            run = station.run(f"{word} {nth} {number}", [kind], only=only)
            ledger.note(run)
            ledger.check_claims(run)
            return benches.conclude(station, ledger)

        bench.each("unreadable", case, bench.draw(points, 6, "unreadable", case), work)


PAGE = 4096
DISK = 512 * 1024  # of which all but the level is filled


DIRECTORIES = {"out": "out", "archive": "archive_there", "state": "state", "tmp": "tmp"}  # members of a station


def full_disk(bench):
    """The disk of one directory with room for so many pages; then room is made."""
    for case in bench.cases(all_forms=False):
        used = {"archive": case.mode == "elsewhere", "state": case.command == "watch"}
        for what in [name for name in DIRECTORIES if used.get(name, True)]:
            levels = _pages_needed(bench, case, what) + 3

            def work(station, level, case=case, what=what):
                return _full_disk_point(bench, station, case, what, level)

            bench.each(f"full-{what}", case, bench.draw(range(levels), 4, "full", case), work)


def _pages_needed(bench, case, what):
    with bench.station() as station:
        station.set_up(case)
        benches.fill(station, bench.seed, points=400)
        station.run()
        files = [path for path in getattr(station, DIRECTORIES[what]).rglob("*") if path.is_file()]
        return sum(-(-path.stat().st_size // PAGE) for path in files) + 4


def _full_disk_point(bench, station, case, what, level):
    filler = None
    prefix = []
    if bench.places.mounts:
        disk = bench.places.small(station.root.name, DISK)
        target = disk / "there"
        target.mkdir()
        setattr(station, DIRECTORIES[what], target)
    else:
        prefix = ["sh", "-c", f'trap "" XFSZ; ulimit -f {level * PAGE // 512}; exec "$@"', "sh"]
    station.set_up(case)
    ledger = benches.fill(station, bench.seed, points=400)
    if bench.places.mounts:
        filler = disk / "filler"
        with open(filler, "wb") as file:
            file.write(bytes(DISK - level * PAGE))
    run = station.run(prefix=prefix)
    ledger.note(run)
    ledger.check_claims(run)
    ledger.check_debris()
    ledger.check_halves()
    if filler:
        filler.unlink()
    return benches.conclude(station, ledger)
