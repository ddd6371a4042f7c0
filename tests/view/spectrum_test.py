"""The sheet of the spectrum against plain Fourier sums, and against waves whose harmonics are known."""
import cmath
import math
import random
import unittest

from foreign import MISSING, Channel, Foreign, sampled
from pages import browser, folder, run_tests

SPECTRUM = "lang=en&theme=light&sheet=spectrumSheet"
# [direct, [[order, RMS, angle] ...], [[order, RMS] ...], THD] or the reason, by the channel's place, the sample and the periods.
READ = """return arguments[0].map(([place, sample, periods]) => { const page = zuView.page;
  const found = page.parts.spectrumSheet.spectra.of(page.analog[place], sample, periods);
  return found.reason || [found.direct, found.harmonics.map(({order, rms, angle}) => [order, rms, angle]),
    found.between.map(({order, rms}) => [order, rms]), found.thd]; });"""
CLICK = "document.querySelector(`[data-setting=${arguments[0]}]`).children[arguments[1]].click()"
KNOWN = {0: (0.8, 0), 1: (10.0, 30), 2: (0.4, 100), 3: (1.5, 200), 5: (0.7, 310), 7: (0.25, 75)}  # RMS and degrees at the first sample


def wave(rate, frequency, count, parts):
    """Sum of sines of some orders, RMS values and angles."""
    turns = [2 * math.pi * frequency * i / rate for i in range(count)]
    return [sum(size if order == 0 else size * math.sqrt(2) * math.sin(order * turn + math.radians(angle)) for order, (size, angle) in parts.items())
            for turn in turns]


def line(values, order, per_period):
    """The phasor of an order in whole periods by a plain sum, its angle that of a sine at the sample after the last value."""
    count = len(values)
    phasor = sum(value * cmath.exp(-2j * math.pi * order * (i - count) / per_period) for i, value in enumerate(values)) * math.sqrt(2) / count
    return phasor * 1j


def read(*asked):
    return browser.run(READ, asked)


