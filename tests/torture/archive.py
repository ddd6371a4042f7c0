"""Torture of the archive's catalogue: kills, full disks, file systems and servers that go away.

    archive.py ZUCMTR [--kills N] [--seed N] [--place DIR] [--only WORD]

N updates, conversions and watches with a catalogue, one half in a file and one on a PostgreSQL server, are killed (SIGKILL,
the program or one of its processes) at random moments while the archive changes between them. After each kill the
catalogue must agree with itself; after one more run that is not disturbed, with the files: nothing wrong, nothing forgotten,
nothing twice. After a watch, the copy of its journal must be the same as the journal, and nothing that it had converted may be
converted again. The full disks need small file systems, which root alone can make; for a file, a limit of its size stands
in for one.
"""
import argparse
import os
import pathlib
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import catalogues
import station as stations
import system
from archiveplace import PATIENCE, Archive

UNEXPECTED = "unexpected error"
KINDS = ("update", "watch", "convert")


class Databases:
    """Makes a catalogue of a kind for a place; the server starts when the first one is on it."""

    def __init__(self):
        self.server = None

    def server_here(self):
        if self.server is None:
            self.server = catalogues.postgresserver.PostgresServer()
        return self.server

    def new(self, kind, path):
        return catalogues.File(path) if kind == "file" else catalogues.Server(self.server_here())

    def remove(self):
        if self.server is not None:
            self.server.remove()


def processes_of(pid):
    """The process and all below it."""
    found = [pid]
    for one in found:
        try:
            for task in pathlib.Path(f"/proc/{one}/task").iterdir():
                found += [int(child) for child in (task / "children").read_text().split()]
        except OSError:  # it has ended
            pass
    return found


def kill_at_random(archive, what, longest):
    """Whether somebody was still there to be killed, and what the program has said."""
    child = archive.start(what, start_new_session=True)
    time.sleep(archive.rng.random() * longest)
    victim = archive.rng.choice(processes_of(child.pid))
    try:
        os.kill(victim, signal.SIGKILL)
    except ProcessLookupError:
        victim = None
    text, _ = child.communicate(timeout=PATIENCE)
    return victim is not None and (victim != child.pid or child.returncode == -signal.SIGKILL), text


def files_of(text, event, status=None):
    """Of the recordings in the events of a watch."""
    return {one["file"] for one in stations.parse_events(text) if one["event"] == event and status in (None, one.get("status"))}


def run_again(archive, what, about, before, has_journal=True):
    """One more run of the same, which is not disturbed; `before`: what the first one has said. What that could not note in
    its journal, the next one looks at again; it makes no record again."""
    code, text = archive.run(what)
    archive.expect(code == 0, f"{about}: again: {code} {text}")
    if what == "update":
        return
    archive.expect_sound(f"{about}, after one more")
    if what == "watch":
        archive.expect_watched(about)
        again = files_of(text, "converting") if has_journal else files_of(text, "converted", "converted")
        again &= files_of(before, "converted")
        archive.expect(not again, f"{about}: converted again: {again}")


