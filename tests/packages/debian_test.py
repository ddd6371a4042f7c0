"""What debian/ says of the build, held against the build: scripts/check-packages.sh makes the packages themselves, which takes
longer.

debian_test.py BUILD_DIRECTORY PROJECT_DIRECTORY VERSION CMAKE_PACKAGE
The CMake package says which Qt the build is with. With Qt 6 there are packages of the library alone.
"""

import argparse
import fnmatch
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

QT6 = "ZuCmtrConverterQt6"
LIBRARIES = {"ZuCmtrConverter": "libzucmtrconverter2", QT6: "libzucmtrconverterqt6-2"}


def run(*command, **options):
    """Standard output of a command that must succeed; its own words are shown if it does not."""
    result = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} ended with {result.returncode}:\n{result.stdout}")
    return result.stdout


def lines_of(name):
    """The lines of a file of debian/, without comments."""
    text = (arguments.project / "debian" / name).read_text(encoding="utf-8")
    return [line for line in text.splitlines() if line and not line.startswith("#")]


def covers(pattern, name):
    """Whether a line of debian/*.install or debian/not-installed names a file, or a directory above it."""
    places = [name, *map(str, pathlib.PurePath(name).parents)]
    return any(fnmatch.fnmatchcase(place, pattern) and place.count("/") == pattern.count("/") for place in places)


def field_names(field):
    """The packages of a field of debian/control, without their conditions."""
    control = "".join(line + "\n" for line in lines_of("control"))
    value = re.search(rf"^{field}:(.*(?:\n .*)*)", control, re.MULTILINE).group(1)
    return {re.split(r"[ (<:]", part.strip())[0] for part in value.split(",") if part.strip()}


class Qt6(unittest.TestCase):
    """The packages of the library with Qt 6."""
    install_words = (("--component", "runtime"), ("--component", "development"))

    @staticmethod
    def fills(name):
        """Whether the files of this build are all that the list can name."""
        return "qt6" in name

    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.directory = pathlib.Path(temporary.name)
        cls.root = cls.directory / "root"
        for words in cls.install_words:
            run("cmake", "--install", arguments.build, "--prefix", "/usr", *words,
                env=dict(os.environ, DESTDIR=str(cls.root)))
        # debhelper has settings outside /usr.
        cls.installed = {re.sub("^usr/etc/", "etc/", str(path.relative_to(cls.root)))
                         for path in cls.root.rglob("*") if not path.is_dir()}
        cls.library = next(cls.root.glob(f"usr/lib/*/lib{arguments.package}.so.2"))

    def test_each_installed_file_goes_into_one_package_or_is_left_out_on_purpose(self):
        packages = [path.name for path in (arguments.project / "debian").glob("*.install")] + ["not-installed"]
        patterns = [(line.split()[0], name) for name in packages for line in lines_of(name)]
        for name in sorted(self.installed):
            self.assertEqual(len([package for pattern, package in patterns if covers(pattern, name)]), 1, name)
        for pattern, package in patterns:
            if self.fills(package):
                self.assertTrue(any(covers(pattern, name) for name in self.installed), f"{package}: {pattern}")

    def test_symbols_are_those_that_the_library_exports(self):
        package, made = LIBRARIES[arguments.package], self.directory / "symbols"
        run("dpkg-gensymbols", "-c4", "-q", f"-p{package}", f"-v{arguments.version}", f"-e{self.library}",
            f"-Idebian/{package}.symbols", f"-O{made}", cwd=arguments.project)
        functions = [line.split()[0] for line in made.read_text().splitlines() if line.startswith(" ")]
        self.assertEqual(len(functions), 11)
        self.assertTrue(all(function.startswith("_Z") and "ZuCmtr" in function for function in functions), functions)


