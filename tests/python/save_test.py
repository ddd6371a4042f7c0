"""Records saved in other forms, read back by this module and by readers of other hands."""

import csv
import datetime
import errno
import os
import resource
import signal
import threading
import unittest
import warnings
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import numpy as np
import zucmtr
from scipy.io import loadmat
from support import Case

ZONE = datetime.timezone(datetime.timedelta(hours=3))


class SaveCase(Case):
    def setUp(self):
        super().setUp()
        self.out = self.directory / "out"
        self.out.mkdir()

    def names(self):
        return sorted(path.name for path in self.out.iterdir())

    def assert_same(self, one, other):
        """Everything that any form of COMTRADE holds."""
        self.assertEqual((one.station, one.device, one.frequency, one.rates, one.header, one.information),
                         (other.station, other.device, other.frequency, other.rates, other.header, other.information))
        self.assertEqual((one.start, one.trigger), (other.start, other.trigger))
        np.testing.assert_array_equal(one.time, other.time)
        for kind in ("analog", "digital"):
            self.assertEqual([(a.name, a.phase, a.circuit) for a in getattr(one, kind)],
                             [(b.name, b.phase, b.circuit) for b in getattr(other, kind)])
            for a, b in zip(getattr(one, kind), getattr(other, kind)):
                np.testing.assert_array_equal(a.values, b.values)


class FormTest(SaveCase):
    def test_of_comtrade_holds_the_same_record(self):
        path = self.record()
        path.with_suffix(".hdr").write_bytes("Отчёт\r\n".encode())
        with zucmtr.open(path) as record:
            for name in ("a.cfg", "a.cff"):
                for data in (None, "ascii", "binary", "binary32", "float32"):
                    with self.subTest(name=name, data=data):
                        saved = record.save(self.out / name, data=data, overwrite=True)
                        self.assertEqual(saved, self.out / name)
                        self.assertIsInstance(saved, Path)
                        again = zucmtr.open(saved)
                        self.assertEqual(again.data_type, (data or "ascii").upper())
                        self.assert_same(again, record)
        self.assertEqual(self.names(), ["a.cff", "a.cfg", "a.dat", "a.hdr"])

    def test_of_revision_1999_leaves_the_clock_out_and_warns_of_it(self):
        record = zucmtr.open(self.record())
        with self.assertWarnsRegex(zucmtr.SaveWarning, r"revision 1999 has no place for it: time code \+3h00") as caught:
            saved = record.save(self.out / "a.cfg", revision=1999)
        self.assertEqual(caught.filename, __file__)
        again = zucmtr.open(saved)
        self.assertEqual((again.revision, again.trigger), (1999, datetime.datetime(2024, 1, 31, 12)))
        np.testing.assert_array_equal(again.analog[0].values, record.analog[0].values)

    def test_has_texts_in_the_encoding_that_is_named(self):
        saved = zucmtr.open(self.record(encoding="cp866"), encoding="cp866").save(self.out / "a.cfg", encoding="cp1251")
        self.assertTrue(saved.read_bytes().startswith("Подстанция,".encode("cp1251")))

    def test_of_a_table_has_times_values_and_states(self):
        record = zucmtr.open(self.record())
        with record.save(self.out / "A.CSV").open(encoding="utf-8", newline="") as file:
            rows = list(csv.reader(file))
        self.assertEqual(rows[0], ["time [s]", "Ia [A]", "Ub [kV]", "Trip"])
        self.assertEqual(rows[1:], [["-0.002", "4", "1", "0"], ["-0.001", "", "-2", "1"], ["0", "-16", "3", "1"],
                                    ["0.001", "19", "-4", "0"]])
        text = record.save(self.out / "b.csv", time="iso", decimal_comma=True, channels="Ia", side="secondary").read_text("utf-8-sig")
        self.assertEqual(text.splitlines()[1], "2024-01-31T11:59:59.998000000+03:00;0,02")

    def test_of_matlab_has_the_same_arrays(self):
        record = zucmtr.open(self.record())
        mat = loadmat(record.save(self.out / "a.mat"), squeeze_me=True)
        np.testing.assert_array_equal(mat["time"], record.time)
        np.testing.assert_array_equal(mat["analog"], record.to_numpy())
        np.testing.assert_array_equal(mat["digital"], record.digital[0].values)

    def test_is_that_of_the_suffix_or_of_the_word(self):
        record = zucmtr.open(self.record())
        self.assertEqual(record.save(self.out), self.out / "rec.cfg")
        self.assertEqual(record.save(str(self.out) + "/", form="mat"), self.out / "rec.mat")
        self.assertEqual(record.save(self.out / "x.y", form="cff"), self.out / "x.y.cff")
        before = os.getcwd()
        self.addCleanup(os.chdir, before)
        os.chdir(self.out)
        self.assertEqual(record.save("-", form="csv"), Path("-.csv"))
        self.assertEqual(self.names(), ["-.csv", "rec.cfg", "rec.dat", "rec.mat", "x.y.cff"])

    def test_of_a_recording_is_that_of_its_record(self):
        recording = self.station("--fault", "AG")[0]
        with zucmtr.open(recording) as record:
            self.assert_same(zucmtr.open(record.save(self.out / "a.cff")), record)
            around = zucmtr.open(record.save(self.out / "b.cff", window="fault"))
            fault = record.fault()
            np.testing.assert_allclose((around.time[0], around.time[-1]), (fault.onset - 0.1, fault.clearing + 0.1), atol=1 / 2400)
        self.assertTrue(recording.exists())


