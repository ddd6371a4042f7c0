"""The commands of the fleet document: a run that is killed in the middle, resumed, and compared with a plain one.

    fleet_test.py ZUCMTR DOCUMENT
"""
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, DOCUMENT = (pathlib.Path(word).absolute() for word in sys.argv[1:3])
COPIES = 6  # of the sample's eight recordings
PATIENCE = 60  # seconds


def commands():
    """The commands of the document by the names in their comments."""
    text = DOCUMENT.read_text(encoding="utf-8")
    found = re.findall(r"<!-- test: (\w+) -->\n((?:    .*\n)+)", text)
    return {name: "\n".join(line[4:] for line in block.splitlines()) for name, block in found}


class Fleet(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.place = pathlib.Path(temporary.name)
        (self.place / "bin").mkdir()
        (self.place / "bin/zucmtr").symlink_to(PROGRAM)
        self.environment = dict(os.environ, PATH=f"{self.place}/bin:{os.environ['PATH']}", HOME=str(self.place),
                                ARCHIVE="the archive", RECORDS="записи", INI="station/ZuDrv.ini", JOBS="3",
                                MACHINES="3/:")
        (self.place / ".parallel").mkdir()
        (self.place / ".parallel/will-cite").touch()
        (self.place / "station").mkdir()
        self.run_shell("zucmtr sample --out station --seconds 1")
        for copy in range(COPIES):
            target = self.place / "the archive" / f"20{copy:02}"
            target.mkdir(parents=True)
            self.run_shell(f"cp station/*.ZU '{target}'")

    def start(self, command):
        return subprocess.Popen(["sh", "-c", command], cwd=self.place, env=self.environment, stdin=subprocess.DEVNULL,
                                start_new_session=True)

    def run_shell(self, command, code=0):
        result = subprocess.run(["sh", "-c", command], cwd=self.place, env=self.environment, stdout=subprocess.PIPE,
                                encoding="utf-8", check=False)
        self.assertEqual(code, result.returncode, command)
        return result.stdout

    def logged(self):
        """Sequence number and exit code of the jobs in the log."""
        log = self.place / "fleet.log"
        if not log.exists():
            return []
        rows = [line.split("\t") for line in log.read_text().splitlines()[1:]]
        return [(int(row[0]), int(row[6])) for row in rows if len(row) > 8]

    def reported(self):
        return [json.loads(line) for line in (self.place / "fleet.json").read_text().splitlines()]

    def records(self, top):
        return {str(path.relative_to(self.place / top)): path.read_bytes()
                for path in (self.place / top).rglob("*") if path.is_file()}

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
        leader.wait()

    def convert_with_a_kill(self, command):
        steps = commands()
        self.run_shell(steps["list"])
        names = (self.place / "recordings.txt").read_text().splitlines()
        self.assertEqual(8 * COPIES, len(names))

        running = self.start(command)
        end = time.monotonic() + PATIENCE
        while len(self.logged()) < 8:
            self.assertLess(time.monotonic(), end)
            self.assertIsNone(running.poll(), "the run ended before it could be killed")
        self.end_session(running)
        before = {number for number, code in self.logged() if code == 0}
        self.assertLess(len(before), len(names))

        self.run_shell(command)
        after = [number for number, code in self.logged() if code == 0]
        self.assertEqual(sorted(after), sorted(set(after)), "a recording in the log was converted again")
        self.assertEqual(set(range(1, len(names) + 1)), set(after))
        # A run that is killed may have put its last record in place before it could say so.
        self.assertLessEqual({item["status"] for item in self.reported()}, {"converted", "present"})
        files = [item["file"] for item in self.reported()]
        for number in before:
            self.assertLessEqual(files.count(f"the archive/{names[number - 1]}"), 1)

        reported = (self.place / "fleet.json").read_bytes()
        self.run_shell(command)
        self.assertEqual(reported, (self.place / "fleet.json").read_bytes(), "a run over a finished archive converted")

        for copy in range(COPIES):
            self.run_shell(f"zucmtr convert -q --ini station/ZuDrv.ini --out plain/20{copy:02} --make-out 'the archive/20{copy:02}'")
        self.assertEqual(self.records("plain"), self.records("записи"))
        self.assertEqual("", self.run_shell(steps["report"] + " || true"))

    def test_document_has_the_commands(self):
        self.assertEqual({"list", "run", "failed", "report", "machines"}, set(commands()))

    def test_killed_and_resumed_run_converts_all(self):
        self.convert_with_a_kill(commands()["run"])

    def test_killed_and_resumed_run_on_machines_converts_all(self):
        self.convert_with_a_kill(commands()["machines"])

    def test_failed_recordings_are_tried_again_and_told(self):
        steps = commands()
        broken = self.place / "the archive/2003/Vostochnaya_000125.ZU"
        good = broken.read_bytes()
        broken.write_bytes(good[:100])
        self.run_shell(steps["list"])
        self.run_shell(steps["run"], code=1)
        self.assertEqual(1, sum(code != 0 for _, code in self.logged()))
        self.assertIn("2003/Vostochnaya_000125.ZU", self.run_shell(steps["report"]))
        broken.write_bytes(good)
        self.run_shell(steps["failed"])
        last = dict(self.logged())
        self.assertEqual(set(range(1, 8 * COPIES + 1)), set(last))
        self.assertEqual({0}, set(last.values()))
        self.assertEqual(4 * 8 * COPIES, len(self.records("записи")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
