#!/usr/bin/env python3
"""What scipy reads from a MAT file: scipy_test.py ZUCMTR exports a record with Cyrillic names and compares all of it."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import numpy
from scipy.io import loadmat

CFG = """ПС Восточная,РАС «Узел»,2013
5,3A,2D
1,Ток фазы А,А,ВЛ 110 кВ,кА,0.1,-1,2.5,-32767,32767,1000,5,P
2,Ub,B,,V,1e-3,0,0,-32767,32767,1,1,S
3,Пустой,,,,1,0,0,-32767,32767,1,1,S
1,Отключение,,ВЛ 110 кВ,1
2,K2,,,0
50
1
1000,4
31/01/2024,11:59:59.998000
31/01/2024,12:00:00.000000
ASCII
1
+3,+3
0,3
"""
DAT = "1,0,3,-7,1,0,1\n2,1000,,7,2,1,1\n3,2000,32767,0,3,1,0\n4,3000,-32767,1,4,0,0\n"


class Mat(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as directory:
            record = Path(directory, "record.cfg")
            record.write_text(CFG, encoding="utf-8")
            record.with_suffix(".dat").write_text(DAT)
            out = record.with_suffix(".mat")
            subprocess.run([ZUCMTR, "export", record, "-o", out], check=True, stdout=subprocess.DEVNULL)
            cls.read = loadmat(out, squeeze_me=True, struct_as_record=False)

    def test_has_the_values_to_the_bit(self):
        codes = numpy.array([[3, -7, 1], [numpy.nan, 7, 2], [32767, 0, 3], [-32767, 1, 4]])
        values = codes * [0.1, 1e-3, 1] + [-1, 0, 0]
        self.assertTrue(numpy.array_equal(self.read["analog"], values, equal_nan=True))
        self.assertEqual(self.read["analog"].dtype, numpy.float64)

    def test_has_times_and_states(self):
        self.assertEqual(self.read["time"].tolist(), [-0.002, -0.001, 0, 0.001])
        self.assertEqual(self.read["digital"].tolist(), [[0, 1], [1, 1], [1, 0], [0, 0]])

    def test_has_the_channels_with_their_names(self):
        names = ["name", "phase", "circuit", "unit", "primary", "secondary", "side", "skew", "number"]
        first, _, third = self.read["analog_channels"]
        self.assertEqual([getattr(first, name) for name in names],
                         ["Ток фазы А", "А", "ВЛ 110 кВ", "кА", 1000, 5, "P", 2.5, 1])
        self.assertEqual(bytes(first.name_utf8.tolist()).decode(), "Ток фазы А")
        self.assertEqual((third.name, third.unit.size), ("Пустой", 0))
        trip, second = self.read["digital_channels"]
        self.assertEqual((trip.name, trip.circuit, trip.normal), ("Отключение", "ВЛ 110 кВ", 1))
        self.assertEqual((second.name, second.normal, second.number), ("K2", 0, 2))

    def test_has_the_record(self):
        record = self.read["record"]
        self.assertEqual((record.station, record.device, record.frequency), ("ПС Восточная", "РАС «Узел»", 50))
        self.assertEqual(record.trigger, "2024-01-31T12:00:00.000000+03:00")
        self.assertEqual(record.rates.tolist(), [1000, 4])
        self.assertTrue(record.start.startswith("2024-01-31T11:59:59.998000"))


if __name__ == "__main__":
    ZUCMTR = sys.argv.pop(1)
    unittest.main()
