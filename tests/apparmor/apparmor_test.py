"""The AppArmor profile of the service, as apparmor_parser compiles it: it allows everything that 'zucmtr watch' does in a run
with all that its units offer, and little else. Where the kernel has AppArmor, the same run is done under the profile.

    apparmor_test.py ZUCMTR PACKAGING
"""
import json
import os
import pathlib
import re
import socket
import subprocess
import sys
import tempfile
import unittest

from accesses import Accesses, traced
from compiledprofile import Profile

PROGRAM, PACKAGING = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
SOURCES = PACKAGING / "apparmor"
PROFILE = SOURCES / "zucmtr-watch"
UNITS = [PACKAGING / "systemd" / name for name in ("zucmtr-watch.service", "zucmtr-watch@.service")]
KERNEL = pathlib.Path("/sys/kernel/security/apparmor/profiles")

# What an administrator writes: a command that reads the summary, looks at the record and leaves a copy.
COMMAND = """/bin/sh -c 'cat >"$TMPDIR"/summary; cp "$ZUCMTR_RECORD" "$TMPDIR"; {program} info "$ZUCMTR_RECORD"; date'"""


class Place:
    """A machine's directories below one of our own, with a recorder that has a recording."""

    def __init__(self, directory):
        self.root = pathlib.Path(directory)
        for name in ("etc/zucmtr/watch.d", "srv/zucmtr/line-7/in", "srv/zucmtr/line-7/out", "srv/zucmtr/line-7/archive",
                     "var/lib/zucmtr", "var/log/zucmtr", "run/zucmtr", "run/systemd", "tmp"):
            (self.root / name).mkdir(parents=True)
        station = self.root / "station"
        subprocess.run([PROGRAM, "sample", "--out", station], check=True, capture_output=True)
        min(station.glob("*.ZU")).rename(self.root / "srv/zucmtr/line-7/in/a.ZU")
        ini = re.sub("Время ожидания=.*", "Время ожидания=50", (station / "ZuDrv.ini").read_text())
        (self.root / "etc/zucmtr/north.ini").write_text(ini)
        self.write_settings(COMMAND.format(program=PROGRAM))

    def write_settings(self, command):
        line = self.root / "srv/zucmtr/line-7"
        (self.root / "etc/zucmtr/watch.d/line-7.conf").write_text(
            f"ini = ../north.ini\ndirectory = {line}/in\nout = {line}/out\narchive = {line}/archive\n"
            f"state = {self.root}/var/lib/zucmtr/line-7.journal\nlog = {self.root}/var/log/zucmtr/line-7.log\n"
            f"catalogue = {self.root}/srv/zucmtr/zucmtr-archive.db\nview = yes\nevents = yes\nexec = {command}\n")

    def command(self):
        return [PROGRAM, "watch", "--once", "--config", self.root / "etc/zucmtr/watch.d", "--status",
                self.root / "run/zucmtr/status.json"]

    def environment(self):
        return {"PATH": "/usr/bin:/bin", "LANG": "ru_RU.UTF-8", "TZ": "Europe/Moscow", "HOME": str(self.root / "srv/zucmtr"),
                "TMPDIR": str(self.root / "tmp"), "NOTIFY_SOCKET": str(self.root / "run/systemd/notify")}

    def as_installed(self, path):
        """The path on a machine with the packages."""
        if path == str(PROGRAM):
            return "/usr/bin/zucmtr"
        if re.fullmatch(r".*/libZuCmtrConverter\.so[.0-9]*", path):
            return "/usr/lib/x86_64-linux-gnu/" + os.path.basename(path)
        return path.removeprefix(str(self.root)) if path.startswith(f"{self.root}/") else path


class ProfileTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory(prefix="zucmtr-apparmor")
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name).resolve()

    def profile(self, *folders):
        return Profile(PROFILE, [*folders, SOURCES], self.directory / "compiled")

    def notified(self, place):
        """systemd's socket."""
        listener = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.addCleanup(listener.close)
        listener.bind(str(place.root / "run/systemd/notify"))

    def assertConverted(self, place, ran):
        events = [json.loads(line) for line in ran.stdout.decode().splitlines()]
        self.assertEqual([event["event"] for event in events if event["event"] not in ("started", "found", "converting")],
                         ["converted", "commandDone", "stopped"], ran)
        self.assertEqual(len(list((place.root / "srv/zucmtr/line-7/archive").glob("*.ZU"))), 1)

    def test_all_that_a_run_of_the_service_does_is_allowed(self):
        place = Place(self.directory / "root")
        self.notified(place)
        ran = traced(place.command(), self.directory / "traces", env=place.environment())
        self.assertConverted(place, ran)
        done = Accesses(self.directory / "traces")
        wanted = {place.as_installed(path): letters for path, letters in done.wanted.items()}
        for path, letter in {"/srv/zucmtr/line-7/in/a.ZU": "r", "/srv/zucmtr/zucmtr-archive.db": "k", "/usr/bin/zucmtr": "x",
                             "/var/lib/zucmtr/line-7.journal": "w", "/run/systemd/notify": "w", "/memfd:zucmtr": "w",
                             "/var/log/zucmtr/line-7.log": "w"}.items(): # the trace is read well
            self.assertIn(letter, wanted[path], path)
        profile = self.profile()
        denied = {path: letters - profile.allowed(path, is_owner=path.startswith("/proc/"))
                  for path, letters in wanted.items()}
        self.assertEqual({path: letters for path, letters in denied.items() if letters}, {})
        self.assertGreater(len(done.links), 0)
        for name, target in done.links:
            self.assertTrue(profile.allows_link(place.as_installed(name), place.as_installed(target)), name)
        self.assertTrue(all(profile.keeps_profile(place.as_installed(path)) for path in done.executed), done.executed)

    def test_what_the_service_has_no_business_with_is_denied(self):
        profile = self.profile()
        for path in ("/home/user/letter", "/root/.ssh/id_ed25519", "/etc/shadow", "/etc/ssl/private/key.pem",
                     "/var/lib/postgresql/15/main/PG_VERSION", "/boot/vmlinuz", "/dev/sda", "/proc/kcore", "/proc/1/environ"):
            self.assertEqual(profile.allowed(path), set(), path)
        for path in ("/etc/zucmtr/north.ini", "/usr/bin/zucmtr", "/srv/elsewhere/a.ZU", "/mnt/line-7/a.ZU", "/etc/passwd"):
            self.assertEqual(profile.allowed(path) - set("rxm"), set(), path)
        # What the service can write it cannot start.
        for path in ("/srv/zucmtr/line-7/in/program", "/tmp/program", "/var/lib/zucmtr/program", "/memfd:zucmtr"):
            self.assertLessEqual(set("rw"), profile.allowed(path))
            self.assertNotIn("x", profile.allowed(path), path)
        self.assertFalse(profile.allows_link("/srv/zucmtr/line-7/out/a", "/etc/passwd"))

    def test_catalogue_on_a_server_of_this_machine_is_reached(self):
        self.assertLessEqual(set("rw"), self.profile().allowed("/run/postgresql/.s.PGSQL.5432"))

    def test_administrator_adds_directories_and_rules(self):
        record, tool = "/mnt/records/a.cfg", "/home/operator/on-record"
        before = self.profile()
        self.assertEqual((before.allowed(record), before.allowed(tool)), (set("r"), set()))
        folder = self.directory / "etc"
        (folder / "tunables/zucmtr.d").mkdir(parents=True)
        (folder / "tunables/zucmtr.d/records").write_text("@{ZUCMTR_DATA}+=/mnt/records\n")
        (folder / "local").mkdir()
        (folder / "local/zucmtr-watch").write_text(f"{tool} mrix,\n")
        after = self.profile(folder)
        self.assertEqual((after.allowed(record), after.allowed(tool)), (set("rwkla"), set("mrx")))

    def test_units_take_the_profile_and_the_command_line_does_not(self):
        names = subprocess.run(["apparmor_parser", "--names", "-I", SOURCES, "-I", "/etc/apparmor.d", PROFILE],
                               capture_output=True, text=True, check=True).stdout.split()
        self.assertEqual(names, ["zucmtr-watch"])
        # A name and no path: no program has it by itself.
        self.assertIn("\nprofile zucmtr-watch flags=(attach_disconnected) {\n", PROFILE.read_text())
        for unit in UNITS:
            # The minus: without AppArmor the service starts all the same.
            self.assertIn(f"AppArmorProfile=-{names[0]}", unit.read_text().splitlines(), unit)

    def test_units_are_rated_below_one_of_ten(self):
        for unit in UNITS:
            ran = subprocess.run(["systemd-analyze", "security", "--offline=true", "--threshold=9", unit],
                                 capture_output=True, text=True, check=False)
            self.assertEqual(ran.returncode, 0, ran.stdout[-300:] + ran.stderr)

    def test_run_under_the_profile_where_the_kernel_has_it(self):
        """Elsewhere the profile for this run is still compiled, and asked about the program in its place here."""
        name = f"zucmtr-watch-test-{os.getpid()}"
        place = Place(self.directory / "root")
        self.notified(place)
        text = PROFILE.read_text().replace("profile zucmtr-watch ", f"profile {name} ")
        libraries = PROGRAM.parents[2]
        own = f"  {libraries}/** mrix,\n  {place.root}/{{,**}} rwkl,\n"
        source = self.directory / name
        source.write_text(text.replace("  include if exists <local", own + "  include if exists <local"))
        profile = Profile(source, [SOURCES], self.directory / "compiled")
        self.assertLessEqual(set("xr"), profile.allowed(str(PROGRAM)))
        if KERNEL.exists():
            self.run_enforced(place, name, source)

    def run_enforced(self, place, name, source):
        parser = ["apparmor_parser", "-I", SOURCES, "-I", "/etc/apparmor.d"]
        subprocess.run([*parser, "--replace", source], check=True)
        self.addCleanup(subprocess.run, [*parser, "--remove", source], check=True)
        ran = subprocess.run(["aa-exec", "-p", name, "--", *place.command()], env=place.environment(), capture_output=True,
                             check=False)
        self.assertConverted(place, ran)
        for path in ("/root", "/home", "/var/lib/dpkg"):
            looked = subprocess.run(["aa-exec", "-p", name, "--", "ls", path], capture_output=True, check=False)
            self.assertNotEqual(looked.returncode, 0, path)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
