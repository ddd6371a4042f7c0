"""What the page derives in JavaScript against what the library computes in C++ (derivedvalues.cpp), at many cursors of records of many
kinds."""
import cmath
import json
import math
import os
import random
import subprocess
import unittest

from browser import until
from foreign import Channel, Foreign, fault, sampled
from pages import browser, folder, run_tests, zucmtr

# The same filters on the same samples: nothing but rounding differs.
EXACT = 1e-9
# Stamps are whole microseconds: the library takes the rate from the whole record and interpolates onto a grid, the page takes the rate from
# the period before the cursor.
STAMPED = 1e-3
# Tracks are in single precision.
SINGLE = 2.0 ** -23
# A quotient by less than this part of the largest current of the record is one of rounding errors.
NO_CURRENT = 1e-6

LINES = "[W1]\nlength = 40\nr1 = 0.12\nx1 = 0.4\nr0 = 0.3\nx0 = 1.2\n"

# What the page has at samples: of each channel and circuit, and of the tracks.
READ = """const [samples, done] = arguments; const page = zuView.page; const {derived} = zuView;
const circuits = page.data.answer.circuits.map((json) => derived.circuit(json, page.analog));
const exact = (value) => Array.isArray(value) ? (value.every(Number.isFinite) ? value : null) : Number.isFinite(value) ? value : null;
const exactAll = (values) => values && Object.fromEntries(Object.entries(values).map(([name, value]) => [name, exact(value)]));
const ofChannel = (channel, sample) => {
  const measured = page.periods.measure(channel, sample);
  if (measured.reason) return {reason: measured.reason};
  const {direct, harmonics, thd, highest} = derived.harmonics(page.periods, channel, sample);
  const from = page.axis.stamps ? 0 : page.axis.pieceOf(sample)[0];
  return {phasor: derived.phasor(page.periods, channel, sample), direct: [direct, measured.direct * channel.baseFactor],
    rms: measured.rms * channel.baseFactor, peak: derived.peak(page.periods, channel, sample), thd: exact(thd), highest,
    harmonics: harmonics.map(({order, rms, angle}) => [order, rms, angle]), joule: exact(derived.joule(page.axis, channel, from, sample))};
};
const ofCircuit = (circuit, sample) => ({
  ...Object.fromEntries(['rms', 'components', 'power', 'impedance'].map((kind) => [kind, exactAll(derived.values(kind, page.periods, circuit, sample))])),
  all: exactAll(derived.power(page.periods, circuit, sample)),
  unbalance: [circuit.voltages, circuit.currents].map((channels) => exactAll(derived.unbalance(page.periods, channels, sample)))});
const values = samples.map((sample) => ({channels: page.analog.map((channel) => ofChannel(channel, sample)),
  circuits: circuits.map((circuit) => ofCircuit(circuit, sample))}));
const tracks = circuits.map(() => ({}));
let left = circuits.length * derived.kinds.length;
circuits.forEach((circuit, place) => derived.kinds.forEach((kind) => page.derivations.request(`${place} ${kind}`, {kind, circuit: place}, ({series}) => {
  for (const name of Object.keys(series)) tracks[place][`${kind} ${name}`] = samples.map((sample) => exact(series[name][sample]));
  if (--left === 0) done({values, tracks});
})));"""

LOOPS = ("AG", "BG", "CG", "AB", "BC", "CA")


def library(path, lines, samples):
    """What the library computes."""
    result = subprocess.run([os.environ["DERIVED_VALUES"], str(path), str(lines)], input="\n".join(map(str, samples)), check=True,
                            stdout=subprocess.PIPE, encoding="utf-8")
    return json.loads(result.stdout)


def at_cursor(phasor, order, per_period):
    """The library's phasor with the angle of a sine one step later, as the page has it."""
    return complex(*phasor) * cmath.exp(1j * (order * 2 * math.pi / per_period + math.pi / 2))