class PartTest(SaveCase):
    def times(self, **part):
        saved = zucmtr.open(self.record()).save(self.out / "a.cff", overwrite=True, **part)
        return zucmtr.open(saved).time.tolist()

    def test_is_of_the_time_between_two_moments(self):
        noon = datetime.datetime(2024, 1, 31, 12, 0)
        millisecond = datetime.timedelta(milliseconds=1)
        for part in ({"start": -0.001, "stop": 0}, {"start": "-1ms", "stop": np.float32(0)}, {"start": noon - millisecond, "stop": noon},
                     {"start": (noon - millisecond).replace(tzinfo=ZONE), "stop": datetime.datetime(2024, 1, 31, 9, tzinfo=datetime.timezone.utc)},
                     {"start": np.datetime64("2024-01-31T11:59:59.999"), "stop": "2024-01-31T12:00"}):
            with self.subTest(part=part):
                self.assertEqual(self.times(**part), [-0.001, 0.0])
        self.assertEqual(self.times(start=1e-05), [0.001])
        self.assertEqual(self.times(stop=-0.001), [-0.002, -0.001])
        self.assertEqual(self.times(window=0.003), [-0.001, 0.0, 0.001])

    def test_has_every_nth_sample_or_another_rate(self):
        self.assertEqual(self.times(every=2), [-0.002, 0.0])
        with warnings.catch_warnings():
            warnings.simplefilter("error")  # what was asked for is no surprise
            self.assertEqual(self.times(rate=2000, data="float32"), [-0.002, -0.0015, -0.001, -0.0005, 0.0, 0.0005, 0.001])

    def test_has_the_channels_that_are_chosen(self):
        record = zucmtr.open(self.record())
        ia, ub, trip = record.analog[0], record.analog[1], record.digital[0]
        for channels, names in (("Ia", ["Ia"]), (["u*", "D1"], ["Ub", "Trip"]), ("Q1", ["Ia", "Trip"]), (0, ["Ia"]),
                                ([-1], ["Ub"]), (np.int64(1), ["Ub"]), (ub, ["Ub"]), ([trip, ia], ["Ia", "Trip"]),
                                (record.analog[1:], ["Ub"]), (record.digital, ["Trip"]), ("Q2:B", ["Ub"]),
                                ([("Q1", "Ia"), ub], ["Ia", "Ub"]), (("Ia", "Trip"), ["Ia", "Trip"]), ("Ia,Trip", ["Ia", "Trip"])):
            with self.subTest(channels=channels):
                again = zucmtr.open(record.save(self.out / "a.cff", channels=channels, overwrite=True))
                self.assertEqual(again.analog.keys() + again.digital.keys(), names)

    def test_has_the_channel_itself_and_not_one_that_is_called_like_its_number(self):
        path = self.record()
        path.write_text(path.read_text(encoding="utf-8").replace("2,Ub,", "2,A1,"), encoding="utf-8")
        record = zucmtr.open(path)
        again = zucmtr.open(record.save(self.out / "a.cff", channels=record.analog[0]))
        self.assertEqual(again.analog.keys(), ["Ia"])

    def test_leaves_out_what_never_changes(self):
        record = zucmtr.open(self.record())
        again = zucmtr.open(record.save(self.out / "a.cff", start=-0.001, stop=0, changing_only=True))
        self.assertEqual((len(again.analog), len(again.digital)), (2, 0))

    def test_has_the_values_of_the_side_that_is_named(self):
        again = zucmtr.open(zucmtr.open(self.record()).save(self.out / "a.cff", side="secondary"))
        np.testing.assert_array_equal(again.analog[0].scaled("stored"), [0.02, np.nan, -0.08, 0.095])


