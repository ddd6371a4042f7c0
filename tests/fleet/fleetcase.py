"""What the tests of the fleet document share: its commands, and an archive of sample recordings to run them on."""
import csv
import io
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

PROGRAM, DOCUMENT = (pathlib.Path(word).absolute() for word in sys.argv[1:3])
PATIENCE = 120  # seconds, of a busy machine
SAMPLES = 8  # recordings of the sample station


def commands():
    """The commands of the document by the names in their comments."""
    text = DOCUMENT.read_text(encoding="utf-8")
    found = re.findall(r"<!-- test: (\w+) -->\n((?:(?:    .*)?\n)+)", text)
    return {name: "\n".join(line[4:] for line in block.rstrip("\n").splitlines()) + "\n" for name, block in found}


class FleetCase(unittest.TestCase):
    """A station, and an archive of `copies` directories with its recordings."""
    copies = 6

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.place = pathlib.Path(temporary.name)
        (self.place / "bin").mkdir()
        (self.place / "tmp").mkdir()  # what is killed leaves temporary files
        (self.place / "bin/zucmtr").symlink_to(PROGRAM)
        self.environment = dict(os.environ, PATH=f"{self.place}/bin:{os.environ['PATH']}", HOME=str(self.place), TMPDIR=str(self.place / "tmp"),
                                ARCHIVE="the archive", RECORDS="записи", INI="station/ZuDrv.ini", JOBS="3",
                                MACHINES="3/:", CATALOGUE=str(self.place / "archive.db"))
        (self.place / ".parallel").mkdir()
        (self.place / ".parallel/will-cite").touch()
        (self.place / "station").mkdir()
        self.run_shell("zucmtr sample --out station --seconds 1")
        for copy in range(self.copies):
            target = self.place / "the archive" / f"20{copy:02}"
            target.mkdir(parents=True)
            for recording in (self.place / "station").glob("*.ZU"):
                shutil.copy(recording, target)
        self.recordings = SAMPLES * self.copies

    def start(self, command):
        """Starts it in a session of its own, which ends with the test at the latest."""
        started = subprocess.Popen(["sh", "-c", command], cwd=self.place, env=self.environment, stdin=subprocess.DEVNULL,
                                   start_new_session=True)
        self.addCleanup(self.end_session, started)
        return started

    def run_shell(self, command, code=0):
        result = subprocess.run(["sh", "-c", command], cwd=self.place, env=self.environment, stdout=subprocess.PIPE,
                                encoding="utf-8", check=False)
        self.assertEqual(code, result.returncode, command)
        return result.stdout

    def end_session(self, leader):
        """Ends all that a started command has started, as a machine that stops: parallel gives its jobs groups of their own."""
        while True:
            found = []
            for entry in pathlib.Path("/proc").iterdir():
                try:
                    words = (entry / "stat").read_text().rpartition(")")[2].split() if entry.name.isdigit() else []
                except OSError:  # ended meanwhile
                    continue
                if len(words) > 3 and int(words[3]) == leader.pid and words[0] not in "ZX":
                    found.append(int(entry.name))
            if not found:
                break
            for process in found:
                try:
                    os.kill(process, signal.SIGKILL)
                except ProcessLookupError:
                    pass
        leader.wait(PATIENCE)

    def logged(self, log="fleet.log"):
        """Sequence number and exit code, or signal, of the jobs in the log."""
        log = self.place / log
        if not log.exists():
            return []
        rows = [line.split("\t") for line in log.read_text().splitlines()[1:]]
        return [(int(row[0]), int(row[6]) or int(row[7])) for row in rows if len(row) > 8]

    def reported(self):
        return [json.loads(line) for line in (self.place / "fleet.json").read_text().splitlines()]

    def records(self, top):
        return {str(path.relative_to(self.place / top)): path.read_bytes()
                for path in (self.place / top).rglob("*") if path.is_file()}

    def convert_plainly(self):
        """One run for each directory; the records are below `plain`."""
        for copy in range(self.copies):
            self.run_shell(f"zucmtr convert -q --ini station/ZuDrv.ini --out plain/20{copy:02} --make-out 'the archive/20{copy:02}'")

    def entries(self, catalogue):
        """What is in a catalogue, without the times of entry and its own numbers."""
        text = self.run_shell(f"zucmtr archive find --csv --sort path --catalogue '{catalogue}'")
        rows = list(csv.DictReader(io.StringIO(text)))
        for row in rows:
            for column in ("id", "noted", "looked", "verified_time", "recording"):
                row.pop(column, None)
        return rows
