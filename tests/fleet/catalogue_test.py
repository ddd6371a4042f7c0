"""The fleet document's PostgreSQL server: set up as it says, written by many while it restarts, read by others, put back
from a backup.

    catalogue_test.py ZUCMTR DOCUMENT
"""
import os
import pathlib
import sys
import subprocess
import time
import unittest

sys.path.append(str(pathlib.Path(__file__).absolute().parents[1] / "support"))

from fleetcase import FleetCase, PATIENCE, SAMPLES, commands
from postgresserver import PostgresServer, programs


class Catalogue(FleetCase):
    @classmethod
    def setUpClass(cls):
        cls.server = PostgresServer()
        cls.addClassCleanup(cls.server.remove)

    def setUp(self):
        super().setUp()
        self.addCleanup(self.server.psql, "DROP DATABASE archive; DROP ROLE relay; DROP ROLE analyst")
        self.environment.update(self.server.environment())
        self.environment["PATH"] += f":{programs()}"
        self.run_shell(commands()["roles"] + commands()["database"])
        self.relay, self.analyst = (self.server.address("archive", user) for user in ("relay", "analyst"))
        self.environment["CATALOGUE"] = self.relay

    def wait_for_waiting(self, count, running):
        """Until that many connections wait for a lock."""
        waiting = "SELECT count(*) FROM pg_stat_activity WHERE usename = 'relay' AND wait_event_type = 'Lock'"
        end = time.monotonic() + PATIENCE
        while int(self.server.psql(waiting)) < count:
            self.assertLess(time.monotonic(), end)
            self.assertEqual([], [process.args for process in running if process.poll() is not None], "ended too early")

    def numbers(self, database="archive"):
        tables = ("entries", "pieces", "channels", "extremes", "changes", "events", "pictures", "search")
        return [self.server.psql(f"SELECT count(*) FROM {table}", database) for table in tables]

    def test_eight_processes_and_a_restart_make_the_catalogue_of_one(self):
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station")
        # All of them are in the middle of a transaction when the server goes.
        lock = subprocess.Popen([programs() / "psql", "-q", "-d", "archive"], env={**os.environ, **self.server.environment()},
                                stdin=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(lock.communicate)
        lock.stdin.write("BEGIN; LOCK TABLE entries IN EXCLUSIVE MODE;\n")
        lock.stdin.flush()
        while self.server.psql("SELECT count(*) FROM pg_locks WHERE mode = 'ExclusiveLock' AND locktype = 'relation'") == "0":
            self.assertIsNone(lock.poll())
        part = "'the archive/200{0}'"
        convert = ("zucmtr convert -q --ini station/ZuDrv.ini --out записи/200{0} --make-out --catalogue \"$CATALOGUE\" " + part)
        update = "zucmtr archive update --quiet --jobs 1 --ini station/ZuDrv.ini --catalogue \"$CATALOGUE\" " + part
        running = [self.start("exec " + command.format(number)) for number in range(4) for command in (convert, update)]
        self.wait_for_waiting(8, running)
        self.server.stop()
        self.server.start()
        self.assertEqual([0] * 8, [process.wait(PATIENCE) for process in running])
        self.run_shell(commands()["update"])

        one = self.place / "one.db"
        for number in range(4):
            self.run_shell(convert.format(number).replace("$CATALOGUE", str(one)))
        self.run_shell(f"zucmtr archive update --quiet --catalogue {one} station записи 'the archive'")
        self.run_shell("zucmtr archive check --catalogue \"$CATALOGUE\" записи")
        entries = self.entries(one)
        self.assertEqual(SAMPLES * (1 + self.copies + 4), len(entries))
        self.assertEqual(entries, self.entries(self.relay))

    def test_reader_finds_and_changes_nothing(self):
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station")
        before = self.numbers()
        self.environment["CATALOGUE"] = self.analyst
        for command in ("find --limit 3", "stats", "check station", "page -o page"):
            self.run_shell(f"zucmtr archive {command} --catalogue \"$CATALOGUE\"")
        self.assertEqual("8", self.server.psql("SELECT count(*) FROM present", "archive", "analyst"))
        for command in ("DELETE FROM entries", "UPDATE entries SET gone = 'now'", "CREATE TABLE mine (number INTEGER)"):
            with self.assertRaisesRegex(RuntimeError, "permission denied"):
                self.server.psql(command, "archive", "analyst")
        (self.place / "station/Vostochnaya_000123.ZU").unlink()
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station 2>refused", code=1)
        self.assertIn("the role 'analyst' lacks a permission on the server", (self.place / "refused").read_text(encoding="utf-8"))
        self.assertEqual(before, self.numbers())
        self.server.psql("CREATE ROLE stranger LOGIN")
        self.addCleanup(self.server.psql, "DROP ROLE stranger")
        with self.assertRaisesRegex(RuntimeError, "permission denied for database"):
            self.server.psql("SELECT 1", "archive", "stranger")

    def test_reader_sees_what_a_later_version_makes(self):
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station")
        definition = self.server.psql("SELECT pg_get_viewdef('present')", "archive")
        self.server.psql(f"DROP VIEW present; CREATE VIEW present AS {definition}", "archive", "relay")
        self.assertEqual("8", self.server.psql("SELECT count(*) FROM present", "archive", "analyst"))

    def test_backup_brings_everything_back(self):
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" 'the archive'")
        entries, numbers = self.entries(self.relay), self.numbers()
        self.run_shell(commands()["backup"])
        self.server.psql("DROP DATABASE archive")
        self.run_shell(commands()["database"] + commands()["restore"])
        self.assertEqual((entries, numbers), (self.entries(self.relay), self.numbers()))
        self.assertEqual(entries, self.entries(self.analyst))
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station 'the archive'")
        self.run_shell("zucmtr archive check --catalogue \"$CATALOGUE\" 'the archive' && zucmtr archive check --catalogue \"$CATALOGUE\" station")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
