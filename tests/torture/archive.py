"""Torture of the archive's catalogue: kills, a full disk, file systems that go away.

    archive.py ZUCMTR [--kills N] [--seed N] [--place DIR]

N updates and conversions with a catalogue are killed (SIGKILL, the program or one of its processes) at random moments
while the archive changes between them. After each kill the catalogue must agree with itself; after one more run that
is not disturbed, with the files: nothing wrong, nothing forgotten, nothing twice. The full disk needs a small file
system, which root alone can make; a limit of the size of a file stands in for it.
"""
import argparse
import json
import os
import pathlib
import random
import resource
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

import recordings
import station as stations
import system

BETWEEN = {"notCatalogued", "notGone", "fileMissing", "fileChanged", "fileAdded"}  # true until the next update
PATIENCE = 60  # seconds


class Archive:
    """A directory of recordings, each with contents of its own, that changes at random."""

    def __init__(self, program, root, rng, catalogue=None):
        self.program, self.root, self.rng = program, pathlib.Path(root), rng
        self.catalogue = catalogue or self.root / "zucmtr-archive.db"
        self.number = 0
        for name in ("a", "b", "records"):
            (self.root / name).mkdir(parents=True)
        (self.root / "ZuDrv.ini").write_text(stations.INI.format(quiet=0, cff=0, binary=1, old=0), encoding="utf-8")
        self.findings = []

    def add(self, count=1):
        for _ in range(count):
            self.number += 1
            name = self.root / self.rng.choice("ab") / f"{self.number:05}.ZU"
            for n, content in enumerate(recordings.chain("archive", self.number, self.rng.choice((1, 1, 2)))):
                name.with_name(recordings.chain_name(name.name, n)).write_bytes(content)

    def chains(self):
        return sorted(self.root.glob("[ab]/*.ZU"))

    @staticmethod
    def files(first):
        return sorted(first.parent.glob(first.stem + ".*"))

    def change(self):
        """New recordings; some that have moved, grown or gone."""
        self.add(self.rng.randint(1, 6))
        for first in self.rng.sample(self.chains(), 3):
            what = self.rng.choice(("move", "grow", "remove"))
            if what == "move":
                to = self.root / self.rng.choice("ab") / f"moved-{self.number}-{first.name}"
                for file in self.files(first):
                    file.rename(to.with_name(to.stem + file.suffix))
            elif what == "remove":
                for file in self.files(first):
                    file.unlink()
            elif len(self.files(first)) == 1:
                number = int(first.stem.rsplit("-", 1)[-1])
                content = recordings.chain("archive", number, 2)[1]
                first.with_name(recordings.chain_name(first.name, 1)).write_bytes(content)

    def command(self, what):
        if what == "convert":
            return [self.program, "convert", "--quiet", "--replace", "-j", "2", "--ini", self.root / "ZuDrv.ini", "--recursive", "--out", self.root / "records",
                    "--catalogue", self.catalogue, self.root / "a", self.root / "b"]
        return [self.program, "archive", "update", "--quiet", "-j", "2", "--catalogue", self.catalogue, self.root]

    def start(self, what, **options):
        return subprocess.Popen(self.command(what), stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)

    def run(self, what, **options):
        child = self.start(what, **options)
        text, _ = child.communicate(timeout=PATIENCE)
        return child.returncode, text

    def check(self, *words):
        done = subprocess.run([self.program, "archive", "check", "--json", "--catalogue", self.catalogue, *words, self.root],
                              capture_output=True, text=True, timeout=PATIENCE, check=False)
        lines = [json.loads(line) for line in done.stdout.splitlines()]
        if not lines or "entries" not in lines[-1]:
            return done.returncode, [{"reason": "none", "file": "", "text": done.stderr}]
        return done.returncode, lines[:-1]

    def rows(self, query):
        with sqlite3.connect(f"file:{self.catalogue}?mode=ro", uri=True) as database:
            return database.execute(query).fetchall()

    def ids(self):
        return {row[0] for row in self.rows("SELECT id FROM entries")} if self.catalogue.exists() else set()

    def expect(self, held, text):
        if not held:
            self.findings.append(text)

    def expect_sound(self, about):
        """The catalogue may lag behind the files, but agrees with itself."""
        _, found = self.check("--fast")
        wrong = [one for one in found if one["reason"] not in BETWEEN and "it is empty" not in one["text"]]
        self.expect(not wrong, f"{about}: {wrong}")

    def expect_right(self, about, known):
        """Everything is in the catalogue, once, and what was known still is."""
        code, found = self.check()
        self.expect((code, found) == (0, []), f"{about}: check says {code} {found[:5]}")
        there = {row[0] for row in self.rows("SELECT path FROM entries WHERE gone IS NULL AND kind = 'recording'")}
        place = self.catalogue.parent
        files = {str(first.relative_to(place) if place in first.parents else first) for first in self.chains()}
        self.expect(there == files, f"{about}: in the catalogue and not there, or the other way round: {there ^ files}")
        twice = self.rows("SELECT group_concat(path) FROM entries WHERE kind = 'recording' GROUP BY print HAVING count(*) > 1")
        self.expect(not twice, f"{about}: twice: {twice}")
        self.expect(known <= self.ids(), f"{about}: forgotten: {known - self.ids()}")


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
    """True if somebody was still there to be killed."""
    child = archive.start(what, start_new_session=True)
    time.sleep(archive.rng.random() * longest)
    victim = archive.rng.choice(processes_of(child.pid))
    try:
        os.kill(victim, signal.SIGKILL)
    except ProcessLookupError:
        victim = None
    child.communicate(timeout=PATIENCE)
    return victim is not None and (victim != child.pid or child.returncode == -signal.SIGKILL)


