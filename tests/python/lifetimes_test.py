"""How long things live: arrays, copies, children of the process, threads, interrupts."""

import contextlib
import copy
import gc
import multiprocessing
import os
import pickle
import signal
import subprocess
import sys
import threading
import time
import unittest
from concurrent.futures import ThreadPoolExecutor

import forms
import numpy as np
import zucmtr
from support import Case

LONG = next(form for form in forms.FORMS if form.name == "many-samples")


def sums(record):
    """Something that changes with any value and state of the record."""
    return [float(np.nansum(one.values)) for one in record.analog] + [int(one.values.sum()) for one in record.digital]


def status_of_child(work):
    """The exit status of a child, made by a fork, that does the work: 0 if it returns true."""
    child = os.fork()
    if child == 0:
        status = 2
        with contextlib.suppress(BaseException):
            signal.alarm(20)
            status = 0 if work() else 1
        os._exit(status)
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


class ArrayTest(Case):
    def test_outlives_its_record(self):
        path = forms.write(LONG, self.directory)
        record = zucmtr.open(path)
        channel, state = record.analog[0], record.digital[3]
        arrays = {"codes": channel.codes, "values": channel.values, "states": state.values, "time": record.time,
                  "changes": state.changes.samples, "numbers": record.numbers}
        before = {name: array.copy() for name, array in arrays.items()}
        record.close()
        del record, channel, state
        gc.collect()
        others = [zucmtr.open(path).analog[1].values for _ in range(3)]  # where the memory would be used again
        self.assertEqual(len(others), 3)
        for name, array in arrays.items():
            np.testing.assert_array_equal(array, before[name], err_msg=name)
            self.assertFalse(array.flags.writeable, name)

    def test_cannot_be_made_writeable(self):
        record = zucmtr.open(self.record())
        for array in (record.analog[0].codes, record.time, record.numbers, record.digital[0].changes.samples):
            with self.assertRaises(ValueError):
                array.flags.writeable = True


class CopyTest(Case):
    def test_of_records_and_channels_by_pickle_and_copy_are_read_again(self):
        record = zucmtr.open(self.record())
        for again in (lambda one: pickle.loads(pickle.dumps(one)), copy.copy, copy.deepcopy):
            self.assertEqual(sums(again(record)), sums(record))
            self.assertEqual(again(record.analog[1]).values.tolist(), [1.0, -2.0, 3.0, -4.0])
            self.assertEqual([one.name for one in again(record.digital)], ["Trip"])
        other = copy.copy(record)
        record.close()
        self.assertEqual(len(other), 4)

    def test_of_a_subclass_is_of_that_class(self):
        self.assertIs(type(copy.copy(Own(self.record()))), Own)

    def test_is_independent_of_the_current_directory(self):
        path = self.record()
        before = os.getcwd()
        self.addCleanup(os.chdir, before)
        os.chdir(self.directory)
        record = zucmtr.open(path.name)
        os.chdir("/")
        self.assertEqual(len(pickle.loads(pickle.dumps(record))), 4)
        self.assertIsNone(record.fault())


class Own(zucmtr.Record):
    pass


