"""What the tests of an archive's page have in common: catalogues, and the page read without a browser.

    ..._test.py ZUCMTR CHROMEDRIVER CHROMIUM [unittest arguments]
"""
import contextlib
import json
import re
import sqlite3
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path[:0] = [str(ROOT / "tests" / "view"), str(ROOT / "bench")]
from archivepagespeed import make_up  # noqa: E402
from pages import browser, folder, run_tests, zucmtr  # noqa: E402,F401

PIECE = 4096     # entries
PICTURES = 256   # in a piece
HOSTILE = "</script><script>globalThis.hacked=1</script>\"'`\\\u2028\u2029&amp;<img src=x onerror=globalThis.hacked=1>"


class Archive:
    """A directory with an empty catalogue, filled by SQL."""

    def __init__(self, name):
        self.place = folder / name
        self.place.mkdir()
        self.page = folder / (name + "-page")
        zucmtr("archive", "update", "--quiet", self.place)
        self.path = self.place / "zucmtr-archive.db"

    def run(self, command, *values):
        with contextlib.closing(sqlite3.connect(self.path)) as database:
            rows = database.execute(command, values).fetchall()
            database.commit()
        return rows

    def column(self, command, *values):
        return [row[0] for row in self.run(command, *values)]

    def add(self, path, **columns):
        """An entry that could be read, or what its columns say; returns its id."""
        entry = {"kind": "recording", "path": path, "print": "print of " + path, "bytes": 1000, "noted": "2026-01-01T00:00:00Z",
                 "looked": "2026-01-01T00:00:00Z", "station": "S", "recorder": "R", "moment": 0, "utc_offset": 180, "duration": 1.5,
                 "samples": 10, "rates": "2400", "analog": 3, "digital": 4, "events": 5, "forgiven": 0, **columns}
        self.run("INSERT INTO entries (%s) VALUES (%s)" % (", ".join(entry), ", ".join("?" * len(entry))), *entry.values())
        return self.column("SELECT max(id) FROM entries")[0]

    def write(self, *options, code=0):
        return zucmtr("archive", "page", "-o", self.page, *options, self.place, code=code)

    def files(self):
        """The files of the page by their paths, with contents and times."""
        return {str(file.relative_to(self.page)): (file.read_bytes(), file.stat().st_mtime_ns)
                for file in sorted(self.page.rglob("*")) if file.is_file()}

    def names(self, kind):
        return sorted(file.name for file in (self.page / "data").glob(kind + "-*.js"))

    def head(self):
        """What index.html knows of the archive."""
        page = (self.page / "index.html").read_text(encoding="utf-8")
        return json.loads(re.search(r'<script type="text/plain" id="archive">(.*?)</script>', page, re.DOTALL).group(1))

    def piece(self, name):
        text = (self.page / "data" / (name + ".js")).read_text(encoding="utf-8")
        assert text.startswith("zuView.take(") and text.endswith(");\n"), text[:100]
        return json.loads(text[len("zuView.take("):-len(");\n")])


def spread(column, count):
    """The values of a piece's column; texts too."""
    if isinstance(column, dict) and "words" in column:
        return [column["words"][place] for place in spread(column["of"], count)]
    if isinstance(column, dict):
        values, last = [], column["first"]
        for step in spread(column["steps"], count):
            last += step
            values.append(last)
        return values
    return column if isinstance(column, list) else [column] * count


def wave(letters):
    """The values of a picture's wave, in parts of the greatest one."""
    order = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_"
    return [(order.index(letter) - 31) / 31 for letter in letters]