class Qt5(Qt6):
    """All others: those of the library, to which the same applies, and of the rest."""
    install_words = ((),)

    @staticmethod
    def fills(name):
        return "qt6" not in name

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.station = cls.directory / "station"
        cls.program("sample", "--out", cls.station)

    @classmethod
    def program(cls, *words):
        return run(cls.root / "usr/bin/zucmtr", *words)

    def test_units_and_users_that_are_installed_are_those_that_debhelper_takes(self):
        for place in ("usr/lib/systemd/system", "usr/lib/sysusers.d"):
            for path in (self.root / place).iterdir():
                taken = {"zucmtr.conf": "zucmtr.sysusers", "zucmtr-watch.service": "zucmtr.zucmtr-watch.service",
                         "zucmtr-watch@.service": "zucmtr@.zucmtr-watch.service"}[path.name]
                self.assertEqual(path.read_text(), (arguments.project / "debian" / taken).read_text(), path)

    def test_version_is_the_same_everywhere_and_grows(self):
        versions = re.findall(r"^zucmtrconverter \((\S+)\)", "\n".join(lines_of("changelog")), re.MULTILINE)
        self.assertEqual(versions[0], arguments.version)
        self.assertEqual(os.readlink(self.library), f"libZuCmtrConverter.so.{arguments.version}")
        self.assertIn(arguments.version, self.program("--version"))
        for newer, older in zip(versions, versions[1:]):
            run("dpkg", "--compare-versions", newer, "gt", older)

    def test_packages_are_built_with_what_the_project_is_built_with(self):
        script = (arguments.project / "scripts/install-packages.sh").read_text(encoding="utf-8")
        build, package = (set(re.search(rf'^ +{job}\) packages="\$packages (.*)" ;;$', script, re.MULTILINE).group(1).split())
                          for job in ("build", "package"))
        required = field_names("Build-Depends") | field_names("Build-Depends-Arch")
        # The compiler is always there. The rest is for packages; or for another processor, and not installed by the script.
        self.assertEqual(required - build, {"debhelper-compat", "dh-apparmor", "dh-sequence-installsysusers",
                                            "dh-sequence-python3", "qemu-user", "qt6-base-dev"})
        self.assertEqual(build - required, {"g++"})
        self.assertLessEqual({"debhelper", "dh-apparmor", "dh-python", "qt6-base-dev"}, package)

    def test_manual_pages_are_there_in_both_languages(self):
        english, russian = ({name.removeprefix(directory) for name in self.installed if name.startswith(directory)}
                            for directory in ("usr/share/man/man1/", "usr/share/man/ru/man1/"))
        self.assertIn("zucmtr-archive-find.1.gz", english)
        self.assertEqual(english, russian)

    def test_module_converts_and_reads_a_recording_from_where_it_is_installed(self):
        modules = next(self.root.glob("usr/lib/python3.*/dist-packages"))
        for name in ("py.typed", "_core.pyi"):
            self.assertTrue((modules / "zucmtr" / name).is_file())
        target = self.directory / "module"
        target.mkdir()
        script = ("import sys, zucmtr; rec = zucmtr.open(zucmtr.convert(*sys.argv[1:]).record); "
                  "print(zucmtr.__file__, rec.analog[0].values.shape)")
        said = run("/usr/bin/python3", "-B", "-c", script, next(self.station.glob("*.ZU")), target,
                   env=dict(os.environ, PYTHONPATH=str(modules)))
        self.assertRegex(said, rf"^{modules}/zucmtr/__init__.py \([0-9]{{3,}},\)$")

    def test_units_are_locked_down_and_start_what_the_program_understands(self):
        options = self.program("watch", "--help")
        for name in ("zucmtr-watch@.service", "zucmtr-watch.service"):
            unit = self.root / "usr/lib/systemd/system" / name
            # Ten of a hundred: systemd's own measure of what a service may do.
            run("systemd-analyze", "security", "--offline=true", "--threshold=10", unit)
            start = next(line for line in unit.read_text().splitlines() if line.startswith("ExecStart="))
            program, command, *words = start.removeprefix("ExecStart=").split()
            self.assertEqual(("/usr/bin/zucmtr", "watch"), (program, command))
            for option in (word for word in words if word.startswith("--")):
                self.assertIn(f"  {option} ", options)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("build", "project"):
        parser.add_argument(name, type=pathlib.Path)
    for name in ("version", "package"):
        parser.add_argument(name)
    arguments = parser.parse_args()
    unittest.main(argv=sys.argv[:1], defaultTest="Qt6" if arguments.package == QT6 else "Qt5")
