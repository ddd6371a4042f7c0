"""A second record over the first: the program's choice, and what the page shows of it and where, against a second
computation from the samples that were written."""
import datetime
import json
import math
import random
import unittest

from foreign import MISSING, Channel, Foreign, sampled
from browser import until
from pages import browser, folder, run_tests, zucmtr
from reference import Reading

CONTROL = "\ue009"
START = datetime.datetime(2024, 2, 1, 10, 0, 0)


def later(seconds):
    return START + datetime.timedelta(seconds=seconds)


def waves(names, count, rate, units, seed, circuit="W1"):
    """Voltages and currents with a harmonic, noise and phases, in 16-bit codes."""
    source = random.Random(seed)
    channels = []
    for place, (name, unit) in enumerate(zip(names, units)):
        size = {"kV": 90.0, "V": 90e3, "A": 400.0, "kA": 0.4, "Hz": 50.0}[unit]
        values = [size * (math.sin(2 * math.pi * (50 * i / rate - place / 3)) + 0.1 * math.sin(2 * math.pi * 250 * i / rate)
                          + source.gauss(0, 0.01)) for i in range(count)]
        a = size / 20000
        channels.append(Channel(name, unit, a, 0.0, sampled("BINARY", a, 0.0, values), circuit=circuit))
    return channels


NAMES = ("Ua", "Ub", "Uc", "Ia")


def first(**settings):
    """Half a second at 1000 samples a second, the trigger after a tenth of it."""
    states = [("Start", "W1", [0] * 105 + [1] * 395), ("Quiet", "W1", [0] * 500)]
    return Foreign(waves(NAMES, 500, 1000, ("kV", "kV", "kV", "A"), 1), "BINARY", [(1000, 500)], start=START,
                   station="Station A", states=states, **settings)


def second(start=later(0.0372), rate=1600, names=NAMES, units=("V", "V", "V", "kA"), circuit="W1", **settings):
    """Half a second at another rate, in other units, from a little later on."""
    count = round(rate / 2)
    states = [("Trip", "W1", [0] * 100 + [1] * (count - 100))]
    settings = {"trigger": 0.0628, "station": "Station B", "states": states, **settings}
    return Foreign(waves(names, count, rate, units, 2, circuit), "BINARY", [(rate, count)], start=start, **settings)


def write(one, other, *options):
    """Writes a page of two records; returns what is said on standard error."""
    for record, name in ((one, "a.cfg"), (other, "b.cfg")):
        record.write(folder / name)
    return zucmtr("view", folder / "a.cfg", folder / "b.cfg", "-o", folder / "both.html", *options).stderr


def show(one, other, *options, settings="lang=en&theme=light"):
    said = write(one, other, *options)
    browser.open_page(folder / "both.html", settings)
    return said


def data(name, path=None):
    content = (path or folder / "both.html").read_text(encoding="utf-8")
    return content.split('id="%s">' % name, 1)[1].split("</script>", 1)[0]


def offset(one, other, shift=0.0):
    """Milliseconds from the first record's trigger to the second's first sample, on a page with this shift."""
    return ((other.start - one.start).total_seconds() - one.trigger) * 1000 + shift


def nearest(record, begin, time):
    """The sample of a record of one rate nearest to a time; None outside of it."""
    place = (time - begin) / 1000 * record.rates[0][0]
    sample = math.ceil(place - 0.5 - 1e-9)  # of two that are as near, the earlier one
    return sample if -0.5 - 1e-9 <= place <= record.count - 0.5 + 1e-9 else None


def shown_row(index):
    """[value, RMS, angle] at both cursors, as texts."""
    cells = browser.run("return [...document.querySelectorAll(`[data-channel='second-${arguments[0]}'] [class*=cursor]`)]"
                        ".map((cell) => cell.textContent)", index)
    return cells[:3], cells[3:]


def number(value):
    """As the page writes it."""
    if not math.isfinite(value):
        return "—"
    size = abs(value)
    text = "%.*f" % (0 if size >= 1000 else 1 if size >= 100 else 2 if size >= 10 else 3, value)
    return text.replace("-", "−") if float(text) else text.replace("-", "")


