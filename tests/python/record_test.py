"""Records: what they say, how they open, close and fail."""

import datetime
import errno
import gc
import os
import pickle
import re
import subprocess
import sys
import unittest
from pathlib import Path

import numpy as np
import zucmtr
from support import Case


class RecordTest(Case):
    def test_says_what_the_configuration_says(self):
        record = zucmtr.open(self.record())
        zone = datetime.timezone(datetime.timedelta(hours=3))
        self.assertEqual((record.station, record.device, record.revision), ("Подстанция", "РАС", 2013))
        self.assertEqual(record.data_type, "ASCII")
        self.assertEqual(record.frequency, 50)
        self.assertEqual(record.rates, (zucmtr.Rate(1000, 4),))
        self.assertEqual(record.start, datetime.datetime(2024, 1, 31, 11, 59, 59, 998000, zone))
        self.assertEqual(record.trigger, datetime.datetime(2024, 1, 31, 12, 0, tzinfo=zone))
        self.assertEqual(record.time.tolist(), [-0.002, -0.001, 0.0, 0.001])
        self.assertEqual(len(record), 4)
        self.assertTrue(record)
        self.assertEqual(record.path, self.directory / "rec.cfg")

    def test_of_revision_1999_has_no_zone(self):
        record = zucmtr.open(self.record(revision=1999))
        self.assertEqual(record.trigger, datetime.datetime(2024, 1, 31, 12, 0))

    def test_has_header_and_information(self):
        path = self.record()
        path.with_suffix(".hdr").write_text("Отчёт\r\n", encoding="utf-8")
        path.with_suffix(".inf").write_bytes(b"[x]\r\n")
        record = zucmtr.open(path)
        self.assertEqual(record.header, "Отчёт\n")
        self.assertEqual(record.information, b"[x]\r\n")
        path.with_suffix(".hdr").unlink()
        self.assertEqual(zucmtr.open(str(path)).header, "")

    def test_is_found_by_any_kind_of_path(self):
        path = self.record()
        for kind in (str, bytes, Path):
            self.assertEqual(zucmtr.open(kind(path)).path, path)

    def test_says_what_was_forgiven_in_files_of_its_own(self):
        path = self.record()
        path.write_text(path.read_text(encoding="utf-8").replace("50\n", "50 \n"), encoding="utf-8")
        self.assertEqual({finding.file for finding in zucmtr.open(path).findings}, {str(path)})
        self.assertEqual(zucmtr.open(self.station()[0]).findings, ())

    def test_reads_texts_in_the_encoding_that_is_named(self):
        record = zucmtr.open(self.record(encoding="cp866"), encoding="cp866")
        self.assertEqual(record.station, "Подстанция")

    def test_survives_pickling(self):
        record = zucmtr.open(self.record(encoding="cp866"), encoding="cp866")
        again = pickle.loads(pickle.dumps(record))
        self.assertEqual(again.station, "Подстанция")
        self.assertEqual(again.analog[1].values.tolist(), [1.0, -2.0, 3.0, -4.0])

    def test_lets_its_samples_go_when_it_is_closed(self):
        with zucmtr.open(self.record()) as record:
            codes = record.analog[0].codes
            time = record.time
        self.assertTrue(record.closed)
        record.close()
        gc.collect()
        self.assertEqual(codes.tolist(), [10, -32768, -30, 40])
        self.assertEqual(time.tolist(), [-0.002, -0.001, 0.0, 0.001])
        for call in (lambda: len(record), lambda: record.time, lambda: record.analog[0].values, record.summary):
            with self.assertRaisesRegex(ValueError, "the record is closed"):
                call()
        self.assertEqual(record.station, "Подстанция")

    def test_shows_itself(self):
        record = zucmtr.open(self.record("<rec>"))
        self.assertEqual(repr(record), "<Record '<rec>.cfg' of 'Подстанция', 2024-01-31T12:00:00+03:00: "
                                       "2 analog, 1 digital channels>")
        shown = record._repr_html_()
        self.assertIn("<b>&lt;rec&gt;.cfg</b>", shown)
        cells = "".join(f'<td style="text-align: left">{text}</td>' for text in ("2", "Ub", "B", "Q2", "kV"))
        self.assertIn(f"<tr>{cells}</tr>", shown)
        self.assertIn("<summary>1 digital channels</summary>", shown)
        self.assertNotIn("<rec>", shown)


