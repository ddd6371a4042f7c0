"""A morning's walk of docs/archive.md: what it shows is what a new user sees, and what is true of the recordings.

walk_test.py PROGRAM DOCUMENT
"""

import json
import os
import pathlib
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest

STEP = re.compile(r"^<!-- walk -->\n```sh\n(?P<command>.*?)```\n\n```text\n(?P<output>.*?)```$", re.MULTILINE | re.DOTALL)
UNREAD = "polyarnaya-1/polyarnaya-1_000028.ZU"  # is cut off
MOST_OFF = 0.008  # s, of a clearing


def steps():
    """The commands, each with what the document shows of it."""
    return [(step["command"], step["output"]) for step in STEP.finditer(DOCUMENT.read_text(encoding="utf-8"))]


def shell(directory, command):
    """What a terminal shows."""
    environment = dict(os.environ, LC_ALL="C.UTF-8", LANGUAGE="", PATH=f"{PROGRAM.parent}:{os.environ['PATH']}")
    return subprocess.run(["sh", "-c", command], cwd=directory, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, encoding="utf-8", timeout=300, check=False).stdout


def clearing_of(truth):
    """Seconds; None without a fault, and for one that outlasts its recording."""
    fault = truth["fault"]
    return None if fault is None or fault["clearing"] is None else fault["clearing"] - fault["onset"]


class Walk(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.place.cleanup)
        cls.directory = pathlib.Path(cls.place.name)
        cls.shown = [(command, output, shell(cls.directory, command)) for command, output in steps()]
        recordings = cls.directory / "recordings"
        cls.truths = {f"{path.parent.name}/{path.name[:-len('.truth.json')]}.ZU": json.loads(path.read_text(encoding="utf-8"))
                      for path in recordings.glob("*/*.truth.json")}
        cls.database = sqlite3.connect(f"file:{recordings}/zucmtr-archive.db?mode=ro", uri=True)
        cls.addClassCleanup(cls.database.close)

    def output(self, part):
        """Of the one command that has this in it."""
        (output,) = [shown for command, _, shown in self.shown if part in command]
        return output

    def names(self, part):
        """Of the files in a table, in its order."""
        return [line.split("/")[-1] for line in self.output(part).splitlines()[1:]]

    def cleared(self, part):
        """Seconds, of the lines of a table."""
        return [float(re.search(r" ([\d.]+) ms ", line)[1]) / 1000 for line in self.output(part).splitlines()[1:]]

    def true_names(self, wanted):
        """Files of the faults that are so, with their clearings."""
        return {path.split("/")[-1]: clearing_of(truth) for path, truth in self.truths.items()
                if path != UNREAD and clearing_of(truth) is not None and wanted(truth)}

    def test_document_shows_what_a_new_user_sees(self):
        self.assertEqual(10, len(self.shown))
        for command, documented, shown in self.shown:
            self.assertEqual(documented, shown, command)

    def test_every_fault_is_in_the_catalogue_as_it_was(self):
        rows = {path.split("/")[-1]: rest for path, *rest in self.database.execute(
            "SELECT path, reason, station, trigger_time, fault_kind, line, fault_duration, fault_onset FROM entries")}
        self.assertEqual(500, len(self.truths))
        self.assertEqual({path.split("/")[-1] for path in self.truths}, set(rows))
        stations = {"uzlovaya": "ПС Узловая", "zarechnaya": "ПС Заречная", "polyarnaya": "ПС Полярная", "lesnaya": "ПС Лесная"}
        for path, truth in self.truths.items():
            reason, station, trigger, kind, line, duration, onset = rows[path.split("/")[-1]]
            if path == UNREAD:
                self.assertEqual("recordingUnreadable", reason)
                continue
            fault = truth["fault"]
            self.assertEqual((None, stations[path.split("-")[0]], truth["trigger"]), (reason, station, trigger), path)
            self.assertEqual(fault and fault["kind"], kind, path)
            if fault:
                self.assertEqual(fault["circuit"].split(" ")[1], line.split(" ")[-1], path)
                self.assertLess(abs(fault["onset"] - onset), MOST_OFF, path)
                self.assertEqual(clearing_of(truth) is None, duration is None, path)
                self.assertLess(abs((clearing_of(truth) or 0) - (duration or 0)), MOST_OFF, path)

    def test_months_are_those_of_the_faults(self):
        months = {}
        for path, truth in self.truths.items():
            if truth["fault"] and path != UNREAD:
                months[truth["trigger"][:7]] = months.get(truth["trigger"][:7], 0) + 1
        shown = dict(re.findall(r"^  (2024-\d\d) +(\d+)$", self.output("stats"), re.MULTILINE))
        self.assertEqual({month: str(count) for month, count in months.items()}, shown)

    def test_question_of_the_day_has_the_true_answer(self):
        true = self.true_names(lambda truth: truth["fault"]["circuit"].endswith("Поляна") and truth["trigger"] >= "2024-04" and
                               truth["fault"]["kind"] in ("AG", "BG", "CG") and clearing_of(truth) > 0.08)
        self.assertEqual(set(true), set(self.names("поляна")))
        for name, cleared in zip(self.names("поляна"), self.cleared("поляна")):
            self.assertLess(abs(true[name] - cleared), MOST_OFF, name)

    def test_three_slowest_clearings_are_the_three_slowest(self):
        true = self.true_names(lambda truth: True)
        slowest = sorted(true, key=true.get, reverse=True)[:3]
        self.assertEqual(slowest, self.names("--limit 3 recordings"))
        for name, cleared in zip(slowest, self.cleared("--limit 3 recordings")):
            self.assertLess(abs(true[name] - cleared), MOST_OFF, name)

    def test_pages_are_there(self):
        for page in [*self.output("zucmtr view").splitlines(), self.output("archive page").strip()]:
            self.assertTrue((self.directory / page).read_bytes().lower().startswith(b"<!doctype html>"), page)


if __name__ == "__main__":
    PROGRAM, DOCUMENT = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
