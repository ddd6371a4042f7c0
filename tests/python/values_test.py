"""Every value of every channel, against the C++ reader."""

import hashlib
import os
import subprocess
import unittest
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import zucmtr
from support import Case, program


def hashes(record):
    """The lines that recordvalues prints for a record."""
    for channel in record.analog:
        codes = channel.codes
        doubles = codes.astype(np.float64)
        missing = codes == np.iinfo(codes.dtype).min if codes.dtype.kind == "i" else np.isnan(codes)
        doubles[missing] = 1e300
        yield f"A {channel.index} {hashlib.sha256(doubles.tobytes()).hexdigest()}"
    for channel in record.digital:
        yield f"D {channel.index} {hashlib.sha256(channel.values.tobytes()).hexdigest()}"


class ValuesTest(Case):
    def expected(self, paths):
        run = subprocess.run([os.environ["RECORD_VALUES"], *map(str, paths)], stdout=subprocess.PIPE, text=True, check=True)
        return run.stdout.splitlines()

    def test_of_recordings_and_records_of_all_forms_are_those_of_the_reader(self):
        recordings = self.station("--seed", "7")
        records = []
        for form in ("cfg 2013 binary", "cfg 2013 ascii", "cfg 1999 binary", "cff 2013 ascii", "cff 2013 binary"):
            files, revision, data = form.split()
            place = self.directory / form.replace(" ", "-")
            program("convert", "--form", files, "--revision", revision, "--data", data, "--encoding", "utf8", "--make-out", "--out", place,
                    *recordings)
            records += sorted(path for path in place.iterdir() if path.suffix in (".cfg", ".cff"))
        self.assertEqual(len(records), 5 * len(recordings))
        found = []
        for path in records:
            with zucmtr.open(path) as record:
                found += [str(path), *hashes(record)]
        self.assertEqual(found, self.expected(records))
        for recording, path in zip(recordings, records):
            self.assertEqual(list(hashes(zucmtr.open(recording))), list(hashes(zucmtr.open(path))))

    def test_of_one_record_can_be_asked_for_by_many_threads(self):
        path = program("convert", "--out", self.directory, *self.station("--fault", "AG"))
        path = next(self.directory.glob("*.cfg"))
        expected = self.expected([path])[1:]
        record = zucmtr.open(path)
        with ThreadPoolExecutor(8) as pool:
            found = list(pool.map(lambda _: list(hashes(record)), range(16)))
            others = list(pool.map(lambda _: list(hashes(zucmtr.open(path))), range(16)))
        self.assertEqual(found + others, [expected] * 32)


if __name__ == "__main__":
    unittest.main()