def kills(program, place, seed, count):
    rng = random.Random(f"{seed}/kills")
    archive = Archive(program, place / "kills", rng)
    archive.add(40)
    longest, met = {}, 0
    for what in ("update", "convert"):
        started = time.monotonic()
        code, text = archive.run(what)
        longest[what] = time.monotonic() - started
        archive.expect(code == 0, f"{what}: {code} {text}")
        archive.add(20)
    for number in range(count):
        what = "convert" if number % 4 == 3 else "update"
        archive.change()
        known = archive.ids()
        met += kill_at_random(archive, what, longest[what])
        about = f"kill {number} of {what}"
        archive.expect_sound(about)
        if what == "convert":
            code, text = archive.run("convert")
            archive.expect(code == 0, f"{about}: convert again: {code} {text}")
            archive.expect_sound(f"{about}, after convert")
        code, text = archive.run("update")
        archive.expect(code == 0, f"{about}: update again: {code} {text}")
        archive.expect_right(about, known)
    archive.expect(met >= count // 3, f"only {met} of {count} kills met anybody")
    links = archive.rows("SELECT count(*) FROM entries WHERE kind = 'record' AND verified = 'right' AND recording IS NOT NULL")
    archive.expect(links[0][0] > 0, "no record is linked to its recording")
    return archive.findings


def new_kills(program, place, seed, count):
    """The catalogue itself is new each time."""
    findings = []
    for number in range(count):
        archive = Archive(program, place / f"new{number}", random.Random(f"{seed}/new/{number}"))
        archive.add(30)
        kill_at_random(archive, "update", 0.4)
        if archive.catalogue.exists() and archive.catalogue.stat().st_size > 0:
            archive.expect_sound(f"kill {number} of the first update")
        code, text = archive.run("update")
        archive.expect(code == 0, f"kill {number} of the first update: again: {code} {text}")
        archive.expect_right(f"kill {number} of the first update", set())
        findings += archive.findings
        shutil.rmtree(archive.root)
    return findings


def full_disk(program, place, seed, mounts):
    """Room for more and more of the catalogue, until it is enough."""
    findings = []
    small = place / "small"
    small.mkdir()
    failed = 0
    for kilobytes in (0, 8, 64, 128, 256, 512, 8192):
        archive = Archive(program, place / f"full{kilobytes}", random.Random(f"{seed}/full"), small / "archive.db")
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
                archive.expect(str(archive.catalogue) in text, f"{about}: the catalogue is not named: {text}")
                archive.expect("unexpected" not in text, f"{about}: {text}")
            # What was written stays usable, as soon as there is room.
            if mounts:
                system.resize_memory(small, 1 << 26)
            if archive.catalogue.exists() and archive.catalogue.stat().st_size > 0:
                archive.expect_sound(about)
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


def goes_away(program, place, seed, mounts):
    """The recordings' file system is not there for a while, and another directory or none is in its place."""
    archive = Archive(program, place / "away", random.Random(f"{seed}/away"), place / "away.db")
    archive.add(60)
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
    # During it.
    for number in range(4):
        archive.add(60)
        child = archive.start("update")
        time.sleep(archive.rng.random() * 0.3)
        archive.root.rename(hidden)
        text, _ = child.communicate(timeout=PATIENCE)
        hidden.rename(archive.root)
        archive.expect("unexpected" not in text and (child.returncode in (0, 1) or "is no directory" in text),
                       f"away meanwhile: {child.returncode} {text}")
        archive.expect_sound("away meanwhile")
        archive.run("update")
        archive.expect_right("away meanwhile, and back", known)
    return archive.findings


def catalogue_goes_away(program, place, seed, mounts):
    """The directory of the catalogue and the recordings is moved while an update runs."""
    archive = Archive(program, place / "moved", random.Random(f"{seed}/moved"))
    archive.add(30)
    archive.run("update")
    hidden = place / "elsewhere"
    for number in range(4):
        archive.add(60)
        child = archive.start("update")
        time.sleep(archive.rng.random() * 0.3)
        archive.root.rename(hidden)
        text, _ = child.communicate(timeout=PATIENCE)
        archive.expect("unexpected" not in text and (child.returncode in (0, 1) or "is no directory" in text),
                       f"catalogue away: {child.returncode} {text}")
        archive.expect(not archive.root.exists(), "a catalogue was made in a directory that is gone")
        hidden.rename(archive.root)
        archive.expect_sound("catalogue away meanwhile")
        code, text = archive.run("update")
        archive.expect(code == 0, f"catalogue back: {code} {text}")
        archive.expect_right("catalogue back", set())
    return archive.findings


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--kills", type=int, default=20)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--place", default=None)
    options = parser.parse_args()
    program = options.program.absolute()
    mounts = system.own_mounts() if os.geteuid() == 0 else False
    wrong = 0
    with tempfile.TemporaryDirectory(prefix="zucmtr-archive-", dir=options.place) as directory:
        place = pathlib.Path(directory)
        scenarios = [("kills", lambda: kills(program, place, options.seed, options.kills)),
                     ("first kills", lambda: new_kills(program, place, options.seed, max(options.kills // 5, 1))),
                     ("full disk", lambda: full_disk(program, place, options.seed, mounts)),
                     ("recordings away", lambda: goes_away(program, place, options.seed, mounts)),
                     ("catalogue away", lambda: catalogue_goes_away(program, place, options.seed, mounts))]
        for name, scenario in scenarios:
            started = time.monotonic()
            findings = scenario()
            wrong += len(findings)
            print(f"{name:<16} {len(findings):>4} findings {time.monotonic() - started:>7.1f} s", flush=True)
            for finding in findings[:10]:
                print("    " + finding)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
