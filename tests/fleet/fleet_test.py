"""The commands of the fleet document: a run that is killed in the middle, resumed, and compared with a plain one.

    fleet_test.py ZUCMTR DOCUMENT
"""
import sys
import time
import unittest

from fleetcase import FleetCase, PATIENCE, commands


class Fleet(FleetCase):
    def convert_with_a_kill(self, command):
        steps = commands()
        self.run_shell(steps["list"])
        names = (self.place / "recordings.txt").read_text().splitlines()
        self.assertEqual(self.recordings, len(names))

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

        self.convert_plainly()
        self.assertEqual(self.records("plain"), self.records("записи"))
        self.assertEqual("", self.run_shell(steps["report"]))

    def test_document_has_the_commands(self):
        self.assertEqual({"list", "run", "failed", "report", "machines", "ssh", "roles", "database", "pghba", "pgpass", "update",
                          "backup", "restore", "script", "submit"}, set(commands()))

    def test_killed_and_resumed_run_converts_all(self):
        self.convert_with_a_kill(commands()["run"])

    def test_killed_and_resumed_run_on_machines_converts_all(self):
        self.convert_with_a_kill(commands()["machines"])
        for directory in ("'the archive'", "записи"):
            self.run_shell(f"zucmtr archive check --catalogue archive.db {directory}")

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
        self.assertEqual(set(range(1, self.recordings + 1)), set(last))
        self.assertEqual({0}, set(last.values()))
        self.assertEqual(4 * self.recordings, len(self.records("записи")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
