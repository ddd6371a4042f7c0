"""The R-X plane: loci and cursors against a computation of its own, zones and line at their ohms, pointer and keys."""
import cmath
import json
import math
import random
import unittest

from browser import until
from pages import browser, folder, run_tests, zucmtr
from records import Read, Written

CONTROL, ALT, HOME = "\ue009", "\ue00a", "\ue011"
PERIOD = 48  # samples, at 2400 a second and 50 Hz
LINE = {"length": 60, "r1": 0.16, "x1": 0.41, "r0": 0.31, "x0": 1.25}
Z1, Z0 = complex(0.16, 0.41), complex(0.31, 1.25)
ZONES = {1: [(-2, -2), (12, -2), (15, 20), (-5, 20)], 2: [(-3, -3), (16, -3), (22, 32), (-8, 32)]}
MHO = (6, 20, 24)

SHEET = "const page = zuView.page, sheet = page.parts.planeSheet, {plane, loci} = sheet;"
CANVAS = "const box = document.querySelector('.planePlot canvas').getBoundingClientRect();"


class Fault:
    """A simulated fault with zones: its page, what is true of it, and its record."""

    def __init__(self, name, *options):
        place = folder / name
        zucmtr("sample", "--out", place, *options)
        with open(place / "lines.ini", "a", encoding="utf-8") as lines:
            for number, corners in ZONES.items():
                lines.write("zone%d = polygon %s\n" % (number, " ".join("%g,%g" % corner for corner in corners)))
            lines.write("zone3 = mho %g %g %g\n" % MHO)
        recording = place / "Vostochnaya_fault.ZU"
        (place / "record").mkdir()
        zucmtr("convert", "--ini", place / "ZuDrv.ini", "--defaults", "Default", "--device", "Vostochnaya", "--out",
               place / "record", recording)
        self.page = folder / (name + ".html")
        zucmtr("view", recording, "-o", self.page)
        self.record = Read(next((place / "record").glob("*.cfg")))
        self.truth = json.loads((place / "Vostochnaya_fault.truth.json").read_text(encoding="utf-8"))
        self.fault = json.loads(zucmtr("events", "--json", recording).stdout)["fault"]
        self.trigger = json.loads(self.page.read_text(encoding="utf-8").split('id="data">', 1)[1]
                                  .split("</script>", 1)[0])["trigger"]

    def phasor(self, name, sample):
        """The Fourier sum of the period before a sample."""
        channel = next(index for index, row in enumerate(self.record.channels)
                       if row[1].startswith(name) and row[3] == self.fault["circuit"])
        return sum(self.record.value(channel, sample - PERIOD + k) * cmath.exp(-2j * math.pi * k / PERIOD)
                   for k in range(PERIOD)) * math.sqrt(2) / PERIOD

    def impedances(self, sample):
        """Of the six loops at a sample, ohms."""
        voltages = [self.phasor("U" + phase, sample) for phase in "abc"]
        currents = [self.phasor("I" + phase, sample) for phase in "abc"]
        compensation = (Z0 - Z1) / (3 * Z1) * sum(currents)
        ground = [u / (i + compensation) for u, i in zip(voltages, currents)]
        pairs = ((0, 1), (1, 2), (2, 0))
        return ground + [(voltages[a] - voltages[b]) / (currents[a] - currents[b]) for a, b in pairs]

    def sample(self, seconds):
        return self.trigger + round(seconds * 2400)


def open_plane(page, settings="lang=en&theme=light"):
    browser.open(page, settings + "&sheet=planeSheet")
    until(lambda: browser.run("return Boolean(window.zuView && zuView.page && zuView.page.opened)"), "the page")
    until(lambda: browser.run(SHEET + "return !loci || !loci.hasVoltages || loci.isReady"), "the impedances")
    browser.settle()


def notes():
    return " ".join(browser.texts(".planeSide .notes li"))


def setUpModule():
    global ground, phases
    ground = Fault("ground", "--fault", "AG", "--distance", "30", "--resistance", "0")
    phases = Fault("phases", "--fault", "AB", "--distance", "42", "--resistance", "0")


