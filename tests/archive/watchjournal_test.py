"""The journal of watch in a catalogue, in a file and on a server: watchjournal_test.py ZUCMTR SOURCE_DIRECTORY"""
import contextlib
import json
import os
import pathlib
import re
import signal
import socket
import subprocess
import sys
import tempfile
import unittest

PROGRAM, SOURCE = pathlib.Path(sys.argv[1]).absolute(), pathlib.Path(sys.argv[2]).absolute()
sys.path += [str(SOURCE / "tests/cli"), str(SOURCE / "tests/torture")]
import catalogues  # pylint: disable=wrong-import-position
from zufiles import recording  # pylint: disable=wrong-import-position

PATIENCE = 60  # seconds
RECORDINGS = "SELECT file, fingerprint, state, record, access, unended, failures, kills, noted FROM {} ORDER BY file"
COMMANDS = "SELECT number, file, state, input, failures, noted FROM {} ORDER BY number"


class Place:
    """Directories of recordings and records, with one catalogue."""

    def __init__(self, root, catalogue):
        self.root, self.catalogue = pathlib.Path(root), catalogue
        self.minutes = 0
        subprocess.run([PROGRAM, "sample", "--out", self.root / "sample", "--seconds", "0.1"], check=True,
                       stdout=subprocess.DEVNULL)
        ini = (self.root / "sample/ZuDrv.ini").read_text("utf-8")
        (self.root / "ZuDrv.ini").write_text(re.sub("^Время ожидания=.*", "Время ожидания=50", ini, flags=re.M), "utf-8")
        for name in ("in", "out"):
            (self.root / name).mkdir()

    def add(self, name, directory="in"):
        self.minutes += 1
        (self.root / directory / name).write_bytes(recording(minutes=self.minutes))

    def words(self, *more, out="out", directory="in"):
        return [PROGRAM, "watch", "--ini", "ZuDrv.ini", "--rescan", "0.05", "--retry-after", "0.05", "--out", out, *more, directory]

    def run(self, words, **options):
        done = subprocess.run(words, cwd=self.root, capture_output=True, text=True, check=False, timeout=PATIENCE,
                              env=dict(os.environ, LC_ALL="C.UTF-8"), **options)
        return done.returncode, [json.loads(line) for line in done.stdout.splitlines()]

    def once(self, *more, **where):
        return self.run(self.words("--once", "--catalogue", self.catalogue.address, *more, **where))

    def start(self):
        return subprocess.Popen(self.words("--catalogue", self.catalogue.address), cwd=self.root, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, text=True, env=dict(os.environ, LC_ALL="C.UTF-8"))

    def own(self, query, table, out="out"):
        return catalogues.File(self.root / out / ".zucmtr-watch").rows(query.format(table))

    def copied(self, query, table, out="out"):
        query = query.format(f"{table} r JOIN journals j ON j.id = r.journal WHERE j.directory = '{self.root / out}'")
        for name in ("file", "number"):
            query = query.replace(f"SELECT {name},", f"SELECT r.{name},").replace(f"BY {name}", f"BY r.{name}")
        return self.catalogue.rows(query.replace(", file,", ", r.file,"))

    def records(self, out="out"):
        return len(list((self.root / out).glob("*.cfg")))


def files(events, kind):
    return [one["file"] for one in events if one["event"] == kind]


def fields(process):
    """Of /proc/PROCESS/stat, after the name: state, parent and others."""
    return pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()


def children_of(process):
    numbers = [int(path.name) for path in pathlib.Path("/proc").glob("[0-9]*")]
    found = []
    for number in numbers:
        with contextlib.suppress(OSError):  # it has ended meanwhile
            if int(fields(number)[1]) == process:
                found.append(number)
    return found


def started(process):
    return int(fields(process)[19]), process


