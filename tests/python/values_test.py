"""Every value, state, change, time and number of every channel, against the C++ reader.

The lines of a record are those that recordvalues prints.
"""

import datetime
import hashlib
import os
import unittest
from concurrent.futures import ThreadPoolExecutor

import forms
import numpy as np
import zucmtr
from support import Case, program, run

MISSING = 1e300

# Stations whose recordings are read: options, and how many recordings they have.
STATIONS = (
    ("--analog 8 --discrete 16 --seconds 0.3 --segments 3 --seed 7", 7),  # with continuation files, compressed
    ("--analog 8 --discrete 16 --seconds 0.3 --segments 2 --plain --fault three", 7),
    ("--analog 5 --discrete 3 --seconds 0.3 --plain --code-page cp1251 --rate 600", 7),
    ("--analog 1 --discrete 1 --seconds 0.2 --compressed --rate 10000", 7),
    ("--analog 0 --discrete 16 --seconds 0.3 --plain", 2),
    ("--analog 3 --discrete 0 --seconds 0.3", 6),
    ("--fault AG", 1),
    ("--random-fault 1-2", 2),
    ("--random-quiet 3", 1),
)
RECORDINGS = 40
WRITTEN = 51  # by hand
EXPORTED = 5 * 10


def digest(array, dtype):
    assert array.dtype == dtype, array.dtype
    return hashlib.sha256(array.tobytes()).hexdigest()


def floats(array):
    """The SHA-256 of numbers, as doubles; what is missing is 1e300."""
    missing = array == np.iinfo(array.dtype).min if array.dtype.kind == "i" else np.isnan(array)
    return digest(np.where(missing, MISSING, array.astype(np.float64)), np.float64)


def texts(*fields):
    return "|".join(f"{field:.17g}" if isinstance(field, float) else str(field) for field in fields)


def microseconds(moment):
    return (moment.replace(tzinfo=None) - datetime.datetime(1970, 1, 1)) // datetime.timedelta(microseconds=1)


def lines(record):
    """What the record says and has, as recordvalues prints it after the path."""
    offset = record.start.utcoffset()
    rates = [number for rate in record.rates for number in (float(rate.hertz), rate.last)]
    yield texts(record.station, record.device, record.revision, record.data_type, record.frequency, len(record),
                microseconds(record.start), microseconds(record.trigger),
                "none" if offset is None else offset // datetime.timedelta(minutes=1), *rates)
    for one in record.analog:
        yield texts(one.number, one.name, one.phase, one.circuit, one.unit, one.side, one.a, one.b, one.skew, one.min,
                    one.max, one.primary, one.secondary, floats(one.codes), floats(one.scaled("stored")),
                    floats(one.values), floats(one.scaled("secondary")))
    for one in record.digital:
        changes = one.changes
        values = one.values
        assert np.array_equal(changes.states, values[changes.samples])
        assert np.array_equal(changes.times, record.time[changes.samples])
        yield texts(one.number, one.name, one.phase, one.circuit, one.normal, digest(values, np.uint8),
                    digest(changes.samples, np.int64))
    yield texts(digest(record.numbers, np.uint32), digest(record.time, np.float64))


class ValuesTest(Case):
    def expected(self, paths):
        return run(os.environ["RECORD_VALUES"], *paths).splitlines()

    def found(self, paths):
        for path in paths:
            with zucmtr.open(path) as record:
                yield str(path)
                yield from lines(record)

    def compare(self, paths, count):
        self.assertEqual(len(paths), count)
        self.assertEqual(list(self.found(paths)), self.expected(paths))

    def stations(self):
        for place, (options, count) in enumerate(STATIONS):
            station = self.directory / str(place)
            program("sample", "--out", station, *options.split())
            recordings = sorted(station.glob("*.ZU"))
            self.assertEqual(len(recordings), count, options)
            yield recordings

    def test_of_40_recordings_are_those_of_their_records(self):
        pairs = []
        for recordings in self.stations():
            out = recordings[0].with_name("records")
            program("convert", "--revision", "2013", "--data", "binary", "--encoding", "utf8", "--make-out", "--out", out, *recordings)
            pairs += zip(recordings, sorted(out.glob("*.cfg")), strict=True)  # both are in the order of their times
        self.assertEqual(len(pairs), RECORDINGS)
        expected = self.expected([record for _, record in pairs])
        found = []
        for recording, path in pairs:
            with zucmtr.open(recording) as record:
                found += [str(path), *lines(record)]
        self.assertEqual(found, expected)

    def test_of_records_of_all_forms_written_by_hand_are_those_of_the_reader(self):
        self.compare([forms.write(form, self.directory) for form in forms.FORMS], WRITTEN)

    def test_of_records_of_all_forms_written_by_the_program_are_those_of_the_reader(self):
        recordings = self.station("--analog", "8", "--discrete", "17", "--seconds", "0.3")[:4]
        recordings.append(forms.write(next(form for form in forms.FORMS if form.name == "two-rates-BINARY"), self.directory))
        records = []
        for files, revision, data in (form.split() for form in (
                "cfg 1999 ascii", "cfg 1999 binary", "cfg 2013 ascii", "cfg 2013 binary", "cfg 2013 binary32",
                "cfg 2013 float32", "cff 2013 ascii", "cff 2013 binary", "cff 2013 binary32", "cff 2013 float32")):
            place = self.directory / f"{files}-{revision}-{data}"
            program("export", "--form", files, "--revision", revision, "--data", data, "--make-out", "--out", place, *recordings)
            records += sorted(path for path in place.iterdir() if path.suffix in (".cfg", ".cff"))
        self.compare(records, EXPORTED)

    def test_of_one_record_can_be_asked_for_by_many_threads(self):
        program("convert", "--out", self.directory, *self.station("--fault", "AG"))
        path = next(self.directory.glob("*.cfg"))
        expected = self.expected([path])[1:]
        record = zucmtr.open(path)
        with ThreadPoolExecutor(8) as pool:
            found = list(pool.map(lambda _: list(lines(record)), range(16)))
            others = list(pool.map(lambda _: list(lines(zucmtr.open(path))), range(16)))
        self.assertEqual(found + others, [expected] * 32)


if __name__ == "__main__":
    unittest.main()
