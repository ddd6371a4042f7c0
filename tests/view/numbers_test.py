"""The numbers that the page shows: compared with a second computation, in records of many kinds, most of them such as
devices of other vendors write."""
import cmath
import math
import random
import unittest

from foreign import MISSING, Channel, Foreign, fault, sampled, times
from pages import browser, folder, run_tests, zucmtr
from records import Read
from reference import FEW, Reading, sequences

CURSORS = 30

# At each cursor: the numbers of all channels as the scripts have them, the texts of the strips on the screen, and the rows
# of the phasor panel.
READ = """const page = zuView.page;
return arguments[0].map((sample) => {
  page.cursors.samples = [sample, sample]; page.cursors.chosen = 0; page.showValues();
  const rows = page.strips.filter((strip) => strip.onScreen).flatMap((strip) => strip.rows);
  const exact = (number) => Number.isFinite(number) ? number : null;
  return {
    exact: page.analog.map((channel) => {
      const r = zuView.reading(page.periods, channel, sample);
      return [channel.value(sample), r.rms, r.module, r.angle, r.direct].map(exact).concat([r.reason || null, channel.inKilo]);
    }),
    shown: rows.map(({channel, cells}) => [channel.index, ...cells[0].map((cell) => cell.textContent)]),
    phases: [...document.querySelectorAll('#phaseValues tr')].map((row) => [...row.cells].map((cell) => cell.textContent)),
    sequences: [...document.querySelectorAll('#sequenceValues tr')].map((row) => [row.dataset.module, row.dataset.angle].map(Number).map(exact)),
    why: [...document.querySelectorAll('#why li')].map((line) => line.textContent)};
});"""


def show(record, name="own"):
    browser.show(record, folder / name)


def same_angle(one, other):
    return (one - other + 180) % 360 - 180


def foreign_records(random_source):
    """Eighteen records: (name, record)."""
    even = [round(i * 1e6 / 1600) for i in range(1500)]
    uneven = [round(i * 1e6 / 1600 + (300 if i % 97 > 60 and i % 2 else 0)) for i in range(1500)]
    plans = [
        ("plain", "ASCII", {"rates": [(2400, 1500)]}),
        ("plain", "BINARY", {"rates": [(1200, 1500)], "revision": 1999}),
        ("plain", "BINARY32", {"rates": [(6400, 1500)]}),
        ("plain", "FLOAT32", {"rates": [(4800, 1500)], "frequency": 60}),
        ("offset", "ASCII", {"rates": [(1000, 1500)], "offset": 3.5, "gaps": 6, "revision": 1999}),
        ("offset", "BINARY", {"rates": [(2000, 1500)], "offset": -11.0, "gaps": 6, "side": "S"}),
        ("offset", "BINARY32", {"rates": [(2400, 1500)], "offset": 3.5, "gaps": 6, "side": "S"}),
        ("offset", "FLOAT32", {"rates": [(2400, 1500)], "offset": 25.0, "gaps": 6, "side": "S"}),
        ("rates", "ASCII", {"rates": [(2400, 600), (800, 900), (2400, 1500)], "gaps": 4}),
        ("rates", "BINARY", {"rates": [(4800, 700), (600, 1500)], "side": "S"}),
        ("rates", "BINARY32", {"rates": [(1000, 700), (2500, 1500)], "frequency": 60, "revision": 2013}),
        ("rates", "FLOAT32", {"rates": [(1200, 500), (100, 700), (1200, 1500)], "offset": 1.0}),
        ("fraction", "ASCII", {"rates": [(1000, 1500)], "frequency": 60}),
        ("fraction", "BINARY", {"rates": [(1024, 1500)], "gaps": 4}),
        ("fraction", "BINARY32", {"rates": [(720, 1500)], "frequency": 50, "offset": 4.0}),
        ("fraction", "FLOAT32", {"rates": [(4000, 1500)], "frequency": 60, "side": "S"}),
        ("stamps", "ASCII", {"stamps": even, "gaps": 3, "frequency": 0}),
        ("stamps", "BINARY", {"stamps": uneven}),
    ]
    for title, kind, settings in plans:
        yield "%s-%s" % (title, kind), fault(random_source, kind, **settings)