class FailureTest(SaveCase):
    def fails(self, kind, text, name="a.cff", **options):
        with self.assertRaisesRegex(kind, text) as caught:
            zucmtr.open(self.directory / "rec.cfg").save(self.out / name, **options)
        self.assertEqual(self.names(), [])
        return caught.exception

    def test_of_a_wrong_argument_is_a_value_error(self):
        self.record()
        for text, options in {
            "form: 'xml' is wrong; give one of cfg, cff, csv, mat": {"form": "xml"},
            "data: 'text' is wrong; give one of ascii, binary, binary32, float32": {"data": "text"},
            "revision: '2001' is wrong; give one of 1999, 2013": {"revision": 2001},
            "encoding: 'x' is wrong; give one of utf8, cp1251": {"encoding": "x"},
            "side: 'left' is wrong; give one of primary, secondary": {"side": "left"},
            "time: 'x' is wrong; give one of seconds, iso": {"time": "x"},
            "form cff and revision 1999: a CFF file is of revision 2013": {"revision": 1999},
            "form csv and '.*a.cff': the ending of the file is that of another form": {"form": "csv"},
            "decimal_comma is for form csv; leave it out": {"decimal_comma": True},
            "start: 'soon' is no moment": {"start": "soon"},
            "stop: 'nan' is no moment": {"stop": float("nan")},
            "window: '-1' is wrong; give a number of seconds, or 'fault'": {"window": -1},
            "window excludes stop": {"window": 1, "stop": 0},
            "rate excludes every": {"rate": 100, "every": 2},
            "every: '1' is wrong; give a whole number from 2 to 1000000": {"every": 1},
            "every: '0' is wrong": {"every": 0},
            "every: '2147483647' is wrong": {"every": 10**30},
            "rate: '0' is wrong; give a number from 0.001 to 1000000000": {"rate": 0},
            "channels is empty; None keeps all of them": {"channels": []},
            "channels: ',' names no channel": {"channels": [","]},
            "a channel is of another record": {"channels": zucmtr.open(self.directory / "rec.cfg").analog[0]},
        }.items():
            with self.subTest(text=text):
                self.assertNotIsInstance(self.fails(ValueError, text, **options), zucmtr.Error)
        self.fails(ValueError, "data is for COMTRADE, that is form cfg or form cff", "a.csv", data="ascii")
        self.fails(TypeError, "start is of object", start=object())
        self.fails(TypeError, "a channel is of float", channels=[1.5])
        self.fails(TypeError, "", every=2.5)

    def test_of_a_channel_that_is_not_there_asks_for_the_nearest(self):
        path = self.record()
        error = self.fails(zucmtr.ChannelError, "'Iaa'; is 'Ia' meant", channels="Iaa")
        self.assertTrue(str(error).startswith(f"{path}: "))
        self.fails(zucmtr.ChannelError, "there is no channel", channels=[("Q1", "Ub")])
        self.fails(IndexError, "", channels=2)

    def test_of_a_form_names_the_place_and_a_form_that_holds_it(self):
        path = self.record(data="1,0,1,70000,0\n")
        error = self.fails(zucmtr.SaveError, r"A2 \(Ub\), sample 1: the code 70000 is beyond the 32767 of BINARY; data binary32 holds it", data="binary")
        self.assertIsInstance(error, ValueError)
        self.assertTrue(str(error).startswith(f"{path}: "))

    def test_of_a_part_without_samples_says_so(self):
        self.record()
        self.fails(zucmtr.SaveError, "rec.cfg: no sample of the record is in the time asked for", start=5)
        self.fails(zucmtr.SaveError, "stop '-0.1' is before start '0.25'", start=0.25, stop=-0.1)
        self.fails(zucmtr.SaveError, "window fault: no fault was found; give start and stop", window="fault")
        self.record(revision=1999)
        self.fails(zucmtr.SaveError, "has an offset from UTC, but that of the record is not known",
                   start=datetime.datetime(2024, 1, 31, tzinfo=ZONE))

    def test_of_bad_data_is_that_of_the_record(self):
        self.record(data="1,0,1,2,0\n2,1000,x,2,0\n")
        self.fails(zucmtr.RecordError, "rec.dat, record 2: analog channel 1 is 'x'")

    def test_of_a_file_that_is_there_keeps_it(self):
        record = zucmtr.open(self.record())
        saved = self.out / "a.csv"
        saved.write_text("old")
        with self.assertRaises(FileExistsError) as caught:
            record.save(saved)
        self.assertIsInstance(caught.exception, zucmtr.FilePresentError)
        self.assertIsInstance(caught.exception, zucmtr.FileError)
        self.assertEqual((caught.exception.filename, caught.exception.errno), (str(saved), errno.EEXIST))
        self.assertIn("overwrite=True replaces it", str(caught.exception))
        self.assertEqual(saved.read_text(), "old")
        record.save(saved, overwrite=True)
        self.assertTrue(saved.read_text().startswith("time [s],"))

    def test_of_the_own_files_keeps_them_whatever_is_asked(self):
        path = self.record()
        before = path.with_suffix(".dat").read_bytes()
        for name in ("rec.cfg", "REC.cfg", "."):
            with self.assertRaisesRegex(zucmtr.SaveError, "would take the place of what is read"):
                zucmtr.open(path).save(self.directory / name, data="binary", overwrite=True)
        self.assertEqual(path.with_suffix(".dat").read_bytes(), before)

    def test_of_a_place_is_a_file_error(self):
        self.record()
        self.assertEqual(self.fails(zucmtr.FileError, "No such file or directory", "no/a.cff").errno, errno.ENOENT)
        self.assertEqual(self.fails(zucmtr.FileError, "Not a directory", "../rec.cfg/a.cff").filename, str(self.out / "../rec.cfg"))

    def test_of_the_disk_is_a_file_error_and_leaves_nothing(self):
        self.record()
        before = resource.getrlimit(resource.RLIMIT_FSIZE)
        self.addCleanup(resource.setrlimit, resource.RLIMIT_FSIZE, before)
        resource.setrlimit(resource.RLIMIT_FSIZE, (64, before[1]))
        for name in ("a.cff", "a.cfg", "a.csv"):
            with self.subTest(name=name):
                error = self.fails(zucmtr.FileError, "cannot be written: File too large", name)
                self.assertEqual((error.errno, error.filename), (errno.EFBIG, str(self.out / name)))

    def test_of_a_closed_record_says_so(self):
        record = zucmtr.open(self.record())
        record.close()
        with self.assertRaisesRegex(ValueError, "the record is closed"):
            record.save(self.out / "a.cff")

    def test_reports_what_was_forgiven(self):
        path = self.record(data="1,0,10,1000,0\n2,1000,,-2000,1\n")
        with self.assertWarns(zucmtr.SaveWarning) as caught:
            zucmtr.open(path).save(self.out / "a.cff")
        self.assertEqual([str(one.message).replace(f"{self.directory}/", "") for one in caught.warnings], [
            "rec.dat:2: error: the configuration says 4 samples, the data hold 2; all that are there are read",
            "the configuration announces 4 samples, the data have 2; the configuration that was written says 2"])


