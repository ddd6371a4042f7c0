"""The Debian packages of a build: what is in them, what lintian says, and a host built against them.

debian_test.py BUILD_DIRECTORY HOST_SOURCE VERSION CPACK
"""

import argparse
import gzip
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).parents[2]
LIBRARY, DEVELOPMENT, PROGRAM, PYTHON = "libzucmtrconverter2", "libzucmtrconverter-dev", "zucmtr", "python3-zucmtr"


def run(*command, **options):
    """Standard output of a command that must succeed; its own words are shown if it does not."""
    result = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} ended with {result.returncode}:\n{result.stdout}")
    return result.stdout


class Unpacked:
    """The packages unpacked into one root, and a sample station made by the program from there."""

    def __init__(self, directory):
        self.packages = directory / "packages"
        # The packages are for everybody, whatever the umask of the one who builds them.
        run(arguments.cpack, "-G", "DEB", "-B", self.packages, cwd=arguments.build, umask=0o077)
        self.files = {path.name.split("_")[0]: path for path in self.packages.glob("*.deb")}
        self.root = directory / "root"
        for path in self.files.values():
            run("dpkg-deb", "-x", path, self.root)
        self.library_directory = next(self.root.glob("usr/lib/*/libZuCmtrConverter.so.2")).parent
        self.environment = dict(os.environ, LD_LIBRARY_PATH=str(self.library_directory))
        self.station = directory / "station"
        self.station.mkdir()
        self.program("sample", "--out", self.station)

    def program(self, *words):
        return run(self.root / "usr/bin/zucmtr", *words, env=self.environment)

    def field(self, package, name):
        return run("dpkg-deb", "-f", self.files[package], name).strip()

    def names(self, package):
        """The files of a package, without directories."""
        rows = [line.split(maxsplit=5) for line in run("dpkg-deb", "-c", self.files[package]).splitlines()]
        return {row[5].split(" -> ")[0].removeprefix("./") for row in rows if not row[0].startswith("d")}


def convert_with_host(unpacked, target):
    """Builds the example against the unpacked packages alone, and converts the station with it."""
    search = dict(unpacked.environment, PKG_CONFIG_PATH=str(unpacked.library_directory / "pkgconfig"))
    flags = run("pkg-config", "--cflags", "--libs", "zucmtrconverter", env=search).split()
    assert f"-I{unpacked.root}" in " ".join(os.path.normpath(flag) for flag in flags), flags
    run("g++", "-std=c++17", "-fPIC", arguments.host, "-o", target / "host", *flags, env=search)
    output = target / "records"
    output.mkdir()
    (output / "ZuDrv.ini").symlink_to(unpacked.station / "ZuDrv.ini")
    recordings = sorted(unpacked.station.glob("*.ZU"))
    run(target / "host", *recordings, cwd=output, env=unpacked.environment)
    return output


def records(directory):
    return {path.name: path.read_bytes() for path in directory.iterdir()
            if path.suffix.lower() in (".cfg", ".dat", ".hdr", ".inf", ".cff")}