def kills(databases, program, place, seed, count, kind):
    rng = random.Random(f"{seed}/kills/{kind}")
    archive = Archive(program, place / f"kills-{kind}", rng, databases.new(kind, place / f"kills-{kind}/zucmtr-archive.db"))
    archive.add(20)
    longest, met = {}, 0
    for what in KINDS:
        started = time.monotonic()
        code, text = archive.run(what)
        longest[what] = time.monotonic() - started
        archive.expect(code == 0, f"{what}: {code} {text}")
        archive.add(10)
    for number in range(count):
        what = KINDS[number % 3]
        archive.change()
        known = archive.ids()
        is_met, text = kill_at_random(archive, what, longest[what])
        met += is_met
        about = f"kill {number} of {what} ({kind})"
        archive.expect_sound(about)
        run_again(archive, what, about, text)
        if what != "update":
            code, text = archive.run("update")
            archive.expect(code == 0, f"{about}: update: {code} {text}")
        archive.expect_right(about, known)
    archive.expect(met >= count // 3, f"only {met} of {count} kills met anybody")
    links = archive.rows("SELECT count(*) FROM entries WHERE kind = 'record' AND verified = 'right' AND recording IS NOT NULL")
    archive.expect(int(links[0][0]) > 0, "no record is linked to its recording")
    return archive.findings


def new_kills(databases, program, place, seed, count):
    """The catalogue itself is new each time."""
    findings = []
    for number in range(count):
        kind = ("file", "server")[number % 2]
        what = ("update", "watch")[number // 2 % 2]
        root = place / f"new{number}"
        archive = Archive(program, root, random.Random(f"{seed}/new/{number}"), databases.new(kind, root / "zucmtr-archive.db"))
        archive.add(30)
        _, text = kill_at_random(archive, what, 0.4)
        about = f"kill {number} of the first {what} ({kind})"
        if archive.catalogue.exists():
            archive.expect_sound(about)
        run_again(archive, what, about, text)
        archive.run("update")
        archive.expect_right(about, set())
        findings += archive.findings
        shutil.rmtree(archive.root)
    return findings


def full_disk(databases, program, place, seed, mounts):
    """Room for more and more of the catalogue, until it is enough."""
    findings = []
    small = place / "small"
    small.mkdir()
    failed = 0
    for kilobytes in (0, 8, 64, 128, 256, 512, 8192):
        archive = Archive(program, place / f"full{kilobytes}", random.Random(f"{seed}/full"),
                          catalogues.File(small / "archive.db"))
        archive.add(60)
        about = f"disk of {kilobytes} KB"
        options = {}
        if mounts:
            system.mount_memory(small, max(kilobytes, 4) * 1024)
        else:
            options["preexec_fn"] = lambda size=kilobytes * 1024: resource.setrlimit(
                resource.RLIMIT_FSIZE, (size, resource.RLIM_INFINITY))
        try:
            code, text = archive.run("update", **options)
            if code != 0:
                failed += 1
                wanted = "No space left on device" if mounts else "File too large"
                archive.expect(code == 1 and wanted in text, f"{about}: {code} {text}")
                archive.expect(archive.catalogue.address in text, f"{about}: the catalogue is not named: {text}")
                archive.expect(UNEXPECTED not in text, f"{about}: {text}")
            # What was written stays usable, as soon as there is room.
            is_watched = mounts and kilobytes in (0, 256)  # a limit would be one of the records too
            if is_watched:
                expect_watch_goes_on(archive, about)
            if mounts:
                system.resize_memory(small, 1 << 26)
            if archive.catalogue.exists():
                archive.expect_sound(about)
            if is_watched:
                expect_all_written(archive, f"{about}, then room")
            code, text = archive.run("update")
            archive.expect(code == 0, f"{about}, then room: {code} {text}")
            archive.expect_right(f"{about}, then room", set())
        finally:
            if mounts:
                system.unmount(small)
            else:
                shutil.rmtree(small)
                small.mkdir()
        findings += archive.findings
    return findings + ([] if failed >= 3 else [f"only {failed} disks were full"])


def expect_watch_goes_on(archive, about):
    """A watch without its catalogue makes every record all the same. Whether it missed the catalogue."""
    code, text = archive.run("watch")
    events = stations.parse_events(text)
    reasons = {one["reason"] for one in events if one["event"] == "failed"}
    archive.expect(reasons <= {"notCatalogued"} and code == len(reasons), f"{about}: watch: {code} {reasons}")
    archive.expect(UNEXPECTED not in text, f"{about}: watch: {text}")
    records = len(list((archive.root / "records").glob("*.cfg")))
    archive.expect(records == len(archive.chains()), f"{about}: {records} records of {len(archive.chains())} recordings")
    behind = [one for one in events if one["event"] == "copyBehind"]
    archive.expect(len(behind) <= 1, f"{about}: watch: {behind}")
    return bool(reasons)


def expect_all_written(archive, about):
    """With the catalogue back, a watch and an update write what is missing, and no record is made again."""
    code, text = archive.run("watch")
    made = [one["file"] for one in stations.parse_events(text) if one["event"] == "converted" and one["status"] != "present"]
    archive.expect(code == 0, f"{about}: watch: {code} {text}")
    archive.expect(not made, f"{about}: converted again: {made}")
    archive.expect_watched(about)
    code, text = archive.run("update")
    archive.expect(code == 0, f"{about}: {code} {text}")
    archive.expect_right(about, set())


def full_server(databases, program, place, seed, mounts):
    """The same on a server, whose tables are on a small disk."""
    if not mounts:
        return []
    server, findings, failed = databases.server_here(), [], 0
    small = server.directory / "small"
    for kilobytes in (64, 512, 1024):
        small.mkdir()
        system.mount_memory(small, 1 << 27)
        shutil.chown(small, "postgres", "postgres")
        try:
            server.psql(f"CREATE TABLESPACE small LOCATION '{small}'")
            server.psql("CREATE DATABASE small TABLESPACE small TEMPLATE template0")
            server.psql("CHECKPOINT")  # all of it is on that disk
            archive = Archive(program, place / f"server{kilobytes}", random.Random(f"{seed}/fullserver"),
                              catalogues.Server(server, "small"))
            archive.add(20)
            system.resize_memory(small, used_below(small) + kilobytes * 1024)
            about = f"server's disk with {kilobytes} KB"
            failed += expect_watch_goes_on(archive, about)
            code, text = archive.run("update")
            archive.expect(code == 0 or (code == 1 and "the server's disk is full" in text), f"{about}: {code} {text}")
            system.resize_memory(small, 1 << 28)
            if archive.catalogue.exists():
                archive.expect_sound(about)
            expect_all_written(archive, f"{about}, then room")
            findings += archive.findings
        finally:
            server.psql("DROP DATABASE IF EXISTS small WITH (FORCE)")
            server.psql("DROP TABLESPACE IF EXISTS small")
            system.unmount(small)
            small.rmdir()
    return findings + ([] if failed >= 2 else [f"only {failed} of the server's disks were full"])


def used_below(directory):
    return sum(file.stat().st_blocks * 512 for file in directory.rglob("*"))


def goes_away(databases, program, place, seed, kind, times):
    """The recordings' file system is not there for a while, and another directory or none is in its place."""
    archive = Archive(program, place / "away", random.Random(f"{seed}/away"), databases.new(kind, place / "away.db"))
    archive.add(30)
    archive.run("update")
    known = archive.ids()
    paths = dict(archive.rows("SELECT id, path FROM entries WHERE gone IS NULL"))
    # Before the update: a whole directory is away, then it comes back.
    hidden = place / "hidden"
    archive.root.rename(hidden)
    code, text = archive.run("update")
    archive.expect(code == 2 and f"'{archive.root}' is no directory" in text, f"no directory: {code} {text}")
    archive.expect(dict(archive.rows("SELECT id, path FROM entries WHERE gone IS NULL")) == paths, "gone though nobody could look")
    archive.root.mkdir()  # an empty mount point
    code, text = archive.run("update")
    archive.expect(code == 0, f"empty mount point: {code} {text}")
    archive.root.rmdir()
    hidden.rename(archive.root)
    code, text = archive.run("update")
    archive.expect(code == 0, f"mounted again: {code} {text}")
    archive.expect_right("mounted again", known)
    archive.expect(dict(archive.rows("SELECT id, path FROM entries WHERE gone IS NULL")) == paths, "other entries after it came back")
    for number in range(times):
        archive.add(30)
        meanwhile(archive, ("update", "watch")[number % 2], hidden, f"away meanwhile ({kind})")
        archive.run("update")
        archive.expect_right("away meanwhile, and back", known)
    shutil.rmtree(archive.root)
    return archive.findings


def meanwhile(archive, what, hidden, about):
    """The archive's directory is away from a random moment of a run to its end."""
    child = archive.start(what)
    time.sleep(archive.rng.random() * 0.3)
    archive.root.rename(hidden)
    text, _ = child.communicate(timeout=PATIENCE)
    is_early = any(words in text for words in ("is no directory", "no file", "ZuDrv.ini"))  # it could not even start
    archive.expect(UNEXPECTED not in text and (child.returncode in (0, 1) or is_early), f"{about}: {child.returncode} {text}")
    archive.expect(not archive.root.exists(), f"{about}: something was made in a directory that is gone")
    hidden.rename(archive.root)
    archive.expect_sound(about)
    if what == "watch":
        run_again(archive, what, f"{about}, and back", text, has_journal=False)


def catalogue_goes_away(program, place, seed, times):
    """The directory of the catalogue and the recordings is moved while a run goes on."""
    root = place / "moved"
    archive = Archive(program, root, random.Random(f"{seed}/moved"), catalogues.File(root / "zucmtr-archive.db"))
    archive.add(30)
    archive.run("update")
    for number in range(times):
        archive.add(30)
        meanwhile(archive, ("update", "watch")[number % 2], place / "elsewhere", "catalogue away")
        code, text = archive.run("update")
        archive.expect(code == 0, f"catalogue back: {code} {text}")
        archive.expect_right("catalogue back", set())
    return archive.findings


def server_goes_away(databases, program, place, seed):
    """The server is stopped before a watch, and during runs of all kinds."""
    server = databases.server_here()
    archive = Archive(program, place / "stopped", random.Random(f"{seed}/stopped"), catalogues.Server(server))
    archive.add(30)
    server.stop()
    archive.expect(expect_watch_goes_on(archive, "no server"), "the watch did not miss the server")
    server.start()
    expect_all_written(archive, "the server is back")
    for what in KINDS:
        archive.add(20)
        child = archive.start(what)
        time.sleep(archive.rng.random() * 0.3)
        server.stop()
        server.start()
        text, _ = child.communicate(timeout=PATIENCE)
        about = f"the server restarted during {what}"
        archive.expect(UNEXPECTED not in text and (child.returncode in (0, 1) or "nothing is converted" in text),
                       f"{about}: {child.returncode} {text}")
        archive.expect_sound(about)
        run_again(archive, what, about, text)
        archive.run("update")
        archive.expect_right(about, set())
    return archive.findings


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--kills", type=int, default=20)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--place", default=None)
    parser.add_argument("--only", default="", help="scenarios whose names have this word")
    options = parser.parse_args()
    program, seed = options.program.absolute(), options.seed
    mounts = system.own_mounts() if os.geteuid() == 0 else False
    databases = Databases()
    wrong, times = 0, 4 if options.kills >= 100 else 2
    with tempfile.TemporaryDirectory(prefix="zucmtr-archive-", dir=options.place) as directory:
        place = pathlib.Path(directory)
        (place / "tmp").mkdir()
        os.environ["TMPDIR"] = str(place / "tmp")  # for what killed programs leave there
        scenarios = [
            ("kills, file", lambda: kills(databases, program, place, seed, (options.kills + 1) // 2, "file")),
            ("kills, server", lambda: kills(databases, program, place, seed, options.kills // 2, "server")),
            ("first kills", lambda: new_kills(databases, program, place, seed, max(options.kills // 5, 1))),
            ("full disk", lambda: full_disk(databases, program, place, seed, mounts)),
            ("full disk, server", lambda: full_server(databases, program, place, seed, mounts)),
            ("recordings away", lambda: goes_away(databases, program, place, seed, "file", times)),
            ("recordings away, server", lambda: goes_away(databases, program, place, seed, "server", times)),
            ("catalogue away", lambda: catalogue_goes_away(program, place, seed, times)),
            ("server away", lambda: server_goes_away(databases, program, place, seed))]
        try:
            for name, scenario in scenarios:
                if options.only not in name:
                    continue
                started = time.monotonic()
                findings = scenario()
                wrong += len(findings)
                print(f"{name:<24} {len(findings):>4} findings {time.monotonic() - started:>7.1f} s", flush=True)
                for finding in findings[:10]:
                    print("    " + finding[:2000])
        finally:
            databases.remove()
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
