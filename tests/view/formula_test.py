"""Formulas: their language against Python's arithmetic, and calculated channels on the page."""
import math
import random
import time
import unittest
import urllib.parse

from foreign import MISSING, Channel, Foreign
from pages import browser, folder, run_tests

RATE, COUNT, PERIOD = 1000, 400, 20
LINE, OTHER = "ВЛ 110 кВ Восточная", "Q2"
SAMPLES = [0, 1, 57, 200, 398, 399]
FUNCTIONS = {"abs": math.fabs, "sqrt": math.sqrt, "sqr": lambda x: x * x, "min": min, "max": max}

# The values of formulas of the first circuit at some samples, in V, A and s; null where there is none.
VALUES = """const {calculated} = zuView.page; const [texts, samples, circuit] = arguments;
return texts.map((text) => { const values = zuView.formulaValues(calculated.parse({text, circuit}, []), calculated.record);
  return samples.map((sample) => Number.isNaN(values[sample]) ? null : values[sample]); });"""
# [key, from, to] of what is wrong with each formula, or null.
ERRORS = """const [texts, circuit] = arguments; return texts.map((text) => {
  const error = zuView.page.calculated.errorOf({text, circuit}); return error && [error.key, error.from, error.to]; });"""


def setUpModule():
    global record, page, values
    rnd = random.Random(4)
    noise = lambda: [rnd.randrange(-30000, 30000) for _ in range(COUNT)]
    sine = [round(20000 * math.sin(2 * math.pi * i / PERIOD)) for i in range(COUNT)]
    channels = [
        Channel("Ua " + LINE, "кВ", 0.01, 0.5, noise(), LINE), Channel("Ub " + LINE, "кВ", 0.01, 0.0, noise(), LINE),
        Channel("Ia1 " + LINE, "А", 0.1, 0.0, noise(), LINE), Channel("Ib1 " + LINE, "А", 0.25, -3.0, noise(), LINE),
        Channel("S " + LINE, "А", 0.01, 0.0, sine, LINE), Channel("нейтраль: 3I0", "А", 0.01, 0.0, noise(), LINE),
        Channel("G " + LINE, "А", 1.0, 0.0, [MISSING if i in (57, 200) else i for i in range(COUNT)], LINE),
        Channel("f", "Hz", 0.01, 50.0, noise(), LINE), Channel("Ia", "A", 2.0, 0.0, noise(), OTHER, 600.0, 5.0, "S"),
        Channel("X", "A", 1.0, 0.0, noise(), OTHER), Channel("X", "A", 1.0, 0.0, noise(), OTHER)]
    record = Foreign(channels, "BINARY", [(RATE, COUNT)])
    page = folder / "formulas.html"
    browser.show(record, folder / "formulas", settings="lang=en&theme=light&sheet=oscillogram")
    base = {"кВ": 1000}
    values = [[channel.value(i) * base.get(channel.unit, 1) for i in range(COUNT)] for channel in channels]


def evaluated(*texts, samples=SAMPLES, circuit=LINE):
    return browser.run(VALUES, texts, samples, circuit)