class Cursors(unittest.TestCase):
    """At random cursors of each record."""

    def test_foreign_records_of_all_kinds(self):
        random_source = random.Random(37111)
        reasons, directs, angles = set(), 0, 0
        for name, record in foreign_records(random_source):
            with self.subTest(name):
                show(record, name)
                found = self._compare(record, sorted(random_source.sample(range(record.count), CURSORS)))
                reasons |= {reading.reason for reading in found}
                directs += sum(not math.isnan(reading.direct) for reading in found)
                angles += sum(not math.isnan(reading.angle) for reading in found)
        self.assertEqual({None, "whyBeginning", "whyRates", "whyMissing", "whyUneven", "whySlow"}, reasons)
        self.assertLess(10 * CURSORS, directs)
        self.assertLess(50 * CURSORS, angles)

    def test_records_of_the_sample_station(self):
        zucmtr("sample", "--out", folder)
        for kind, keys in (("ASCII", "Тип Comtrade BIN=0\n"), ("BINARY", "Тип Comtrade BIN=1\nТип Comtrade 1999=1\n")):
            out = folder / kind
            out.mkdir()
            settings = (folder / "ZuDrv.ini").read_text(encoding="utf-8")
            (folder / "changed.ini").write_text(settings.replace("[Vostochnaya]\n", "[Vostochnaya]\n" + keys), encoding="utf-8")
            zucmtr("convert", "--ini", folder / "changed.ini", "--device", "Vostochnaya", "--defaults", "Default", "--out", out,
                   folder / "Vostochnaya_000123.ZU")
            record = self._converted(next((folder / "ASCII").glob("*.cfg")))
            with self.subTest(kind):
                zucmtr("view", next(out.glob("*.cfg")), "-o", folder / "sample.html")
                browser.open_page(folder / "sample.html")
                self._compare(record, sorted(random.Random(kind).sample(range(record.count), CURSORS)))

    @staticmethod
    def _converted(path):
        read = Read(path)
        channels = [Channel(fields[1], fields[4], float(fields[5]), float(fields[6]), codes, fields[3], float(fields[10]),
                            float(fields[11]), fields[12]) for fields, codes in zip(read.channels, read.codes)]
        return Foreign(channels, rates=[(2400, len(read.codes[0]))])

    def _compare(self, record, cursors):
        """Compares all that is read at the cursors; returns the readings of the second computation."""
        all_found = []
        for sample, at in zip(cursors, browser.run(READ, cursors)):
            found = [Reading(record, channel, sample) for channel in record.channels]
            all_found += found
            factors = [1000 if exact[-1] else 1 for exact in at["exact"]]
            for channel, reading, exact, factor in zip(record.channels, found, at["exact"], factors):
                place = (channel.name, sample)
                self.assertEqual(reading.reason, exact[5], place)
                for wanted, number in zip((reading.value, reading.rms, reading.module, reading.angle, reading.direct), exact):
                    self._same(wanted if wanted is reading.angle else wanted / factor, number, record,
                               wanted is reading.angle, place)
            for index, *texts in at["shown"]:
                self._shown(found[index], factors[index], texts, (record.channels[index].name, sample))
            if "panel" not in vars(record):
                record.panel = browser.run("const c = zuView.page.phasors.circuit; return c && [c.U, c.I].map((row) => "
                                           "row.slice(0, 3).map((channel) => channel && channel.index))")
            self._compare_sequences(found, factors, record.panel, at["sequences"], record, sample)
            if any(found[index].reason for row in record.panel for index in row):
                self.assertNotEqual([], at["why"])
        return all_found

    def _same(self, wanted, number, record, is_angle, place):
        if math.isnan(wanted):
            return self.assertIsNone(number, place)
        self.assertIsNotNone(number, place)
        # Stamps are whole microseconds, from which the page takes the length of a step. See reference.py for a period of many samples
        # that is not whole.
        is_fitted = all(rate % record.frequency == 0 or rate <= FEW * record.frequency for rate, _ in record.rates)
        part = 1e-3 if record.stamps else 1e-9 if is_fitted else 1e-2
        if is_angle:
            return self.assertLess(abs(same_angle(wanted, number)), 1e-6 if part == 1e-9 else 1, place)
        return self.assertAlmostEqual(wanted, number, delta=part * max(abs(wanted), 1), msg=place)

    def _shown(self, reading, factor, texts, place):
        value, rms, last = (text.replace("−", "-") for text in texts)
        for wanted, text in ((reading.value, value), (reading.rms, rms)):
            if math.isnan(wanted):
                self.assertEqual("—", text, place)
            else:
                unit = 10.0 ** -len(text.partition(".")[2])
                self.assertAlmostEqual(wanted / factor, float(text), delta=0.5001 * unit + 1e-3 * abs(wanted / factor), msg=place)
        if last.startswith("="):
            self.assertAlmostEqual(reading.direct / factor, float(last[1:]), delta=0.0051 * max(1, abs(reading.direct / factor)), msg=place)
        elif last.endswith("°"):
            self.assertLess(abs(same_angle(reading.angle, float(last[:-1]))), 0.56, place)
            self.assertTrue(math.isnan(reading.direct) or abs(reading.direct / factor) < 0.0005, place)
        else:
            self.assertEqual("—", last, place)
            self.assertTrue(math.isnan(reading.angle), place)

    def _compare_sequences(self, found, factors, panel, shown, record, sample):
        rows = iter(shown)
        for phases in panel:
            if None in phases:
                continue
            readings = [found[index] for index in phases]
            largest = max(reading.module for reading in readings)
            for phasor in sequences(readings):
                module, angle = next(rows)
                wanted = math.nan if phasor is None else abs(phasor) / factors[phases[0]]
                self._same(wanted, module, record, False, (phases, sample))
                if phasor is not None and abs(phasor) > 1.01e-3 * largest:
                    self._same(math.degrees(cmath.phase(phasor)), angle, record, True, (phases, sample))