class Twins(unittest.TestCase):
    """At random cursors of each record."""

    def compare(self, path, lines="-", count=24, tolerance=EXACT, least=0.5):
        """Opens the page of a record and compares; at least so many of the cursors must have values."""
        zucmtr("view", path, *([] if lines == "-" else ["--lines", lines]), "-o", path.with_suffix(".html"))
        browser.open_page(path.with_suffix(".html"))
        total = browser.run("return zuView.page.data.count")
        samples = sorted(random.Random(path.name).sample(range(total), count))
        wanted = library(path, lines, samples)
        found = browser.driver.execute_async_script(READ, samples)
        self.tolerance, self.compared = tolerance, 0
        self.currents = [max((abs(complex(*at["channels"][place]["phasor"])) for at in wanted if at["channels"][place]), default=0)
                         for place in range(len(wanted[0]["channels"]))]
        self.places = browser.run("return zuView.page.data.answer.circuits.map(({voltages, currents}) => [voltages, currents])")
        for index, (at, own) in enumerate(zip(wanted, found["values"])):
            place = (path.name, samples[index])
            for channel, (one, other) in enumerate(zip(at["channels"], own["channels"])):
                self.compare_channel(one, other, at["perPeriod"], place + (channel,))
            for circuit, (one, other) in enumerate(zip(at["circuits"], own["circuits"])):
                tracks = {name: values[index] for name, values in found["tracks"][circuit].items()}
                self.compare_circuit(one, other, tracks, self.places[circuit], at["channels"], place + (circuit,))
        self.assertLess(least * count * len(wanted[0]["channels"]), self.compared)

    def same(self, wanted, number, scale, place, tolerance=None):
        if wanted is None or number is None:
            return self.assertEqual(wanted, number, place)
        return self.assertLessEqual(abs(wanted - number), (tolerance or self.tolerance) * scale, (place, wanted, number))

    def compare_channel(self, wanted, found, per_period, place):
        if wanted is None:
            return self.assertIn(found.get("reason"), ("whyBeginning", "whyRates", "whyMissing", "whyUneven"), place)
        self.assertNotIn("reason", found, place)
        self.compared += 1
        scale = wanted["rms"] or 1
        self.same(at_cursor(wanted["phasor"], 1, per_period), complex(*found["phasor"]), scale, place)
        for number in found["direct"]:
            self.same(wanted["direct"], number, scale, place)
        for name in ("rms", "peak"):
            self.same(wanted[name], found[name], scale, (name,) + place)
        self.same(wanted["joule"], found["joule"], wanted["joule"] or 1, place)
        self.assertEqual(len(wanted["harmonics"]), found["highest"], place)
        for order, (phasor, (named, rms, angle)) in enumerate(zip(wanted["harmonics"], found["harmonics"]), 1):
            self.assertEqual(order, named)
            # What stamps leave unknown of an angle grows with the order.
            self.same(at_cursor(phasor, order, per_period), cmath.rect(rms, math.radians(angle)), scale * order, (order,) + place)
        fundamental = abs(complex(*wanted["harmonics"][0]))
        if fundamental > 1e-3 * scale:
            self.same(wanted["thd"], found["thd"], (wanted["thd"] + scale / fundamental) * 10, place)
        return None

    def compare_circuit(self, wanted, found, tracks, places, channels, place):
        """places: of voltages and currents; channels: the library's values of all channels."""
        sizes = [max((channels[one]["rms"] for one in row[:3] if one is not None and channels[one]), default=0) for row in places]
        for quantity, size, unbalance in zip("UI", sizes, found["unbalance"]):
            self.compare_sequences(wanted[quantity], found["components"], unbalance, quantity, size, place)
        power = dict(zip(("active", "reactive", "apparent", "factor"), wanted["power"]))
        if found["all"]:
            for name, value in power.items():
                self.same(value, found["all"][name], 3 * sizes[0] * sizes[1] or 1, (name,) + place)
            self.same(power["active"], found["power"]["P"], 3 * sizes[0] * sizes[1] or 1, place)
            self.same(power["reactive"], found["power"]["Q"], 3 * sizes[0] * sizes[1] or 1, place)
            self.compare_loops(wanted["impedance"], found["impedance"], max(self.currents[one] for one in places[1][:3]), sizes, place)
        for kind in ("rms", "components", "power", "impedance"):
            for name, value in found[kind].items():
                self.same(value, tracks["%s %s" % (kind, name)], max(abs(value or 0), 1e-6 * (max(sizes) or 1)), (name,) + place, 2 * SINGLE)
        for name in ("f", "dfdt"):
            if "frequency " + name in tracks:
                value = tracks["frequency " + name]
                self.same(wanted[name], value, max(50, abs(wanted[name] or 0)), (name,) + place, max(SINGLE, self.tolerance / 10))

    def compare_sequences(self, wanted, components, unbalance, quantity, size, place):
        names = ("%s1" % quantity, "%s2" % quantity, "3%s0" % quantity)
        if names[0] not in components:
            return
        for name, key, factor in zip(names, ("positive", "negative", "zero"), (1, 1, 3)):
            sequence = wanted[key] and factor * abs(complex(*wanted[key]))
            self.same(sequence, components[name], 3 * size, (name,) + place)
        if wanted["positive"] and abs(complex(*wanted["positive"])) > NO_CURRENT * size:
            part = size / abs(complex(*wanted["positive"]))
            for one, name in zip(wanted["unbalance"], ("negative", "zero")):
                self.same(one, unbalance[name], 10 * part * part, (name,) + place)

    def compare_loops(self, wanted, found, largest, sizes, place):
        for loop, impedance in zip(LOOPS, wanted):
            own = found["R." + loop], found["X." + loop]
            if impedance is None:
                self.assertEqual((None, None), own, (loop,) + place)
                continue
            # What a current of rounding errors divides by is no impedance.
            amplified = abs(complex(*impedance)) * sizes[1] / sizes[0] if sizes[0] else math.inf
            if sizes[1] < NO_CURRENT * largest or amplified > 1 / NO_CURRENT:
                continue
            self.same(complex(*impedance), complex(*own), 10 * abs(complex(*impedance)) * max(1, amplified) + sizes[0] / sizes[1], (loop,) + place)

    def test_sample_station(self):
        zucmtr("sample", "--out", folder)
        self.compare(converted(folder, folder / "station", "Vostochnaya_000123.ZU"))

    def test_simulated_faults_of_many_rates_and_frequencies(self):
        for name, options in (("600", ("AG", "--rate", 600)), ("1000", ("BC", "--rate", 1000, "--frequency", 51.3, "--evolving", "BCG")),
                              ("2400", ("ABC", "--frequency", 48.7)), ("20000", ("CAG", "--rate", 20000, "--frequency", 47, "--saturation"))):
            with self.subTest(name):
                place = folder / ("fault" + name)
                zucmtr("sample", "--out", place, "--fault", *options)
                self.compare(converted(place, place / "comtrade", "Vostochnaya_fault.ZU"), place / "lines.ini", 20)

    def test_records_of_other_devices(self):
        lines = folder / "foreign.ini"
        lines.write_text(LINES, encoding="utf-8")
        source = random.Random(60255)
        for name, kind, settings in (("sixty", "FLOAT32", {"rates": [(4800, 1500)], "frequency": 60, "gaps": 3}),
                                     ("sixteen", "BINARY32", {"rates": [(1000, 1500)], "frequency": 60, "offset": 4.0}),
                                     ("fourteen", "BINARY", {"rates": [(720, 1500)], "side": "S"}),
                                     ("sixtysix", "ASCII", {"rates": [(4000, 1500)], "frequency": 60, "gaps": 5}),
                                     ("rates", "BINARY32", {"rates": [(2400, 600), (800, 900), (4800, 1500)], "gaps": 2})):
            with self.subTest(name):
                path = folder / (name + ".cfg")
                fault(source, kind, **settings).write(path)
                self.compare(path, lines)

    def test_a_record_with_stamps(self):
        stamps = [round(i * 1e6 / 1700) for i in range(1500)]
        seconds = [stamp / 1e6 for stamp in stamps]
        channels = [Channel(quantity + phase, "V" if quantity == "U" else "A", 0.01, 0.0, sampled("BINARY32", 0.01, 0.0, (
            size * math.sin(2 * math.pi * 50 * t - index * 2 * math.pi / 3 - lag) for t in seconds)))
            for quantity, size, lag in (("U", 9e4, 0), ("I", 500, 0.5)) for index, phase in enumerate("abc")]
        path = folder / "stamps.cfg"
        Foreign(channels, "ASCII", stamps=stamps, frequency=50).write(path)
        self.compare(path, tolerance=STAMPED)
        # Neighbouring windows share a filter, although their stamps are rounded differently.
        self.assertLessEqual(browser.run("const {periods, axis} = zuView.page; for (let i = 0; i < axis.count; i++) periods.measure(zuView.page.analog[0], i);"
                                         "return periods.known.size"), 4)


