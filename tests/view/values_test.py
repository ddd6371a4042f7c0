"""The sheet of the values against a second computation, and what is copied from the page, as other programs read it."""
import cmath
import csv
import io
import math
import random
import unittest

from browser import until
from foreign import Channel, Foreign
from pages import browser, folder, run_tests, zucmtr
from records import Written

VALUES = "lang=en&theme=light&sheet=valueSheet"
RATE, COUNT, PERIOD = 1000, 600, 20
# Names and the texts of the cells of all rows with values.
ROWS = """return [...document.querySelectorAll('#measured tbody tr:not(.group)')].map((row) => [...row.cells].map((cell) => cell.textContent));"""


def number(text):
    return math.nan if text == "—" else float(text.replace("−", "-").replace(",", ".").strip("°"))


def wanted_at(channel, sample):
    """Value, RMS, magnitude, angle and direct component, by plain sums over the period before the sample."""
    values = [channel.value(i) for i in range(sample - PERIOD, sample)]
    phasor = sum(value * cmath.exp(-2j * math.pi * i / PERIOD) for i, value in enumerate(values)) * 1j * math.sqrt(2) / PERIOD
    rms = math.sqrt(sum(value * value for value in values) / PERIOD)
    return channel.value(sample), rms, abs(phasor), math.degrees(cmath.phase(phasor)) % 360, sum(values) / PERIOD