class Rules(unittest.TestCase):
    """Each rule on a small record of its own."""

    @staticmethod
    def sine(count, rate=1000, size=12.0, frequency=50, phase=0.0, direct=0.0):
        return [direct + size * math.sqrt(2) * math.sin(2 * math.pi * frequency * i / rate + phase) for i in range(count)]

    def three(self, count, rate=1000, **settings):
        return [Channel("U" + name, "kV", 0.001, 0.0, sampled("BINARY32", 0.001, 0.0, self.sine(
            count, rate, phase=-place * 2 * math.pi / 3, **settings))) for place, name in enumerate("abc")]

    def row(self, channel, cursor=0):
        return browser.run("const page = zuView.page; page.showValues(); const rows = page.strips.flatMap((s) => s.rows);"
                           "return rows.find(({channel}) => channel.index === arguments[0]).cells[arguments[1]]"
                           ".map((cell) => cell.textContent)", channel, cursor)

    def test_rms_of_a_channel_with_an_offset_is_that_of_its_values(self):
        """With a of 0.001 and b of 3 the report would add 3 to the RMS of codes that swing around -3000."""
        b = 3.0
        channels = [Channel("I" + name, "kA", 0.001, b, sampled("BINARY", 0.001, b, self.sine(400, phase=-place * 2.0944)))
                    for place, name in enumerate("abc")]
        show(Foreign(channels, "BINARY", [(1000, 400)]))
        browser.set_cursor(0, 300)
        self.assertEqual("12.00", self.row(0)[1])
        self.assertEqual("12.000", browser.texts("#phaseValues td")[0])
        browser.choose_method(1)
        self.assertEqual("12.00", self.row(0)[1])  # the strips have no other method
        codes = channels[0].codes[280:300]
        of_report = 0.001 * math.sqrt(sum(code * code for code in codes) / 20) + b
        self.assertAlmostEqual(of_report, float(browser.texts("#phaseValues td")[0]), places=3)
        self.assertEqual("Phasors · cursor 1 · as in the report", browser.text("#side h3"))
        self.assertEqual(["full-cycle Fourier", "as in the report"], browser.texts("#choice-method option"))

    def test_period_is_that_of_the_rate_at_the_cursor_and_none_spans_two(self):
        rates = [(1000, 200), (500, 300), (2000, 600)]
        seconds = times(rates, 600)
        values = [12 * math.sqrt(2) * math.sin(2 * math.pi * 50 * t) for t in seconds]
        channels = [Channel("U" + name, "kV", 0.001, 0.0, sampled("BINARY32", 0.001, 0.0, values)) for name in "abc"]
        show(Foreign(channels, "BINARY32", rates))
        for sample, has_value in ((19, False), (20, True), (199, True), (200, False), (209, False), (210, True),
                                  (299, True), (300, False), (339, False), (340, True), (599, True)):
            browser.set_cursor(0, sample)
            self.assertEqual("12.00" if has_value else "—", self.row(0)[1], sample)
            self.assertEqual("12.000" if has_value else "—", browser.texts("#phaseValues td")[0], sample)
        browser.set_cursor(1, 205)
        self.assertEqual(["Cursor 2: no RMS and no angle. The sampling rate changes within the period before it."],
                         browser.texts("#why li"))
        browser.choose_method(1)
        self.assertEqual({"—"}, set(browser.texts("#phaseValues td:first-of-type, #sequenceValues td:first-of-type")))
        browser.set_cursor(1, 215)  # a whole period of one rate, but two do not fit, as the sequences of the report need
        self.assertEqual("12.000", browser.texts("#phaseValues td")[0])
        self.assertEqual("—", browser.texts("#sequenceValues td")[0])

    def test_a_period_of_a_broken_number_of_samples_gives_exact_values(self):
        """Of a constant, the fundamental and a fifth harmonic, whose numbers are known."""
        wrong = browser_of_scripts("""
            const wrong = [];
            for (const [rate, frequency] of [[1000, 60], [1024, 50], [720, 50], [4000, 60], [824.7, 50], [2400, 50], [1E5, 60.1]]) {
              const axis = new zuView.TimeAxis({pieces: [[0, 0, 1000 / rate, rate]]}, 1E6);
              const periods = new zuView.Periods(axis, frequency);
              for (let n = 0; n < 10; n++) {
                const sample = 5000 + 13 * n; const phase = n * 0.7;
                const channel = {isWave: true, value: (i) => { const turn = 2 * Math.PI * frequency * i / rate;
                  return 3 + 10 * Math.SQRT2 * Math.sin(turn + phase) + (rate / frequency > 22 ? 2 * Math.SQRT2 * Math.cos(5 * turn) : 0); }};
                const reading = zuView.reading(periods, channel, sample);
                const rms = Math.sqrt(9 + 100 + (rate / frequency > 22 ? 4 : 0));
                const angle = (2 * Math.PI * frequency * sample / rate + phase) * 180 / Math.PI;
                const off = Math.abs((reading.angle - angle + 180) % 360 + 360) % 360 - 180;
                const direct = periods.measure(channel, sample).direct;
                const part = rate / frequency > 32 && rate % frequency > 0 ? 1E-5 : 1E-9; // only the ends of the window are fitted
                if (Math.abs(reading.module - 10) > 10 * part || Math.abs(direct - 3) > 10 * part || Math.abs(off) > 1E3 * part
                    || Math.abs(reading.rms - rms) > 10 * part) wrong.push([rate, frequency, n, reading, direct, rms, off]);
              }
            }
            return wrong;""")
        self.assertEqual([], wrong)

    def test_stamps_that_are_not_even_give_no_value(self):
        stamps = [1000 * i + (400 if i == 250 else 0) for i in range(400)]
        show(Foreign(self.three(400), "ASCII", stamps=stamps))
        for sample, text in ((249, "12.00"), (250, "—"), (270, "—"), (271, "12.00"), (10, "—")):
            browser.set_cursor(0, sample)
            self.assertEqual(text, self.row(0)[1], sample)
        browser.set_cursor(1, 260)
        self.assertEqual(["Cursor 1: no RMS and no angle. The record starts less than a period before it.",
                          "Cursor 2: no RMS and no angle. The samples of the period before it are not evenly spaced in time."],
                         browser.texts("#why li"))

    def test_a_gap_in_the_stamps_is_not_taken_for_a_slower_rate(self):
        stamps = [1000 * i + (8000 if i > 250 else 0) for i in range(400)]
        show(Foreign(self.three(400), "ASCII", stamps=stamps))
        for sample, text in ((250, "12.00"), (251, "—"), (262, "—"), (270, "—"), (271, "12.00")):
            browser.set_cursor(0, sample)
            self.assertEqual(text, self.row(0)[1], sample)

    def test_channels_that_are_no_sine_have_no_angle_but_their_direct_component(self):
        count = 400
        ripple = self.sine(count, size=0.4)
        channels = [Channel("F", "Hz", 0.001, 50.0, [round(100 * math.sin(i / 60)) for i in range(count)]),
                    Channel("Battery", "V", 0.01, 0.0, [22000 + round(100 * value) for value in ripple]),
                    Channel("Load", "%", 0.01, 0.0, [round(1000 * value) for value in ripple]),
                    Channel("Noise", "A", 0.01, 0.0, [(i * 7919) % 13 - 6 for i in range(count)]),
                    Channel("Dead", "A", 0.01, 0.0, [0] * count),
                    Channel("Wave", "A", 0.01, 0.0, [300 + round(1000 * value) for value in ripple])]
        show(Foreign(channels, "BINARY", [(1000, count)]))
        browser.set_cursor(0, 300)
        last = [self.row(index)[2] for index in range(6)]
        self.assertRegex(last[0], r"^=(49\.9|50\.[01])\d?$")
        self.assertEqual("=220.0", last[1])
        self.assertEqual(["—", "—", "—"], last[2:5])
        self.assertEqual("0°", last[5])

    def test_a_period_with_a_missing_sample_has_no_value(self):
        channels = self.three(400)
        channels[1].codes[250] = MISSING
        show(Foreign(channels, "ASCII", [(1000, 400)]))
        value = "%.2f" % channels[1].value(251)
        for sample, texts in ((250, ["—", "12.00"]), (251, [value, "—"]), (270, None), (271, None)):
            browser.set_cursor(0, sample)
            if texts:
                self.assertEqual(texts, self.row(1)[:2], sample)
            self.assertEqual("12.00" if sample in (250, 271) else "—", self.row(1)[1], sample)
            self.assertEqual("12.00", self.row(0)[1], sample)
            expected = [] if sample in (250, 271) else [
                "Cursor 1: no RMS and no angle. Samples are missing in the period before it: Ub."]
            self.assertEqual(expected, browser.texts("#why li"), sample)
            without = browser.texts("#sequenceValues td:first-of-type")
            self.assertEqual({"—"} if expected else {"12.000", "0.000"}, set(without), sample)

    def test_missing_samples_leave_a_gap_in_the_trace_in_every_kind_of_data(self):
        for kind in ("ASCII", "BINARY", "BINARY32", "FLOAT32"):
            for count, pixels in ((400, "sparse"), (20000, "dense")):
                codes = [1000 + i % 2 for i in range(count)]
                codes[count // 4:count // 2] = [MISSING] * (count // 2 - count // 4)
                show(Foreign([Channel("Ua", "kV", 1.0, 0.0, codes)], kind, [(1000, count)]))
                browser.run("zuView.page.frame.showAll(); document.getElementById('fit').click()")
                browser.settle()
                painted, width = browser.run(PAINTED_COLUMNS)
                parts = [sum(first * width <= x < last * width for x in painted) / ((last - first) * width)
                         for first, last in ((0.02, 0.24), (0.26, 0.49), (0.52, 0.98))]
                self.assertEqual([True, False, True], [part > 0.9 if part else False for part in parts], (kind, pixels, parts))
                self.assertEqual([1000, 1001], browser.run("return zuView.page.analog[0].range()"))

    def test_a_channel_without_any_sample_is_quiet(self):
        channels = self.three(400) + [Channel("Ux", "kV", 0.001, 7.0, [MISSING] * 400)]
        show(Foreign(channels, "FLOAT32", [(1000, 400)]))
        self.assertEqual(["—", "—", "—"], self.row(3))
        cells = browser.run("return [...document.querySelectorAll('#channels tbody tr')][3].textContent")
        self.assertIn("——", cells)
        self.assertEqual([], browser.log("browser"))

    def test_a_slow_record_says_that_it_has_no_period(self):
        show(Foreign(self.three(400, rate=100, frequency=1), "BINARY32", [(100, 400)]))
        browser.set_cursor(0, 300)
        self.assertEqual("—", self.row(0)[1])
        self.assertIn("The record has fewer than three samples in a period.", browser.text("#why"))

    def test_angles_against_a_voltage_that_is_not_there_are_not_shown(self):
        channels = self.three(400)
        channels[0].codes[:] = [0] * 400
        show(Foreign(channels, "BINARY32", [(1000, 400)]))
        browser.set_cursor(0, 300)
        self.assertEqual("240°", browser.texts("#phaseValues td")[4 + 2])
        browser.run("document.getElementById('reference').click()")
        browser.settle()
        self.assertEqual("—", browser.texts("#phaseValues td")[4 + 2])
        self.assertEqual(0, browser.run("return document.querySelectorAll('.phasor').length"))


def browser_of_scripts(script):
    """The value of a script that needs the page's scripts, but no record in particular."""
    show(Foreign([Channel("Ua", "kV", 1.0, 0.0, [0, 1] * 50)], "BINARY", [(1000, 100)], trigger=0.0), "scripts")
    return browser.run(script)


# The columns of the first trace's area that have some of its colour, and their number.
PAINTED_COLUMNS = """const area = zuView.page.strips[0].chart.getArea();
const canvas = document.querySelector('.strip.analog canvas'); const scale = canvas.width / canvas.clientWidth;
const color = zuView.styleColor('--phaseA').slice(1).match(/../g).map((part) => parseInt(part, 16));
const pixels = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height); const columns = [];
for (let x = 0; x < area.w; x++)
  for (let y = 0; y < area.h; y++) {
    const at = 4 * (Math.round((area.y + y) * scale) * pixels.width + Math.round((area.x + x) * scale));
    if (color.every((part, i) => Math.abs(part - pixels.data[at + i]) < 60) && pixels.data[at + 3] > 60) { columns.push(x); break; }
  }
return [columns, area.w];"""


if __name__ == "__main__":
    run_tests()
