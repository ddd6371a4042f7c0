"""An archive under torture: a directory of recordings that changes, its records, its catalogue."""
import json
import pathlib
import subprocess

import catalogues
import recordings
import station as stations

BETWEEN = {"notCatalogued", "notGone", "fileMissing", "fileChanged", "fileAdded"}  # true until the next update
PATIENCE = 60  # seconds
STATES = "SELECT file, fingerprint, state, record, access, unended, failures, kills, noted FROM {} ORDER BY file"


class Archive:
    """A directory of recordings, each with contents of its own, that changes at random."""

    def __init__(self, program, root, rng, catalogue):
        self.program, self.root, self.rng, self.catalogue = program, pathlib.Path(root), rng, catalogue
        self.journal = self.root / "watch.journal"
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
        convert = ["--ini", self.root / "ZuDrv.ini", "--recursive", "--out", self.root / "records", "--catalogue",
                   self.catalogue.address, self.root / "a", self.root / "b"]
        if what == "convert":
            return [self.program, "convert", "--quiet", "--replace", "-j", "2", *convert]
        if what == "watch":
            return [self.program, "watch", "--once", "--state", self.journal, *convert]
        return [self.program, "archive", "update", "--quiet", "-j", "2", "--catalogue", self.catalogue.address, self.root]

    def start(self, what, **options):
        return subprocess.Popen(self.command(what), stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)

    def run(self, what, **options):
        child = self.start(what, **options)
        text, _ = child.communicate(timeout=PATIENCE)
        return child.returncode, text

    def check(self, *words):
        done = subprocess.run([self.program, "archive", "check", "--json", "--catalogue", self.catalogue.address, *words,
                               self.root],
                              capture_output=True, text=True, timeout=PATIENCE, check=False)
        lines = [json.loads(line) for line in done.stdout.splitlines()]
        if not lines or "entries" not in lines[-1]:
            return done.returncode, [{"reason": "none", "file": "", "text": done.stderr}]
        return done.returncode, lines[:-1]

    def rows(self, query):
        return self.catalogue.rows(query)

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
        files = {self.catalogue.stored(first) for first in self.chains()}
        self.expect(there == files, f"{about}: in the catalogue and not there, or the other way round: {there ^ files}")
        twice = self.rows("SELECT min(path), count(*) FROM entries WHERE kind = 'recording' GROUP BY print HAVING count(*) > 1")
        self.expect(not twice, f"{about}: twice: {twice}")
        self.expect(known <= self.ids(), f"{about}: forgotten: {known - self.ids()}")

    def expect_watched(self, about):
        """Every recording is converted according to the journal, whose copy in the catalogue is the same."""
        own = catalogues.File(self.journal).rows(STATES.format("recordings"))
        copy = self.rows(STATES.format("journal_recordings"))
        self.expect(own == copy, f"{about}: the journal has {len(own)}, its copy {len(copy)}: {set(own) ^ set(copy)}")
        self.expect(len(self.rows("SELECT id FROM journals")) == 1, f"{about}: {self.rows('SELECT * FROM journals')}")
        states = {row[0]: row[2] for row in own}
        wrong = {str(first): states.get(str(first)) for first in self.chains() if states.get(str(first)) != "converted"}
        self.expect(not wrong, f"{about}: not converted: {wrong}")
