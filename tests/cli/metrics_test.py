"""The file of 'zucmtr watch --status NAME.prom', read by the client library of Prometheus.

    metrics_test.py ZUCMTR
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import time
import unittest

from prometheus_client.parser import text_string_to_metric_families

from zufiles import recording

PROGRAM = pathlib.Path(sys.argv[1]).absolute()
NAME = 'line \\ "7"'  # characters that the form has to escape


class Metrics(unittest.TestCase):
    def test_file_has_the_numbers_of_each_recorder(self):
        with tempfile.TemporaryDirectory() as name:
            place = pathlib.Path(name)
            subprocess.run([PROGRAM, "sample", "--seconds", "0.1", "--out", place / "station"], check=True,
                           stdout=subprocess.DEVNULL)
            ini = (place / "station/ZuDrv.ini").read_text(encoding="utf-8")
            (place / "ZuDrv.ini").write_text(re.sub(r"^Время ожидания=.*", "Время ожидания=50", ini, flags=re.M),
                                             encoding="utf-8")
            for directory in ("conf", "in", NAME):
                (place / directory).mkdir()
            (place / f"conf/{NAME}.conf").write_text(f"ini = ../ZuDrv.ini\ndirectory = ../in\nout = ../{NAME}\n"
                                                     "exec = true\n", encoding="utf-8")
            (place / "conf/wrong.conf").write_text("nothing\n", encoding="utf-8")
            (place / "in/a.ZU").write_bytes(recording())
            (place / "in/junk.ZU").write_bytes(b"junk")
            begin = time.time()
            subprocess.run([PROGRAM, "watch", "--once", "--config", "conf", "--status", "zucmtr.prom"], cwd=place,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
            text = (place / "zucmtr.prom").read_text(encoding="utf-8")
            self.check(list(text_string_to_metric_families(text)), begin, place)

    def check(self, families, begin, place):
        types = {family.name: family.type for family in families}
        for family in families:
            self.assertTrue(family.documentation, family.name)
        counters = ("converted", "failed", "commands_done", "commands_failed")
        self.assertEqual({name for name, kind in types.items() if kind == "counter"},
                         {f"zucmtr_watch_{name}" for name in counters})
        self.assertEqual({kind for kind in types.values()}, {"counter", "gauge"})
        samples = {(sample.name, sample.labels.get("recorder")): sample for family in families
                   for sample in family.samples}
        expected = {"converted_total": 1, "failed_total": 1, "pending": 0, "commands_done_total": 1,
                    "commands_failed_total": 0, "commands_pending": 0, "trouble": 0, "recorder_up": 0}
        for metric, value in expected.items():
            self.assertEqual(samples[f"zucmtr_watch_{metric}", NAME].value, value, metric)
        self.assertEqual(samples["zucmtr_watch_trouble", "wrong"].value, 1)
        self.assertNotIn(("zucmtr_watch_last_recording_time_seconds", "wrong"), samples)
        for metric in ("recorder_start", "recorder_seen", "last_scan", "last_recording"):
            self.assertTrue(begin - 1 <= samples[f"zucmtr_watch_{metric}_time_seconds", NAME].value <= time.time() + 1)
        for metric in ("start", "updated"):
            self.assertTrue(begin - 1 <= samples[f"zucmtr_watch_{metric}_time_seconds", None].value <= time.time() + 1)
        disk = samples["zucmtr_watch_free_bytes", NAME]
        self.assertEqual(pathlib.Path(disk.labels["directory"]), place.resolve() / NAME)
        self.assertGreater(disk.value, 0)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]] + sys.argv[2:])