class Numbers(unittest.TestCase):
    def test_loci_and_cursors_have_the_impedances_of_an_own_computation(self):
        rng = random.Random(15)
        for fault in (ground, phases):
            open_plane(fault.page)
            clearing = fault.sample(fault.fault["clearing"])
            samples = [rng.randrange(PERIOD, clearing) for _ in range(8)] + [clearing - 10]
            series = browser.run(SHEET + "return arguments[0].map((sample) => zuView.quantities.loops.map((loop) => "
                                 "[loci.r(loop)[sample], loci.x(loop)[sample]]))", samples)
            points = browser.run(SHEET + "return arguments[0].map((sample) => { const at = loci.at(sample);"
                                 "return zuView.quantities.loops.map((loop) => at[loop]); })", samples)
            for sample, along, cursor in zip(samples, series, points):
                for loop, expected in enumerate(fault.impedances(sample)):
                    self.assertLess(abs(complex(*along[loop]) - expected), 1e-4 * abs(expected), (sample, loop))
                    self.assertLess(abs(complex(*cursor[loop]) - expected), 1e-4 * abs(expected), (sample, loop))

    def test_a_bolted_fault_ends_at_its_part_of_the_lines_impedance(self):
        for fault, loop in ((ground, "AG"), (phases, "AB")):
            open_plane(fault.page)
            self.assertEqual([loop], browser.run(SHEET + "return sheet.loops"))
            expected = fault.truth["fault"]["distance"]["km"] * Z1
            last = fault.sample(fault.fault["clearing"]) - 12
            point = complex(*browser.run(SHEET + "return loci.at(arguments[0])[arguments[1]]", last, loop))
            self.assertLess(abs(point - expected), 0.02 * abs(expected), (point, expected))

    def test_the_table_has_both_cursors_with_angle_and_kilometres(self):
        open_plane(phases.page)
        samples = [phases.sample(0.01), phases.sample(0.05)]
        for cursor, sample in enumerate(samples):
            browser.set_cursor(cursor, sample)
        self.assertEqual(["Loop", "R, Ω", "X, Ω", "|Z|, Ω", "∠", "km"], browser.texts(".planeValues tr:first-child th"))
        for cursor, sample in enumerate(samples, 1):
            cells = browser.texts(".planeValues tr.cursor%d td" % cursor)
            z = phases.impedances(sample)[3]
            expected = [z.real, z.imag, abs(z), math.degrees(cmath.phase(z)), z.imag / LINE["x1"]]
            for shown, value in zip(cells, expected):
                self.assertAlmostEqual(value, float(shown.rstrip("°").replace("−", "-")), delta=0.051)


