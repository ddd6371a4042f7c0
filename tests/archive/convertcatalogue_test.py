"""What is converted goes into a catalogue: convertcatalogue_test.py ZUCMTR SOURCE_DIRECTORY"""
import json
import os
import pathlib
import re
import signal
import sqlite3
import subprocess
import sys
import tempfile
import unittest

PROGRAM, SOURCE = pathlib.Path(sys.argv[1]).absolute(), pathlib.Path(sys.argv[2]).absolute()
sys.path.append(str(SOURCE / "tests/cli"))
from zufiles import recording  # pylint: disable=wrong-import-position

ROWS = """SELECT r.path, r.verified, coalesce(z.path, '-'), z.gone IS NOT NULL FROM entries r
LEFT JOIN entries z ON z.id = r.recording WHERE r.kind = 'record' AND r.gone IS NULL ORDER BY r.path"""


class Place:
    def __init__(self, root, count):
        self.root = pathlib.Path(root)
        subprocess.run([PROGRAM, "sample", "--out", self.root, "--seconds", "0.1"], check=True, stdout=subprocess.DEVNULL)
        for file in self.root.glob("*.Z*"):
            file.unlink()
        for number in range(count):
            (self.root / f"{number}.ZU").write_bytes(recording(minutes=number))
        (self.root / "out").mkdir()
        (self.root / "put").mkdir()

    def run(self, *words):
        return subprocess.run([PROGRAM, *words], cwd=self.root, capture_output=True, text=True, check=False, timeout=60,
                              env=dict(os.environ, LC_ALL="C.UTF-8"))

    def convert(self, *words):
        return self.run("convert", "--out", "out", "--catalogue", "archive.db", *words, ".")

    def check(self):
        done = self.run("archive", "check", "--catalogue", "archive.db", ".")
        return done.returncode, done.stdout

    def rows(self, query=ROWS):
        database = sqlite3.connect(self.root / "archive.db")
        try:
            with database:
                return database.execute(query).fetchall()
        finally:
            database.close()

    def records(self):
        return sorted(f"out/{file.name}" for file in (self.root / "out").glob("*.cfg"))


