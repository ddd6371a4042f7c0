"""Eight updates at once make the same catalogue as one, in a file and on a server: eightupdates_test.py ZUCMTR SOURCE_DIRECTORY"""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM, SOURCE = pathlib.Path(sys.argv[1]).absolute(), pathlib.Path(sys.argv[2]).absolute()
sys.path += [str(SOURCE / "tests/cli"), str(SOURCE / "tests/torture")]
import catalogues  # pylint: disable=wrong-import-position
from zufiles import recording  # pylint: disable=wrong-import-position

PROCESSES = 8
PATIENCE = 120  # seconds
# All that is in it, without ids and the times of the program.
QUESTIONS = [
    """SELECT path, kind, print, bytes, gone, reason, station, recorder, trigger_time, moment, circuit, cause, setting, duration,
       samples, rates, analog, digital, events, greatest_current, fault_kind, fault_duration, distance_km, trip_after, verified
       FROM entries ORDER BY path""",
    "SELECT e.path, p.name, p.bytes, p.modified, p.sha256 FROM pieces p JOIN entries e ON e.id = p.entry ORDER BY 1, 2",
    "SELECT path, circuit, name, phase, unit, least, greatest FROM named_extremes ORDER BY 1, 2, 3, 4, 5",
    "SELECT path, place, time, circuit, name, kind, state, active FROM named_events ORDER BY 1, 2",
    """SELECT e.path, c.circuit, c.name, h.changes, h.first FROM changes h JOIN entries e ON e.id = h.entry
       JOIN channels c ON c.id = h.channel ORDER BY 1, 2, 3""",
    "SELECT e.path, p.waves FROM pictures p JOIN entries e ON e.id = p.entry ORDER BY 1",
    "SELECT kind, circuit, name, phase, unit FROM channels ORDER BY 1, 2, 3, 4, 5",
]
WORDS = {"file": "SELECT e.path, w.words FROM words w JOIN entries e ON e.id = w.entry ORDER BY 1",
         "server": "SELECT e.path, w.words FROM search w JOIN entries e ON e.id = w.entry ORDER BY 1"}


class EightUpdates(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        self.archive = self.root / "recordings"
        for words in (["--seconds", "0.1"], ["--random-fault", "1-12"]):
            place = self.archive / words[0].strip("-")
            subprocess.run([PROGRAM, "sample", "--out", place, *words], check=True, stdout=subprocess.DEVNULL)
        for number in range(60):
            (self.archive / f"{number}.ZU").write_bytes(recording(minutes=number))
        (self.archive / "junk.ZU").write_bytes(b"junk")
        subprocess.run([PROGRAM, "convert", "--quiet", "--out", self.archive, self.archive / "seconds"], check=True)

    def update(self, catalogue, count):
        """As many at once; each says what is wrong with the junk, unless another one has put it there already."""
        children = [subprocess.Popen([PROGRAM, "archive", "update", "--quiet", "--catalogue", catalogue.address, self.archive],
                                     stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                     env=dict(os.environ, LC_ALL="C.UTF-8")) for _ in range(count)]
        for text, code in [(child.communicate(timeout=PATIENCE)[0], child.returncode) for child in children]:
            self.assertEqual(0, code, text)
            self.assertIn((text.count("\n"), text.count("junk.ZU")), [(0, 0), (1, 1)], text)

    def compare(self, kind, one, eight):
        self.update(one, 1)
        self.update(eight, PROCESSES)
        count = 0
        for question in QUESTIONS + [WORDS[kind]]:
            expected = one.rows(question)
            count += len(expected)
            self.assertEqual(eight.rows(question), expected)
        self.assertEqual(len(one.rows("SELECT id FROM entries")), 2 * 8 + 12 + 60 + 1)
        self.assertGreater(count, 1000)
        done = subprocess.run([PROGRAM, "archive", "check", "--catalogue", eight.address, self.archive], check=False,
                              capture_output=True, text=True, timeout=PATIENCE)
        self.assertEqual((done.returncode, done.stdout), (0, ""), done.stderr)

    def test_make_the_same_file_as_one(self):
        self.compare("file", catalogues.File(self.root / "one.db"), catalogues.File(self.root / "eight.db"))

    def test_make_the_same_on_a_server_as_one(self):
        server = catalogues.postgresserver.PostgresServer()
        self.addCleanup(server.remove)
        self.compare("server", catalogues.Server(server), catalogues.Server(server))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