class Drawing(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        open_plane(ground.page)

    def setUp(self):
        browser.press(HOME)

    def colors(self, points):
        """Those of the canvas at points of the plane."""
        return browser.run(SHEET + """const canvas = document.querySelector('.planePlot canvas');
            const scale = canvas.width / canvas.clientWidth; const context = canvas.getContext('2d');
            return arguments[0].map(([r, x]) => [...context.getImageData(Math.round(plane.xOf(r) * scale) - 1,
              Math.round(plane.yOf(x) * scale) - 1, 3, 3).data]);""", points)

    def has(self, pixels, name):
        """Whether one of nine pixels nearly has a colour of the theme, and is not merely tinted with it."""
        color = browser.run("return zuView.styleColor(arguments[0]).slice(1).match(/../g).map((part) => parseInt(part, 16))",
                            name)
        return any(pixels[at + 3] > 120 and all(abs(part - pixels[at + i]) < 60 for i, part in enumerate(color))
                   for at in range(0, 36, 4))

    def test_both_axes_have_one_scale_and_grid_lines_stand_at_round_ohms(self):
        right, up, step = browser.run(SHEET + "return [plane.xOf(7) - plane.xOf(0), plane.yOf(0) - plane.yOf(7), plane.step]")
        self.assertAlmostEqual(right, up, places=9)
        self.assertIn("%.0e" % step, ("1e+01", "5e+00", "2e+01", "2e+00"))
        ends = browser.run(SHEET + "return plane.ends")
        ticks = browser.run(SHEET + "return [plane.ticks(plane.ends.r), plane.ticks(plane.ends.x)]")
        for (low, high), found in zip((ends["r"], ends["x"]), ticks):
            first = math.ceil(low / step)
            self.assertEqual([(first + i) * step for i in range(int(high // step) - first + 1)], found)

    def test_zones_are_drawn_at_their_ohms(self):
        for number, color in ((1, "--other1"), (2, "--other4")):
            corners = ZONES[number]
            edges = [tuple(a + 0.35 * (b - a) for a, b in zip(*ends)) for ends in zip(corners, corners[1:] + corners[:1])]
            for pixels, edge in zip(self.colors(edges), edges):
                self.assertTrue(self.has(pixels, color), (number, edge))
            for pixels, edge in zip(self.colors([(r + 1.4, x + 1.7) for r, x in edges]), edges):
                self.assertFalse(self.has(pixels, color), (number, edge))
        r, x, radius = MHO
        angles = [math.radians(degrees) for degrees in (10, 100, 170, 260)]
        circle = [(r + radius * math.cos(angle), x + radius * math.sin(angle)) for angle in angles]
        self.assertEqual([True] * 4, [self.has(pixels, "--other5") for pixels in self.colors(circle)])

    def test_the_line_is_drawn_from_the_recorder_to_its_end(self):
        on = [(part * 60 * Z1.real, part * 60 * Z1.imag) for part in (0.1, 0.5, 0.9)]
        beyond = [(1.1 * 60 * Z1.real, 1.1 * 60 * Z1.imag)]
        self.assertEqual([True] * 3 + [False], [self.has(pixels, "--ink") for pixels in self.colors(on + beyond)])

    def test_fit_shows_zones_line_and_fault_and_wheel_and_drag_move_them(self):
        left, top, width, height = browser.run(CANVAS + SHEET + "return [box.left, box.top, plane.area.width, plane.area.height]")
        fitted = browser.run(SHEET + "return [plane.middle[0], plane.middle[1], plane.ohms]")
        r, x, radius = MHO  # encloses all else
        ohms = 1.12 * max(2 * radius / width, 2 * radius / height)
        for expected, found in zip((r, x, ohms), fitted):
            self.assertAlmostEqual(expected, found, places=9)
        at = (round(left + 300), round(top + 200))
        under = "return [plane.rAt(arguments[0]), plane.reactanceAt(arguments[1])]"
        place = [at[0] - left, at[1] - top]
        before = browser.run(SHEET + under, *place)
        browser.wheel(*at, 0, -300, held=CONTROL)
        self.assertAlmostEqual(ohms * 1.0015 ** -300, browser.run(SHEET + "return plane.ohms"), places=9)
        after = browser.run(SHEET + under, *place)
        browser.mouse(("move", *at), ("down", 0), ("move", at[0] + 30, at[1]), ("move", at[0] + 50, at[1] - 20), ("up", 0))
        moved = browser.run(SHEET + under, place[0] + 50, place[1] - 20)
        for first, second, third in zip(before, after, moved):
            self.assertAlmostEqual(first, second, places=6)
            self.assertAlmostEqual(first, third, places=6)
        browser.press(HOME)
        self.assertEqual(fitted, browser.run(SHEET + "return [plane.middle[0], plane.middle[1], plane.ohms]"))

    def test_a_click_takes_the_chosen_cursor_to_the_nearest_sample_of_a_locus(self):
        onset = ground.sample(ground.fault["onset"])
        for cursor, after in ((0, 30), (1, 36)):
            browser.press(str(cursor + 1))
            x, y = browser.run(CANVAS + SHEET + "return [box.left + plane.xOf(loci.r('AG')[arguments[0]]) + 2, "
                               "box.top + plane.yOf(loci.x('AG')[arguments[0]]) - 2]", onset + after)
            x, y = round(x), round(y)
            nearest = browser.run(CANVAS + SHEET + """const [first, end] = loci.span();
                const away = (i) => Math.hypot(box.left + plane.xOf(loci.r('AG')[i]) - arguments[0],
                  box.top + plane.yOf(loci.x('AG')[i]) - arguments[1]);
                return Array.from({length: end - first}, (_, i) => first + i).filter((i) => away(i) >= 0)
                  .reduce((best, i) => (away(i) < away(best) ? i : best));""", x, y)
            self.assertLess(abs(nearest - onset - after), 5)
            browser.mouse(("move", x, y), ("down", 0), ("up", 0))
            self.assertEqual(nearest, browser.run("return zuView.page.cursors.samples[arguments[0]]", cursor))
        samples = browser.run("return zuView.page.cursors.samples")
        browser.mouse(("move", x + 100, y - 100), ("down", 0), ("up", 0))  # nothing is there
        self.assertEqual(samples, browser.run("return zuView.page.cursors.samples"))

    def test_the_point_of_a_cursor_is_dragged_along_its_locus(self):
        onset = ground.sample(ground.fault["onset"])
        browser.set_cursor(0, onset + 34)
        place = CANVAS + SHEET + ("return [box.left + plane.xOf(loci.r('AG')[arguments[0]]), "
                                  "box.top + plane.yOf(loci.x('AG')[arguments[0]])]")
        start, end = browser.run(place, onset + 34), browser.run(place, onset + 29)
        browser.mouse(("move", *start), ("down", 0), ("move", start[0] + 8, start[1] + 3), ("move", *end), ("up", 0))
        self.assertLess(abs(browser.run("return zuView.page.cursors.samples[0]") - onset - 29), 2)

    def test_loops_are_switched_and_kept_in_the_address(self):
        browser.run("document.querySelector('[data-loop=BC]').click()")
        browser.settle()
        self.assertEqual("AG,BC", browser.run("return zuView.address.get('loops')"))
        self.assertEqual(["A–G", "", "B–C", ""], browser.texts(".planeValues th.name"))
        browser.run("document.querySelector('[data-loop=BC]').click()")
        self.assertEqual(["AG"], browser.run(SHEET + "return sheet.loops"))

    def test_loops_of_each_kind_of_fault(self):
        self.assertEqual([["AG"], ["BC"], ["BG", "CG", "BC"], ["AB", "BC", "CA"], ["AG", "BG", "AB"], ["AB", "BC", "CA"]], browser.run(
            "return [['AG'], ['BC'], ['BCG'], ['ABCG'], ['AG', 'ABG']].map((kinds) => zuView.loopsOfFault("
            "{fault: {parts: kinds.map((kind) => ({kind}))}})).concat([zuView.loopsOfFault({fault: null})])"))


def wave(amplitude, turn=0.0):
    return [round(amplitude * math.sin(2 * math.pi * (i / 20 - turn))) for i in range(400)]


def three(quantity, circuit, unit, amplitude, turn=0.0):
    return [("%s%s %s" % (quantity, phase, circuit), circuit, unit, 1.0, 0.0, wave(amplitude, turn + n / 3))
            for n, phase in enumerate("abc")]


class Lacks(unittest.TestCase):
    def show(self, name, analog, lines=""):
        place = folder / name
        place.mkdir()
        Written(place / "r.cfg", analog)
        (place / "lines.ini").write_text(lines, encoding="utf-8")
        zucmtr("view", place / "r.cfg", "--lines", place / "lines.ini", "-o", place / "r.html")
        open_plane(place / "r.html")
        self.assertEqual([], browser.log("browser"))

    def test_voltages_of_another_circuit_serve_a_line_that_has_none_and_are_named(self):
        self.show("served", three("I", "W1", "А", 1000, 1 / 6) + three("U", "Bus", "В", 10000),
                  "[W1]\n" + "".join("%s = %s\n" % item for item in LINE.items()) + "voltages = Bus\n")
        self.assertIn("Voltages: Bus, as lines.ini says.", notes())
        self.assertIn("lines.ini has no zones for this line", notes())
        r, x = browser.run(SHEET + "return loci.at(300).AB")
        self.assertAlmostEqual(5, r, delta=0.02)  # 10 ohms at 60 degrees
        self.assertAlmostEqual(10 * math.sin(math.pi / 3), x, delta=0.02)

    def test_without_line_data_k0_is_zero_and_that_is_said(self):
        self.show("noline", three("I", "W1", "А", 1000) + three("U", "W1", "В", 10000))
        self.assertEqual("Voltages: the circuit’s own. lines.ini has no data of this line: k0 = 0, so the loops to ground "
                         "show too much, and there are no kilometres and no zones.", notes())
        self.assertEqual(["Loop", "R, Ω", "X, Ω", "|Z|, Ω", "∠"], browser.texts(".planeValues tr:first-child th"))

    def test_without_voltages_or_currents_the_sheet_says_what_is_missing(self):
        self.show("novoltages", three("I", "W1", "А", 1000))
        self.assertTrue(browser.text("#planeSheet .notice").startswith("No voltages of three phases serve this circuit"))
        self.assertTrue(browser.run("return document.querySelector('.planePlot').hidden"))
        self.show("nocurrents", three("U", "W1", "В", 1000))
        self.assertEqual("No circuit of the record has the currents of three phases, so there is no impedance.",
                         browser.text("#planeSheet"))

    def test_what_has_no_current_is_left_out_and_that_is_said(self):
        currents = [row[:5] + ([code if i < 200 else (i % 3) for i, code in enumerate(row[5])],)
                    for row in three("I", "W1", "А", 1000)]
        self.show("dead", currents + three("U", "W1", "В", 10000))
        browser.press("1")
        browser.set_cursor(0, 300)
        browser.set_cursor(1, 150)
        self.assertIn("Left out, as no current flows (below 3.536 A)", notes())
        self.assertEqual(["—"] * 4, browser.texts(".planeValues tr.cursor1 td")[:4])
        runs = browser.run(SHEET + "const axis = page.axis; return zuView.locusRuns(loci, 'AB', plane, 0, axis.count)"
                           ".map((run) => run.length).length")
        self.assertEqual(1, runs)
        live = browser.run(SHEET + "return Array.from({length: 400}, (_, i) => loci.isLive('AB', i)).lastIndexOf(true)")
        self.assertTrue(200 <= live <= 220, live)


if __name__ == "__main__":
    run_tests()