class ForkTest(Case):
    def test_leaves_records_to_both_processes(self):
        path = forms.write(LONG, self.directory)
        expected = sums(zucmtr.open(path))
        unread, read = zucmtr.open(path), zucmtr.open(path)
        self.assertEqual(sums(read), expected)
        with multiprocessing.get_context("fork").Pool(2, initializer=keep, initargs=([unread, read],)) as pool:
            here = sums(unread)
            there = pool.map(sums_of_kept, [0, 1] * 4)
        self.assertEqual([here, *there], [expected] * 9)

    def test_leaves_the_temporary_record_of_a_recording_to_the_parent(self):
        record = zucmtr.open(self.station("--fault", "AG")[0])

        def child():
            nonlocal record
            record = None
            gc.collect()
            return True

        self.assertEqual(status_of_child(child), 0)
        self.assertEqual(record.fault().kind, "AG")

    def test_while_another_thread_reads_locks_nothing_in_the_child(self):
        path = forms.write(LONG, self.directory)
        expected = sums(zucmtr.open(path))
        for _ in range(5):
            record = zucmtr.open(path)
            reader = threading.Thread(target=lambda one=record: len(one))
            reader.start()
            self.assertEqual(status_of_child(lambda one=record: sums(one) == expected), 0)
            reader.join()

    def test_between_conversions_leaves_converting_to_both_processes(self):
        recording = self.station("--seconds", "0.1")[0]
        zucmtr.convert(recording, self.directory)
        self.assertEqual(status_of_child(lambda: zucmtr.convert(recording, self.directory, again=True).is_new), 0)
        self.assertTrue(zucmtr.convert(recording, self.directory, again=True).is_new)

    def test_while_a_recording_is_converted_is_refused_in_the_child(self):
        recording = self.station("--segments", "4")[0]
        zucmtr.convert(recording, self.directory)
        stop = threading.Event()

        def convert():
            while not stop.is_set():
                zucmtr.convert(recording, self.directory, again=True)

        def refused():
            try:
                zucmtr.convert(recording, self.directory)
            except zucmtr.ConversionError as error:
                return "forked while a recording was converted" in str(error)
            return False

        thread = threading.Thread(target=convert)
        thread.start()
        statuses = []
        while 0 not in statuses and len(statuses) < 200:  # some forks are between two conversions
            statuses.append(status_of_child(refused))
        stop.set()
        thread.join()
        self.assertEqual(statuses[-1], 0)
        self.assertEqual(set(statuses) - {0, 1}, set())

    def test_by_spawn_pickles_records(self):
        record = zucmtr.open(self.record())
        with multiprocessing.get_context("spawn").Pool(1) as pool:
            self.assertEqual(pool.map(sums, [record]), [sums(record)])


kept = []


def keep(records):
    kept[:] = records


def sums_of_kept(place):
    return sums(kept[place])


class SubinterpreterTest(Case):
    def test_is_refused(self):
        # Python 3.13 has another module, which returns what went wrong, and itself refuses the extension in the interpreters
        # that it makes unless they are asked for as those of earlier versions.
        program = ("from _interpreters import create, run_string\n{}\n"
                   "print(run_string(create('legacy'), 'import zucmtr').msg)")
        if sys.version_info < (3, 13):
            program = ("import _xxsubinterpreters as s\n{}\ni = s.create()\n"
                       "try: s.run_string(i, 'import zucmtr')\nexcept s.RunFailedError as error: print(error)")
        for first in ("", "import zucmtr"):
            run = subprocess.run([sys.executable, "-c", program.format(first)], stdout=subprocess.PIPE, text=True,
                                 timeout=60, check=True)
            self.assertIn("not in sub-interpreters", run.stdout)


class ThreadTest(Case):
    def test_many_read_one_record_and_their_own(self):
        path = forms.write(LONG, self.directory)
        expected = sums(zucmtr.open(path))
        record = zucmtr.open(path)
        with ThreadPoolExecutor(8) as pool:
            found = list(pool.map(lambda i: sums(record if i % 2 else zucmtr.open(path)), range(16)))
        self.assertEqual(found, [expected] * 16)

    def test_may_close_what_others_read(self):
        path = forms.write(LONG, self.directory)
        expected = sums(zucmtr.open(path))
        for _ in range(5):
            record = zucmtr.open(path)
            start = threading.Barrier(5)

            def read(one=record, gate=start):
                gate.wait()
                try:
                    return sums(one)
                except ValueError as error:
                    return str(error)

            with ThreadPoolExecutor(4) as pool:
                readers = [pool.submit(read) for _ in range(4)]
                start.wait()
                record.close()
                found = [reader.result() for reader in readers]
            for one in found:
                self.assertIn(one, (expected, "the record is closed"))


class InterruptTest(Case):
    def test_comes_after_the_reading_and_spoils_nothing(self):
        path = forms.write(LONG, self.directory)
        expected = sums(zucmtr.open(path))
        record = zucmtr.open(path)
        sender = threading.Timer(0.001, signal.raise_signal, [signal.SIGINT])
        with self.assertRaises(KeyboardInterrupt):
            sender.start()
            end = time.monotonic() + 60
            while time.monotonic() < end:
                zucmtr.open(path).analog[0].values
                sums(record)
        self.assertEqual(sums(record), expected)


if __name__ == "__main__":
    unittest.main()
