"""Every public name: that it is documented, and the words of other readers.

names_test.py ROOT: the source directory.
"""

import dataclasses
import inspect
import pickle
import re
import sys
import unittest
import unittest.mock
from pathlib import Path

import numpy as np
import zucmtr
from support import ASCII, Case

ROOT = Path(sys.argv.pop(1))
CLASSES = [getattr(zucmtr, name) for name in zucmtr.__all__ if inspect.isclass(getattr(zucmtr, name))]
# What a NumPy array is documented by.
ARRAYS = ["AnalogChannel.codes", "AnalogChannel.values", "AnalogChannel.scaled", "Channel.values", "DigitalChannel.values",
          "Record.time", "Record.to_numpy", "Changes.samples", "Changes.times", "Changes.states"]


def members():
    """Public members of the public classes: (class, name, object)."""
    for cls in CLASSES:
        for name, member in inspect.getmembers(cls):
            of_python = getattr(member, "__objclass__", cls).__module__ == "builtins"
            if not name.startswith("_") and (isinstance(member, property) or inspect.isroutine(member)) and not of_python:
                yield cls, name, member


class NamesTest(unittest.TestCase):
    def test_are_those_that_the_package_lists(self):
        self.assertEqual(zucmtr.__all__, sorted(zucmtr.__all__))
        public = {name for name, member in vars(zucmtr).items() if not name.startswith("_") and not inspect.ismodule(member)}
        self.assertEqual(set(zucmtr.__all__) - {"__version__"}, public - {"annotations"})

    def test_are_documented(self):
        places = [(name, getattr(zucmtr, name)) for name in zucmtr.__all__ if name != "__version__"]
        places += [(f"{cls.__name__}.{name}", member) for cls, name, member in members()]
        self.assertGreater(len(places), 100)
        self.assertEqual([place for place, member in places if not inspect.getdoc(member)], [])
        own = [place for place, member in places if inspect.isclass(member) and not member.__doc__]
        self.assertEqual(own, [])

    def test_of_fields_stand_under_attributes(self):
        for cls in CLASSES:
            fields = [field.name for field in dataclasses.fields(cls)] if dataclasses.is_dataclass(cls) else []
            own = [name for name in getattr(cls, "_fields", fields) if name in vars(cls).get("__annotations__", {})]
            # Without the indentation, which Python has not kept since version 3.13.
            section = inspect.cleandoc(cls.__doc__ or "").partition("Attributes\n----------\n")[2]
            listed = [name for line in re.findall(r"^(\w.*) : ", section, re.MULTILINE) for name in line.split(", ")]
            if own:
                self.assertEqual(listed, own, cls)

    def test_of_parameters_stand_under_parameters(self):
        functions = [(name, getattr(zucmtr, name)) for name in ("open", "convert", "load", "read")]
        functions += [(name, getattr(zucmtr.Record, name)) for name in ("summary", "plot")]
        for name, function in functions:
            taken = [one for one in inspect.signature(function).parameters if one != "self"]
            section = inspect.getdoc(function).partition("Parameters\n----------\n")[2].partition("\n\n")[0]
            listed = [one for line in re.findall(r"^(\w.*)$", section, re.MULTILINE) for one in line.split(", ")]
            self.assertEqual(listed, taken, name)

    def test_of_arrays_come_with_their_shape(self):
        for place in ARRAYS:
            cls, name = place.split(".")
            member = getattr(zucmtr, cls)
            text = member.__doc__ if hasattr(member, "_fields") else inspect.getdoc(getattr(member, name))
            self.assertRegex(text, r"shape \((samples|changes)", place)

    def test_of_the_version_is_that_of_the_project(self):
        project = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
        version = re.search(r"project\(ZuCmtrConverter VERSION (\S+)", project)[1]
        self.assertEqual(zucmtr.__version__, version)
        self.assertIn(f'\nversion = "{version}"\n', (ROOT / "pyproject.toml").read_text(encoding="utf-8"))