def set_shift(milliseconds):
    browser.run("const field = document.getElementById('shift'); field.value = arguments[0];"
                "field.dispatchEvent(new Event('change'))", milliseconds)
    browser.settle()


def click(selector):
    browser.run("document.querySelector(arguments[0]).click()", selector)
    browser.settle()


def close(one, other):
    """Whether two written numbers are the same but for the last digit."""
    if "—" in (one, other):
        return one == other
    decimals = len(other.partition(".")[2])
    return abs(float(one.replace("−", "-")) - float(other.replace("−", "-"))) < 1.01 * 10 ** -decimals


class Overlay(unittest.TestCase):
    def check_rows(self, one, other, shift, cursors):
        """The rows of the second record against its own samples. Its units are V and kA, the strips' kV and A."""
        begin = offset(one, other, shift)
        for pair in cursors:
            for cursor, sample in enumerate(pair):
                browser.set_cursor(cursor, sample)
            for index, scale in ((0, 1e-3), (2, 1e-3), (3, 1e3)):
                for cells, sample in zip(shown_row(index), pair):
                    own = nearest(other, begin, sample / one.rates[0][0] * 1000 - one.trigger * 1000)
                    if own is None:
                        self.assertEqual(["—", "—", "—"], cells)
                        continue
                    reading = Reading(other, other.channels[index], own)
                    self.assertTrue(close(cells[0], number(reading.value * scale)), (cells, reading.value, sample))
                    self.assertTrue(close(cells[1], number(reading.rms * scale)), (cells, reading.rms, sample))
                    turn = float(cells[2].rstrip("°")) - reading.angle if "°" in cells[2] else 0
                    self.assertLess(abs((turn + 180) % 360 - 180), 0.51)
                    self.assertEqual(math.isfinite(reading.angle), "°" in cells[2])

    def test_values_at_the_cursors_are_those_of_its_own_nearest_samples(self):
        one, other = first(), second()
        self.assertEqual("", show(one, other))
        source = random.Random(3)
        pairs = [(source.randrange(500), source.randrange(500)) for _ in range(8)] + [(0, 499), (37, 38)]
        self.check_rows(one, other, 0, pairs)
        self.assertEqual([], browser.log("browser"))

    def test_traces_and_changes_stand_at_their_times(self):
        one, other = first(), second()
        show(one, other)
        browser.run("zuView.page.frame.show(20, 60)")
        points = browser.run("const p = zuView.page; const c = p.strips[0].channels.find((one) => one.index === 'second-1');"
                             "return zuView.tracePoints(c, p.frame, {x: 10, w: 400}, (value) => value)")
        begin = offset(one, other)
        samples = [i for i in range(other.count) if 20 - 0.626 < begin + i * 0.625 < 60 + 0.626]
        self.assertEqual(len(samples), len(points) // 2)
        for place, sample in enumerate(samples):
            self.assertAlmostEqual(10 + (begin + sample * 0.625 - 20) * 10, points[2 * place], places=6)
            self.assertAlmostEqual(other.channels[1].value(sample) / 1000, points[2 * place + 1], places=6)
        browser.run("zuView.page.frame.showAll()")
        self.assertEqual([-100, 436.575], [round(t, 6) for t in browser.run(
            "const f = zuView.page.frame; return [f.start, f.end]")])
        spans = browser.run("const p = zuView.page; return zuView.trackSpans(p.second.record.states[0], p.frame,"
                            "{left: 0, width: 1000})")
        change = offset(one, other) + 100 * 0.625
        self.assertAlmostEqual((change + 100) / (436.575 + 100) * 1000, spans[0][0], places=6)
        self.assertAlmostEqual(1000, spans[0][1], places=6)
        self.assertEqual(["Trip", "Start"], browser.texts(".row.state .name"))  # in the order of their changes
        own = browser.run("const p = zuView.page; return zuView.trackSpans(p.states[0], p.frame, {left: 0, width: 1000})")
        self.assertAlmostEqual((399 + 100) / (436.575 + 100) * 1000, own[0][1], places=6)  # no further than its samples
        set_shift("6")
        self.assertEqual(["Start", "Trip"], browser.texts(".row.state .name"))

    def test_states_at_the_cursors_are_its_own(self):
        one, other = first(), second()
        show(one, other)
        for sample in (20, 99, 100, 139, 140, 499):
            browser.set_cursor(0, sample)
            own = nearest(other, offset(one, other), sample - 100)
            cells = browser.texts("[data-state='second-0'] .value")
            self.assertEqual("—" if own is None else str(other.states[0][2][own]), cells[0])

    def test_a_shift_moves_it_and_is_kept_in_the_address(self):
        one, other = first(), second()
        show(one, other)
        set_shift("12.34")
        self.assertEqual("12.34", browser.run("return new URLSearchParams(location.hash.slice(1)).get('shift')"))
        self.check_rows(one, other, 12.34, [(160, 300)])
        address = browser.run("return location.hash.slice(1)")
        browser.open_page(folder / "both.html", address)
        self.check_rows(one, other, 12.34, [(161, 301)])
        for selector, shift in (("secondOnStep", 12.965), ("secondOn", 32.965), ("secondBackStep", 32.34), ("secondBack", 12.34)):
            click("[data-step=%s]" % selector)
            self.assertEqual(shift, round(browser.run("return zuView.page.second.shift"), 6))
        click("[data-align=time]")
        self.assertEqual([None, "0"], browser.run(
            "return [new URLSearchParams(location.hash.slice(1)).get('shift'), document.getElementById('shift').value]"))
        self.check_rows(one, other, 0, [(162, 302)])

    def test_dragging_with_control_shifts_it_and_leaves_the_span(self):
        show(first(), second())
        before = browser.run("const f = zuView.page.frame; return [f.from, f.to]")
        left, top, width = browser.run("const box = document.querySelector('.strip.analog .plot').getBoundingClientRect();"
                                       "const area = zuView.page.strips[0].chart.getArea();"
                                       "return [box.left + area.x, box.top + area.y, area.w]")
        x = round(left + width * 0.7)
        browser.mouse(("move", x, top + 20), ("down", 0), ("move", x - 30, top + 20), ("move", x - 50, top + 20), ("up", 0),
                      held=CONTROL)
        self.assertAlmostEqual(-50 / width * (before[1] - before[0]), browser.run("return zuView.page.second.shift"), places=6)
        self.assertEqual(before, browser.run("const f = zuView.page.frame; return [f.from, f.to]"))
        kept = float(browser.run("return new URLSearchParams(location.hash.slice(1)).get('shift')"))
        self.assertEqual(round(browser.run("return zuView.page.second.shift"), 6), kept)

    def test_time_zones_count_where_both_records_have_them(self):
        for zone, other_zone, hours, in_utc in (("+3", "+5h30", 2.5, True), ("-3h30", "0", 3.5, True), ("+3", "x", 0, False)):
            one = first(zone=zone)
            other = second(start=later(0.05 + hours * 3600), zone=other_zone, trigger=0.1)
            self.assertEqual("", write(one, other))
            overlay = json.loads(data("second-data"))["overlay"]
            self.assertEqual((50, in_utc), (overlay["between"], overlay["inUtc"]))
        old = second(start=later(0.05), trigger=0.1, revision=1999)
        write(first(zone="+3"), old)
        self.assertFalse(json.loads(data("second-data"))["overlay"]["inUtc"])

    def test_what_matches_nothing_stands_below_under_the_name_of_its_station(self):
        other = second(names=("Ua", "Ub", "f", "I9"), units=("V", "V", "Hz", "A"))
        show(first(), other)
        self.assertEqual(["W1", "W1 — Station B, Other recorder"], browser.texts("#groups h3"))
        strips = browser.run("return zuView.page.strips.map((strip) => strip.channels.map((one) => one.index))")
        self.assertEqual([[0, 1, 2, "second-0", "second-1"], [3], ["second-2"], ["second-3"]], strips)

    def test_circuits_of_other_names_match_by_their_channels_or_by_the_fault(self):
        show(first(), second(circuit="Bay 7"))
        self.assertEqual([0, 1, 2, "second-0", "second-1", "second-2"],
                         browser.run("return zuView.page.strips[0].channels.map((one) => one.index)"))
        pairs = browser.run("""const record = (circuits, faulted, channels) => ({ groups: new Map(circuits.map((one) => [one, []])), analog: channels,
                data: { answer: { faulted, circuits: circuits.map((name) => ({ name })) } } });
            const channels = (circuit, ...names) => names.map((name) => ({ name, circuit }));
            return [...zuView.matchCircuits(record(['W1', 'W2', 'W3'], 1, [...channels('W3', 'x', 'y'), ...channels('W1', 'z')]),
                record(['w1 ', 'Q2', 'Q3'], 1, [...channels('Q3', 'X', 'Y', 'z')]))];""")
        self.assertEqual([["W1", "w1 "], ["W3", "Q3"], ["W2", "Q2"]], pairs)

    def test_a_unit_of_another_kind_is_never_laid_over(self):
        show(first(), second(units=("Hz", "V", "V", "Hz")))
        strips = browser.run("return zuView.page.strips.map((strip) => strip.channels.map((one) => one.index))")
        self.assertEqual([[0, 1, 2, "second-1", "second-2"], [3], ["second-0", "second-3"]], strips)

    def test_the_user_chooses_what_lies_over_a_strip(self):
        other = second(circuit="Other bay", names=("UX", "UY", "UZ", "IX"))
        show(first(), other)
        indices = "return zuView.page.strips[0].channels.map((one) => one.index)"
        self.assertEqual([0, 1, 2], browser.run(indices))
        choose = "const s = document.querySelector('.over select'); s.selectedIndex = arguments[0]; s.dispatchEvent(new Event('change'))"
        self.assertEqual(["nothing", "Other bay"], browser.run("return [...document.querySelector('.over select').options].map((o) => o.text)"))
        browser.run(choose, 1)
        browser.settle()
        self.assertEqual([0, 1, 2, "second-0", "second-1", "second-2"], browser.run(indices))
        self.assertEqual("kV", browser.text("[data-channel=second-0] .unit"))
        browser.run(choose, 0)
        browser.settle()
        self.assertEqual([0, 1, 2], browser.run(indices))

    def test_the_scale_of_a_strip_takes_in_both(self):
        other = second()
        other.channels[0].a *= 3
        show(first(), other)
        high = browser.run("return zuView.page.strips[0].valueRange(false)[1]")
        largest = max(other.channels[0].value(i) for i in range(other.count)) / 1000
        self.assertLess(largest, high)
        self.assertGreater(1.2 * largest, high)

    def test_without_a_trigger_or_samples_it_is_said_and_nothing_breaks(self):
        said = show(first(), second(trigger=30.0))
        self.assertIn("b.cfg: the trigger time is outside the record's samples", said)
        self.assertTrue(browser.run("return document.querySelector('[data-align=triggers]').disabled"))
        self.assertIn("Second record, b.cfg: The trigger time,", browser.text("#notices"))
        self.check_rows(first(), second(trigger=30.0), 0, [(160, 300)])
        empty = second()
        empty.count = 0
        self.assertIn("announces 800 samples, the data have 0", show(first(), empty))
        self.assertIn("Second record, b.cfg: It has no samples.", browser.text("#notices"))
        self.assertEqual(4, browser.run("return document.querySelectorAll('.row:not(.state)').length"))
        show(empty, first())
        self.assertEqual([], browser.log("browser"))

    def test_missing_values_of_it_are_told_as_those_of_the_first(self):
        other = second()
        other.channels[1].codes[300:340] = [MISSING] * 40
        self.assertIn("b.cfg: missing analog values: 40 (channels: 1)", show(first(), other, settings="lang=ru&theme=dark"))
        self.assertEqual(["Вторая запись, b.cfg: Пропущено аналоговых значений: 40 (каналов: 1). На осциллограммах там разрывы, а для "
                          "периода с разрывом нет действующего значения и угла."], browser.texts("#notices p"))
        browser.set_cursor(0, round(137.2 + 320 * 0.625 - 100))
        self.assertEqual(["—", "—", "—"], shown_row(1)[0])

    def test_days_apart_it_is_out_of_sight_until_the_triggers_are_aligned(self):
        one, other = first(), second(start=later(3 * 86400 + 0.5), trigger=0.1)
        said = show(one, other)
        self.assertEqual("zucmtr: %s: it lies too far from '%s' in time to be seen over it; --align trigger lays trigger over "
                         "trigger\n" % (folder / "b.cfg", folder / "a.cfg"), said)
        self.assertEqual(["Second record, b.cfg: It lies 3 d 00:00:00 from the first record, too far to be seen with it. "
                          "Align the triggers, or shift it."], browser.texts("#notices p"))
        ends = "const p = zuView.page; return [p.frame.start, p.frame.end, p.strips[0].channels.length, p.tracks.strip.rows.length]"
        self.assertEqual([-100, 399, 3, 1], [round(value, 6) for value in browser.run(ends)])
        click("[data-align=triggers]")
        self.assertEqual([-100, 399.375, 6, 2], [round(value, 6) for value in browser.run(ends)])
        self.assertEqual("", browser.text("#notices"))
        shift = -(3 * 86400 + 0.5) * 1000
        self.check_rows(one, other, shift, [(160, 300)])
        self.assertEqual("", show(one, other, "--align", "trigger"))
        self.check_rows(one, other, shift, [(161, 301)])
        self.assertIsNone(browser.run("return new URLSearchParams(location.hash.slice(1)).get('shift')"))
        click("[data-align=time]")
        self.assertEqual([-100, 399, 3, 1], [round(value, 6) for value in browser.run(ends)])
        self.assertEqual([], browser.log("browser"))


class Faults(unittest.TestCase):
    """Two simulated recordings of one fault."""

    @classmethod
    def setUpClass(cls):
        for name, distance in (("near", "30"), ("far", "70")):
            zucmtr("sample", "--out", folder / name, "--fault", "BG", "--distance", distance)
        cls.files = [next((folder / name).glob("*.ZU")) for name in ("near", "far")]

    def test_sentences_and_sheets_of_both_are_on_the_page(self):
        zucmtr("view", *self.files, "-o", folder / "both.html")
        browser.open(folder / "both.html", "lang=en&theme=light&sheet=answerSheet")
        until(lambda: browser.run("return document.querySelector('.second-answer') !== null"), "the sentences")
        expected = json.loads(data("second-data"))["answer"]["sentences"]
        paragraphs = browser.texts(".second-answer p:not(.quiet)")
        self.assertEqual(expected["en"], paragraphs)
        click("[data-language=ru]")
        self.assertEqual(expected["ru"], browser.texts(".second-answer p:not(.quiet)"))
        self.assertEqual(1, browser.run("return document.querySelectorAll('.second-answer').length"))
        self.assertIn(self.files[1].name, browser.text("#recordSheet .second-sheet"))

    def test_onset_is_laid_over_onset(self):
        zucmtr("view", *self.files, "-o", folder / "both.html")
        browser.open_page(folder / "both.html")
        overlay = json.loads(data("second-data"))["overlay"]
        onsets = [json.loads(zucmtr("events", "--json", file).stdout)["fault"]["onset"] for file in self.files]
        click("[data-align=onsets]")
        self.assertAlmostEqual((onsets[0] - onsets[1]) * 1000 - overlay["between"],
                               browser.run("return zuView.page.second.shift"), places=6)

    def test_data_of_the_first_are_those_of_a_page_of_its_own(self):
        zucmtr("view", *self.files, "-o", folder / "both.html")
        zucmtr("view", self.files[0], "-o", folder / "alone.html")
        alone = (folder / "alone.html").read_text(encoding="utf-8")
        self.assertNotIn("second-data\">", alone.split("<script id=", 1)[0])
        for name in ("data", "samples0", "samples3"):
            self.assertEqual(data(name, folder / "alone.html"), data(name))
        browser.open_page(folder / "alone.html")
        self.assertTrue(browser.run("return document.getElementById('second').hidden && zuView.page.second === null"))


class Files(unittest.TestCase):
    """What the command does; no browser is used."""

    def test_a_window_is_around_the_same_moment_in_both(self):
        one, other = first(), second(start=later(-0.1), trigger=0.35)
        write(one, other, "--window", "0.15")
        held, of_second = json.loads(data("data")), json.loads(data("second-data"))
        self.assertEqual((50, 151), (held["first"], held["count"]))
        # The first one's trigger is 200 ms after the start of the second.
        self.assertEqual((round(0.15 * 1600), round(0.15 * 1600) + 1), (of_second["first"], of_second["count"]))
        write(one, other, "--window", "0.15", "--align", "trigger")
        self.assertEqual(round(0.3 * 1600), json.loads(data("second-data"))["first"])
        apart = second(start=later(86400), trigger=0.35)
        self.assertIn("b.cfg: the page holds 241 of 800 samples", write(one, apart, "--window", "0.15"))
        self.assertEqual(round(0.3 * 1600), json.loads(data("second-data"))["first"])

    def test_both_share_the_room_for_samples(self):
        large = folder / "large.cfg"
        channels, count = 4000, 5000  # 40 MB
        lines = ["S,D,2013", "%d,%dA,0D" % (channels, channels)]
        lines += ["%d,I%d,,,A,1,0,0,-9,9,1,1,P" % (number, number) for number in range(1, channels + 1)]
        lines += ["50", "1", "1000,%d" % count, "01/02/2024,00:00:00.000000", "01/02/2024,00:00:02.000000", "BINARY", "1",
                  "0,0", "0,0"]
        large.write_text("\n".join(lines) + "\n")
        large.with_suffix(".dat").write_bytes(bytes(8 + 2 * channels) * count)
        fitting = 32 * 1024 * 1024 // (2 * channels + 1)
        said = zucmtr("view", large, large, "-o", folder / "large.html").stderr.splitlines()
        self.assertEqual(["large.html: the page holds %d of 5000 samples" % fitting, "large.cfg: the page holds %d of 5000 samples" % fitting],
                         [line.split("/")[-1].split(" around")[0] for line in said])

    def test_pictures_show_the_first_record_alone(self):
        write(first(), second())
        for path in ("a.svg", "alone.svg"):
            files = [folder / "a.cfg"] + ([folder / "b.cfg"] if path == "a.svg" else [])
            said = zucmtr("view", *files, "--svg", folder / path).stderr
            self.assertEqual("zucmtr: %s: a picture shows the first record alone; -o writes a page with both\n" % (folder / "b.cfg")
                             if len(files) > 1 else "", said)
        self.assertEqual((folder / "alone.svg").read_bytes(), (folder / "a.svg").read_bytes())

    def test_each_finds_the_ini_file_beside_it_or_has_a_section_of_its_own(self):
        for name in ("one", "two"):
            zucmtr("sample", "--out", folder / name)
        ini = folder / "two" / "ZuDrv.ini"
        text = ini.read_text(encoding="utf-8")
        ini.write_text(text.replace("[Vostochnaya]", "[Zapadnaya]").replace("РАС-1", "РАС-2"), encoding="utf-8")
        files = [folder / name / "Vostochnaya_000123.ZU" for name in ("one", "two")]
        zucmtr("view", *files, "-o", folder / "both.html")
        self.assertEqual(["РАС-1", "РАС-2"], [json.loads(data(name))["identity"]["device"] for name in ("data", "second-data")])
        both = folder / "both.ini"
        both.write_text(text + "\n" + text.split("[Vostochnaya]", 1)[1].join(("[Zapadnaya]", "")).replace("РАС-1", "РАС-3"), encoding="utf-8")
        zucmtr("view", *files, "--ini", both, "--device", "Vostochnaya", "--second-device", "Zapadnaya", "-o", folder / "both.html")
        self.assertEqual("РАС-3", json.loads(data("second-data"))["identity"]["device"])
        said = zucmtr("view", *files, "--device", "Vostochnaya", code=2).stderr
        self.assertIn("%s: --second-device: '%s' has no section [Vostochnaya]" % (files[1], ini), said)

    def test_no_output_replaces_the_second_record(self):
        write(first(), second())
        before = (folder / "b.dat").read_bytes()
        said = zucmtr("view", folder / "a.cfg", folder / "b.cfg", "-o", folder / "b.dat", code=2).stderr
        self.assertIn("b.dat", said)
        self.assertEqual(before, (folder / "b.dat").read_bytes())


if __name__ == "__main__":
    run_tests()