class Values(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        rnd = random.Random(21)
        turns = [2 * math.pi * i / PERIOD for i in range(COUNT)]

        def signal(size, angle, circuit):
            direct, third = size * rnd.uniform(-0.5, 0.5), size * 0.2
            return [round(direct + size * math.sin(t + angle) * (1 + i / COUNT) + third * math.sin(3 * t + circuit)) for i, t in enumerate(turns)]

        cls.channels = [Channel(name + " " + circuit, unit, factor, 0.0, signal(size, rnd.uniform(0, 6), place), circuit)
                        for place, circuit in enumerate(("W1", "Q2"))
                        for name, unit, factor, size in (("Ua", "kV", 0.01, 12000), ("Ia", "A", 0.1, 9000), ("Ib", "A", 0.1, 3000))]
        analog = [(one.name, one.circuit, one.unit, one.a, one.b, one.codes) for one in cls.channels]
        states = [("trip W1", "W1", [int(i >= 310) for i in range(COUNT)]), ("other", "Q2", [i // 100 % 2 for i in range(COUNT)])]
        Written(folder / "values.cfg", analog, states, rate=RATE)
        zucmtr("view", folder / "values.cfg", "-o", folder / "values.html")

    def setUp(self):
        browser.open_page(folder / "values.html", VALUES)

    def rows(self, first, second):
        browser.set_cursor(0, first)
        browser.set_cursor(1, second)
        browser.settle()
        return browser.run(ROWS)

    def test_all_channels_at_both_cursors_and_their_difference(self):
        rnd = random.Random(5)
        for _ in range(6):
            samples = rnd.randrange(20, COUNT), rnd.randrange(20, COUNT)
            for channel, (name, unit, *texts) in zip(self.channels, self.rows(*samples)):
                self.assertEqual((channel.name.split()[0], {"kV": "kV", "A": "kA"}[channel.unit]), (name, unit))
                scale = 1000 if unit == "kA" else 1
                one, two = (wanted_at(channel, sample) for sample in samples)
                for at, wanted in ((0, one), (5, two)):
                    for place, exact in enumerate(wanted):
                        if place == 3:
                            self.assertLess(abs((exact - number(texts[at + 3]) + 180) % 360 - 180), 0.51, (name, samples))
                        else:
                            self.close(exact / scale, texts[at + place], (name, samples, place))
                for place in range(3):
                    self.close((two[place] - one[place]) / scale, texts[10 + place], (name, samples, place))

    def close(self, wanted, text, place):
        decimals = len(text.partition(".")[2])
        self.assertAlmostEqual(wanted, number(text), delta=0.5001 * 10.0 ** -decimals, msg=place)

    def test_angles_are_against_a_channel_on_request(self):
        browser.run("const choice = document.getElementById('valueReference'); choice.selectedIndex = 2; choice.dispatchEvent(new Event('change'))")
        rows = self.rows(123, 400)
        self.assertEqual(["0°", "0°"], [rows[1][5], rows[1][10]])
        for sample, column in ((123, 5), (400, 10)):
            reference = wanted_at(self.channels[1], sample)[3]
            for channel, row in zip(self.channels, rows):
                self.assertLess(abs((wanted_at(channel, sample)[3] - reference - number(row[column]) + 180) % 360 - 180), 0.51)

    def test_states_are_shown_with_the_changes_between(self):
        read = "return [...document.querySelectorAll('#measuredStates tbody tr')].map((row) => [...row.cells].map((cell) => cell.textContent))"
        self.rows(309, 310)
        self.assertEqual([["trip", "W1", "0", "1", "1"], ["other", "Q2", "1", "1", ""]], browser.run(read))
        self.rows(599, 0)
        self.assertEqual([["trip", "W1", "1", "0", "1"], ["other", "Q2", "1", "0", "5"]], browser.run(read))

    def test_filter_and_circuit_choose_the_rows(self):
        browser.run("const filter = document.getElementById('valueFilter'); filter.value = 'w1 I'; filter.dispatchEvent(new Event('input'))")
        browser.settle()
        self.assertEqual(["Ia", "Ib"], [row[0] for row in browser.run(ROWS)])
        self.assertEqual(["trip"], browser.texts("#measuredStates tbody td:first-child"))
        browser.run("const filter = document.getElementById('valueFilter'); filter.value = ''; filter.dispatchEvent(new Event('input'));"
                    "const circuit = document.getElementById('valueCircuit'); circuit.selectedIndex = 2; circuit.dispatchEvent(new Event('change'))")
        browser.settle()
        self.assertEqual(["Ua", "Ia", "Ib"], [row[0] for row in browser.run(ROWS)])
        self.assertEqual(["Q2"], browser.texts("#measured .group"))

    def test_before_the_first_period_there_are_values_and_no_more(self):
        rows = self.rows(19, 20)
        self.assertEqual(["—"] * 4, rows[0][3:7])
        self.assertNotIn("—", rows[0][7:12])
        self.assertEqual(["Cursor 1: no RMS and no angle. The record starts less than a period before it."], browser.texts("#valueSheet .why li"))

    def test_only_what_is_on_the_screen_is_computed(self):
        codes = [round(9000 * math.sin(2 * math.pi * i / PERIOD)) for i in range(400)]
        channels = [Channel("I%d" % place, "A", 0.1, 0.0, codes, "Q%d" % (place // 8)) for place in range(256)]
        browser.show(Foreign(channels, "BINARY", [(RATE, 400)]), folder / "many", settings=VALUES)
        browser.settle()
        self.assertEqual(256, len(browser.run(ROWS)))
        decoded = "return zuView.page.analog.filter((channel) => channel.decoded).length"
        self.assertLess(browser.run(decoded), 60)
        browser.run("document.querySelectorAll('#measured tbody tr:not(.group)')[250].scrollIntoView()")
        until(lambda: browser.run(ROWS)[250][3] == "636.4", "the values of what came to be seen")
        self.assertLess(browser.run(decoded), 120)
        self.assertEqual("", browser.run(ROWS)[128][3])


# Keeps what the page puts into the clipboard, which a page without a screen may not do.
CLIPBOARD = "window.copied = null; Object.defineProperty(navigator, 'clipboard', {configurable: true, value: {writeText: async (text) => { window.copied = text; }}});"
NONE = "Object.defineProperty(navigator, 'clipboard', {configurable: true, value: undefined});"
HOSTILE = '=HYPERLINK("x";1),\ttab'


class Copies(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        zucmtr("sample", "--out", folder / "fault", "--fault", "AG", "--distance", "42", "--resistance", "5")
        cls.page = folder / "fault.html"
        zucmtr("view", folder / "fault" / "Vostochnaya_fault.ZU", "-o", cls.page)

    def open(self, sheet, language="en", script=CLIPBOARD):
        browser.open_page(self.page, "lang=%s&theme=light&sheet=%s" % (language, sheet))
        browser.run(script)

    def copied(self, key, sheet, index=0):
        browser.run("window.copied = null; document.querySelectorAll(`#${arguments[1]} .copy`)[arguments[2]].querySelector(`[data-copies=${arguments[0]}]`).click()",
                    key, sheet, index)
        return until(lambda: browser.run("return window.copied"), "what is copied")

    def exact(self):
        """{name: value, RMS, module, angle} at cursor 1 of the faulted circuit's channels."""
        return browser.run("const p = zuView.page; return Object.fromEntries(p.groups.get(p.faulted.name).map((c) => { const r = zuView.channelValues(p.periods, c, p.cursors.samples[0]);"
                           "return [zuView.shortName(c), [r.value, r.rms, r.module, r.angle, r.direct]]; }))")

    def test_values_are_copied_as_text_and_as_csv(self):
        self.open("valueSheet")
        browser.run("const choice = document.getElementById('valueCircuit'); choice.selectedIndex = 1; choice.dispatchEvent(new Event('change'))")
        browser.settle()
        exact = self.exact()
        text, table = self.copied("copy", "valueSheet"), self.copied("copyCsv", "valueSheet")
        self.assertTrue(table.endswith("\r\n"))
        rows = list(csv.reader(io.StringIO(table, newline="")))
        self.assertEqual(rows, [line.split("\t") for line in text.split("\n")[:-1]])
        self.assertEqual({16}, {len(row) for row in rows})
        self.assertEqual(["Circuit", "Channel", "Unit", "Cursor 1 (+8.333 ms): value", "Cursor 1 (+8.333 ms): RMS"], rows[0][:5])
        for row in rows[1:9]:
            self.assertEqual(["ВЛ 110 кВ Восточная", "кВ" if row[1].startswith(("U", "3U")) else "кА"], [row[0], row[2]])
            for text, wanted in zip(row[3:8], exact[row[1]]):
                self.assertAlmostEqual(wanted, float(text), delta=1e-9 * max(1, abs(wanted)))
        self.assertIn(["ВЛ 110 кВ Восточная", "Пуск защит", "", "1"], [row[:4] for row in rows])

    def test_russian_copies_have_decimal_commas_and_semicolons(self):
        self.open("valueSheet", "ru")
        exact = self.exact()
        rows = list(csv.reader(io.StringIO(self.copied("copyCsv", "valueSheet"), newline=""), delimiter=";"))
        found = {row[1]: row for row in rows if row[0] == "ВЛ 110 кВ Восточная"}
        for name, wanted in exact.items():
            self.assertRegex(found[name][3], r"^-?\d+,\d+$")
            self.assertAlmostEqual(wanted[0], float(found[name][3].replace(",", ".")), delta=1e-9 * max(1, abs(wanted[0])))
        self.assertEqual(["Присоединение", "Канал", "Единица", "Курсор 1 (+8,333 мс): мгн."], rows[0][:4])
        self.assertIn("\t%s\t" % found["Ua"][3], self.copied("copy", "valueSheet"))

    def test_other_tables_are_copied_too(self):
        self.open("spectrumSheet")
        rows = list(csv.reader(io.StringIO(self.copied("copyCsv", "spectrumSheet"), newline="")))
        self.assertEqual(["Order", "Ia1, кА", "Ia1, %", "Ia1, °"], rows[0][:4])
        fundamental = next(row for row in rows if row[0] == "1")
        exact = self.exact()["Ia1"]
        self.assertAlmostEqual(exact[2], float(fundamental[1]), delta=1e-9)
        self.assertAlmostEqual(exact[3], float(fundamental[3]), delta=1e-6)
        browser.run("zuView.page.openSheet('oscillogram')")
        browser.settle()
        rows = [line.split("\t") for line in self.copied("copy", "side").split("\n")]
        self.assertEqual(["Ua", "Ub", "Uc", "3U0", "Ia1", "Ib1", "Ic1", "3I01", "U1", "U2", "3U0", "I1", "I2", "3I0"], [row[0] for row in rows[1:-1]])
        self.assertAlmostEqual(self.exact()["Ua"][2], float(rows[1][1]), delta=1e-8)
        browser.run("const filter = document.getElementById('filter'); filter.value = 'восточная Ia'; filter.dispatchEvent(new Event('input'))")
        rows = list(csv.reader(io.StringIO(self.copied("copyCsv", "channelSheet"), newline="")))
        self.assertEqual([["No.", "Kind", "Name"], ["5", "analog", "Ia1 ВЛ 110 кВ Восточная"]], [row[:3] for row in rows])
        browser.run("zuView.page.openSheet('answerSheet')")
        browser.settle()
        events = browser.run("return [...document.querySelectorAll('#answerSheet .copy')].findIndex((copy) => copy.parentElement.parentElement.querySelector('.events'))")
        rows = list(csv.reader(io.StringIO(self.copied("copyCsv", "answerSheet", events), newline="")))
        self.assertEqual(["Time", "From trigger, ms"], rows[0][:2])
        self.assertEqual(browser.run("return zuView.page.data.answer.summary.events.map((event) => event.time * 1000)")[0], float(rows[1][1]))

    def test_without_a_clipboard_a_selection_is_copied_and_without_that_a_file_saved(self):
        keep = "document.addEventListener('copy', () => { window.copied = document.activeElement.value; });"
        self.open("valueSheet", script=NONE + keep)
        # Only a press by hand may copy a selection.
        browser.mouse(("move", *browser.run("const box = document.querySelector('#valueSheet [data-copies=copy]').getBoundingClientRect();"
                                            "return [box.left + 9, box.top + 9]")), ("down", 0), ("up", 0))
        self.assertIn("\tUa\tкВ\t", until(lambda: browser.run("return window.copied"), "the selection"))
        self.assertEqual(0, browser.run("return document.querySelectorAll('textarea').length"))
        browser.run("document.execCommand = () => false; HTMLAnchorElement.prototype.click = function () { window.saved = this.download; };"
                    "URL.createObjectURL = (blob) => { blob.text().then((text) => { window.copied = text; }); return 'blob:none'; };")
        self.assertIn(",Ua,кВ,", self.copied("copy", "valueSheet"))
        self.assertEqual("Values_Vostochnaya_fault.ZU.csv", browser.run("return window.saved"))
        self.assertIn(",Ua,кВ,", self.copied("copySave", "valueSheet"))
        self.assertEqual([], browser.log("browser"))

    def test_texts_of_a_record_stay_texts_in_a_spreadsheet(self):
        self.open("valueSheet")
        rows = browser.run("const rows = [[arguments[0], '-1.5', '-x', 'a\"b\"', 'c;d', 'e\\nf']]; return [zuView.asCsv(rows), zuView.asText(rows)]", HOSTILE)
        self.assertEqual([["'" + HOSTILE, "-1.5", "'-x", 'a"b"', "c;d", "e\nf"]], list(csv.reader(io.StringIO(rows[0], newline=""))))
        self.assertEqual("'" + HOSTILE.replace("\t", " ") + "\t-1.5\t'-x\ta\"b\"\tc;d\te f\n", rows[1])


if __name__ == "__main__":
    run_tests()