class LongTest(SaveCase):
    def long(self, samples=1_000_000):
        """A record that takes a second or so to be written as a table."""
        rows = np.zeros(samples, dtype=[("number", "<u4"), ("time", "<u4"), ("codes", "<i2", 2), ("states", "<u2")])
        rows["number"] = np.arange(1, samples + 1)
        rows["time"] = np.arange(samples)
        rows["codes"][:, 0] = np.arange(samples) % 30011
        path = self.record(kind="BINARY", data=rows.tobytes())
        path.write_text(path.read_text(encoding="utf-8").replace("1000,4", f"1000000,{samples}"), encoding="utf-8")
        return path

    def test_saving_can_be_interrupted_and_leaves_nothing(self):
        record = zucmtr.open(self.long())
        done = threading.Event()

        def interrupt():  # once something is there to be left; other threads run meanwhile
            while not done.is_set():
                if self.names():
                    signal.pthread_kill(threading.main_thread().ident, signal.SIGINT)
                    return

        thread = threading.Thread(target=interrupt)
        thread.start()
        try:
            with self.assertRaises(KeyboardInterrupt):
                record.save(self.out / "a.csv")
        finally:
            done.set()
            thread.join()
        self.assertEqual(self.names(), [])

    def test_threads_save_at_once(self):
        record = zucmtr.open(self.record())
        names = [f"{number}.{form}" for number in range(8) for form in ("cfg", "cff", "csv", "mat")]
        with ThreadPoolExecutor(8) as pool:
            saved = list(pool.map(lambda name: record.save(self.out / name), names))
        self.assertEqual([path.name for path in saved], names)
        for path in saved:
            if path.suffix in (".cfg", ".cff"):
                self.assert_same(zucmtr.open(path), record)
            else:
                self.assertEqual(path.read_bytes()[128:], (self.out / f"0{path.suffix}").read_bytes()[128:])


if __name__ == "__main__":
    unittest.main()
