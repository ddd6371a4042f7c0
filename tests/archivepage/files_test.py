"""The directory that `zucmtr archive page` makes, without a browser."""
import fcntl
import hashlib
import os
import shutil
import signal
import subprocess
import time
import unittest

from archives import HOSTILE, PIECE, PICTURES, Archive, folder, make_up, run_tests, spread, wave, zucmtr
from pages import PROGRAM


class Pieces(unittest.TestCase):
    """What the pieces hold is what the catalogue holds."""

    @classmethod
    def setUpClass(cls):
        cls.archive = Archive("pieces")
        make_up(cls.archive.path, 5000)
        cls.archive.add("a/%s.ZU" % HOSTILE.replace("/", "|"), station=HOSTILE, recorder=HOSTILE, circuit=HOSTILE, cause=HOSTILE, moment=1)
        cls.archive.write()
        cls.head = cls.archive.head()
        cls.pieces = cls.head["timed"] + cls.head["untimed"]

    def all(self, kind, *names):
        """Values of all entries."""
        values = []
        for piece in self.pieces:
            data = self.archive.piece(piece[kind])
            for name in names:
                data = data[name]
            values += spread(data, piece["count"])
        return values

    def rows(self, column):
        return self.archive.column("SELECT %s FROM entries ORDER BY moment IS NULL, moment, path" % column)

    def test_entries_are_those_of_the_catalogue_the_oldest_first_and_those_without_a_time_last(self):
        self.assertEqual(self.rows("path"), ["%s/%s" % pair if pair[0] != "." else pair[1]
                                             for pair in zip(self.all("details", "folder"), self.all("entries", "name"))])
        timed = self.archive.column("SELECT moment / 1000 FROM entries WHERE moment IS NOT NULL ORDER BY moment, path")
        self.assertEqual(timed, [time for piece in self.head["timed"]
                                 for time in spread(self.archive.piece(piece["entries"])["time"], piece["count"])])

    def test_texts_and_numbers_are_those_of_the_catalogue(self):
        for column, kind, name in (("station", "entries", "station"), ("recorder", "entries", "recorder"), ("ifnull(circuit, '')", "entries", "circuit"),
                                   ("utc_offset", "entries", "offset"), ("ifnull(cause, '')", "details", "cause"), ("ifnull(error, '')", "details", "error"),
                                   ("bytes", "details", "bytes"), ("ifnull(trigger_time, '')", "details", "trigger"), ("ifnull(gone, '')", "details", "gone")):
            self.assertEqual(self.rows(column), self.all(kind, name), column)
        self.assertEqual([value and value * 1000 for value in self.rows("duration")], self.all("entries", "length"))

    def test_state_says_gone_and_unread(self):
        expected = [2 * (gone is not None) + 4 * (reason is not None) for gone, reason in zip(self.rows("gone"), self.rows("reason"))]
        self.assertEqual(expected, self.all("entries", "state"))

    def test_faults_have_their_values_and_pictures(self):
        faults = self.archive.run("SELECT fault_kind, fault_circuit, round(fault_duration * 1e4) / 10, fault_current, e.id FROM entries e "
                                  "WHERE fault_kind IS NOT NULL ORDER BY moment, path")
        found, waves = [], []
        for piece in self.pieces:
            fault = self.archive.piece(piece["entries"])["fault"]
            found += zip(*(spread(fault[name], fault["count"]) for name in ("kind", "circuit", "duration", "current")))
            for number, name in enumerate(piece["pictures"]):
                data = self.archive.piece(name)
                self.assertEqual(min(PICTURES, fault["count"] - number * PICTURES), data["count"])
                waves += spread(data["waves"], data["count"])
        self.assertEqual([fault[:3] for fault in faults], [fault[:3] for fault in found])
        for fault, (*_, current) in zip(faults, found):
            self.assertAlmostEqual(1, current / fault[3], delta=6e-4)  # four digits
        pictures = dict(self.archive.run("SELECT entry, waves FROM pictures"))
        self.assertEqual([pictures[fault[4]] for fault in faults], waves)

    def test_words_are_the_channels_that_changed_and_the_cause(self):
        names = dict(self.archive.run("SELECT id, name FROM channels"))
        changed = {}
        for entry, channel in self.archive.run("SELECT entry, channel FROM changes ORDER BY entry, channel"):
            changed.setdefault(entry, []).append(names[channel])
        expected = [changed.get(entry, []) + [text for text in (cause, setting) if text]
                    for entry, cause, setting in self.archive.run("SELECT id, cause, setting FROM entries ORDER BY moment IS NULL, moment, path")]
        found = []
        for piece in self.pieces:
            data = self.archive.piece(piece["words"])
            counts = spread(data["counts"], data["count"])
            places = iter(spread(data["of"], sum(counts)))
            found += [[data["words"][next(places)] for _ in range(count)] for count in counts]
        self.assertEqual(expected, found)

    def test_pieces_hold_so_many_entries_and_their_names_say_what_is_in_them(self):
        self.assertEqual([PIECE, sum(piece["count"] for piece in self.head["timed"]) - PIECE], [piece["count"] for piece in self.head["timed"]])
        for file in (self.archive.page / "data").iterdir():
            self.assertEqual(file.stem.split("-")[1], hashlib.sha256(file.read_bytes()).hexdigest()[:16])


