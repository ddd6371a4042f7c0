"""Proves the torture itself: each detector sees what it is there for, and a program that does right passes.

    detectors_test.py SHIM
"""
import errno
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

import bench as benches
import changes
import fakes
import ledger as books
import points
import powerfailure
import recordings
import records
import station as stations
import system

SHIM = pathlib.Path(sys.argv[1]).absolute()
POINTS = 7  # of a row; by the seed always the same
MOUNTS = os.geteuid() == 0 and system.own_mounts()


class Fakes(unittest.TestCase):
    """Whole scenarios with programs of one sin each."""

    def torture(self, sin, scenario, command, mode, most=POINTS):
        """What a scenario finds with the fake program: counts by kind."""
        with tempfile.TemporaryDirectory() as directory, tempfile.TemporaryDirectory() as place:
            places = stations.Places(place, MOUNTS)
            self.addCleanup(places.close)
            bench = benches.Bench(places, fakes.write(directory, sin), SHIM, short=True, seed="1", minutes=0, jobs=2)
            bench.cases = lambda **_: [stations.Case(command, mode, "cfg")]
            draw = bench.draw
            bench.draw = lambda points, _most, *words: draw(points, most, *words)
            scenario(bench)
            places.close()
        self.details = [line for row in bench.rows for line in row.findings.details]
        self.assertGreaterEqual(sum(row.points for row in bench.rows), most)
        return {kind for row in bench.rows for kind, count in row.findings.counts.items() if count}

    def test_one_that_does_right_passes(self):
        for scenario, mode in ((points.kill, "remove"), (points.faults, "remove"), (changes.exchange, "remove"),
                               (changes.late, "remove"), (powerfailure.power_failure, "remove")):
            with self.subTest(scenario=scenario.__name__):
                self.assertEqual(set(), self.torture("none", scenario, "watch", mode, 4), self.details)

    def test_sources_deleted_before_the_record_are_lost_at_a_kill(self):
        self.assertIn("lost", self.torture("removes first", points.kill, "convert", "remove"))

    def test_exchanged_sources_deleted_by_name_are_lost(self):
        self.assertIn("lost", self.torture("removes by name", changes.exchange, "convert", "remove", 20))

    def test_a_continuation_that_is_passed_over_is_cut(self):
        self.assertIn("cut", self.torture("passes over", points.faults, "convert", "plain", 30))

    def test_a_configuration_without_data_is_half_and_stuck(self):
        found = self.torture("keeps half", points.kill, "convert", "plain", 12)
        self.assertLessEqual({"half", "stuck"}, found)

    def test_a_record_that_was_not_synced_is_lost_at_a_power_failure(self):
        self.assertIn("lost", self.torture("does not sync", powerfailure.power_failure, "convert", "remove"))

    def test_a_temporary_directory_that_stays_is_debris(self):
        self.assertIn("debris", self.torture("leaves temporary", points.kill, "convert", "plain"))

    def test_continuations_that_nobody_names_are_orphaned(self):
        self.assertIn("orphaned", self.torture("says nothing", points.kill, "convert", "remove", 12))

    def test_a_service_without_a_journal_converts_twice(self):
        self.assertIn("twice", self.torture("no journal", points.kill, "watch", "plain"))


