"""What the tests of the page have in common: the command line, the program, a directory, the browser and the opening of
pages.

    ..._test.py ZUCMTR CHROMEDRIVER CHROMIUM [unittest arguments]
"""
import atexit
import pathlib
import subprocess
import sys
import tempfile
import unittest

from browser import Browser, until

PROGRAM, DRIVER, CHROMIUM = sys.argv[1:4]


def zucmtr(*arguments, code=0):
    result = subprocess.run([PROGRAM, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            encoding="utf-8")
    assert result.returncode == code, result.stderr
    return result


class Pages(Browser):
    """A browser that shows pages of the program."""

    def __init__(self):
        super().__init__(DRIVER, CHROMIUM)

    def open_page(self, path, settings="lang=en&theme=light"):
        self.open(path, settings if "sheet=" in settings else settings + "&sheet=oscillogram")
        until(lambda: self.run("return Boolean(window.zuView && zuView.page)"), "the page's scripts")
        until(lambda: self.run("const p = zuView.page; return p.opened !== 'oscillogram' || p.data.count === 0 || p.data.analog.length === 0 || "
                               "p.strips.some((strip) => strip.chart && !strip.stale)"), "the first strip")
        self.settle()

    def show(self, record, path, options=(), settings="lang=en&theme=light"):
        """Writes a record as path.cfg and opens its page; returns what the program prints on standard error."""
        configuration, page = path.with_suffix(".cfg"), path.with_suffix(".html")
        record.write(configuration)
        result = zucmtr("view", configuration, "-o", page, *options)
        self.open_page(page, settings)
        return result.stderr

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def texts(self, selector):
        return self.run("return [...document.querySelectorAll(arguments[0])].map((one) => one.textContent)", selector)

    def set_cursor(self, cursor, sample):
        self.run("zuView.page.cursors.set(arguments[0], arguments[1])", cursor, sample)
        self.settle()

    def choose_method(self, index):
        self.run("const choice = document.getElementById('choice-method'); choice.selectedIndex = arguments[0];"
                 "choice.dispatchEvent(new Event('change'))", index)
        self.settle()


# One directory and one browser for all tests of a file; both go with the process.
scratch = tempfile.TemporaryDirectory()
folder = pathlib.Path(scratch.name)
browser = Pages()
atexit.register(browser.close)


def run_tests():
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