class FailureTest(Case):
    def test_of_a_file_that_is_not_there_is_an_os_error(self):
        path = self.directory / "none.cfg"
        recording = self.station()[0]
        record = zucmtr.open(self.record())
        for call in (lambda: zucmtr.open(path), lambda: zucmtr.open(recording, ini=path), lambda: record.fault(lines=path),
                     lambda: zucmtr.convert(path), lambda: zucmtr.convert(recording, path),
                     lambda: zucmtr.convert(recording, self.directory, ini=path),
                     lambda: zucmtr.load(record.path, path)):
            with self.assertRaises(FileNotFoundError) as caught:
                call()
            self.assertIsInstance(caught.exception, zucmtr.FileError)
            self.assertEqual(caught.exception.filename, str(path))
            self.assertEqual(str(caught.exception), f"[Errno 2] No such file or directory: '{path}'")

    def test_of_another_kind_of_file_is_an_os_error_with_its_number(self):
        with self.assertRaises(zucmtr.FileError) as caught:
            zucmtr.open(self.directory)
        self.assertEqual(caught.exception.errno, errno.EISDIR)
        name = os.fsdecode(bytes(self.directory / "rec") + b"\xff.cfg")
        with self.assertRaises(zucmtr.FileError) as caught:
            zucmtr.open(name)
        self.assertEqual((caught.exception.errno, caught.exception.filename), (errno.EILSEQ, name))

    def test_survives_the_way_from_another_process(self):
        for call in (lambda: zucmtr.open("none.cfg"), lambda: zucmtr.open(self.record()).analog["Ic"],
                     lambda: zucmtr.open(self.record(data="1,0,x,2,0\n")).time):
            try:
                call()
            except zucmtr.Error as error:
                again = pickle.loads(pickle.dumps(error))
                self.assertEqual((type(again), str(again)), (type(error), str(error)))
            else:
                self.fail("no failure")

    def test_of_another_file_of_a_record_names_the_configuration(self):
        path = self.record()
        with self.assertRaisesRegex(zucmtr.RecordError, f"rec.dat: it is a part of a record; open its configuration {path}"):
            zucmtr.open(path.with_suffix(".dat"))

    def test_names_parameters_instead_of_options(self):
        recording = self.station()[0]
        with self.assertRaises(zucmtr.ConversionError) as caught:
            zucmtr.open(recording, ini=recording.with_name("ZuDrv.ini"), device="Nowhere")
        self.assertRegex(str(caught.exception), r"^device: '.*ZuDrv.ini' has no section \[Nowhere\]; it has \[Default\]")
        recording.with_name("ZuDrv.ini").unlink()
        with self.assertRaisesRegex(zucmtr.ConversionError, "name the recorders' ini file by ini, or have"):
            zucmtr.convert(recording, self.directory)

    def test_is_in_english_whatever_the_language_of_the_user(self):
        script = ("import sys, zucmtr\n"
                  "for path in sys.argv[1:]:\n"
                  "    try: print(zucmtr.open(path).summary(), zucmtr.open(path).analog[0].values)\n"
                  "    except zucmtr.Error as error: print(error)\n")
        bad = self.record("bad", data="1,0,1,2,0\n2,1000,x,2,0\n")
        recording = self.station("--fault", "AG")[0]
        short = recording.with_name("short.ZU")
        short.write_bytes(recording.read_bytes()[:1000])
        said = {}
        for language in ("C.UTF-8", "ru_RU.UTF-8"):
            settings = dict(os.environ, LANG=language, LC_ALL=language, LANGUAGE=language[:2])
            said[language] = subprocess.run([sys.executable, "-c", script, recording, bad, short, "none.ZU"], env=settings,
                                            stdout=subprocess.PIPE, encoding="utf-8", check=True).stdout
        self.assertEqual(said["C.UTF-8"], said["ru_RU.UTF-8"])
        self.assertIn("Short circuit A to earth", said["C.UTF-8"])
        own = re.sub(r"\[[^\n]*\]|'[^']*'|ВЛ 110 кВ Восточная", "", said["C.UTF-8"])  # without names, and what can be searched for
        self.assertEqual(re.findall("[а-яё]+", own), [])
        self.assertIn("short.ZU: cut off: ", own)

    def test_of_a_bad_record_is_a_value_error_with_file_and_line(self):
        path = self.record()
        path.write_text("Station,RAS,2013\n3,2A\n", encoding="utf-8")
        with self.assertRaises(ValueError) as caught:
            zucmtr.open(path)
        self.assertIsInstance(caught.exception, zucmtr.RecordError)
        self.assertIn(f"{path}, line 2", str(caught.exception))

    def test_of_bad_data_comes_with_the_samples(self):
        record = zucmtr.open(self.record(data="1,0,1,2,0\n2,1000,x,2,0\n"))
        with self.assertRaisesRegex(zucmtr.RecordError, "rec.dat, record 2: analog channel 1 is 'x'"):
            record.analog[0].codes
        with self.assertRaisesRegex(zucmtr.RecordError, "rec.dat"):
            len(record)

    def test_of_something_else_says_what_it_is(self):
        path = self.directory / "notes.txt"
        path.write_text("x")
        with self.assertRaises(zucmtr.Error) as caught:
            zucmtr.open(path)
        self.assertIn(str(path), str(caught.exception))