class Ledger(unittest.TestCase):
    """The books, on a handmade tree."""

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.station = stations.Station(directory.name, None, None)
        self.station.set_up(stations.Case("convert", "archive", "cfg"))
        self.ledger = benches.fill(self.station, "1", chains=((1, 2),))
        self.end = stations.Run(0, "", [])

    def found(self):
        self.ledger.check(self.end)
        return dict(self.ledger.findings.counts)

    def record(self, files):
        """An ASCII record of the recording's first files."""
        chain = [recordings.File(content) for content in recordings.chain("1", 1, 2)][:files]
        rows = [row for file in chain for row in zip(*file.columns)]
        name = self.station.out / "240131,120001.0,+3t,Object,Source.Subject.cfg"
        name.write_text(f"S,D,2013\n2,2A,0D\na\nb\n50\n1\n1000,{len(rows)}\n31/01/2024,11:59:59.5\n"
                        "31/01/2024,12:00:01.000000\nASCII\n1\n")
        name.with_suffix(".dat").write_text("".join(f"{n},0,{a},{b}\n" for n, (a, b) in enumerate(rows, 1)))

    def put_away(self, name):
        (self.station.input / name).rename(self.station.archive / name)

    def test_a_whole_record_is_right(self):
        self.record(2)
        self.assertEqual({}, self.found())
        self.put_away("rec1.ZU")
        self.put_away("rec1.Z01")
        self.assertEqual({}, self.found())

    def test_a_short_record_is_cut(self):
        self.record(1)
        self.assertEqual({"cut": 1}, self.found())

    def test_a_recording_without_record_is_stuck(self):
        self.assertEqual({"stuck": 1}, self.found())

    def test_a_record_that_is_longer_than_what_is_left_explains_a_failure(self):
        for reason, files, found in (("longerRecordPresent", 2, {}), ("otherRecordPresent", 2, {"stuck": 1}),
                                     ("longerRecordPresent", 1, {"stuck": 1})):
            self.setUp()
            self.record(files)
            self.ledger.take_back((self.station.input / "rec1.Z01").read_bytes())
            (self.station.input / "rec1.Z01").unlink()
            failed = {"file": str(self.station.input / "rec1.ZU"), "error": "...", "reason": reason}
            self.end = stations.Run(1, "", [failed])
            self.assertEqual(found, self.found(), (reason, files))

    def test_files_in_the_archive_without_record_are_unread(self):
        self.put_away("rec1.ZU")
        self.put_away("rec1.Z01")
        self.assertEqual({"unread": 2}, self.found())

    def test_a_continuation_left_alone_is_orphaned_unless_it_is_named(self):
        self.record(2)
        self.put_away("rec1.ZU")
        self.assertEqual({"orphaned": 1}, self.found())
        self.ledger.findings = books.Findings()
        self.ledger.note(stations.Run(0, "rec1.Z01 has no first file", []))
        self.assertEqual({}, self.found())

    def test_what_has_its_name_in_the_archive_excuses_a_recording(self):
        excused = changes.excuse(self.station, self.ledger)
        for name in ("rec1.ZU", "rec1.ZU.part", "rec1.Z01", "rec1.Z01.part"):
            there = self.station.archive / name
            there.write_bytes((self.station.input / name.removesuffix(".part")).read_bytes())
            self.assertFalse(excused("rec1.ZU"), name)
            there.write_bytes(b"other")
            self.assertTrue(excused("rec1.ZU"), name)
            self.assertFalse(excused("rec2.ZU"), name)
            there.unlink()

    def test_the_complaint_is_of_a_recording_that_is_not_excused(self):
        events = [{"file": str(self.station.input / f"rec{n}.ZU"), "error": f"error {n}"} for n in (1, 2)]
        self.record(2)
        self.ledger.check(stations.Run(1, "", events), lambda path: path == "rec1.ZU")
        self.assertEqual(["stuck: exit code 1: error 2"], self.ledger.findings.details)

    def test_a_claim_is_held_against_the_record(self):
        self.record(1)
        claim = {"file": str(self.station.input / "rec1.ZU"), "verified": True}
        self.ledger.check_claims(stations.Run(0, "", [claim]))
        self.assertEqual({"cut": 1}, dict(self.ledger.findings.counts))

    def test_temporary_files_are_debris_everywhere(self):
        self.record(2)
        for directory in self.station.directories():
            (directory / "x.part").touch()
        self.assertEqual({"debris": 5}, self.found())

    def test_a_record_that_is_there_may_be_reported_again_but_not_written(self):
        self.record(2)
        converted = {"event": "converted", "status": "converted", "file": str(self.station.input / "rec1.ZU")}
        self.ledger.note(stations.Run(1, "", [converted]))
        self.ledger.note(stations.Run(0, "", [{**converted, "status": "present"}]))
        self.assertEqual({}, self.found())
        self.ledger.note(stations.Run(0, "", [converted]))
        self.assertEqual({"twice": 1}, self.found())

    def test_a_record_with_a_torn_line_cannot_be_read(self):
        self.record(2)
        data = next(self.station.out.glob("*.dat"))
        data.write_bytes(data.read_bytes()[:-3])
        with self.assertRaises(records.Unreadable):
            records.Record(data.with_suffix(".cfg"))