class Strips(unittest.TestCase):
    """What is derived, in the oscillogram, of a fault on a line whose data are known."""

    count = 2400  # samples in a second

    @classmethod
    def setUpClass(cls):
        place = folder / "strips"
        zucmtr("sample", "--out", place, "--fault", "AG", "--distance", "42", "--resistance", "2", "--seconds", "1")
        cls.record = converted(place, place / "comtrade", "Vostochnaya_fault.ZU")
        cls.lines = place / "lines.ini"
        cls.page = place / "page.html"
        zucmtr("view", cls.record, "--lines", cls.lines, "-o", cls.page)
        cls.long_page = folder / "long.html"  # with many circuits
        zucmtr("sample", "--out", folder / "long")
        zucmtr("view", folder / "long" / "Vostochnaya_000123.ZU", "-o", cls.long_page)

    def open_page(self, show="", settings="lang=en&theme=light"):
        browser.open_page(self.page, settings + ("&show=" + show if show else ""))

    def wait(self, kind):
        """Until the strips of a kind have their values and show them."""
        until(lambda: browser.run("const own = zuView.page.derivedStrips.channels.filter((one) => one.kind === arguments[0]);"
                                  "return own.length > 0 && own.every((one) => one.isKnown)", kind), "values of " + kind)
        browser.settle()

    def cells(self, cursor):
        """The value of each derived row as shown: {kind and series: (number, unit)}."""
        rows = browser.run("""const rows = zuView.page.strips.filter((strip) => strip.channels[0].isDerived).flatMap((strip) => strip.rows);
            return rows.map(({channel, row, cells}) => [`${channel.kind} ${channel.series}`, cells[arguments[0]].map((cell) => cell.textContent),
              row.querySelector('.unit').textContent]);""", cursor)
        return {name: (texts, unit) for name, texts, unit in rows}

    def test_values_at_both_cursors_are_those_of_the_library(self):
        """Large ones in thousands or millions."""
        kinds = ("rms", "components", "power", "frequency", "impedance")
        self.open_page("0:" + ",".join(kinds))
        browser.run("zuView.page.strips.forEach((strip) => { strip.onScreen = true; }); zuView.page.derivedStrips.compute();")
        for kind in kinds:
            self.wait(kind)
        samples = (760, 1500)
        for cursor, sample in enumerate(samples):
            browser.set_cursor(cursor, sample)
        for cursor, at in enumerate(library(self.record, self.lines, samples)):
            circuit, rms = at["circuits"][0], [channel["rms"] for channel in at["channels"]]
            size = lambda key, part, times=1: times * abs(complex(*circuit[key][part]))
            (r, x), (p, q, *_) = circuit["impedance"][0], circuit["power"]
            expected = {
                "rms Ua": (rms[0] / 1e3, "kV"), "rms Ub": (rms[1] / 1e3, "kV"), "rms Uc": (rms[2] / 1e3, "kV"), "rms 3U0": (rms[3] / 1e3, "kV"),
                "rms Ia": (rms[4] / 1e3, "kA"), "rms Ib": (rms[5] / 1e3, "kA"), "rms Ic": (rms[6] / 1e3, "kA"), "rms 3I0": (rms[7] / 1e3, "kA"),
                "components U1": (size("U", "positive") / 1e3, "kV"), "components U2": (size("U", "negative") / 1e3, "kV"),
                "components 3U0": (size("U", "zero", 3) / 1e3, "kV"), "components I1": (size("I", "positive") / 1e3, "kA"),
                "components I2": (size("I", "negative") / 1e3, "kA"), "components 3I0": (size("I", "zero", 3) / 1e3, "kA"),
                "power P": (p / 1e6, "MW"), "power Q": (q / 1e6, "Mvar"), "frequency f": (circuit["f"], "Hz"),
                "frequency dfdt": (circuit["dfdt"], "Hz/s"), "impedance R.AG": (r, "Ω"), "impedance X.AG": (x, "Ω")}
            cells = self.cells(cursor)
            self.assertEqual(list(expected), list(cells))
            for name, (value, unit) in expected.items():
                (shown, *others), own = cells[name]
                self.assertEqual((unit, ["", ""]), (own, others), name)
                self.assertAlmostEqual(value, float(shown.replace("−", "-")), delta=0.501 * 10.0 ** -len(shown.partition(".")[2]), msg=name)

    def test_buttons_switch_strips_and_the_address_keeps_them(self):
        self.open_page()
        names = "return zuView.page.strips.flatMap((strip) => strip.channels).filter((one) => one.isDerived).map((one) => `${one.place} ${one.name}`)"
        pressed = "return [...document.querySelectorAll('[data-derived][aria-pressed=true]')].map((one) => one.dataset.derived)"
        show = "return new URLSearchParams(location.hash.slice(1)).get('show')"
        self.assertEqual(([], []), (browser.run(names), browser.run(pressed)))
        for button in ("1:power", "0:frequency", "0:rms"):
            browser.run("document.querySelector(`[data-derived='${arguments[0]}']`).click()", button)
        expected = ["0 Ua", "0 Ub", "0 Uc", "0 3U0", "0 Ia", "0 Ib", "0 Ic", "0 3I0", "0 f", "0 df/dt", "1 P", "1 Q"]
        self.assertEqual(expected, browser.run(names))
        self.assertEqual("0:frequency,rms;1:power", browser.run(show))
        self.open_page(browser.run(show), "lang=ru&theme=dark")
        self.assertEqual((expected, ["0:rms", "0:frequency", "1:power"]), (browser.run(names), browser.run(pressed)))
        self.wait("frequency")
        self.assertEqual(["Действ.", "Действ.", "Частота", "Частота", "P и Q"], browser.texts(".legend .what"))
        browser.run("document.querySelector(\"[data-derived='0:rms']\").click(); document.querySelector(\"[data-derived='0:frequency']\").click();"
                    "document.querySelector(\"[data-derived='1:power']\").click();")
        self.assertEqual(([], None), (browser.run(names), browser.run(show)))
        self.assertEqual([], browser.log("browser"))

    def test_settings_that_mean_nothing_are_passed_over(self):
        self.open_page("0:nonsense,rms;99:rms;x:power;-1:rms;2")
        self.assertEqual(["rms"], browser.run("return [...new Set(zuView.page.derivedStrips.channels.map(({kind}) => kind))]"))
        browser.run("document.querySelector(\"[data-derived='0:power']\").click()")
        self.assertEqual("0:rms,power", browser.run("return new URLSearchParams(location.hash.slice(1)).get('show')"))
        self.assertEqual([], browser.log("browser"))

    def test_nothing_is_computed_before_it_is_seen(self):
        self.open_page()
        self.assertIsNone(browser.run("return zuView.page.derivations.calculator"))
        browser.open_page(self.long_page, "lang=en&theme=light&show=6:rms")
        is_below = browser.run("return zuView.page.strips.find((one) => one.channels[0].isDerived).element.getBoundingClientRect().top > innerHeight + 150")
        self.assertTrue(is_below)
        self.assertIsNone(browser.run("return zuView.page.derivations.calculator"))
        browser.run("zuView.page.strips.find((one) => one.channels[0].isDerived).element.scrollIntoView()")
        self.wait("rms")

    def test_an_axis_of_impedance_does_not_follow_a_line_without_current(self):
        self.open_page("0:impedance")
        self.wait("impedance")
        largest, low, high = browser.run("""const strip = zuView.page.strips.find((one) => one.channels[0].isDerived);
            const all = strip.channels.flatMap((one) => [...one.codes]).filter(Number.isFinite).map(Math.abs);
            return [Math.max(...all), ...strip.valueRange(false)];""")
        line = browser.run("const {line} = zuView.page.data.answer.circuits[0]; return Math.hypot(line.r1, line.x1) * line.length;")
        self.assertGreater(largest, 100 * line)
        self.assertLess(max(-low, high), 1.07 * 2 * 4 * line)
        self.assertGreater(high, line)
        drawn = browser.run("return zuView.page.strips.find((one) => one.channels[0].isDerived).channels.map((one) => one.drawn.range(0, one.codes.length))")
        for least, greatest in drawn:
            self.assertLess(max(-least, greatest), 10 * 4 * line)  # no strokes from end to end

    def test_the_latest_request_of_a_slot_wins(self):
        """What an older one asked for is not even computed: seen without a worker, where nothing runs before the last request is made."""
        for change, computed in (("", None), ("globalThis.Worker = undefined;", ["components 0", "power 1"])):
            self.open_page()
            answered, taken = browser.driver.execute_async_script(change + """
                const done = arguments[0]; const {derivations} = zuView.page; const [answered, taken] = [[], []];
                const take = derivations.take; derivations.take = function (key, series) { taken.push(key); take.call(this, key, series); };
                const ask = (slot, kind, circuit) => derivations.request(slot, {kind, circuit}, ({series}) => {
                  answered.push([slot, kind, circuit, Object.keys(series)[0]]); if (answered.length === 3) setTimeout(() => done([answered, taken])); });
                for (const kind of ['rms', 'impedance', 'components']) for (const circuit of [2, 1, 0]) ask('a', kind, circuit);
                ask('b', 'components', 0); ask('c', 'power', 1);""")
            self.assertEqual([["a", "components", 0, "U1"], ["b", "components", 0, "U1"], ["c", "power", 1, "P"]], answered)
            if computed:
                self.assertEqual(computed, taken)

    def test_results_are_kept_while_there_is_room(self):
        self.open_page()
        kept = browser.driver.execute_async_script("""const done = arguments[0]; const {derivations} = zuView.page; const all = [];
            derivations.mostKept = 11 * 4 * zuView.page.data.count;
            const next = (kinds) => kinds.length === 0 ? done(all) : derivations.request('a', {kind: kinds[0], circuit: 0}, () => {
              all.push([...derivations.kept.keys()]); next(kinds.slice(1)); });
            next(['power', 'rms', 'power', 'frequency', 'impedance']);""")
        self.assertEqual([["power 0"], ["power 0", "rms 0"], ["rms 0", "power 0"], ["power 0", "frequency 0"], ["impedance 0"]], kept)

    def test_without_a_worker_the_page_computes_the_same(self):
        """Where none can be made, and where one fails as it starts."""
        compute = """const done = arguments[0]; const {derivations} = zuView.page; const results = {}; let left = 5;
            %s
            for (const kind of zuView.derived.kinds) derivations.request(kind, {kind, circuit: 0}, ({series}) => {
              results[kind] = Object.entries(series).map(([name, values]) => [name, [...new Uint32Array(values.map((value) => (Number.isNaN(value) ? 1 : value)).buffer)].reduce((sum, bits) => (sum * 31 + bits) %% 4294967291, 7)]);
              if (--left === 0) done(results);
            });"""
        results = []
        for change in ("", "globalThis.Worker = class { constructor() { throw new Error('not allowed'); } };",
                       "globalThis.Worker = class { postMessage() { setTimeout(() => this.onerror({preventDefault() {}})); this.postMessage = () => {}; } };"):
            self.open_page()
            results.append(browser.driver.execute_async_script(compute % change))
        self.assertEqual(["components", "frequency", "impedance", "power", "rms"], sorted(results[0]))
        self.assertEqual(results[:1] * 2, results[1:])

    def test_records_with_nothing_to_derive_are_quiet(self):
        """No samples, a single one, dead phases, one that is missing, slow and uneven ones, and a single phase."""
        def record(count, rate=1000, names="abc", size=100):
            values = [[size * math.sin(2 * math.pi * 50 * i / rate - index * 2.1) for i in range(count)] for index in range(len(names))]
            return Foreign([Channel(quantity + name, "V" if quantity == "U" else "A", 0.01, 0.0, sampled("FLOAT32", 0.01, 0.0, wave))
                            for quantity in "UI" for name, wave in zip(names, values)], "FLOAT32", [(rate, count)])
        stamped = record(50)
        stamped.rates, stamped.stamps = [], [1000 * i * i for i in range(50)]
        missing = record(300)
        missing.channels[1].codes[:] = [None] * 300
        for name, one, kinds in (("empty", record(0), 5), ("one", record(1), 5), ("dead", record(300, size=0), 5),
                                 ("slow", record(300, rate=100), 5), ("uneven", stamped, 5), ("missing", missing, 5),
                                 ("single", record(300, names="a"), 1)):
            with self.subTest(name):
                browser.show(one, folder / name, settings="lang=en&theme=light&show=0:rms,components,power,frequency,impedance")
                self.assertEqual(kinds, browser.run("return document.querySelectorAll('[data-derived]').length"))
                browser.run("const {page} = zuView; page.derivedStrips.finish(); page.redraw(); page.strips.forEach((one) => { one.onScreen = true; });")
                browser.settle()
                if one.count:
                    browser.set_cursor(0, one.count - 1)
                self.assertNotRegex("".join(browser.texts("#groups")), "NaN|undefined|Infinity")
                self.assertEqual([], browser.log("browser"))

    def test_paper_has_what_was_never_seen(self):
        browser.open_page(self.long_page, "lang=en&theme=light&show=6:frequency")
        self.assertIsNone(browser.run("return zuView.page.derivations.calculator"))
        browser.paper()
        self.assertEqual([True, True], browser.run("return zuView.page.derivedStrips.channels.map((one) => one.isKnown)"))


def converted(recordings, out, name):
    """The record that a recording becomes."""
    zucmtr("convert", "--ini", recordings / "ZuDrv.ini", "--out", out, "--make-out", recordings / name)
    return next(out.glob("*.cfg"))


if __name__ == "__main__":
    run_tests()
