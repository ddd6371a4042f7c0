"""No call keeps a reference: run by the debug build of Python, which counts every reference that is taken and given back.

NumPy is not built for that Python, so that what it does in its own functions is not counted: which references of an array
are, depends on the version of NumPy. For the calls that give arrays, the references that all objects have are added up
instead.
"""

import copy
import gc
import pickle
import sys
import unittest

import zucmtr
from support import Case

ROUNDS = 40
NOISE = ROUNDS // 2  # what is kept once is no leak


def real_references():
    """The references of all objects that the collector knows, and of what they refer to."""
    known = {id(one): one for one in gc.get_objects()}
    for one in gc.get_referents(*list(known.values())):
        known.setdefault(id(one), one)
    return sum(map(sys.getrefcount, known.values()))


def growth(call, measure):
    """By how much a measure grows in a loop over a call. What is lost grows in each loop, a cache only until it is full."""
    least = None
    for _ in range(6):
        gc.collect()
        before = measure()
        for _ in range(ROUNDS):
            call()
        gc.collect()
        found = measure() - before
        least = found if least is None else min(least, found, key=abs)
        if abs(least) <= NOISE:
            break
    return least


def failing(error, call):
    """A call that has to raise."""
    def attempt():
        try:
            call()
        except error:
            return
        raise AssertionError("it succeeded")
    return attempt


class ReferencesTest(Case):
    def setUp(self):
        super().setUp()
        self.path = self.record(side="S")
        self.open = zucmtr.open(self.path)
        self.core = self.open._source.core

    def check(self, calls, measure):
        found = {name: [growth(call, measure), growth(call, sys.getallocatedblocks)] for name, call in calls.items()}
        self.assertEqual({name: one for name, one in found.items() if max(map(abs, one)) > NOISE}, {})

    def test_of_the_extension_are_all_given_back(self):
        core = self.core
        broken = self.record("broken", data="1,0,1,2,0\n2,1000,x,2,0\n")
        calls = {name: getattr(core, name) for name in
                 ("configuration", "path", "header", "information", "count", "memory", "forgiven")}
        arrays = {
            "times": core.times, "numbers": core.numbers, "codes": lambda: core.codes(0), "states": lambda: core.states(0),
            "values": lambda: core.values(1, 2.0), "changes": lambda: core.changes(0),
        }
        self.assertLess({*calls, *arrays}, set(dir(core)))
        calls.update({
            "state": lambda: core.state(0, 1), "summary": lambda: core.summary(""),
            "wrong place": failing(IndexError, lambda: core.codes(2)),
            "no sample": failing(IndexError, lambda: core.state(0, 4)),
            "wrong type": failing(TypeError, lambda: core.codes("x")),
            "broken data": failing(zucmtr.RecordError, lambda: zucmtr._core.Record(str(broken), "", "", "", "").count()),
            "no record": failing(zucmtr.Error, lambda: zucmtr._core.Record("/none.cfg", "", "", "", "")),
        })
        done = {name for name in dir(core) if not name.startswith("_")}
        self.assertEqual(done - {*calls, *arrays}, set(), "a method that is not checked")
        self.check(calls, sys.gettotalrefcount)
        self.check(arrays, real_references)

    def test_of_records_and_channels_are_all_given_back(self):
        record = self.open
        analog, digital = record.analog, record.digital
        calls = {
            "open": lambda: zucmtr.open(self.path),
            "with": lambda: zucmtr.open(self.path).__enter__().close(),
            "len": lambda: len(record), "repr": lambda: repr(record), "html": record._repr_html_,
            "moments": lambda: (record.start, record.trigger), "summary": record.summary, "events": record.events,
            "fault": record.fault, "findings": lambda: record.findings, "texts": lambda: (record.header, record.information),
            "channels": lambda: (analog["Ia"], analog["Q1:Ia"], analog["Q1", "A"], analog[:1], "Ia" in analog, analog.items()),
            "no channel": failing(zucmtr.ChannelError, lambda: analog["x"]),
            "no file": failing(zucmtr.FileError, lambda: zucmtr.open(self.directory / "none.cfg")),
            "pickle": lambda: pickle.loads(pickle.dumps(record)), "copy": lambda: (copy.copy(record), copy.deepcopy(record)),
        }
        self.check(calls, sys.gettotalrefcount)

    def test_of_conversions_are_all_given_back(self):
        recording = self.station("--analog", "2", "--discrete", "2", "--seconds", "0.1")[0]
        self.check({
            "convert": lambda: zucmtr.convert(recording, self.directory, again=True),
            "fail": failing(zucmtr.ConversionError, lambda: zucmtr.convert(recording, self.directory, device="none")),
            "open": lambda: zucmtr.open(recording),
        }, sys.gettotalrefcount)

    def test_of_arrays_are_all_given_back(self):
        record = self.open
        analog, digital = record.analog, record.digital
        self.check({
            "codes": lambda: analog[0].codes, "stored": lambda: analog[0].scaled("stored"),
            "states": lambda: digital[0].values, "numbers": lambda: record.numbers, "time": lambda: record.time,
            "primary": lambda: analog[0].values, "array": lambda: analog[0][1:3],
            "changes": lambda: digital[0].changes, "matrix": record.to_numpy,
        }, real_references)


if __name__ == "__main__":
    unittest.main()