class PowerFailure(unittest.TestCase):
    """What is left of a file."""

    def test_of_bytes_written_over_others_any_half_may_be_missing(self):
        node = powerfailure.Node(b"abcdefgh")
        node.change(2, b"CD")
        node.change(6, b"GHIJ")
        self.assertEqual(b"abCDefGHIJ", node.now)
        parts = [powerfailure.part_of(node.safe, node.since, *part) for part in ((0, 0), (0, 0.5), (0.5, 1), (0, 1))]
        self.assertEqual([b"abcdefgh", b"abCDefGh", b"abcdefgHIJ", node.now], parts)

    def test_a_file_that_was_emptied_may_be_empty(self):
        node = powerfailure.Node(b"abc")
        node.change(0, None)
        node.change(0, b"de")
        self.assertEqual(b"", powerfailure.part_of(node.safe, node.since, 0, 0))
        node.sync()
        self.assertEqual((b"de", ()), (node.safe, node.since))


class Shim(unittest.TestCase):
    """The shim, in front of a program of a few calls."""

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.place = pathlib.Path(directory.name)
        self.inside = self.place / "inside"
        self.inside.mkdir()

    def run_plan(self, plan, program, kinds="write"):
        environment = dict(os.environ, LD_PRELOAD=str(SHIM), TORTURE_PLAN=plan, TORTURE_KINDS=kinds,
                           TORTURE_DIRECTORIES=str(self.inside), TORTURE_LOG=str(self.place / "log"),
                           TORTURE_DATA=str(self.place / "data"))
        head = "import os\nfile = os.open('x', os.O_WRONLY | os.O_CREAT | os.O_APPEND)\n"
        return subprocess.run([sys.executable, "-BSE", "-c", head + program], cwd=self.inside, env=environment,
                              stdout=subprocess.PIPE, encoding="utf-8", check=False)

    WRITES = "for n in range(4):\n  try: print(os.write(file, b'ab'))\n  except OSError as e: print(-e.errno)\n"

    def test_kills_before_the_call(self):
        self.assertEqual(-signal.SIGKILL, self.run_plan("kill 3", self.WRITES).returncode)
        self.assertEqual(b"abab", (self.inside / "x").read_bytes())

    def test_fails_once(self):
        said = self.run_plan(f"fail 2 {errno.ENOSPC}", self.WRITES).stdout
        self.assertEqual(f"2\n-{errno.ENOSPC}\n2\n2\n", said)

    def test_fails_from_then_on(self):
        self.assertEqual("2\n2\n-5\n-5\n", self.run_plan("from 3 5", self.WRITES).stdout)

    def test_shortens_a_write(self):
        self.assertEqual("2\n1\n2\n2\n", self.run_plan("short 2", self.WRITES).stdout)
        self.assertEqual(b"abaabab", (self.inside / "x").read_bytes())

    def test_notes_bytes_names_and_syncs(self):
        self.run_plan("none 0", "os.write(file, b'abc')\nos.fsync(file)\nos.rename('x', 'y')\nos.unlink('y')\n", "")
        lines = [line.split("\t") for line in (self.place / "log").read_text().splitlines()]
        x, y = str(self.inside / "x"), str(self.inside / "y")
        calls = [fields[:3] for fields in lines if fields[0] in (*benches.CHANGING, "sync")]
        self.assertEqual([["create", x, ""], ["write", x, ""], ["sync", x, ""], ["rename", x, y], ["unlink", y, ""]],
                         calls)
        self.assertEqual(b"abc", (self.place / "data").read_bytes())

    def test_sees_all_that_a_database_does(self):
        insert = "sqlite3.connect('db').execute('PRAGMA journal_mode=PERSIST'); base = sqlite3.connect('db'); " \
            "base.execute('CREATE TABLE t (a)'); base.close()\n"
        self.run_plan("none 0", "import sqlite3\n" + insert, "")
        calls = [line.split("\t")[:2] for line in (self.place / "log").read_text().splitlines()]
        base = str(self.inside / "db")
        for kind, path in (("lock", base), ("write", base), ("sync", base), ("write", base + "-journal"),
                           ("sync", base + "-journal"), ("sync", str(self.inside)), ("unlink", base + "-journal")):
            self.assertIn([kind, path], calls)
        self.run_plan("kill 1", "import sqlite3\n" + insert.replace("TABLE t", "TABLE u"), "lock")
        self.assertEqual(["struck", base], (self.place / "log").read_text().splitlines()[-1].split("\t")[:2])

    def test_leaves_other_directories_alone(self):
        other = self.place / "other"
        said = self.run_plan("from 1 5", f"file = os.open({str(other)!r}, os.O_WRONLY | os.O_CREAT)\n" + self.WRITES)
        self.assertEqual("2\n2\n2\n2\n", said.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