class Language(unittest.TestCase):
    def close(self, wanted, shown, place):
        if not math.isfinite(wanted):
            return self.assertIsNone(shown, place)
        self.assertIsNotNone(shown, place)
        return self.assertAlmostEqual(wanted, shown, delta=1e-11 * max(1, abs(wanted)), msg=place)

    @staticmethod
    def expression(rnd, depth):
        """A random formula as the page reads it."""
        kind = rnd.random()
        deeper = lambda: Language.expression(rnd, depth - 1)
        if depth == 0 or kind < 0.15:
            return rnd.choice(["Ua", "Ub", "Ia1", "Ib1", "3", "0.5", ".25", "2e3", "1.5E-2"])
        if kind < 0.65:
            return deeper() + rnd.choice(["+", "-", "*", "/", " - ", " / "]) + deeper()
        if kind < 0.75:
            return "-" + deeper()
        if kind < 0.82:
            return "(%s)^%s" % (deeper(), rnd.choice(["2", "3", "-1", "0.5"]))
        if kind < 0.9:
            return "(%s)" % deeper()
        name = rnd.choice(sorted(FUNCTIONS))
        return "%s(%s)" % (name, ", ".join(deeper() for _ in range(2 if name in ("min", "max") else 1)))

    def test_arithmetic_is_that_of_python(self):
        rnd = random.Random(11)
        texts = [self.expression(rnd, 5) for _ in range(400)]
        known = 0
        for text, shown in zip(texts, evaluated(*texts)):
            for sample, number in zip(SAMPLES, shown):
                names = dict(zip(("Ua", "Ub", "Ia1", "Ib1"), (channel[sample] for channel in values)))
                try:
                    wanted = eval(text.replace("^", "**"), {"__builtins__": {}}, {**FUNCTIONS, **names})
                    wanted = math.nan if isinstance(wanted, complex) else wanted
                except (ZeroDivisionError, ValueError, OverflowError, TypeError):  # the last one for complex numbers
                    wanted = math.nan
                if isinstance(wanted, float) and math.isfinite(wanted) and abs(wanted) > 1e-9:
                    known += 1
                    self.assertAlmostEqual(1, number / wanted if number is not None else math.nan, delta=1e-9, msg=(text, sample))
        self.assertLess(1500, known)

    def test_signs_of_print_stand_for_those_of_keyboards(self):
        self.assertEqual(evaluated("Ua - Ub*2*3"), evaluated("Ua − Ub·2×3"))

    def test_what_cannot_be_calculated_has_no_value(self):
        self.assertEqual([[None] * 6] * 2 + [[0, 1, None, None, 398, 399]], evaluated("Ia1/0", "sqrt(-1-sqr(Ia1))", "G"))

    def test_derivative_and_integral_follow_the_samples(self):
        derivative, integral, missing = evaluated("d(Ua)", "int(Ua)", "int(G)", samples=list(range(COUNT)))
        signal, area = values[0], 0.0
        for i in range(COUNT):
            before, after = max(i - 1, 0), min(i + 1, COUNT - 1)
            self.assertAlmostEqual((signal[after] - signal[before]) * RATE / (after - before), derivative[i], delta=1e-3)
            area += (signal[i] + signal[i - 1]) / 2 / RATE if i else 0
            self.assertAlmostEqual(area, integral[i], delta=1e-6)
        self.assertEqual([False] * 57 + [True] * (COUNT - 57), [value is None for value in missing])

    def test_delays_move_by_samples_and_between_them(self):
        every = list(range(COUNT))
        late, early, between, gap = evaluated("delay(Ua, 7)", "delay(Ua, -7)", "delay(S, 3.5)", "delay(G, 0.5)", samples=every)
        for wanted, shown in (([None] * 7 + values[0][:-7], late), (values[0][7:] + [None] * 7, early)):
            self.assertEqual([value is None for value in wanted], [value is None for value in shown])
            self.assertTrue(all(a is None or abs(a - b) < 1e-6 for a, b in zip(wanted, shown)))
        for i in range(6, COUNT - 4):
            self.assertAlmostEqual(200 * math.sin(2 * math.pi * (i - 3.5) / PERIOD), between[i], delta=0.06)
        self.assertEqual([i for i in every if i in (0, 57, 58, 200, 201)], [i for i in every if gap[i] is None])

    def test_a_turn_leads_by_its_degrees(self):
        for degrees in (90, 120, -30, 450):
            shown, = evaluated("turn(S, %d)" % degrees, samples=list(range(40, 80)))
            for i, value in zip(range(40, 80), shown):
                self.assertAlmostEqual(200 * math.sin(2 * math.pi * i / PERIOD + math.radians(degrees)), value, delta=0.06)

    def test_names_are_found_in_the_circuit_in_others_and_by_number(self):
        same = {"Ia1": 2, "Ia": 2, "IA1": 2, "Iа1": 2, "ua": 0, "#4": 3, "3I0": 5, '"нейтраль: 3I0"': 5, '"Q2:Ia"': 8, '"%s:Ub"' % LINE: 1,
                '"Ub %s"' % LINE: 1, "f": 7}
        for (name, channel), shown in zip(same.items(), evaluated(*same)):
            self.assertTrue(all(abs(values[channel][i] - value) < 1e-6 for i, value in zip(SAMPLES, shown)), name)
        self.assertEqual(evaluated("#9", circuit=OTHER), evaluated("Ia", circuit=OTHER))

    def test_mistakes_are_named_with_their_place(self):
        mistakes = {
            "": ["formulaEmpty", 0, 0], "Ua+": ["formulaEnd", 3, 3], "Ua+*2": ["formulaOperand", 3, 4], "Ua Ub": ["formulaOperator", 3, 5],
            "(Ua": ["formulaOpened", 0, 1], "Ua)": ["formulaClosed", 2, 3], "0,5*Ua": ["formulaComma", 1, 2], "(1,2)": ["formulaComma", 2, 3],
            "Ua $": ["formulaSign", 3, 4], '"Ua': ["formulaQuote", 0, 3], "sin(Ua)": ["formulaFunction", 0, 3], "min(Ua)": ["formulaArguments", 0, 7],
            "abs(1,2)": ["formulaArguments", 0, 8], "delay(Ua, Ub)": ["formulaConstant", 0, 13], "1e999": ["formulaNumber", 0, 5],
            "Ua+Uz": ["formulaUnknown", 3, 5], "#99": ["formulaNoNumber", 0, 3], "2Ua": ["formulaTimes", 0, 3], '"Q2:X"': ["formulaSeveral", 0, 6],
            "named = Ua + Uz": ["formulaUnknown", 13, 15], "constructor(1)": ["formulaFunction", 0, 11], "__proto__": ["formulaUnknown", 0, 9]}
        self.assertEqual(mistakes, dict(zip(mistakes, browser.run(ERRORS, list(mistakes), LINE))))
        self.assertEqual([["formulaCircuit", 0, 2]], browser.run(ERRORS, ["Ua"], "elsewhere"))

    def test_no_text_hangs_the_page_or_exhausts_its_stack(self):
        texts = {"(" * 900: "formulaDeep", "-" * 900 + "1": "formulaDeep", "abs(" * 200 + "1": "formulaDeep", "2^" * 400 + "2": "formulaDeep",
                 "1+" * 600: "formulaLong", "(" * 10 ** 6: "formulaLong", '"' * 999: "formulaQuote", "9" * 999: "formulaNumber", "a" * 1000: "formulaUnknown"}
        began = time.monotonic()
        self.assertEqual(list(texts.values()), [error[0] for error in browser.run(ERRORS, list(texts), LINE)])
        self.assertIsNone(browser.run(ERRORS, ["Ua" + "+1" * 499], LINE)[0])
        self.assertLess(time.monotonic() - began, 2)

    def test_units_follow_the_channels(self):
        units = {"(Ia1+Ib1)/3": ("А", "кА"), "Ua-Ub": ("В", "кВ"), "Ua*Ia1": ("ВА", "кВА"), "Ua/Ia1": ("Ом", "кОм"), "Ua/Ub": ("", ""), "Ua+Ia1": ("", ""),
                 "sqrt(sqr(Ua)+sqr(Ub))": ("В", "кВ"), "d(Ia1)": ("А/с", "А/с"), "int(Ua)": ("В·с", "В·с"), "Ua^2": ("В²", "В²"), "max(Ia1, 0)": ("А", "кА"),
                 "f-50": ("Hz", "Hz"), "sqrt(Ua)": ("", ""), "1/Ia1": ("1/А", "1/А"), "#9": ("A", "kA"), "5": ("", "")}
        shown = browser.run("return arguments[0].map((text) => { const {unit, kiloUnit} = zuView.formulaUnits("
                            "zuView.page.calculated.parse({text, circuit: arguments[1]}, [])); return [unit, kiloUnit]; })", list(units), LINE)
        self.assertEqual(units, dict(zip(units, map(tuple, shown))))