class OtherReadersTest(Case):
    def test_have_words_that_are_known_here(self):
        record = zucmtr.open(self.record())
        self.assertEqual(record.station_name, record.station)
        self.assertEqual(record.rec_dev_id, record.device)
        self.assertEqual((record.rev_year, record.ft), ("2013", "ASCII"))
        self.assertEqual((record.analog_count, record.status_count, record.channels_count), (2, 1, 3))
        self.assertEqual((record.analog_channel_ids, record.status_channel_ids), (["Ia", "Ub"], ["Trip"]))
        self.assertEqual((record.analog_phases, record.status_phases), (["A", "B"], [""]))
        self.assertEqual(record.analog_units, ["A", "kV"])
        self.assertEqual(record.total_samples, 4)
        self.assertEqual((record.nrates, record.sample_rates), (1, [[1000, 4]]))
        self.assertEqual((record.start_timestamp, record.trigger_timestamp), (record.start, record.trigger))
        self.assertEqual(record.trigger_time, 0.002)
        self.assertEqual((record.hdr, record.inf), ("", b""))
        self.assertIs(record.status, record.digital)
        self.assertIs(record.cfg.analog_channels, record.analog)
        self.assertIs(record.cfg.status_channels, record.digital)
        self.assertEqual(record.to_numpy()[:, 1].tolist(), [1.0, -2.0, 3.0, -4.0])

    def test_have_words_for_what_channels_are(self):
        record = zucmtr.open(self.record(side="S"))
        channel = record.cfg.analog_channels[0]
        self.assertEqual((channel.n, channel.ph, channel.ccbm, channel.uu, channel.pors), (1, "A", "Q1", "A", "S"))
        self.assertEqual((channel.cmin, channel.cmax), (-32767, 32767))
        self.assertEqual((record.status[0].n, record.status[0].ccbm, record.status[0].y), (1, "Q1", 1))

    def test_have_all_their_words_in_the_document(self):
        document = (ROOT / "docs/python.md").read_text(encoding="utf-8").partition("## Coming from other readers")[2]
        words = set(re.findall(r"`(?:\w+\.)*(\w+)(?:\[i\]|\(\))?`", document))
        aliases = {name for cls in zucmtr.Record.__mro__ + zucmtr.AnalogChannel.__mro__ + zucmtr.DigitalChannel.__mro__
                   if cls.__module__ == "zucmtr._aliases" for name in vars(cls) if not name.startswith("_")}
        self.assertGreater(len(aliases), 25)
        self.assertEqual(aliases - words, set())


class GatheredTest(Case):
    def apart(self):
        """A configuration and its data in different directories."""
        configuration = self.record("one")
        data = self.directory / "elsewhere" / "two.bin"
        data.parent.mkdir()
        configuration.with_suffix(".dat").rename(data)
        return configuration, data

    def left_in_temporary_directory(self):
        return list(self.temporary.iterdir())

    def setUp(self):
        super().setUp()
        self.temporary = self.directory / "tmp"
        self.temporary.mkdir()
        patched = unittest.mock.patch("tempfile.tempdir", str(self.temporary))
        patched.start()
        self.addCleanup(patched.stop)

    def test_is_a_record_of_files_that_are_apart(self):
        configuration, data = self.apart()
        with zucmtr.load(configuration, data) as record:
            self.assertEqual((record.path, record.station), (configuration, "Подстанция"))
            self.assertEqual(record.analog[1].values.tolist(), [1.0, -2.0, 3.0, -4.0])
            self.assertIsNone(record.fault())
            again = pickle.loads(pickle.dumps(record))
        self.assertEqual(again.digital[0].values.tolist(), [0, 1, 1, 0])
        channel = again.analog[1]
        del again
        self.assertEqual(channel[3], -4.0)
        del channel
        self.assertEqual(self.left_in_temporary_directory(), [])

    def test_of_one_file_is_what_open_gives(self):
        self.assertEqual(type(zucmtr.load(self.record())), zucmtr.Record)

    def test_has_the_header_that_is_named_and_finds_the_data(self):
        header = self.directory / "other.txt"
        header.write_text("Отчёт", encoding="utf-8")
        record = zucmtr.load(self.record(), hdr=header)
        self.assertEqual((record.header, len(record)), ("Отчёт", 4))

    def test_can_be_in_memory(self):
        cfg = self.record(encoding="cp866").read_bytes()
        for data in (ASCII, ASCII.encode()):
            record = zucmtr.read(cfg, data, "header", b"[x]", encoding="cp866")
            again = pickle.loads(pickle.dumps(record))
            self.assertEqual((again.station, again.header, again.information), ("Подстанция", "header", b"[x]"))
            self.assertEqual(np.asarray(again.analog[1]).tolist(), [1.0, -2.0, 3.0, -4.0])
        del record, again
        self.assertEqual(self.left_in_temporary_directory(), [])

    def test_names_the_files_of_the_user_in_failures(self):
        configuration, data = self.apart()
        data.write_text("1,0,1,2,0\n2,1000,x,2,0\n")
        with self.assertRaises(zucmtr.RecordError) as caught:
            zucmtr.load(configuration, data).time
        self.assertIn(f"{data}, record 2", str(caught.exception))
        with self.assertRaises(zucmtr.RecordError) as caught:
            zucmtr.read("Station,RAS,2013\n3,2A\n", "")
        self.assertRegex(str(caught.exception), "^record.cfg, line 2")
        configuration.write_text(configuration.read_text(encoding="utf-8").replace("50\n", "50 \n"), encoding="utf-8")
        self.assertEqual({finding.file for finding in zucmtr.load(configuration, data).findings}, {str(configuration)})
        self.assertEqual(self.left_in_temporary_directory(), [])


if __name__ == "__main__":
    unittest.main()
