"""Channels and lists of them."""

import unittest
from collections.abc import Mapping, Sequence

import numpy as np
import zucmtr
from support import Case


class AnalogTest(Case):
    def test_has_codes_without_a_copy_and_values_in_primary_units(self):
        channel = zucmtr.open(self.record(side="S")).analog[0]
        self.assertEqual((channel.number, channel.index, channel.name), (1, 0, "Ia"))
        self.assertEqual((channel.phase, channel.circuit, channel.unit, channel.side), ("A", "Q1", "A", "S"))
        self.assertEqual((channel.a, channel.b, channel.skew), (0.5, -1, 2.5))
        self.assertEqual((channel.min, channel.max, channel.primary, channel.secondary), (-32767, 32767, 1000, 5))
        self.assertEqual(channel.codes.dtype, np.int16)
        self.assertFalse(channel.codes.flags.writeable or channel.codes.flags.owndata)
        self.assertEqual(channel.codes.ctypes.data, channel.codes.ctypes.data)
        for array in (channel.codes, channel.values):
            with self.assertRaises(ValueError):
                array[0] = 1
        np.testing.assert_array_equal(channel.values, [4 * 200, np.nan, -16 * 200, 19 * 200])
        np.testing.assert_array_equal(channel.scaled("secondary"), [4, np.nan, -16, 19])
        np.testing.assert_array_equal(channel.scaled("stored"), [4, np.nan, -16, 19])
        with self.assertRaisesRegex(ValueError, "side is 'left'; it is one of primary, secondary, stored"):
            channel.scaled("left")

    def test_with_primary_values_has_secondary_ones_too(self):
        channel = zucmtr.open(self.record(side="P")).analog[0]
        np.testing.assert_array_equal(channel.values, [4, np.nan, -16, 19])
        np.testing.assert_array_equal(channel.scaled("secondary"), [0.02, np.nan, -0.08, 0.095])

    def test_is_an_array_and_a_sequence(self):
        channel = zucmtr.open(self.record()).analog[1]
        self.assertEqual(np.asarray(channel).tolist(), [1.0, -2.0, 3.0, -4.0])
        self.assertEqual(np.abs(channel).max(), 4.0)
        self.assertEqual((len(channel), channel[2], channel[1:3].tolist()), (4, 3.0, [-2.0, 3.0]))
        self.assertEqual(sum(channel), -2.0)
        self.assertEqual([value for value in reversed(channel)], [-4.0, 3.0, -2.0, 1.0])
        self.assertIn(3.0, channel)
        self.assertNotIn(0.0, channel)
        self.assertEqual(repr(channel), "<AnalogChannel 2 'Ub', kV>")

    def test_gives_single_values_that_are_those_of_the_array(self):
        for side in "PS":
            channel = zucmtr.open(self.record(side=side)).analog[0]
            np.testing.assert_array_equal([channel[i] for i in range(-4, 4)], [*channel.values] * 2)
            np.testing.assert_array_equal(channel[::-1], channel.values[::-1])
            np.testing.assert_array_equal(channel[[3, 0]], channel.values[[3, 0]])
            self.assertIsInstance(channel[0], float)
        with self.assertRaises(IndexError):
            channel[4]

    def test_codes_are_of_the_narrowest_type_that_holds_them(self):
        data = "1,0,1,2.5,0\n2,1000,70000,1,1\n"
        record = zucmtr.open(self.record(data=data))
        self.assertEqual([channel.codes.dtype for channel in record.analog], [np.int32, np.float64])
        floats = np.array([1.5, np.nan], "<f4").tobytes()
        record = zucmtr.open(self.record(data=bytes(4) + bytes(4) + floats + bytes(2), kind="FLOAT32"))
        self.assertEqual(record.analog[0].codes.dtype, np.float32)
        self.assertTrue(np.isnan(record.analog[1].values[0]))