class Catalogue(unittest.TestCase):
    def place(self, count=1):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        return Place(directory.name, count)

    def test_has_each_record_with_its_recording_and_that_it_is_right(self):
        place = self.place(12)
        done = place.convert("-j3")
        self.assertEqual(done.returncode, 0, done.stderr)
        rows = place.rows()
        self.assertEqual([row[0] for row in rows], place.records())
        self.assertEqual({row[1] for row in rows}, {"right"})
        self.assertEqual({row[2] for row in rows}, {f"{number}.ZU" for number in range(12)})
        self.assertEqual(place.check(), (0, ""))

    def test_is_the_one_that_an_update_makes(self):
        place, other = self.place(3), self.place(3)
        place.convert()
        other.run("convert", "--out", "out", ".")
        other.run("archive", "update", "--catalogue", "archive.db", ".")
        facts = """SELECT e.kind, e.path, e.print, e.moment, e.station, e.samples, e.analog, e.digital, e.events, c.name, x.least,
            x.greatest FROM entries e JOIN extremes x ON x.entry = e.id JOIN channels c ON c.id = x.channel
            WHERE e.kind = 'recording' ORDER BY e.path, c.name"""
        self.assertEqual(place.rows(facts), other.rows(facts))
        self.assertEqual(len(place.rows(facts)), 3)
        done = place.run("archive", "update", "--json", "--catalogue", "archive.db", ".")
        self.assertEqual(json.loads(done.stdout), {"unchanged": 6, "read": 0, "moved": 0, "gone": 0, "unread": 0})

    def test_a_second_run_reads_nothing_again_and_adds_what_is_missing(self):
        place = self.place(2)
        place.run("convert", "--out", "out", ".")
        place.convert()
        looked = place.rows("SELECT id, looked FROM entries ORDER BY id")
        self.assertEqual(len(looked), 4)
        place.convert()
        self.assertEqual(place.rows("SELECT id, looked FROM entries ORDER BY id"), looked)
        self.assertEqual([row[1] for row in place.rows()], ["right", "right"])

    def test_a_recording_that_is_archived_has_its_new_place(self):
        place = self.place(2)
        done = place.convert("--archive", "put")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([row[1:] for row in place.rows()], [("right", "put/0.ZU", 0), ("right", "put/1.ZU", 0)])
        self.assertEqual(place.rows("SELECT count(*) FROM entries"), [(4,)])
        self.assertEqual(place.check(), (0, ""))

    def test_a_recording_that_is_removed_is_gone(self):
        place = self.place(2)
        place.run("archive", "update", "--catalogue", "archive.db", ".")
        done = place.convert("--remove-source")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([row[1:] for row in place.rows()], [("right", "0.ZU", 1), ("right", "1.ZU", 1)])
        self.assertEqual(place.check(), (0, ""))

    def test_a_removed_recording_that_was_not_known_has_no_entry(self):
        place = self.place(1)
        place.convert("--remove-source")
        self.assertEqual([row[1:3] for row in place.rows()], [("right", "-")])
        self.assertEqual(place.check(), (0, ""))

    def test_that_fails_loses_no_record_and_keeps_the_recording(self):
        place = self.place(2)
        place.run("archive", "update", "--catalogue", "archive.db", "put")
        place.rows("CREATE TRIGGER refuse BEFORE INSERT ON entries BEGIN SELECT RAISE(ABORT, 'not today'); END")
        done = place.convert("--remove-source", "--json")
        self.assertEqual(done.returncode, 1)
        for line in done.stdout.splitlines():
            shown = json.loads(line)
            self.assertEqual((shown["status"], shown["reason"], shown["source"]), ("failed", "notCatalogued", "kept"))
            self.assertIn("the catalogue 'archive.db': not today", shown["error"])
        self.assertEqual(len(place.records()), 2)
        self.assertEqual(sorted(file.name for file in place.root.glob("*.ZU")), ["0.ZU", "1.ZU"])
        place.rows("DROP TRIGGER refuse")
        done = place.convert("--remove-source")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(list(place.root.glob("*.ZU")), [])
        self.assertEqual([row[1] for row in place.rows()], ["right", "right"])

    def test_that_cannot_be_opened_ends_the_run_before_it_starts(self):
        place = self.place(1)
        (place.root / "archive.db").write_text("no database, but long enough to be looked at as one " * 20)
        done = place.convert()
        self.assertEqual(done.returncode, 2)
        self.assertIn("nothing is converted: the catalogue 'archive.db': it is no catalogue", done.stderr)
        self.assertEqual(place.records(), [])

    def test_a_dry_run_writes_none(self):
        place = self.place(1)
        self.assertEqual(place.convert("--dry-run").returncode, 0)
        self.assertFalse((place.root / "archive.db").exists())

    def test_has_a_damaged_recording_as_unread_and_what_was_salvaged_of_it(self):
        place = self.place(1)
        content = (place.root / "0.ZU").read_bytes()
        (place.root / "0.ZU").write_bytes(content[:-3])
        done = place.convert("--salvage")
        self.assertEqual(done.returncode, 3, done.stderr)
        self.assertEqual([row[1:3] for row in place.rows()], [("right", "0.ZU")])
        self.assertEqual(place.rows("SELECT reason FROM entries WHERE path = '0.ZU'"), [("recordingUnreadable",)])

    def watch(self, place, *words):
        return place.run("watch", "--once", "--out", "out", "--catalogue", "archive.db", *words, ".")

    def test_watch_writes_what_it_converts(self):
        place = self.place(3)
        ini = place.root / "ZuDrv.ini"
        ini.write_text(re.sub("^Время ожидания=.*", "Время ожидания=50", ini.read_text("utf-8"), flags=re.M), "utf-8")
        done = self.watch(place, "--archive", "put")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([row[1:] for row in place.rows()], [("right", f"put/{number}.ZU", 0) for number in range(3)])
        self.assertEqual(place.check(), (0, ""))

    def test_watch_goes_on_without_it_and_tries_again(self):
        place = self.place(2)
        ini = place.root / "ZuDrv.ini"
        ini.write_text(re.sub("^Время ожидания=.*", "Время ожидания=50", ini.read_text("utf-8"), flags=re.M), "utf-8")
        (place.root / "archive.db").write_text("no database, but long enough to be looked at as one " * 20)
        done = self.watch(place)
        events = [json.loads(line) for line in done.stdout.splitlines()]
        self.assertEqual([one["reason"] for one in events if one["event"] == "failed"], ["notCatalogued"] * 2)
        self.assertEqual(len(place.records()), 2)
        (place.root / "archive.db").unlink()
        done = self.watch(place)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([row[1] for row in place.rows()], ["right", "right"])

    def test_an_interrupted_run_says_so_and_leaves_it_whole(self):
        place = self.place(40)
        child = subprocess.Popen([PROGRAM, "convert", "--out", "out", "--catalogue", "archive.db", "."], cwd=place.root,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, start_new_session=True)
        child.stdout.readline()
        os.killpg(child.pid, signal.SIGINT)  # as Ctrl-C does: all its processes get it
        _, err = child.communicate(timeout=60)
        self.assertEqual(child.returncode, 130, err)
        self.assertNotIn("notCatalogued", err)
        self.assertEqual([row[0] for row in place.rows()], place.records())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
