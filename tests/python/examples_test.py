"""The examples run, and find the faults that were simulated: examples_test.py EXAMPLES"""

import csv
import json
import subprocess
import sys
import unittest
from pathlib import Path

from matplotlib import image

from support import Case, program

EXAMPLES = Path(sys.argv.pop(1))
PICTURE = EXAMPLES.parent / "docs/images/python.png"


class ExamplesTest(Case):
    def run_example(self, name, *arguments):
        run = subprocess.run([sys.executable, EXAMPLES / name, *map(str, arguments)], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True, encoding="utf-8", check=False)
        self.assertEqual(run.returncode, 0, run.stdout)
        return run.stdout

    def test_make_one_table_of_the_faults_of_an_archive(self):
        archive = self.directory / "archive"
        for number in ("3", "4"):
            program("sample", "--out", archive / number, "--random-fault", number)
        (archive / "bad.ZU").write_bytes(b"ZU")
        truth = {path.parent / f"{path.name.split('.')[0]}.ZU": json.loads(path.read_text(encoding="utf-8"))
                 for path in archive.rglob("*.truth.json")}
        self.assertEqual(len(truth), 2)
        tables = []
        for example in ("archive_futures.py", "archive_dask.py"):
            table = self.directory / f"{example}.csv"
            self.run_example(example, archive, table)
            with table.open(encoding="utf-8", newline="") as file:
                tables.append(list(csv.DictReader(file)))
        self.assertEqual(*[[(row["recording"], row["kind"], bool(row["error"])) for row in table] for table in tables])
        for row in tables[0]:
            if row["recording"].endswith("bad.ZU"):
                self.assertIn("bad.ZU", row["error"])
            else:
                self.assertEqual(row["kind"], truth[Path(row["recording"])]["fault"]["kind"])

    def test_draw_the_faulted_circuit(self):
        recording = self.station("--fault", "AG")[0]
        figure = self.directory / "fault.png"
        said = self.run_example("fault.py", recording, figure)
        self.assertIn("Short circuit A to earth on ВЛ 110 кВ Восточная", said)
        self.assertIn("25.0 ms  Откл. от защит ВЛ 110 кВ Восточная -> 1", said)
        self.assertIn("AG forward, 24.0 km away, 1.5 ohm", said)
        self.assertRegex(said, r"Ia1 ВЛ 110 кВ Восточная +300.0 -> +2787.6 А RMS")
        drawn, shown = (image.imread(path)[..., :3] for path in (figure, PICTURE))
        self.assertEqual(drawn.shape, shown.shape)
        # The picture of README.md may have fewer colours, and its letters come from another version of the fonts.
        differing = (abs(drawn - shown).max(axis=2) > 0.25).mean()
        self.assertLess(differing, 0.002, "make docs/images/python.png again: tests/view/screenshots.py")


if __name__ == "__main__":
    unittest.main()