class DigitalTest(Case):
    def test_has_states_and_changes(self):
        channel = zucmtr.open(self.record()).digital["Trip"]
        self.assertEqual((channel.number, channel.circuit, channel.normal), (1, "Q1", 1))
        self.assertEqual(channel.values.tolist(), [0, 1, 1, 0])
        self.assertEqual(channel.values.dtype, np.uint8)
        self.assertEqual([channel[i] for i in range(-4, 4)], [0, 1, 1, 0] * 2)
        self.assertEqual((channel[1:].tolist(), [*channel], 1 in channel, 2 in channel), ([1, 1, 0], [0, 1, 1, 0], True, False))
        for place in (4, -5):
            with self.assertRaisesRegex(IndexError, f"there is no sample {place}; the record has 4"):
                channel[place]
        changes = channel.changes
        self.assertEqual(changes.samples.tolist(), [1, 3])
        self.assertEqual(changes.times.tolist(), [-0.001, 0.001])
        self.assertEqual(changes.states.tolist(), [1, 0])


    def test_gives_single_states_however_often_they_change(self):
        for period in (1, 2, 700):
            data = "".join(f"{i + 1},{i * 1000},0,0,{(i + 1) // period % 2}\n" for i in range(3000))
            path = self.record(data=data)
            path.write_text(path.read_text(encoding="utf-8").replace("1000,4\n", "1000,3000\n"), encoding="utf-8")
            channel = zucmtr.open(path).digital[0]
            self.assertEqual([channel[i] for i in range(3000)], [(i + 1) // period % 2 for i in range(3000)])


class ListTest(Case):
    def test_is_a_sequence_and_finds_names_as_a_mapping(self):
        analog = zucmtr.open(self.record()).analog
        self.assertIsInstance(analog, Sequence)
        self.assertNotIsInstance(analog, Mapping)  # iteration gives channels, not names
        self.assertEqual(dict(analog), {"Ia": analog[0], "Ub": analog[1]})
        self.assertEqual((analog.index(analog[1]), analog.count(analog[1])), (1, 1))
        self.assertEqual([one.name for one in reversed(analog)], ["Ub", "Ia"])
        self.assertIsInstance(analog[:1], zucmtr.Channels)
        self.assertEqual(len(analog), 2)
        self.assertIs(analog[-1], analog["Ub"])
        self.assertIs(analog[np.int64(1)], analog["Q2:Ub"])
        self.assertIs(analog["Q2", "Ub"], analog["Q2", "B"])
        self.assertEqual([one.name for one in analog[:1]], ["Ia"])
        self.assertEqual(analog.keys(), ["Ia", "Ub"])
        self.assertEqual([one.name for one in analog.values()], ["Ia", "Ub"])
        self.assertEqual([name for name, _ in analog.items()], ["Ia", "Ub"])
        self.assertIn("Ia", analog)
        self.assertIn(("Q1", "A"), analog)
        self.assertIn(analog[0], analog)
        self.assertNotIn("Ic", analog)
        self.assertIsNone(analog.get("Ic"))
        self.assertIsNone(analog.get(7))
        self.assertEqual(repr(analog), "<2 channels: Ia, Ub>")

    def test_says_which_channels_there_are(self):
        analog = zucmtr.open(self.record()).analog
        with self.assertRaises(zucmtr.ChannelError) as caught:
            analog["Ic"]
        self.assertIsInstance(caught.exception, KeyError)
        self.assertEqual(str(caught.exception), "there is no channel 'Ic'; there are: Ia, Ub")
        for place in (2, -3):
            with self.assertRaisesRegex(IndexError, f"there is no channel at place {place}; there are 2"):
                analog[place]
        for key in (1.5, None, ("Q1", "A", "")):
            with self.assertRaisesRegex(TypeError, "a channel is found by its place, its name, or circuit and signal"):
                analog[key]

    def test_does_not_guess_between_channels_of_one_name(self):
        path = self.record()
        path.write_text(path.read_text(encoding="utf-8").replace("2,Ub,", "2,Ia,"), encoding="utf-8")
        analog = zucmtr.open(path).analog
        with self.assertRaisesRegex(zucmtr.ChannelError, r"2 channels are 'Ia'; take one by its place: \[0, 1\]"):
            analog["Ia"]
        with self.assertRaises(zucmtr.ChannelError):
            analog.get("Ia")
        self.assertEqual(analog["Q2:Ia"].unit, "kV")

    def test_finds_the_signals_of_a_station(self):
        record = zucmtr.open(self.station("--fault", "AG")[0])
        self.assertEqual(record.analog["ВЛ 110 кВ Восточная:Ua"].name, "Ua ВЛ 110 кВ Восточная")


if __name__ == "__main__":
    unittest.main()
