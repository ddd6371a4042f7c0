"""Paths, keys and files that are wrong: each is an exception of the module's own, or Python's usual one for a wrong type."""

import os
import random
import unittest
from pathlib import Path

import forms
import numpy as np
import zucmtr
from support import Case

BROKEN = 100


def broken(data, random_):
    """The bytes with up to four changes."""
    data = bytearray(data)
    for _ in range(random_.randint(1, 4)):
        place = random_.randrange(len(data) + 1)
        kind = random_.randrange(4)
        if kind == 0:
            data[place:place + 1] = bytes([random_.randrange(256)])
        elif kind == 1:
            del data[place:place + random_.randint(1, 20)]
        elif kind == 2:
            other = random_.randrange(len(data) + 1)
            data[place:place] = data[other:other + random_.randint(1, 20)]
        else:
            del data[place:]
    return bytes(data)


def use(path):
    """Asks for all that a record has."""
    record = zucmtr.open(path)
    repr(record), record._repr_html_()
    assert record.start <= record.start and record.trigger <= record.trigger
    len(record), record.time, record.numbers, record.rates, record.header, record.information
    for channel in record.analog:
        channel.codes, channel.values, channel.scaled("secondary"), repr(channel)
    for channel in record.digital:
        channel.values, channel.changes
    [str(finding) for finding in record.findings]
    record.to_numpy()
    record.fault()


class PathTest(Case):
    def refused(self, path, error=zucmtr.FileError):
        for call in (zucmtr.open, lambda one: zucmtr.convert(one, self.directory)):
            with self.assertRaises(error) as caught:
                call(path)
        return caught.exception

    def test_may_be_a_text_bytes_or_a_path(self):
        path = self.record("запись")
        for one in (str(path), os.fsencode(path), path, Named(path), Named(os.fsencode(path))):
            self.assertEqual(zucmtr.open(one).path, Path(path))
        recording = self.station("--seconds", "0.1")[0]
        self.assertTrue(zucmtr.convert(os.fsencode(recording), os.fsencode(self.directory)).is_new)

    def test_of_no_file_is_a_file_error(self):
        self.assertIn("No such file", str(self.refused(self.directory / "none.cfg")))
        self.assertIn("No such file", str(self.refused("")))
        self.assertIn("No such file", str(self.refused("none.ZU")))
        self.assertIn("null character", str(self.refused("a\0b.cfg")))
        self.assertIn("too long", str(self.refused("a" * 5000 + ".cfg")))
        self.assertIn("not UTF-8", str(self.refused("\ud800.cfg")))

    def test_of_something_else_is_a_file_error(self):
        for name in ("directory", "directory.cfg", "directory.ZU"):
            (self.directory / name).mkdir()
            self.assertIn("Is a directory", str(self.refused(self.directory / name)))
        for name in ("pipe.cfg", "pipe.ZU"):
            os.mkfifo(self.directory / name)
            self.assertIn("Not a regular file", str(self.refused(self.directory / name)))

    def test_that_is_not_utf_8_is_a_file_error(self):
        path = self.record()
        odd = os.fsencode(self.directory) + b"/\xff.cfg"
        os.rename(path, odd)
        for one in (odd, os.fsdecode(odd)):
            self.assertIn("not UTF-8", str(self.refused(one)))
        with self.assertRaises(zucmtr.FileError):
            zucmtr.convert(self.station("--seconds", "0.1")[0], odd)

    def test_without_permission_is_a_file_error(self):
        path = self.record()
        path.chmod(0)
        child = os.fork()  # as a user whom permissions concern
        if child == 0:
            try:
                os.chmod(self.directory, 0o755)
                if os.geteuid() == 0:
                    os.setuid(65534)
                zucmtr.open(path)
            except zucmtr.FileError as error:
                os._exit(0 if "Permission denied" in str(error) else 3)
            finally:
                os._exit(2)
        self.assertEqual(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]), 0)

    def test_of_a_wrong_type_is_a_type_error(self):
        for one in (None, 3, 3.5, ["a"]):
            self.refused(one, TypeError)
        for options in ({"encoding": None}, {"device": 1}, {"defaults": b"x"}, {"ini": 1}):
            with self.assertRaises(TypeError):
                zucmtr.open(self.record(), **{"encoding": "", **options, **({} if "defaults" not in options else {"defaults": 1})})
        with self.assertRaisesRegex(zucmtr.RecordError, "there is no encoding 'x'"):
            zucmtr.open(self.record(), encoding="x")


