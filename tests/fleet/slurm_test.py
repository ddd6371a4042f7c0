"""The fleet document's Slurm array, on machines that are namespaces: killed and submitted again; with a machine that is lost.

    slurm_test.py ZUCMTR DOCUMENT [TEST...]     run by scripts/check-fleet.sh
"""
import re
import subprocess
import sys
import unittest

from cluster import Cluster
from fleetcase import commands
from machines import run, wait_for
from machinescase import MachinesCase

PIECE = 3


class Slurm(MachinesCase):
    copies = 5

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cluster = Cluster(cls.network.place / "cluster", list(cls.machines.values()))
        cls.addClassCleanup(cls.cluster.stop)

    def setUp(self):
        super().setUp()
        for name, state in self.cluster.states().items():
            if state.startswith("down"):
                self.cluster.join(self.machines[name])
        self.cluster.wait_for_all()
        (self.place / "fleet.sbatch").write_text(commands()["script"], encoding="utf-8")
        self.environment.update(PIECE=str(PIECE), JOBS="1", SLURM_CONF=str(self.cluster.configuration))
        self.pieces = -(-self.recordings // PIECE)

    def submit(self):
        return re.fullmatch(r"Submitted batch job (\d+)\n", self.run_shell(commands()["submit"])).group(1)

    def pieces_done(self):
        """Numbers of the recordings that the logs have as converted, a list for each piece."""
        return [[number for number, code in self.logged(f"fleet-{piece}.log") if code == 0] for piece in range(self.pieces)]

    def done(self):
        return sum(map(len, self.pieces_done()))

    def wait_for_end(self):
        wait_for(lambda: not self.cluster.tasks(), "the end of the array", 600)

    def expect_array_done(self):
        last = self.recordings - PIECE * (self.pieces - 1)
        wanted = [list(range(1, PIECE + 1))] * (self.pieces - 1) + [list(range(1, last + 1))]
        self.assertEqual(wanted, [sorted(piece) for piece in self.pieces_done()])
        self.expect_all_converted()

    def test_killed_array_goes_on_when_it_is_submitted_again(self):
        job = self.submit()
        wait_for(lambda: self.done() >= 6, "converted recordings")
        run("scancel", "--full", "--signal=KILL", job)
        run("scancel", job)  # what has not started
        self.wait_for_end()
        before = self.done()
        self.assertLess(before, self.recordings, "the array ended before it could be killed")
        self.submit()
        self.wait_for_end()
        self.expect_array_done()
        # And once more: nothing is left to do.
        reports = {path: path.read_bytes() for path in self.place.glob("fleet-*.json")}
        self.submit()
        self.wait_for_end()
        self.assertEqual(reports, {path: path.read_bytes() for path in self.place.glob("fleet-*.json")})

    def test_task_of_a_lost_machine_is_done_by_another(self):
        self.submit()
        wait_for(lambda: self.done() >= 6 and "RUNNING conv2" in self.cluster.tasks(), "a task on conv2")
        self.machines["conv2"].lose()
        self.assertLess(self.done(), self.recordings)
        self.wait_for_end()
        self.assertTrue(self.cluster.states()["conv2"].startswith("down"))
        self.expect_array_done()

    def test_failed_recording_fails_its_task_alone(self):
        broken = self.place / "the archive/2003/Vostochnaya_000125.ZU"
        good = broken.read_bytes()
        broken.write_bytes(good[:100])
        submitted = subprocess.run(["sh", "-c", commands()["submit"].replace("sbatch ", "sbatch --wait ")], cwd=self.place,
                                   env=self.environment, capture_output=True, text=True, check=False, timeout=600)
        self.assertEqual(1, submitted.returncode, submitted.stderr)
        self.assertEqual(self.recordings - 1, self.done())
        broken.write_bytes(good)
        self.submit()
        self.wait_for_end()
        self.expect_array_done()


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)
