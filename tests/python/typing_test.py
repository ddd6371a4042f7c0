"""Types: the package and a user's script by mypy --strict, the extension against its stub.

typing_test.py ROOT: the source directory.
"""

import inspect
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

from support import Case
from zucmtr import _core

ROOT = Path(sys.argv.pop(1))
SCRIPT = ROOT / "tests/python/analysis_script.py"


class TypesTest(Case):
    def test_are_complete_for_the_package_and_for_a_script_that_uses_it(self):
        shutil.copytree(ROOT / "python/zucmtr", self.directory / "zucmtr")
        run = subprocess.run([sys.executable, "-m", "mypy", "--strict", "--no-error-summary", "--no-incremental",
                              "--config-file", str(ROOT / "pyproject.toml"), "--package", "zucmtr", "--package", "analysis_script"],
                             cwd=self.directory, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", check=False,
                             env={"MYPYPATH": f"{self.directory}:{SCRIPT.parent}", "PATH": "/usr/bin"})
        said = [line.partition(": ")[2] for line in run.stdout.splitlines()]
        # The last two lines of the script are there to see that mypy knows the package's types.
        self.assertEqual(said, ['note: Revealed type is "numpy.dtype[Any]"',
                                'error: Argument 1 to "highest" has incompatible type "str"; expected "Path"  [arg-type]'])

    def test_are_marked_as_part_of_the_package(self):
        self.assertTrue((Path(_core.__file__).parent / "py.typed").is_file())

    def test_of_the_extension_are_in_its_stub(self):
        stub = (ROOT / "python/zucmtr/_core.pyi").read_text(encoding="utf-8")
        members = {name for name in vars(_core.Record) if not name.startswith("_")}
        self.assertEqual(set(re.findall(r"^    def ([a-z]\w*)", stub, re.MULTILINE)), members)
        functions = {name for name, one in vars(_core).items() if inspect.isroutine(one)}
        self.assertEqual(set(re.findall(r"^def (\w+)", stub, re.MULTILINE)), functions)


if __name__ == "__main__":
    unittest.main()