class Named:
    def __init__(self, path):
        self.path = path

    def __fspath__(self):
        return os.fspath(self.path)


class KeyTest(Case):
    def test_that_is_a_number_is_a_place(self):
        analog = zucmtr.open(self.record()).analog
        for key, place in ((0, 0), (-1, 1), (-2, 0), (np.int8(1), 1), (np.uint64(1), 1), (np.array(1), 1), (True, 1)):
            self.assertIs(analog[key], analog.values()[place])
        for key in (2, -3, 10 ** 30, -10 ** 30, np.int64(2)):
            with self.assertRaises(IndexError):
                analog[key]
            self.assertIsNone(analog.get(key))
            self.assertNotIn(key, analog)

    def test_that_is_a_slice_gives_channels(self):
        analog = zucmtr.open(self.record()).analog
        for key, names in ((slice(None), ["Ia", "Ub"]), (slice(None, None, -1), ["Ub", "Ia"]), (slice(5, 9), []),
                           (slice(-1, 10 ** 30), ["Ub"])):
            self.assertEqual(analog[key].keys(), names)
        with self.assertRaises(ValueError):
            analog[::0]

    def test_of_a_wrong_type_is_a_type_error(self):
        analog = zucmtr.open(self.record()).analog
        for key in (None, 1.0, np.float64(1), b"Ia", ("Ia",), ("Q1", "Ia", ""), (1, 2), ["Ia"], np.array([0, 1]), object()):
            with self.assertRaises(TypeError):
                analog[key]
            self.assertNotIn(key, analog)

    def test_of_the_extension_has_bounds(self):
        core = zucmtr.open(self.record())._source.core
        for call in (core.codes, lambda place: core.values(place, 1.0), core.states, core.changes, lambda place: core.state(place, 0)):
            for place in (2, 2 ** 63, 2 ** 64 - 1):
                with self.assertRaises(IndexError):
                    call(place)
            for place in (-1, 2 ** 64, 1.5, "0", None):
                with self.assertRaises(TypeError):
                    call(place)


class ChangedFileTest(Case):
    def test_that_is_removed_after_opening_is_still_read(self):
        path = self.record()
        record = zucmtr.open(path)
        path.unlink()
        path.with_suffix(".dat").unlink()
        self.assertEqual(record.analog[1].values.tolist(), [1.0, -2.0, 3.0, -4.0])
        with self.assertRaisesRegex(zucmtr.RecordError, "does not exist"):
            record.summary()

    def test_that_is_cut_off_after_opening_is_read_as_far_as_it_goes(self):
        for name in ("many-samples", "many-lines", "2013-BINARY-cff", "2013-ASCII-cff"):
            path = forms.write(next(form for form in forms.FORMS if form.name == name), self.directory)
            record = zucmtr.open(path)
            count = record.rates[-1].last
            data = path if path.suffix == ".cff" else path.with_suffix(".dat")
            os.truncate(data, data.stat().st_size * 2 // 3)
            try:
                self.assertLess(len(record), count)
                self.assertTrue(record.findings)
            except zucmtr.RecordError as error:
                self.assertIn(path.stem, str(error))


class BrokenFileTest(Case):
    def test_raises_nothing_but_the_modules_exceptions(self):
        random_ = random.Random(17)
        shapes = [form for form in forms.FORMS if form.count < 200]
        read = 0
        for number in range(BROKEN):
            path = forms.write(shapes[number % len(shapes)], self.directory)
            victim = path if path.suffix == ".cff" or number % 3 else path.with_suffix(".dat")
            victim.write_bytes(broken(victim.read_bytes(), random_))
            try:
                use(path)
                read += 1
            except zucmtr.Error as error:
                self.assertIn(path.stem, str(error))
        self.assertTrue(10 < read < BROKEN - 10, read)

    def test_that_is_a_recording_raises_nothing_else_either(self):
        random_ = random.Random(18)
        recording = self.station("--analog", "3", "--discrete", "5", "--seconds", "0.1", "--plain")[0]
        good = recording.read_bytes()
        for _ in range(BROKEN // 2):
            recording.write_bytes(broken(good, random_))
            for call in (use, lambda path: zucmtr.convert(path, self.directory)):
                try:
                    call(recording)
                except zucmtr.Error as error:
                    self.assertIn(recording.name, str(error))


if __name__ == "__main__":
    unittest.main()