class Directory(unittest.TestCase):
    def setUp(self):
        self.archive = Archive(self.id().rpartition(".")[2])

    def add_three(self):
        for number in range(3):
            self.archive.add("%d.ZU" % number, moment=number * 10**9)

    def test_unchanged_archive_gives_unchanged_files(self):
        self.add_three()
        self.archive.write()
        files = self.archive.files()
        self.archive.write()
        self.assertEqual(files, self.archive.files())

    def test_pieces_stay_until_the_run_after_the_next_and_then_go(self):
        self.add_three()
        self.archive.write()
        first = self.archive.names("entries")
        self.archive.add("3.ZU", moment=3 * 10**9)
        self.archive.write()
        both = self.archive.names("entries")
        self.assertEqual((1, 2, True), (len(first), len(both), first[0] in both))
        self.archive.write()
        self.assertEqual([name for name in both if name not in first], self.archive.names("entries"))

    def test_new_entry_leaves_the_full_pieces_as_they_are(self):
        make_up(self.archive.path, PIECE + 100)
        self.archive.write()
        before = self.archive.head()["timed"]
        self.archive.add("new.ZU", moment=4 * 10**15)
        self.archive.write()
        self.assertEqual(before[0], self.archive.head()["timed"][0])
        self.assertNotEqual(before[1], self.archive.head()["timed"][1])

    def test_nothing_is_removed_that_was_not_made_here(self):
        self.add_three()
        self.archive.write()
        foreign = ["notes.txt", "data/notes.js", "data/entries-0123456789abcdef.js", "pages/0123456789abcdef.html", "pages/other.html"]
        for name in foreign:
            (self.archive.page / name).write_text("somebody's")
        self.archive.run("DELETE FROM entries WHERE id = 1")
        self.archive.write()
        self.archive.write()
        self.assertEqual(["somebody's"] * len(foreign), [(self.archive.page / name).read_text() for name in foreign])

    def test_another_page_is_not_replaced(self):
        self.archive.page.mkdir()
        (self.archive.page / "index.html").write_text("somebody's")
        result = self.archive.write(code=1)
        self.assertIn("index.html' is no page of an archive; give another directory", result.stderr)
        self.assertEqual(["index.html"], os.listdir(self.archive.page))

    def test_nothing_is_written_outside_by_a_link(self):
        outside = folder / "outside"
        outside.mkdir(exist_ok=True)
        for name in ("data", "pages"):
            shutil.rmtree(self.archive.page, ignore_errors=True)
            self.archive.page.mkdir()
            (self.archive.page / name).symlink_to(outside)
            self.assertIn("is a link to another place", self.archive.write(code=1).stderr)
        self.assertEqual([], os.listdir(outside))

    def test_two_at_once_do_not_spoil_each_other(self):
        self.archive.write()
        held = os.open(self.archive.page, os.O_RDONLY)
        fcntl.flock(held, fcntl.LOCK_EX)
        self.assertIn("another program is at work there", self.archive.write(code=1).stderr)
        os.close(held)
        self.archive.write()

    def test_what_cannot_be_written_is_named(self):
        self.archive.page.write_text("a file")
        self.assertIn("'%s' cannot be made a directory" % self.archive.page, self.archive.write(code=1).stderr)

    def test_archive_without_a_catalogue_is_explained(self):
        result = zucmtr("archive", "page", "-o", self.archive.page, folder, code=2)
        self.assertIn("there is no catalogue '%s/zucmtr-archive.db'; 'zucmtr archive update DIR' makes one" % folder, result.stderr)
        self.assertFalse(self.archive.page.exists())

    def test_wrong_date_is_explained(self):
        self.assertIn("'tomorrow' is no date; give it as 2024-01-31", self.archive.write("--as-of", "tomorrow", code=2).stderr)

    def test_event_of_several_entries_counts_once(self):
        self.add_three()
        self.archive.add("0.cfg", kind="record", moment=0)
        self.archive.add("gone.ZU", moment=0, gone="2026-01-01T00:00:00Z")
        self.archive.add("other.ZU", moment=0, recorder="other")
        self.archive.write()
        data = self.archive.piece(self.archive.head()["timed"][0]["entries"])
        states = dict(zip(spread(data["name"], data["count"]), spread(data["state"], data["count"])))
        self.assertEqual({"0.ZU": 0, "0.cfg": 1 + 32, "gone.ZU": 2 + 32, "other.ZU": 0, "1.ZU": 0, "2.ZU": 0}, states)