class Journal(unittest.TestCase):
    server = None

    @classmethod
    def setUpClass(cls):
        cls.server = catalogues.postgresserver.PostgresServer()

    @classmethod
    def tearDownClass(cls):
        cls.server.remove()

    def place(self, kind):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        root = pathlib.Path(directory.name)
        return Place(root, catalogues.File(root / "archive.db") if kind == "file" else catalogues.Server(self.server))

    def each(self):
        for kind in ("file", "server"):
            with self.subTest(kind):
                yield self.place(kind)

    def assert_copied(self, place, count, out="out"):
        own = place.own(RECORDINGS, "recordings", out)
        self.assertEqual(len(own), count)
        self.assertEqual(place.copied(RECORDINGS, "journal_recordings", out), own)
        self.assertEqual(place.copied(COMMANDS, "journal_commands", out), place.own(COMMANDS, "commands", out))

    def test_is_there_as_it_is_in_its_own_file(self):
        for place in self.each():
            for name in ("a.ZU", "b.ZU"):
                place.add(name)
            (place.root / "in/junk.ZU").write_bytes(b"junk")
            code, events = place.once("--exec", "false")
            self.assertEqual((code, files(events, "converted")), (1, ["in/a.ZU", "in/b.ZU"]))
            self.assert_copied(place, 3)
            self.assertEqual(place.catalogue.rows("SELECT recorder, state FROM watched ORDER BY file"),
                             [("Vostochnaya", "converted"), ("Vostochnaya", "converted"), ("Vostochnaya", "given up")])
            self.assertEqual(len(place.catalogue.rows("SELECT number FROM journal_commands")), 2)
            place.once("--exec", "true")  # they are done
            self.assertEqual(place.catalogue.rows("SELECT number FROM journal_commands"), [])
            self.assert_copied(place, 3)

    def test_of_runs_without_a_catalogue_is_taken_over_and_nothing_is_converted_again(self):
        for place in self.each():
            for name in ("a.ZU", "b.ZU"):
                place.add(name)
            code, events = place.run(place.words("--once"))
            self.assertEqual((code, len(files(events, "converted"))), (0, 2))
            before = place.own(RECORDINGS, "recordings")
            code, events = place.once()
            self.assertEqual((code, files(events, "found")), (0, []))
            self.assertEqual(place.own(RECORDINGS, "recordings"), before)
            self.assert_copied(place, 2)

    def test_of_each_output_is_one_of_its_own(self):
        for place in self.each():
            (place.root / "in2").mkdir()
            (place.root / "out2").mkdir()
            place.add("a.ZU")
            place.add("b.ZU")
            place.add("a.ZU", "in2")
            place.once()
            place.once(out="out2", directory="in2")
            (place.root / "in/a.ZU").unlink()
            place.once()
            self.assert_copied(place, 1)
            self.assert_copied(place, 1, "out2")
            self.assertEqual(len(place.catalogue.rows("SELECT id FROM journals WHERE copied IS NOT NULL")), 2)

    def test_is_copied_anew_if_the_catalogue_or_its_rows_are_new(self):
        for place in self.each():
            place.add("a.ZU")
            place.add("b.ZU")
            place.once()
            if isinstance(place.catalogue, catalogues.File):
                place.catalogue.path.rename(place.root / "moved.db")
            else:
                place.catalogue.server.psql(f"DELETE FROM {place.catalogue.schema}.journal_recordings WHERE file LIKE '%/a.ZU';"
                                            f"UPDATE {place.catalogue.schema}.journal_recordings SET state = 'failed'")
            code, events = place.once()
            self.assertEqual((code, files(events, "found")), (0, []))
            self.assert_copied(place, 2)

    def wait_for(self, child, kind):
        events = []
        for line in child.stdout:
            events.append(json.loads(line))
            if events[-1]["event"] == kind:
                return events
        self.fail(f"{kind} did not come: {events}")

    def test_catches_up_after_the_server_was_away_while_recordings_were_converted_on(self):
        place = self.place("server")
        place.add("a.ZU")
        child = place.start()
        try:
            self.wait_for(child, "converted")
            self.server.stop()
            try:
                place.add("b.ZU")
                events = self.wait_for(child, "failed")
                self.assertEqual(events[-1]["reason"], "notCatalogued")
                self.assertEqual(place.records(), 2)
                if not [one for one in events if one["event"] == "copyBehind"]:
                    events += self.wait_for(child, "copyBehind")
                self.assertEqual(place.own("SELECT state FROM {} ORDER BY file", "recordings")[0], ("converted",))
            finally:
                self.server.start()
            later = self.wait_for(child, "copyCaughtUp")
            if not files(later, "converted"):
                later += self.wait_for(child, "converted")
        finally:
            child.terminate()
            more, _ = child.communicate(timeout=PATIENCE)
        later += [json.loads(line) for line in more.splitlines()]
        done = [(one["file"], one["status"]) for one in later if one["event"] == "converted"]
        self.assertEqual(done, [("in/b.ZU", "present")])
        self.assertEqual(child.returncode, 0)
        self.assert_copied(place, 2)
        self.assertEqual(place.records(), 2)

    def test_is_written_by_a_new_process_after_somebody_has_ended_the_one_that_wrote_it(self):
        place = self.place("file")
        place.add("a.ZU")
        child = place.start()
        try:
            self.wait_for(child, "converted")
            for number, name in enumerate(("b.ZU", "c.ZU")):
                # It is the last one that was started.
                os.kill(max(children_of(child.pid), key=started), signal.SIGKILL)
                place.add(name)
                events = self.wait_for(child, "copyCaughtUp")
                behind = [one["text"] for one in events if one["event"] == "copyBehind"]
                self.assertEqual(behind, ["the journal's copy is not written: the process that writes it has ended; the "
                                          "work goes on, and the copy follows"], number)
        finally:
            child.terminate()
            child.communicate(timeout=PATIENCE)
        self.assertEqual(child.returncode, 0)
        self.assert_copied(place, 3)

    def test_does_not_wait_each_time_for_a_server_that_does_not_answer(self):
        place = self.place("file")
        for number in range(5):
            place.add(f"{number}.ZU")
        with socket.socket() as silent:
            silent.bind(("127.0.0.1", 0))
            silent.listen()
            address = f"postgresql://relay@127.0.0.1:{silent.getsockname()[1]}/archive?connect_timeout=2"
            code, events = place.run(place.words("--once", "--catalogue", address))
            silent.setblocking(False)
            tries = 0
            while True:
                try:
                    silent.accept()[0].close()
                    tries += 1
                except BlockingIOError:
                    break
        self.assertEqual((code, place.records()), (1, 5))
        self.assertEqual([one["reason"] for one in events if one["event"] == "failed"], ["notCatalogued"] * 5)
        self.assertLessEqual(tries, 3)  # one for the records, one for the journal, and that once more at the end

    def test_no_command_runs_before_its_record_is_in_the_catalogue(self):
        place = self.place("file")
        place.add("a.ZU")
        (place.root / "in/junk.ZU").write_bytes(b"junk")
        place.catalogue.path.write_text("no database, but long enough to be looked at as one " * 20)
        code, events = place.once("--exec", "touch ran")
        self.assertEqual((code, files(events, "commandDone"), (place.root / "ran").exists()), (1, [], False))
        place.catalogue.path.unlink()
        code, events = place.once("--exec", "touch ran")
        self.assertEqual((code, files(events, "commandDone"), (place.root / "ran").exists()), (1, ["in/a.ZU"], True))

    def test_paths_in_a_conf_file_start_in_its_directory(self):
        place = self.place("file")
        place.add("a.ZU")
        conf = place.root / "watch.d"
        conf.mkdir()
        (conf / "line-7.conf").write_text("ini = ../ZuDrv.ini\ndirectory = ../in\nout = ../out\ncatalogue = line-7.db\n"
                                          "state = line-7.journal\n")
        (place.root / "elsewhere").mkdir()
        done = subprocess.run([PROGRAM, "watch", "--once", "--config", conf], cwd=place.root / "elsewhere", check=False,
                              capture_output=True, text=True, timeout=PATIENCE)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(sorted(file.name for file in conf.iterdir()), ["line-7.conf", "line-7.db", "line-7.journal"])
        self.assertEqual(list((place.root / "elsewhere").iterdir()), [])
        self.assertEqual(catalogues.File(conf / "line-7.db").rows("SELECT recorder, file, directory FROM journals"),
                         [("line-7", str(conf / "line-7.journal"), str(place.root / "out"))])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
