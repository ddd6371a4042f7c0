"""The ten questions of docs/archive.md: each command finds what its SQL finds, and what it must find.

questions_test.py PROGRAM DOCUMENT
"""

import csv
import json
import os
import pathlib
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest

# Stations with their seeds of random faults. The first has a sample station as well.
STATIONS = {"ПС Узловая": (10, 12), "ПС Заречная": (20, 21), "ПС Полярная": (30, 31), "ПС Лесная": (40, 41)}

V = "Vostochnaya"
EXPECTED = {
    1: [f"s5/{V}_000127.ZU", f"s5/{V}_000126.ZU", f"s5/{V}_000125.ZU", f"s5/{V}_000124.ZU", f"s5/{V}_000123.ZU"],
    2: [f"s1/{V}_fault_0000012.ZU", f"s1/{V}_fault_0000011.ZU", f"s4/{V}_fault_0000041.ZU"],
    3: [f"s4/{V}_fault_0000041.ZU", f"s4/{V}_fault_0000040.ZU", f"s5/{V}_000127.ZU", f"s3/{V}_fault_0000031.ZU",
        f"s3/{V}_fault_0000030.ZU"],
    4: [f"s5/{V}_000125.ZU", f"s1/{V}_fault_0000012.ZU", f"s1/{V}_fault_0000011.ZU", f"s5/{V}_000124.ZU",
        f"s1/{V}_fault_0000010.ZU", f"s5/{V}_000123.ZU"],
    5: [f"s1/{V}_fault_0000010.ZU", f"s4/{V}_fault_0000041.ZU", f"s5/{V}_000123.ZU", f"s5/{V}_000127.ZU",
        f"s5/{V}_000125.ZU", f"s5/{V}_000126.ZU", f"s5/{V}_000124.ZU"],
    6: [f"s5/{V}_000127.ZU", f"s5/{V}_000126.ZU", f"s5/{V}_000125.ZU", f"s1/{V}_fault_0000012.ZU",
        f"s5/{V}_000124.ZU", f"s5/{V}_000123.ZU"],
    7: [f"s5/{V}_000127.ZU"],
    8: [f"s1/{V}_fault_0000010.ZU"],
    9: [("2024-01", 14)],
    10: [("ПС Заречная", "РАС-1", "2024-01-31T14:20:59.989972+05:00"), ("ПС Лесная", "РАС-1", "2024-01-31T14:41:00.005885+05:00"),
         ("ПС Полярная", "РАС-1", "2024-01-31T12:31:00.150568+03:00"), ("ПС Узловая", "РАС-1", "2024-01-31T13:10:00.000000+03:00")],
}


def run(directory, *words, **options):
    environment = dict(os.environ, LC_ALL="C.UTF-8", LANGUAGE="", PATH=f"{PROGRAM.parent}:{os.environ['PATH']}")
    return subprocess.run([str(word) for word in words], cwd=directory, env=environment, stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, timeout=120, check=False, **options)


def questions():
    """Number, command and SQL of each."""
    text = DOCUMENT.read_text(encoding="utf-8")
    found = re.findall(r"^### (\d+)\. [^\n]+\n\n```sh\n(.*?)\n```\n\n```sql\n(.*?)\n```", text, re.MULTILINE | re.DOTALL)
    return {int(number): (command, sql) for number, command, sql in found}


def make_archive(directory):
    """Four stations, and the catalogue."""
    for number, (station, (first, last)) in enumerate(STATIONS.items(), 1):
        place = directory / f"s{number}"
        run(directory, PROGRAM, "sample", "--out", place, "--random-fault", f"{first}-{last}")
        ini = place / "ZuDrv.ini"
        ini.write_text(ini.read_text(encoding="utf-8").replace("ПС Узловая", station), encoding="utf-8")
    run(directory, PROGRAM, "sample", "--out", directory / "s5", "--seconds", "1")
    updated = run(directory, PROGRAM, "archive", "update", ".")
    assert updated.returncode == 0, updated.stderr


class Questions(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.place.cleanup)
        cls.directory = pathlib.Path(cls.place.name)
        make_archive(cls.directory)
        cls.database = sqlite3.connect(f"file:{cls.directory}/zucmtr-archive.db?mode=ro", uri=True)
        cls.addClassCleanup(cls.database.close)

    def answer(self, command):
        """What the command finds: paths, or the values of the one list in its output."""
        if "archive find" in command:
            found = run(self.directory, "sh", "-c", command + " --paths")
            self.assertEqual((0, ""), (found.returncode, found.stderr), command)
            return [(path,) for path in found.stdout.splitlines()]
        found = run(self.directory, "sh", "-c", command)
        self.assertEqual((0, ""), (found.returncode, found.stderr), command)
        (rows,) = json.loads(found.stdout).values()
        keys = ("month", "faults") if "months" in command else ("station", "recorder", "last")
        return [tuple(row[key] for key in keys) for row in rows]

    def test_there_are_ten(self):
        self.assertEqual(list(range(1, 11)), list(questions()))

    def test_commands_and_sql_find_the_same(self):
        for number, (command, sql) in questions().items():
            answer = self.answer(command)
            rows = self.database.execute(sql).fetchall()
            if number == 10:  # equally silent ones have no order
                answer, rows = sorted(answer), sorted(rows)
            self.assertEqual(rows, answer, number)

    def test_they_find_what_they_must(self):
        for number, (command, _) in questions().items():
            answer = [row[0] if len(row) == 1 else row for row in self.answer(command)]
            self.assertEqual(EXPECTED.get(number), answer, number)

    def test_csv_has_the_columns_of_the_database(self):
        text = run(self.directory, PROGRAM, "archive", "find", "--csv", "--sort", "oldest").stdout
        self.database.row_factory = sqlite3.Row
        self.addCleanup(setattr, self.database, "row_factory", None)
        rows = list(csv.DictReader(text.splitlines(), strict=True))
        stored = self.database.execute("SELECT * FROM entries ORDER BY moment, id").fetchall()
        self.assertEqual(len(stored), len(rows))
        for shown, row in zip(rows, stored):
            self.assertEqual(str(self.directory / row["path"]), shown.pop("path"))
            for name, value in shown.items():
                kind = float if isinstance(row[name], float) else str
                self.assertEqual("" if row[name] is None else row[name] if kind is float else str(row[name]),
                                 kind(value) if value else "", name)


if __name__ == "__main__":
    PROGRAM, DOCUMENT = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