class OpeningTest(Case):
    def test_imports_no_package_that_is_not_needed(self):
        script = "import sys, zucmtr; print(sorted({'pandas', 'xarray', 'matplotlib', 'scipy'} & {*sys.modules}))"
        run = subprocess.run([sys.executable, "-c", script], stdout=subprocess.PIPE, text=True, check=True)
        self.assertEqual(run.stdout, "[]\n")

    def test_reads_the_configuration_and_no_more_of_the_data_than_shows_their_form(self):
        def bytes_read():
            words = Path("/proc/self/io").read_text().split()
            return int(words[words.index("rchar:") + 1])

        path = self.record()
        path.with_suffix(".dat").write_text("".join(f"{i},{1000 * i},1,2,0\n" for i in range(1, 100001)))
        zucmtr.open(path)
        before = bytes_read()
        record = zucmtr.open(path)
        self.assertLess(bytes_read() - before, 150000)
        self.assertEqual(len(record), 100000)
        self.assertGreater(bytes_read() - before, 1500000)


class MemoryTest(Case):
    def test_of_samples_is_theirs_while_they_are_held_and_no_more(self):
        count = 1000000
        data = np.zeros(count, [("number", "<u4"), ("time", "<u4"), ("codes", "<i2", 2), ("states", "<u2")])
        data["number"] = np.arange(1, count + 1)
        data["codes"] = 7
        path = self.record(data=data.tobytes(), kind="BINARY")
        path.write_bytes(path.read_bytes().replace(b"\n1000,4\n", b"\n1000,%d\n" % count))

        def resident():
            return 4096 * int(Path("/proc/self/statm").read_text().split()[1])

        zucmtr.open(self.record("small")).analog[0].codes
        before = resident()
        record = zucmtr.open(path)
        codes = record.analog[0].codes
        self.assertEqual((len(codes), codes[count - 1]), (count, 7))
        self.assertLess(resident() - before, 1.1 * 2 * 2 * count + 1000000)
        record.close()
        self.assertGreater(resident() - before, 2 * 2 * count)
        del codes
        self.assertLess(resident() - before, 1000000)

    def test_of_a_thousand_records_is_given_back(self):
        path = self.record()

        def resident():
            return int(Path("/proc/self/statm").read_text().split()[1])

        def open_all(count):
            for _ in range(count):
                zucmtr.open(path).analog[0].values

        open_all(200)
        before = resident()
        open_all(1000)
        self.assertLess(resident() - before, 500)  # pages of 4 KiB


if __name__ == "__main__":
    unittest.main()
