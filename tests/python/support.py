"""Recordings and records for the tests of the Python module."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

CFG = """Подстанция,РАС,{revision}
3,2A,1D
1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,{side}
2,Ub,B,Q2,kV,1e-3,0,0,-32767,32767,1,1,S
1,Trip,,Q1,1
50
1
1000,4
31/01/2024,11:59:59.998000
31/01/2024,12:00:00.000000
{type}
1
"""
CLOCK_2013 = "+3h00,+3h00\n0,3\n"
ASCII = "1,0,10,1000,0\n2,1000,,-2000,1\n3,2000,-30,3000,1\n4,3000,40,-4000,0\n"


def run(program_, *arguments, check=True):
    """Runs a program of the build and returns its standard output."""
    # The sanitizers' run time, loaded into Python first, is in the programs already; leaks are looked for in Python alone.
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    environment["ASAN_OPTIONS"] = "detect_leaks=0"
    done = subprocess.run([program_, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          encoding="utf-8", env=environment, check=False)
    if check and done.returncode != 0:
        raise AssertionError(f"{program_} {arguments}: {done.stderr}")
    return done.stdout


def program(*arguments, check=True):
    """Runs zucmtr and returns its standard output."""
    # The sanitizers reserve more memory than there is.
    limit = ("--max-memory", "0") if arguments[0] in ("convert", "export") else ()
    return run(os.environ["ZUCMTR"], *arguments, *limit, check=check)


class Case(unittest.TestCase):
    """A test with a directory of its own."""

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)

    def record(self, name="rec", *, data=ASCII, revision=2013, side="P", kind="ASCII", encoding="utf-8"):
        """A record with two analog channels and a digital one, four samples; the path of its CFG file."""
        text = CFG.format(revision=revision, side=side, type=kind) + (CLOCK_2013 if revision == 2013 else "")
        path = self.directory / f"{name}.cfg"
        path.write_bytes(text.encode(encoding))
        path.with_suffix(".dat").write_bytes(data if isinstance(data, bytes) else data.encode())
        return path

    def station(self, *options):
        """A sample station; the first files of its recordings."""
        place = self.directory / "station"
        program("sample", "--out", place, *options)
        return sorted(place.glob("*.ZU"))
