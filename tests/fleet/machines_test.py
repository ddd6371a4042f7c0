"""The fleet document's commands for several machines, on machines that are namespaces, one of which is lost.

    machines_test.py ZUCMTR DOCUMENT [TEST...]     run by scripts/check-fleet.sh
"""
import json
import subprocess
import sys
import unittest

from fleetcase import commands
from machines import wait_for
from machinescase import MachinesCase


class Machines(MachinesCase):
    def start_and_lose(self, name):
        """Starts the conversion and, when it is under way, cuts off a machine that has done some of it."""
        running = self.start(commands()["machines"])
        log = self.place / "fleet.log"
        wait_for(lambda: log.exists() and log.read_text(encoding="utf-8").count(f"\t{name}\t") > 2 or running.poll() is not None,
                 f"recordings converted on {name}")
        self.assertIsNone(running.poll(), "the run ended before a machine could be lost")
        self.machines[name].lose()
        self.assertLess(len(self.logged()), self.recordings)
        return running

    def test_lost_machine_leaves_its_work_to_the_others(self):
        running = self.start_and_lose("conv2")
        self.assertEqual(0, running.wait(600))
        self.assertEqual(set(range(1, self.recordings + 1)), {number for number, code in self.logged() if code == 0})
        self.expect_all_converted()

    def test_run_that_is_killed_after_a_loss_goes_on_without_the_machine(self):
        running = self.start_and_lose("conv1")
        self.end_session(running)
        before = {number for number, code in self.logged() if code == 0}
        self.assertLess(len(before), self.recordings)
        self.environment["MACHINES"] = "2/conv2,2/conv3"
        self.run_shell(commands()["machines"])
        done = [number for number, code in self.logged() if code == 0]
        self.assertEqual(sorted(done), sorted(set(done)), "a recording in the log was converted again")
        self.assertEqual(set(range(1, self.recordings + 1)), set(done))
        self.expect_all_converted()

    def test_updates_from_all_machines_while_the_server_restarts(self):
        running = self.start(commands()["update"])
        wait_for(lambda: self.server.psql("SELECT to_regclass('entries') IS NOT NULL", "archive") == "t", "the tables")
        wait_for(lambda: self.server.psql("SELECT count(*) FROM entries", "archive") != "0", "the first entries")
        self.assertIsNone(running.poll(), "the updates ended before the server could be restarted")
        self.server.stop()
        self.server.start()
        self.assertEqual(0, running.wait(600))
        one = self.place / "one.db"
        self.run_shell(f"zucmtr archive update --quiet --catalogue {one} 'the archive'")
        self.assertEqual(self.recordings, len(self.entries(one)))
        self.assertEqual(self.entries(one), self.entries("postgresql://relay@db/archive"))

    def test_server_that_stays_away_costs_no_recording(self):
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station")
        convert = ("zucmtr convert --json --ini station/ZuDrv.ini --recursive --out записи --make-out --remove-source "
                   "--catalogue \"$CATALOGUE\" \"$ARCHIVE\"")
        self.convert_plainly()
        running = subprocess.Popen(["sh", "-c", "exec " + convert], cwd=self.place, env=self.environment,
                                   stdout=subprocess.PIPE, text=True)
        first = running.stdout.readline()
        self.assertEqual("converted", json.loads(first)["status"])
        self.server.stop()
        rest = running.communicate(timeout=600)[0]
        self.assertEqual(1, running.returncode)
        reasons = {one.get("reason") for one in map(json.loads, rest.splitlines()) if one.get("status") == "failed"}
        self.assertEqual({"notCatalogued"}, reasons)
        refused = self.run_shell(convert + " 2>&1", code=2)
        self.assertIn("nothing is converted", refused)
        self.server.start()
        self.run_shell(convert)
        self.assertEqual([], list((self.place / "the archive").glob("*/*.ZU")))
        self.assertEqual(self.records("plain"), self.records("записи"))
        self.assertEqual(str(self.recordings), self.server.psql(
            "SELECT count(*) FROM present WHERE kind = 'record' AND verified = 'right'", "archive"))

    def test_server_asks_for_a_password_and_for_encryption(self):
        reader = "zucmtr archive find --catalogue postgresql://analyst@db/archive"
        self.run_shell("zucmtr archive update --quiet --catalogue \"$CATALOGUE\" station")
        self.assertEqual(9, len(self.run_shell(f"PGPASSWORD='and me' {reader}").splitlines()))
        self.assertIn("password", self.run_shell(f"PGPASSWORD='change me' {reader} 2>&1", code=2))
        self.assertIn("no encryption", self.run_shell(f"PGPASSWORD='and me' {reader}?sslmode=disable 2>&1", code=2))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)