class Debian(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.temporary.cleanup)
        cls.directory = pathlib.Path(cls.temporary.name)
        cls.unpacked = Unpacked(cls.directory)

    def test_four_packages_of_the_version_are_made(self):
        self.assertEqual(set(self.unpacked.files), {LIBRARY, DEVELOPMENT, PROGRAM, PYTHON})
        for package in self.unpacked.files:
            self.assertEqual(self.unpacked.field(package, "Version"), arguments.version + "-1")

    def test_lintian_finds_nothing(self):
        with tempfile.TemporaryDirectory() as scratch:  # it leaves files there
            run("lintian", "--fail-on", "error,warning", "--allow-root", *self.unpacked.files.values(),
                env=dict(os.environ, TMPDIR=scratch))

    def test_dependencies_are_those_of_the_binaries(self):
        library = self.unpacked.field(LIBRARY, "Depends")
        self.assertRegex(library, r"\blibqt5core5a \(>= 5\.")
        self.assertNotIn("libqt5gui5", library)
        program = self.unpacked.field(PROGRAM, "Depends")
        self.assertIn(f"{LIBRARY} (>= {arguments.version})", program)
        self.assertRegex(program, r"\blibqt5gui5 ")
        self.assertRegex(program, r"\blibsqlite3-0 ")
        self.assertRegex(program, r"\blibqt5sql5 ")
        self.assertNotIn("libqt5sql5-", program)  # drivers: that of a server is suggested, files need none
        self.assertEqual(self.unpacked.field(PROGRAM, "Suggests"), "libqt5sql5-psql")
        self.assertIn(f"{LIBRARY} (= {arguments.version}-1), qtbase5-dev", self.unpacked.field(DEVELOPMENT, "Depends"))

    def test_symbols_name_the_eleven_functions(self):
        symbols = run("dpkg-deb", "-I", self.unpacked.files[LIBRARY], "symbols").splitlines()
        self.assertEqual(symbols[0], f"libZuCmtrConverter.so.2 {LIBRARY} #MINVER#")
        functions = [line.split()[0] for line in symbols if line.startswith(" ")]
        self.assertEqual(len(functions), 11)
        self.assertTrue(all(function.startswith("_Z") and "ZuCmtr" in function for function in functions), functions)

    def test_each_package_has_copyright_and_a_changelog_of_its_version(self):
        for package in self.unpacked.files:
            documents = self.unpacked.root / "usr/share/doc" / package
            self.assertTrue((documents / "copyright").is_file())
            with gzip.open(documents / "changelog.Debian.gz", "rt", encoding="utf-8") as changelog:
                self.assertIn(f" ({arguments.version}-1) ", changelog.readline())

    def test_program_package_describes_its_ini_file_and_its_json(self):
        documents = {"ini.md", "json.md", "zucmtr.schema.json"}
        names = {name.rsplit("/", 1)[1].removesuffix(".gz") for name in self.unpacked.names(PROGRAM)
                 if name.startswith("usr/share/doc/zucmtr/")}
        self.assertEqual(documents - names, set())

    def test_program_package_has_each_manual_page_in_both_languages(self):
        english, russian = ({name.removeprefix(directory) for name in self.unpacked.names(PROGRAM)
                             if name.startswith(directory)} for directory in ("usr/share/man/man1/", "usr/share/man/ru/man1/"))
        self.assertIn("zucmtr-archive-find.1.gz", english)
        self.assertEqual(english, russian)

    def test_library_package_holds_no_more_than_the_library(self):
        names = {name for name in self.unpacked.names(LIBRARY) if not name.startswith("usr/share/")}
        directory = str(self.unpacked.library_directory.relative_to(self.unpacked.root))
        self.assertEqual(names, {f"{directory}/libZuCmtrConverter.so.2",
                                 f"{directory}/libZuCmtrConverter.so.{arguments.version}"})

    def test_program_finds_the_library_without_a_path_of_its_own(self):
        dynamic = run("readelf", "-d", self.unpacked.root / "usr/bin/zucmtr")
        self.assertIn("[libZuCmtrConverter.so.2]", dynamic)
        self.assertNotRegex(dynamic, "RUNPATH|RPATH")
        self.assertIn(arguments.version, self.unpacked.program("--version"))

    def test_module_reads_and_converts_a_recording_from_where_it_is_installed(self):
        depends = self.unpacked.field(PYTHON, "Depends")
        for package in (f"{LIBRARY} (>= {arguments.version})", "python3-numpy", "python3 (<< "):
            self.assertIn(package, depends)
        modules = self.unpacked.root / "usr/lib/python3/dist-packages"
        extension = next(modules.glob("zucmtr/_core.*.so"))
        self.assertNotRegex(run("readelf", "-d", extension), "RUNPATH|RPATH")
        target = self.directory / "module"
        target.mkdir()
        script = ("import sys, zucmtr; rec = zucmtr.open(zucmtr.convert(*sys.argv[1:]).record); "
                  "print(zucmtr.__file__, rec.analog[0].values.shape)")
        said = run("/usr/bin/python3", "-B", "-c", script, next(self.unpacked.station.glob("*.ZU")), target,
                   env=dict(self.unpacked.environment, PYTHONPATH=str(modules)))
        self.assertRegex(said, rf"^{modules}/zucmtr/__init__.py \([0-9]{{3,}},\)$")

    def module_environment(self):
        return dict(self.unpacked.environment, PYTHONPATH=str(self.unpacked.root / "usr/lib/python3/dist-packages"),
                    PYTHONDONTWRITEBYTECODE="1", ZUCMTR=str(self.unpacked.root / "usr/bin/zucmtr"), MPLBACKEND="Agg")

    def test_module_passes_its_own_tests_where_it_is_installed(self):
        for name in ("record", "channels", "convert"):
            run("/usr/bin/python3", ROOT / f"tests/python/{name}_test.py", env=self.module_environment())

    def test_module_comes_with_types_a_document_and_examples_that_run(self):
        names = self.unpacked.names(PYTHON)
        for name in ("py.typed", "_core.pyi", "__init__.py"):
            self.assertIn(f"usr/lib/python3/dist-packages/zucmtr/{name}", names)
        documents = self.unpacked.root / "usr/share/doc/python3-zucmtr"
        self.assertTrue((documents / "python.md").is_file())
        fault = self.directory / "fault"
        self.unpacked.program("sample", "--out", fault, "--fault", "AG")
        recording = next(fault.glob("*.ZU"))
        tour = run("/usr/bin/python3", documents / "examples/fault.py", recording, fault / "figure.png",
                   env=self.module_environment())
        self.assertIn("AG forward, 24.0 km away", tour)
        table = run("/usr/bin/python3", documents / "examples/archive_futures.py", fault, env=self.module_environment())
        self.assertIn(f"{recording},2024-01-31T12:00:00.050000+03:00,", table)

    def test_units_are_locked_down_and_start_what_the_program_understands(self):
        options = self.unpacked.program("watch", "--help")
        for name in ("zucmtr-watch@.service", "zucmtr-watch.service"):
            unit = self.unpacked.root / "usr/lib/systemd/system" / name
            # Ten of a hundred: systemd's own measure of what a service may do.
            run("systemd-analyze", "security", "--offline=true", "--threshold=10", unit)
            start = next(line for line in unit.read_text().splitlines() if line.startswith("ExecStart="))
            program, command, *words = start.removeprefix("ExecStart=").split()
            self.assertEqual(("/usr/bin/zucmtr", "watch"), (program, command))
            for option in (word for word in words if word.startswith("--")):
                self.assertIn(f"  {option} ", options)

    def test_host_built_against_the_packages_writes_what_the_program_writes(self):
        target = self.directory / "host"
        target.mkdir()
        by_host = records(convert_with_host(self.unpacked, target))
        by_program = self.directory / "comtrade"
        self.unpacked.program("convert", "--out", by_program, "--make-out", self.unpacked.station)
        self.assertGreater(len(by_host), 0)
        self.assertEqual(by_host, records(by_program))


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("build", "host", "version", "cpack"):
        parser.add_argument(name)
    arguments = parser.parse_args()
    unittest.main(argv=sys.argv[:1])
