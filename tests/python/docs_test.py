"""The examples of docs/python.md as doctests: docs_test.py DOCUMENT."""

import contextlib
import doctest
import os
import re
import sys
import unittest
from pathlib import Path

import matplotlib
from support import Case, program

matplotlib.use("Agg")
DOCUMENT = Path(sys.argv.pop(1))


class DocumentTest(Case):
    def test_shows_what_the_module_does(self):
        text = DOCUMENT.read_text(encoding="utf-8")
        examples = "\n".join(re.findall(r"^```pycon\n(.*?)^```$", text, re.MULTILINE | re.DOTALL))
        program("sample", "--out", self.directory, "--fault", "AG")
        test = doctest.DocTestParser().get_doctest(examples, {}, DOCUMENT.name, None, 0)
        runner = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS | doctest.NORMALIZE_WHITESPACE)
        before = os.getcwd()
        os.chdir(self.directory)
        with contextlib.ExitStack() as stack:
            stack.callback(os.chdir, before)
            result = runner.run(test)
        self.assertEqual(result.failed, 0)
        self.assertGreater(result.attempted, 25)


if __name__ == "__main__":
    unittest.main()
