"""Conversions, and what happened in records."""

import unittest
from concurrent.futures import ThreadPoolExecutor

import zucmtr
from support import Case


class ConvertTest(Case):
    def test_makes_a_verified_record(self):
        recording = self.station("--fault", "BC")[0]
        done = zucmtr.convert(recording, self.directory, form="cff", data="ascii", encoding="utf8")
        self.assertEqual(done.record.suffix, ".cff")
        self.assertEqual(done.record.parent, self.directory)
        self.assertEqual(done.files, (done.record,))
        self.assertTrue(done.is_new and done.data["verified"])
        record = zucmtr.open(done.record)
        self.assertEqual((record.data_type, record.revision), ("ASCII", 2013))
        self.assertFalse(zucmtr.convert(recording, self.directory, form="cff", data="ascii", encoding="utf8").is_new)

    def test_fails_with_the_reason(self):
        recording = self.station()[0]
        recording.write_bytes(recording.read_bytes()[:1000])
        with self.assertRaises(zucmtr.ConversionError) as caught:
            zucmtr.convert(recording, self.directory)
        self.assertIsInstance(caught.exception, ValueError)
        self.assertIn(str(recording), str(caught.exception))
        with self.assertRaisesRegex(zucmtr.ConversionError, "no section"):
            zucmtr.convert(recording, self.directory, device="Nowhere")
        with self.assertRaisesRegex(ValueError, "form is 'xml'; it is one of cfg, cff"):
            zucmtr.convert(recording, self.directory, form="xml")
        with self.assertRaisesRegex(ValueError, "leave form or revision out"):
            zucmtr.convert(recording, self.directory, form="cff", revision=1999)

    def test_puts_the_record_where_the_layout_says(self):
        recording = self.station("--fault", "AG")[0]
        done = zucmtr.convert(recording, self.directory, layout="{year}/{source}", form="cff")
        self.assertEqual(done.record, self.directory / "2024" / f"{recording.stem}.cff")
        with self.assertRaisesRegex(zucmtr.ConversionError, "nonsense"):
            zucmtr.convert(recording, self.directory, layout="{nonsense}")

    def test_replaces_the_record_of_another_recording_only_when_asked(self):
        recording = self.station("--fault", "AG")[0]
        zucmtr.convert(recording, self.directory, layout="x", form="cff")
        self.station("--fault", "BC", "--force")
        with self.assertRaisesRegex(zucmtr.ConversionError, "is not the record of this recording .* choose another directory by out, or replace it by overwrite=True"):
            zucmtr.convert(recording, self.directory, layout="x", form="cff")
        self.assertTrue(zucmtr.convert(recording, self.directory, layout="x", form="cff", overwrite=True).is_new)

    def test_salvages_what_is_whole_and_warns_of_what_is_lost(self):
        recording = self.station("--fault", "AG")[0]
        whole = zucmtr.convert(recording, self.directory, salvage=True)
        self.assertIsNone(whole.salvaged)
        codes = zucmtr.open(whole.record).analog[0].codes.tolist()
        recording.write_bytes(recording.read_bytes()[: recording.stat().st_size * 7 // 10])
        with self.assertRaises(zucmtr.ConversionError):
            zucmtr.convert(recording, self.directory, again=True)
        with self.assertWarnsRegex(zucmtr.SalvageWarning, r"11 of 32 channels were salvaged; lost: .*3U0") as caught:
            part = zucmtr.convert(recording, self.directory, salvage=True, layout="part")
        self.assertEqual(caught.filename, __file__)
        self.assertEqual((part.salvaged.analog, part.salvaged.digital, len(part.salvaged.lost)), (11, 0, 21))
        self.assertEqual(zucmtr.open(part.record).analog[0].codes.tolist(), codes)

    def test_runs_in_many_threads_with_and_without_the_same_choice(self):
        recordings = self.station()
        places = []
        for form in ("cfg", "cff"):
            place = self.directory / form
            place.mkdir()
            places += [(recording, place, form) for recording in recordings]

        def work(job):
            recording, place, form = job
            record = zucmtr.convert(recording, place, form=form, again=True).record
            return record, zucmtr.open(recording).analog[0].codes.tolist()

        with ThreadPoolExecutor(8) as pool:
            done = list(pool.map(work, places * 2))
        self.assertEqual(len({record for record, _ in done}), 2 * len(recordings))
        for record, codes in done:
            self.assertEqual(zucmtr.open(record).analog[0].codes.tolist(), codes)


class FaultTest(Case):
    def test_is_found_in_a_recording(self):
        record = zucmtr.open(self.station("--fault", "AG")[0])
        fault = record.fault()
        self.assertEqual((fault.kind, fault.circuit, fault.direction), ("AG", "ВЛ 110 кВ Восточная", "forward"))
        self.assertEqual(fault.distance.method, "modifiedTakagi")
        self.assertAlmostEqual(fault.distance.percent, 40, delta=0.5)
        self.assertEqual(len(fault.distances), 3)
        self.assertEqual(fault.parts[0].duration, fault.clearing - fault.onset)
        self.assertIn("Short circuit A to earth", str(record.summary()))
        trip = next(event for event in record.events() if event.kind == "trip")
        self.assertEqual((trip.state, trip.active, trip.circuit), (1, True, "ВЛ 110 кВ Восточная"))

    def test_is_none_where_there_is_none(self):
        self.assertIsNone(zucmtr.open(self.record()).fault())


if __name__ == "__main__":
    unittest.main()