class Spectrum(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        rnd = random.Random(8)
        noisy = [200 * math.sin(2 * math.pi * i / 40) + rnd.gauss(0, 30) for i in range(1000)]
        steady = wave(2000, 50, 1000, {**KNOWN, 2.5: (0.3, 0)})
        gap = [MISSING if i == 500 else 1.0 for i in range(1000)]
        codes = {"Ia": (noisy, "A"), "Ib": (steady, "A"), "Ua": (steady, "kV"), "Ic": (gap, "A")}
        cls.channels = [Channel(name, unit, 1.0, 0.0, [code if code is MISSING else sampled("FLOAT32", 1, 0, [code])[0] for code in values])
                        for name, (values, unit) in codes.items()]
        browser.show(Foreign(cls.channels, "FLOAT32", [(2000, 1000)]), folder / "spectrum", settings=SPECTRUM)

    def setUp(self):
        browser.open_page(folder / "spectrum.html", SPECTRUM)

    def test_lines_are_those_of_plain_sums_over_whole_periods(self):
        asked = [(0, sample, periods) for sample in (400, 613, 999) for periods in (1, 2, 5, 10)]
        for (place, sample, periods), (direct, harmonics, between, thd) in zip(asked, read(*asked)):
            values = [self.channels[place].value(i) for i in range(sample - 40 * periods, sample)]
            self.assertAlmostEqual(sum(values) / len(values), direct, delta=1e-6)
            self.assertEqual(list(range(1, 20)), [order for order, _, _ in harmonics])
            phasors = [line(values, order, 40) for order in range(1, 20)]
            for phasor, (order, rms, angle) in zip(phasors, harmonics):
                self.assertLess(abs(phasor - cmath.rect(rms, math.radians(angle))), 1e-6, (sample, periods, order))
            self.assertEqual([k / periods for k in range(1, 19 * periods) if k % periods], [order for order, _ in between])
            for order, rms in between:
                self.assertAlmostEqual(abs(line(values, order, 40)), rms, delta=1e-6)
            self.assertAlmostEqual(math.sqrt(sum(abs(one) ** 2 for one in phasors[1:])) / abs(phasors[0]), thd, delta=1e-9)

    def test_what_lies_between_harmonics_is_seen_over_several_periods(self):
        for periods, (_, harmonics, between, _) in zip((2, 10), read((1, 900, 2), (1, 900, 10))):
            for order, rms in between:
                self.assertAlmostEqual(0.3 if order == 2.5 else 0, rms, delta=1e-5)
            for order, rms, _ in harmonics:
                self.assertAlmostEqual(KNOWN.get(order, (0,))[0], rms, delta=1e-5)

    def test_harmonics_of_a_fractional_number_of_samples_a_period_are_exact(self):
        codes = sampled("FLOAT32", 1, 0, wave(1000, 60, 600, KNOWN))
        browser.show(Foreign([Channel("Ia", "A", 1.0, 0.0, codes)], "FLOAT32", [(1000, 600)], frequency=60), folder / "fractional", settings=SPECTRUM)
        for periods, (direct, harmonics, between, thd) in zip((1, 2, 5, 10), read(*((0, 431, periods) for periods in (1, 2, 5, 10)))):
            self.assertAlmostEqual(0.8, direct, delta=1e-4)
            self.assertEqual(list(range(1, 9)), [order for order, _, _ in harmonics])
            for order, rms, angle in harmonics:
                size, at_start = KNOWN.get(order, (0, 0))
                wanted = cmath.rect(size, math.radians(at_start) + 2 * math.pi * order * 60 * 431 / 1000)
                self.assertLess(abs(wanted - cmath.rect(rms, math.radians(angle))), 1e-4, (periods, order))
            self.assertLess(max((rms for _, rms in between), default=0), 1e-5)
            self.assertAlmostEqual(math.sqrt(0.4 ** 2 + 1.5 ** 2 + 0.7 ** 2 + 0.25 ** 2) / 10, thd, delta=1e-5)

    def bars(self):
        """{(channel, order): height in the plot's parts}"""
        rows = browser.run("return [...document.querySelectorAll('svg.spectrum rect')].map((bar) => "
                           "[bar.dataset.channel, bar.dataset.order, Number(bar.getAttribute('height'))])")
        return {(int(channel), int(order)): height / 248 for channel, order, height in rows}

    def choose(self, *places):
        browser.run("for (const box of document.querySelectorAll('.channels input')) "
                    "if (box.checked !== arguments[0].includes(Number(box.dataset.channel))) box.click()", places)
        browser.settle()

    def test_bars_and_table_show_the_lines_at_the_chosen_cursor(self):
        self.choose(1)
        browser.run(CLICK, "periods", 1)
        browser.set_cursor(1, 120)
        browser.set_cursor(0, 440)
        bars = self.bars()
        self.assertEqual(set(range(20)), {order for _, order in bars})
        for order, (size, _) in KNOWN.items():
            self.assertAlmostEqual((math.log10(10 * size) - 2 + 4) / 4, bars[1, order], delta=2e-3)
        rows = {row[0]: row[1:] for row in browser.run(
            "return [...document.querySelectorAll('#spectrumValues tbody tr')].map((row) => [...row.cells].map((cell) => cell.textContent))")}
        self.assertEqual(["10.000", "100.0", "30°"], rows["1"])
        self.assertEqual(["1.500", "15.00", "200°"], rows["3"])
        self.assertEqual(["0.800", "8.000", "—"], rows["= direct"])
        self.assertEqual(["—", "17.21", "—"], rows["THD, %"])
        self.assertEqual(["0.300", "3.000", "—"], rows["Between harmonics"])
        browser.run(CLICK, "isPercent", 1)
        browser.run(CLICK, "isLogarithmic", 1)
        browser.settle()
        self.assertAlmostEqual(1.5 / (10 * 1.04), self.bars()[1, 3], delta=2e-3)
        browser.run("document.querySelector('#spectrumSheet .tools input').click()")
        browser.settle()
        self.assertNotIn((1, 1), self.bars())

    def test_units_have_charts_of_their_own_and_percentages_share_one(self):
        self.choose(0, 2)
        self.assertEqual(1, browser.run("return document.querySelectorAll('svg.spectrum').length"))
        browser.run(CLICK, "isPercent", 1)
        browser.settle()
        self.assertEqual(["A", "kV"], browser.texts("svg.spectrum .unit"))
        self.assertEqual(["A", "%", "angle", "kV", "%", "angle"], browser.texts("#spectrumValues thead tr:last-child th")[1:])

    def test_starts_with_the_currents_and_says_what_has_no_spectrum(self):
        self.assertEqual(["0", "1", "3"], browser.run("return [...document.querySelectorAll('.channels input:checked')].map((box) => box.dataset.channel)"))
        browser.set_cursor(0, 510)
        self.assertEqual(["Cursor 1: no RMS and no angle. Samples are missing in the period before it: Ic."], browser.texts("#spectrumSheet .why li"))
        browser.run(CLICK, "periods", 3)
        browser.set_cursor(0, 399)
        self.assertEqual(["The record starts less than 10 periods before the cursor."], browser.texts("#spectrumSheet .why li"))
        self.assertEqual([], browser.texts("#spectrumValues:not([hidden]) td"))

    def test_keys_and_the_bar_move_the_cursors_on_this_sheet_too(self):
        browser.set_cursor(0, 400)
        browser.set_cursor(1, 500)
        for key in ("1", ".", ".", "2", ","):
            browser.press(key)
        self.assertEqual([402, 499], browser.run("return zuView.page.cursors.samples"))
        browser.run("document.querySelectorAll('#spectrumSheet .steps')[1].querySelectorAll('button')[1].click()")
        self.assertEqual([402, 539], browser.run("return zuView.page.cursors.samples"))
        left, top, width = browser.run("const box = document.querySelector('#spectrumSheet .whole').getBoundingClientRect(); return [box.left, box.top, box.width]")
        browser.mouse(("move", left + width * 0.6, top + 10), ("down", 0), ("move", left + width * 0.7, top + 10), ("up", 0))
        self.assertAlmostEqual(0.7 * 999, browser.run("return zuView.page.cursors.samples[1]"), delta=2)


if __name__ == "__main__":
    run_tests()
