#!/usr/bin/env python3
"""Records with one fault each have one finding each, good ones have none.

    validate_test.py ZUCMTR
"""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from faultyrecords import FAULTS, GOOD

PROGRAM = pathlib.Path(sys.argv[1]).absolute()


def write(directory, number, record):
    """The path of the record's configuration or container."""
    for ending, content in record.items():
        (directory / f"r{number}.{ending}").write_bytes(content)
    return f"r{number}.{'cff' if 'cff' in record else 'cfg'}"


def validate(records):
    """Exit code, and the findings of each record in their order."""
    with tempfile.TemporaryDirectory() as temporary:
        directory = pathlib.Path(temporary)
        names = [write(directory, number, record) for number, record in enumerate(records)]
        done = subprocess.run([PROGRAM, "validate", "--json", *names], cwd=directory, stdout=subprocess.PIPE, check=False)
    findings = [[] for _ in records]
    for line in done.stdout.splitlines():
        finding = json.loads(line)
        findings[int(finding["file"].partition(".")[0][1:])].append(finding)
    return done.returncode, findings


def place_of(finding):
    return (finding["file"].partition(".")[2].lower(), finding["line"], finding.get("column"), finding["severity"],
            finding["reason"])


class Faults(unittest.TestCase):
    def test_each_is_found_and_nothing_else(self):
        self.assertGreaterEqual(len(FAULTS), 60)
        self.assertEqual(len({fault.name for fault in FAULTS}), len(FAULTS))
        code, findings = validate([fault.record() for fault in FAULTS])
        self.assertEqual(code, 1)
        for fault, found in zip(FAULTS, findings):
            with self.subTest(fault.name):
                self.assertCountEqual([place_of(finding) for finding in found], fault.findings, found)


class GoodRecords(unittest.TestCase):
    def test_nothing_is_found_in_any_form(self):
        code, findings = validate(list(GOOD.values()))
        self.assertEqual(dict(zip(GOOD, findings)), {form: [] for form in GOOD})
        self.assertEqual(code, 0)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]] + sys.argv[2:])
