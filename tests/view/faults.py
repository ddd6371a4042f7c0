"""Simulated faults with their pages, for the tests of what happened."""
import functools
import json
import os
import re
import subprocess

from pages import PROGRAM, browser, folder

RUSSIAN = {**os.environ, "LC_ALL": "ru_RU.UTF-8", "LANGUAGE": ""}
ANSWER = "lang=en&theme=light&sheet=answerSheet"


def run(*arguments, environment=None):
    return subprocess.run([PROGRAM, *map(str, arguments)], check=True, env=environment, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, encoding="utf-8").stdout


class Fault:
    """A simulated recording, its page, and what the program and the simulation say about it; each made when it is
    first asked for."""

    def __init__(self, name, *options, window=()):
        self.place, self.options, self.window = folder / name, options, window

    @functools.cached_property
    def recording(self):
        run("sample", "--out", self.place, *self.options)
        return next(self.place.glob("*.ZU"))

    @functools.cached_property
    def page(self):
        page = self.recording.with_suffix(".html")
        run("view", self.recording, "-o", page, *self.window)
        return page

    @functools.cached_property
    def summary(self):
        return json.loads(run("events", "--json", self.recording))

    @functools.cached_property
    def truth(self):
        return json.loads(self.recording.with_suffix(".truth.json").read_text(encoding="utf-8"))

    @functools.cached_property
    def length(self):
        """Of the line, km."""
        section = (self.place / "lines.ini").read_text(encoding="utf-8")
        return float(re.search(r"length\s*=\s*([\d.]+)", section).group(1))

    def open(self, settings=ANSWER):
        browser.open_page(self.page, settings)
        return self

    @functools.cached_property
    def russian(self):
        """The sentences."""
        return json.loads(run("events", "--json", self.recording, environment=RUSSIAN))["text"]


again = Fault("again", "--fault", "BCG", "--distance", "70", "--resistance", "5", "--reclose", "fault")
evolving = Fault("evolving", "--fault", "AG", "--evolving", "ABG", "--distance", "20", "--resistance", "3")
ranged = Fault("ranged", "--random-fault", "19")
quiet = Fault("quiet", "--random-quiet", "1")


def duration(seconds):
    """As the sentences have it."""
    if abs(seconds) >= 1:
        return "%.2f s" % seconds
    milliseconds = seconds * 1000
    return "%.*f ms" % (0 if abs(milliseconds - round(milliseconds)) < 0.05 else 1, milliseconds)
