"""What is odd about a record: how the program and the page say it, and how the pictures show it."""
import math
import unittest
import xml.etree.ElementTree

from foreign import MISSING, Channel, Foreign, times
from pages import browser, folder, run_tests, zucmtr

SVG = "{http://www.w3.org/2000/svg}"


def show(record, **settings):
    return browser.show(record, folder / "own", **settings)


class Notices(unittest.TestCase):
    """What is odd about a record is said in the terminal and on the page."""

    def record(self, count=400, **settings):
        codes = [round(1000 * math.sin(i * math.pi / 10)) for i in range(count)]
        return Foreign([Channel("Ua", "kV", 0.01, 0.0, codes), Channel("Ub", "kV", 0.01, 0.0, list(codes))], "BINARY",
                       [(1000, count)], **settings)

    def test_nothing_odd_says_nothing(self):
        self.assertEqual("", show(self.record()))
        self.assertEqual("", browser.text("#notices"))

    def test_other_counts_than_the_configuration_announces(self):
        for announced in (900, 300):
            said = show(self.record(announced=announced))
            self.assertEqual("zucmtr: %s: the configuration announces %d samples, the data have 400\n" % (folder / "own.cfg", announced), said)
            self.assertEqual(["The configuration of the record announces %d samples, the data have 400."
                              % announced], browser.texts("#notices p"))
            self.assertEqual(400, browser.run("return zuView.page.data.count"))

    def test_a_window_is_taken_from_the_samples_that_there_are(self):
        said = show(self.record(announced=9000, trigger=5.0), options=["--window", "0.1"])
        self.assertIn("the page holds 101 of 400 samples", said)
        self.assertEqual(101, browser.run("return zuView.page.data.count"))
        stamped = self.record(announced=9000, trigger=5.0)
        stamped.rates, stamped.stamps = [], [1000 * i for i in range(400)]
        self.assertIn("the page holds 101 of 400 samples", show(stamped, options=["--window", "0.1"]))

    def test_a_trigger_outside_the_record(self):
        for trigger in (0.5, 30.0):
            said = show(self.record(trigger=trigger))
            self.assertEqual("zucmtr: %s: the trigger time is outside the record's samples; check the start time, the "
                             "trigger time and the sampling rates in its configuration\n" % (folder / "own.cfg"), said)
            self.assertEqual(["The trigger time, 2024-02-01 00:00:%09.6f, is outside the record, which starts at "
                              "2024-02-01 00:00:00.000000. Check both times and the sampling rates in the configuration."
                              % trigger], browser.texts("#notices p"))
            self.assertEqual([], browser.log("browser"))

    def test_missing_samples(self):
        record = self.record()
        record.channels[1].codes[100:117] = [MISSING] * 17
        said = show(record, settings="lang=ru&theme=dark")
        self.assertEqual("zucmtr: %s: missing analog values: 17 (channels: 1); the traces have gaps there, and a period with "
                         "a gap has no RMS and no angle\n" % (folder / "own.cfg"), said)
        self.assertEqual(["Пропущено аналоговых значений: 17 (каналов: 1). На осциллограммах там разрывы, а для "
                          "периода с разрывом нет действующего значения и угла."], browser.texts("#notices p"))

    def test_a_picture_alone_says_it_as_well(self):
        self.record(announced=900).write(folder / "odd.cfg")
        for form in ("--svg", "--png"):
            said = zucmtr("view", folder / "odd.cfg", form, folder / "odd.picture").stderr
            self.assertEqual(1, said.count("the configuration announces 900 samples"), said)
        both = zucmtr("view", folder / "odd.cfg", "--svg", folder / "odd.svg", "-o", folder / "odd.html").stderr
        self.assertEqual(1, both.count("the configuration announces 900 samples"), both)

    def test_the_record_sheet_has_the_whole_record(self):
        record = self.record(count=400, frequency=0, trigger=0.1)
        record.rates = [(1000, 200), (500, 400)]
        show(record, options=["--window", "0.1"])
        rows = dict(zip(browser.texts("#identity th"), browser.texts("#identity td")))
        self.assertEqual(("400", "0.600", "1000, 500"), (rows["Samples"], rows["Duration, s"], rows["Samples per second"]))
        self.assertEqual("not in the configuration, 50 assumed", rows["Line frequency, Hz"])


class Pictures(unittest.TestCase):
    """The traces of the still picture, as the points of its lines."""

    def traces(self, record):
        """The lines of the only voltage: lists of (x, y)."""
        record.write(folder / "picture.cfg")
        zucmtr("view", folder / "picture.cfg", "--svg", folder / "picture.svg")
        lines = []
        for group in xml.etree.ElementTree.parse(folder / "picture.svg").iter(SVG + "g"):
            if group.get("stroke") == "#c08a00":
                lines += [[tuple(map(float, point.split(","))) for point in line.get("points").split()]
                          for line in group.iter(SVG + "polyline")]
        return lines

    def test_missing_samples_leave_a_gap(self):
        for kind in ("ASCII", "FLOAT32"):
            codes = [100.0] * 50 + [MISSING] * 100 + [-100.0] * 40 + [MISSING] + [-100.0] * 209
            lines = self.traces(Foreign([Channel("Ua", "kV", 1.0, 0.0, codes)], kind, [(1000, 400)], trigger=0.06))
            left, right = lines[0][0][0], lines[-1][-1][0]
            places = [[round((x - left) / (right - left) * 240) for x, _ in (line[0], line[-1])] for line in lines]
            self.assertEqual([[0, 49], [150, 189], [191, 240]], places)
            self.assertEqual(3, len({y for line in lines for _, y in line} | {None}))  # two heights

    def test_samples_stand_at_their_times_over_several_rates(self):
        rates = [(1000, 100), (250, 125), (1000, 400)]
        codes = [0] * 400
        codes[110] = 1000
        seconds = times(rates, 400)
        line = max(self.traces(Foreign([Channel("Ua", "kV", 1.0, 0.0, codes)], "BINARY", rates, trigger=0.06)), key=len)
        left, right = line[0][0], line[-1][0]
        peak = min(line, key=lambda point: point[1])[0]
        self.assertAlmostEqual(seconds[110], (peak - left) / (right - left) * (seconds[line_end(seconds)] - seconds[0]), places=4)


def line_end(seconds):
    """The sample nearest to the end of a picture, twelve periods after its start."""
    return min(range(len(seconds)), key=lambda i: abs(seconds[i] - 0.24))


if __name__ == "__main__":
    run_tests()
