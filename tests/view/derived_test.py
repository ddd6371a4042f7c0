"""What the page derives in JavaScript against what the library computes in C++ (derivedvalues.cpp), at many cursors of records of many
kinds."""
import cmath
import functools
import json
import math
import os
import random
import subprocess
import unittest

from foreign import Channel, Foreign, fault, sampled, times
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

    def compare(self, path, lines="-", count=40, tolerance=EXACT, least=0.5):
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
                self.compare(converted(place, place / "comtrade", "Vostochnaya_fault.ZU"), place / "lines.ini", 30)

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


def converted(recordings, out, name):
    """The record that a recording becomes."""
    zucmtr("convert", "--ini", recordings / "ZuDrv.ini", "--out", out, "--make-out", recordings / name)
    return next(out.glob("*.cfg"))


if __name__ == "__main__":
    run_tests()