class EntryPages(unittest.TestCase):
    """The pages of single entries, made from recordings."""

    def setUp(self):
        self.place = folder / self.id().rpartition(".")[2]
        self.page = self.place / "page"
        zucmtr("sample", "--out", self.place, "--random-fault", "1-3")
        zucmtr("sample", "--out", self.place / "quiet", "--random-quiet", "1")
        zucmtr("archive", "update", "--quiet", self.place)

    def write(self, *options, code=0):
        return zucmtr("archive", "page", "-o", self.page, *options, self.place, code=code)

    def pages(self):
        return {name: (self.page / "pages" / name).stat().st_mtime_ns for name in os.listdir(self.page / "pages")}

    def test_those_missing_are_made_and_no_others(self):
        self.write()
        self.assertEqual({}, self.pages())
        self.write("--pages", "faults")
        faults = self.pages()
        self.assertEqual(3, len(faults))
        (self.page / "pages" / sorted(faults)[1]).unlink()
        self.write("--pages", "all")
        every = self.pages()
        self.assertEqual(4, len(every))
        again = [name for name in faults if faults[name] != every[name]]
        self.assertEqual([sorted(faults)[1]], again)

    def test_killed_run_goes_on(self):
        program = subprocess.Popen([PROGRAM, "archive", "page", "--quiet", "-o", str(self.page), "--pages", "all", str(self.place)])
        pages = self.page / "pages"
        end = time.monotonic() + 20
        while not (pages.is_dir() and any(name.endswith(".html") for name in os.listdir(pages))) and time.monotonic() < end:
            time.sleep(0.002)
        program.send_signal(signal.SIGKILL)
        program.wait()
        made = {name: at for name, at in self.pages().items() if name.endswith(".html")}
        self.write("--pages", "all")
        self.assertEqual(made, {name: self.pages()[name] for name in made})
        self.assertEqual(4, sum(name.endswith(".html") for name in self.pages()))

    def test_changed_recording_gets_a_page_and_the_old_one_goes_with_its_entry(self):
        self.write("--pages", "faults")
        before = set(self.pages())
        recordings = sorted(self.place.glob("*.ZU"))
        shutil.copyfile(recordings[1], recordings[0])
        zucmtr("archive", "update", "--quiet", self.place)
        self.write("--pages", "faults")
        after = set(self.pages())
        self.assertEqual((4, 3), (len(after), len(before & after)))
        one = Archive.__new__(Archive)
        one.path = self.place / "zucmtr-archive.db"
        one.run("DELETE FROM entries WHERE gone IS NOT NULL")
        self.write()
        self.assertEqual((3, 2), (len(self.pages()), len(before & set(self.pages()))))

    def test_recording_that_cannot_be_shown_is_complained_of(self):
        recording = sorted(self.place.glob("*.ZU"))[0]
        recording.write_bytes(b"no recording")
        result = self.write("--pages", "faults", code=1)
        self.assertIn("%s: it is no recording" % recording, result.stderr)
        self.assertEqual(2, len(self.pages()))

    def test_picture_shows_the_waves_of_the_faulted_circuit(self):
        zucmtr("sample", "--out", self.place / "one", "--fault", "AG", "--distance", "30")
        zucmtr("archive", "update", "--quiet", self.place / "one")
        one = Archive.__new__(Archive)
        one.path = self.place / "one" / "zucmtr-archive.db"
        (first, last, peak, waves, onset, clearing), = one.run("SELECT from_time, to_time, peak_current, waves, fault_onset, fault_clearing FROM entries JOIN pictures ON entry = id")
        texts = waves.split(" ")
        self.assertEqual([128] * 6, list(map(len, texts)))
        at = lambda moment: round((moment - first) / (last - first) * 128)  # noqa: E731
        currents, voltages = [wave(text) for text in texts[:3]], [wave(text) for text in texts[3:]]
        self.assertAlmostEqual(0.04, onset - first, delta=0.002)
        self.assertEqual(1, max(map(abs, currents[0])))
        self.assertGreater(peak, 1000)
        during, before = slice(at(onset) + 2, at(clearing) - 2), slice(0, at(onset) - 2)
        self.assertLess(max(map(abs, currents[0][before])), 0.4)
        self.assertLess(max(max(map(abs, wave[during])) for wave in currents[1:]), 0.4)
        self.assertLess(max(map(abs, voltages[0][during])), 0.95 * max(map(abs, voltages[0][before])))


if __name__ == "__main__":
    run_tests()