FIELDS = "return [...document.querySelectorAll('#formulaPanel .formulaRow input')].map((input) => input.value)"


class Calculated(unittest.TestCase):
    def open(self, *lines, settings="lang=en&theme=light"):
        browser.open_page(page, settings + ("&calc=" + urllib.parse.quote("\n".join(lines)) if lines else ""))

    def row(self, name):
        return browser.run("for (const row of document.querySelectorAll('#groups .row')) if (row.firstChild.textContent === arguments[0])"
                           "return [...row.children].slice(1).map((cell) => cell.textContent)", name)

    def write(self, text):
        browser.run("const row = [...document.querySelectorAll('.formulaRow')].pop(); const input = row.querySelector('input'); input.value = arguments[0];"
                    "input.dispatchEvent(new Event('input')); row.querySelector('button').click()", text)
        browser.settle()

    def test_a_formula_is_added_shown_kept_in_the_address_and_deleted(self):
        self.open()
        self.assertTrue(browser.run("return document.getElementById('formulaPanel').hidden"))
        browser.run("document.getElementById('formulas').click()")
        self.write("sum = S + S")
        self.write("Ua-Ub")
        self.assertEqual("Calculated", browser.text("#groups h3"))
        browser.set_cursor(0, 303)
        unit, value, rms, angle = self.row("sum")[:4]
        self.assertEqual(["А", "%.1f" % (2 * values[4][303]), "%.1f" % (400 / math.sqrt(2)), "54°"], [unit, value, rms, angle])
        self.assertEqual("кВ", self.row("Ua-Ub")[0])
        address = browser.run("return location.href")
        browser.driver.get("about:blank")
        browser.open_page(page, address.partition("#")[2])
        browser.set_cursor(0, 303)
        self.assertEqual([unit, value, rms, angle], self.row("sum")[:4])
        self.assertEqual(["sum = S + S", "Ua-Ub", ""], browser.run(FIELDS))
        browser.run("document.querySelector('.formulaRow button').click()")
        browser.settle()
        self.assertEqual(["Ua-Ub @ " + LINE], browser.run("return zuView.address.get('calc').split('\\n')"))
        self.assertIsNone(self.row("sum"))
        self.assertEqual([], browser.log("browser"))

    def test_a_broken_formula_in_the_address_shows_its_error_and_breaks_nothing(self):
        self.open("a = Ia + Qx @ " + LINE, "b = Ub @ " + LINE, "c = Ua @ nowhere", "d = 2*b", "e = 2*c")
        shown = browser.texts(".formulaError:not([hidden]) > span")
        self.assertEqual("Character 10: “Qx” is no channel of “%s”. There are: Ua, Ub, Ia1, Ib1, S, \"нейтраль: 3I0\", G, f. "
                         "Other circuits: \"circuit:name\"." % LINE, shown[0])
        self.assertEqual("Character 4: The record has no circuit “nowhere”. Choose one of its own.", shown[1])
        self.assertEqual(["Qx", " Ua", "c"], browser.texts(".formulaError:not([hidden]) mark"))
        self.assertFalse(browser.run("return document.getElementById('formulaPanel').hidden"))
        self.assertEqual(["b", "d"], browser.run("return zuView.page.calculated.channels.map((channel) => channel.name)"))
        browser.set_cursor(0, 100)
        self.assertAlmostEqual(2 * values[1][100] / 1000, browser.run("return zuView.page.calculated.channels[1].value(100)"), places=9)
        browser.run("document.querySelector('[data-language=ru]').click()")
        self.assertIn("Символ 10: «Qx» не канал присоединения «%s». В нём есть: Ua, Ub," % LINE, browser.text(".formulaError > span"))
        self.assertEqual([], browser.log("browser"))

    def test_a_formula_is_changed_in_its_place(self):
        self.open("Ua @ " + LINE)
        browser.run("document.getElementById('formulas').click(); const input = document.querySelector('.formulaRow input'); input.value = 'p = Ua*Ia1';"
                    "input.dispatchEvent(new Event('input')); input.dispatchEvent(new Event('change'))")
        browser.settle()
        self.assertEqual("p = Ua*Ia1 @ " + LINE, browser.run("return zuView.address.get('calc')"))
        self.assertEqual("кВА", self.row("p")[0])

    def test_values_are_calculated_when_they_are_first_seen(self):
        browser.open(str(page), "lang=en&sheet=reportSheet&calc=" + urllib.parse.quote("Ua @ " + LINE))
        browser.settle()
        is_due = "return Boolean(zuView.page.calculated.channels[0].due)"
        self.assertTrue(browser.run(is_due))
        browser.run("zuView.page.openSheet('oscillogram')")
        browser.settle()
        browser.settle()
        self.assertFalse(browser.run(is_due))


if __name__ == "__main__":
    run_tests()
