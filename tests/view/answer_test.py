"""The first sheet of the page: what happened, against `zucmtr events --json`, what is true of the simulated fault,
and the record's bytes."""
import json
import math
import re
import unittest

from browser import until
from faults import ANSWER, Fault, again, duration, evolving, quiet, ranged, run
from pages import browser, folder, run_tests, zucmtr
from records import Written

ENTER, TAB = "\ue007", "\ue004"
CIRCUIT = "ВЛ 110 кВ Восточная"
METHODS = {"reactance": "Reactance", "takagi": "Takagi", "modifiedTakagi": "Modified Takagi"}


def opened(*faults):
    """Each with its page open."""
    return (fault.open() for fault in faults)


def phases(kind):
    return "–".join([*kind.rstrip("G"), *(["earth"] if kind.endswith("G") else [])])


def cells(selector):
    """The texts of a table's rows, without the line of heads."""
    return browser.run("return [...document.querySelectorAll(arguments[0] + ' tbody tr')].map((row) => "
                       "[...row.cells].map((cell) => cell.textContent))", "#answerSheet " + selector)


def facts():
    return browser.run("return Object.fromEntries([...document.querySelectorAll('.facts > div')].map((fact) => "
                       "[fact.dataset.fact, [fact.children[1].textContent, fact.children[2].textContent]]))")


def number(value, decimals):
    text = "%.*f" % (decimals, value)
    return (text.lstrip("-") if float(text) == 0 else text).replace("-", "−")


class AnswerSheet(unittest.TestCase):
    def test_page_opens_on_it_and_says_the_sentences(self):
        for fault in (again, evolving, ranged, quiet):
            browser.open(fault.page, "lang=en")
            until(lambda: browser.texts("#answerSheet h2"), "the sheet")
            self.assertEqual(fault.summary["text"], browser.texts("#answerSheet h2, #answerSheet .sentences p"))
            self.assertEqual("What happened", browser.text("[aria-selected=true]"))
            browser.run("document.querySelector('[data-language=ru]').click()")
            self.assertEqual(fault.russian, browser.texts("#answerSheet h2, #answerSheet .sentences p"))

    def test_facts_are_those_of_the_summary_and_near_the_truth(self):
        for fault in opened(again, evolving, ranged):
            found, operating, shown = fault.summary["fault"], fault.summary["operating"], facts()
            best = found["distance"][found["best"]]
            self.assertEqual(phases(found["kind"]), shown["kind"][0])
            self.assertEqual("%.1f km" % best["km"], shown["distance"][0])
            self.assertEqual("%.1f Ω" % best["resistance"], shown["resistance"][0])
            cleared = found["clearing"] - found["onset"]
            self.assertEqual([duration(cleared), "periods: %.1f" % (cleared * fault.summary["frequency"])], shown["cleared"])
            self.assertEqual([duration(operating["trip"]), "after the onset"], shown["trip"])
            truth = fault.truth["fault"]
            self.assertEqual(phases(truth["kind"]), shown["kind"][0])
            if found["range"]:
                self.assertEqual("between %.1f and %.1f %%" % (found["range"]["from"], found["range"]["to"]), shown["distance"][1])
            else:
                self.assertAlmostEqual(truth["distance"]["km"], float(shown["distance"][0].split()[0]), delta=0.4)
                self.assertEqual("%.1f %% of 60 km" % best["percent"], shown["distance"][1])
        self.assertEqual("at first A–earth", (evolving.open(), facts())[1]["kind"][1])
        self.assertEqual(["unsuccessful", "after 450 ms"], (again.open(), facts())[1]["reclosed"])

    def test_current_is_the_largest_of_the_faulted_phases(self):
        again.open()
        during = again.summary["phasors"]["during"]
        largest = max((during["I%s1 %s" % (phase, CIRCUIT)]["magnitude"], phase) for phase in "bc")
        self.assertEqual(["%.3f кА" % (largest[0] / 1000), "phase %s, RMS" % largest[1].upper()], facts()["current"])

    def test_distances_by_method_with_the_best_marked_and_the_range(self):
        for fault in opened(again, ranged):
            found = fault.summary["fault"]
            rows = cells(".distances")
            for method, one in found["distance"].items():
                resistance = "—" if one["resistance"] is None else number(one["resistance"], 2)
                mark = "best" if method == found["best"] else ""
                self.assertIn([METHODS[method] + mark, number(one["km"], 2), number(one["percent"], 1), resistance], rows)
            self.assertEqual(len(found["distance"]) + bool(found["range"]), len(rows))
        found = ranged.summary["fault"]
        ends = [found["range"][key] for key in ("from", "to")]
        self.assertEqual(["Range", " … ".join(number(end * ranged.length / 100, 2) for end in ends),
                          " … ".join(number(end, 1) for end in ends), ""], rows[-1])

    def test_parts_of_a_fault_that_evolves_or_comes_back(self):
        for fault, note in ((evolving, ""), (again, " after reclosing")):
            fault.open()
            found = fault.summary["fault"]
            expected = []
            for place, part in enumerate(found["parts"]):
                best = part["distance"][part["best"]]
                expected.append([str(place + 1), phases(part["kind"]) + (note if place else ""), duration(part["onset"] - found["onset"]),
                                 duration(part["clearing"] - part["onset"]), number(best["km"], 1), number(best["percent"], 1)])
            self.assertEqual(2, len(expected))
            self.assertEqual(expected, cells(".parts"))
        ranged.open()
        self.assertEqual([], cells(".parts"))

    def test_operating_times_are_bars_to_scale(self):
        for fault in opened(again, evolving):
            operating, found = fault.summary["operating"], fault.summary["fault"]
            rows = browser.run("return Object.fromEntries([...document.querySelectorAll('.operatingChart [data-row]')].map((row) => "
                               "[row.dataset.row, [[...row.querySelectorAll('rect')].map((bar) => [Number(bar.getAttribute('x')), "
                               "Number(bar.getAttribute('width'))]), [...row.querySelectorAll('.number')].map((text) => text.textContent)]]))")
            (origin, width), = rows["trip"][0]
            scale = width / operating["trip"]
            for key in ("start", "trip", "breaker"):
                self.assertEqual([duration(operating[key])], rows[key][1])
                self.assertAlmostEqual(origin, rows[key][0][0][0], delta=0.01)
                self.assertAlmostEqual(operating[key] * scale, rows[key][0][0][1], delta=0.01)
            self.assertEqual(duration(operating["clearing"]), rows["fault"][1][0])
            self.assertAlmostEqual(operating["clearing"] * scale, rows["fault"][0][0][1], delta=0.01)
            if fault is not again:
                self.assertNotIn("deadTime", rows)
                continue
            (left, width), = rows["deadTime"][0]
            self.assertAlmostEqual(origin + operating["breaker"] * scale, left, delta=0.01)
            self.assertAlmostEqual(operating["deadTime"] * scale, width, delta=0.01)
            self.assertEqual(["450 ms, unsuccessful"], rows["deadTime"][1])
            second = found["parts"][1]
            self.assertAlmostEqual(origin + (second["onset"] - found["onset"]) * scale, rows["fault"][0][1][0], delta=0.01)
            self.assertEqual(duration(second["clearing"] - second["onset"]), rows["fault"][1][1])

    def test_magnitudes_of_the_faulted_circuit_first_and_the_others_folded(self):
        again.open()
        phasors = again.summary["phasors"]
        units = {"кВ": "В", "кА": "А"}
        rows = cells(".magnitudes")
        self.assertEqual(["Ua", "Ub", "Uc", "3U0", "Ia1", "Ib1", "Ic1", "3I01"], [row[0] for row in rows])
        for name, unit, *values in rows:
            for moment, magnitude, angle in zip(("before", "during", "after"), values[::2], values[1::2]):
                expected = phasors[moment]["%s %s" % (name, CIRCUIT)]
                self.assertEqual(units[unit], expected["unit"])
                self.assertAlmostEqual(expected["magnitude"] / 1000, float(magnitude), delta=0.5 * 10 ** -len(magnitude.split(".")[1]) + 1e-9)
                if float(magnitude) == 0:
                    self.assertEqual("—", angle)
                else:
                    self.assertAlmostEqual(0, (expected["angle"] - float(angle.rstrip("°")) + 180) % 360 - 180, delta=0.501)
        browser.run("document.querySelector('.magnitudeCard details').open = true")
        browser.settle()
        self.assertEqual(len(phasors["before"]), len(cells(".magnitudes")))

    def test_headings_and_texts_in_russian(self):
        again.open("lang=ru&theme=dark&sheet=answerSheet")
        self.assertEqual(["Место повреждения", "Расстояние по методам", "Развитие КЗ", "Времена срабатывания от начала КЗ",
                          "Величины до КЗ, во время и после", "События"], browser.texts("#answerSheet h3"))
        found = again.summary["fault"]
        self.assertEqual(["%.1f км" % found["distance"]["takagi"]["km"], "%.1f %% от 60 км" % found["distance"]["takagi"]["percent"]],
                         [text.replace(",", ".") for text in facts()["distance"]])
        self.assertEqual("B–C–земля", facts()["kind"][0])
        event = again.summary["events"][1]
        self.assertEqual([event["at"][11:26].replace(".", ","), "+25,000", "25,000", CIRCUIT, "Откл. от защит", "отключение", "1"], cells(".events")[1])
        text = browser.run("return document.getElementById('answerSheet').innerText")
        self.assertIsNone(re.search(r"\d\.\d(?!\S*-\d)", text), text)


class FaultDiagram(unittest.TestCase):
    def attributes(self, selector, *names):
        return browser.run("return [...document.querySelectorAll('.faultDiagram ' + arguments[0])].map((one) => "
                           "arguments[1].map((name) => one.getAttribute(name)))", selector, names)

    def ends(self):
        """Where the line starts and ends, pixels."""
        (path,), *_ = self.attributes(".conductor", "d")
        return [float(text) for text in re.match(r"M(\S+) \S+H(\S+)", path).groups()]

    def test_fault_is_where_it_was_found_on_the_phases_that_take_part(self):
        for fault in opened(again, ranged):
            found = fault.summary["fault"]
            best = found["distance"][found["best"]]
            start, end = self.ends()
            tip = float(re.match(r"M(\S+) ", self.attributes(".pointer", "d")[0][0]).group(1))
            self.assertAlmostEqual(best["percent"] / 100, (tip - start) / (end - start), places=6)
            dots = self.attributes(".fault circle", "cx", "cy")
            self.assertAlmostEqual(tip, sum(float(x) for x, _ in dots) / len(dots), places=3)
            conductors = [path.split()[1].split("H")[0] for path, in self.attributes(".conductor", "d")]
            self.assertEqual([conductors["ABC".index(phase)] for phase in found["kind"].rstrip("G")], [y for _, y in dots])
            self.assertEqual("%.1f Ω" % best["resistance"], browser.text("[data-value=resistance]"))
            self.assertEqual(3, len(self.attributes(".pole.opened", "x")))
            self.assertIn(duration(fault.summary["operating"]["breaker"]), "".join(browser.texts(".faultDiagram .note")))
        self.assertEqual("%.1f km · %.1f %% (between %.1f and %.1f %%)" % (best["km"], best["percent"], found["range"]["from"], found["range"]["to"]),
                         browser.text("[data-value=distance]"))
        (left, width), = self.attributes(".range", "x", "width")
        self.assertAlmostEqual(found["range"]["from"] / 100, (float(left) - start) / (end - start), places=6)
        self.assertAlmostEqual((found["range"]["to"] - found["range"]["from"]) / 100, float(width) / (end - start), places=6)

    def drawn(self, **changed):
        """The texts of a diagram of the reclosed fault with something else about it, and whether it has a scale."""
        return browser.run("const fault = {...zuView.page.data.answer.summary.fault, ...arguments[0]};"
                           "const svg = zuView.faultDiagram({fault, circuit: 'W1', line: fault.distance ? {length: 60} : null, breaker: null}, 700);"
                           "return [[...svg.querySelectorAll('text')].map((text) => text.textContent), svg.querySelectorAll('.scale').length > 0,"
                           "Number(svg.querySelector('.fault circle').getAttribute('cx'))]", changed)

    def test_without_a_distance_it_says_what_is_missing(self):
        again.open()
        lacks = {"lineData": "the data of the line are missing (lines.ini)", "voltages": "the voltages of the circuit are missing",
                 "currents": "currents are missing", "tooShort": "the fault is too short", "saturated": "the current transformers were saturated"}
        for lack, text in lacks.items():
            texts, has_scale, _ = self.drawn(distance=None, best=None, range=None, lack=lack)
            self.assertEqual(["somewhere on the line", "No distance: %s." % text], texts[-2:])
            self.assertFalse(has_scale)

    def test_a_fault_behind_the_recorder_is_behind_the_busbar(self):
        again.open()
        texts, has_scale, place = self.drawn(direction="reverse")
        self.assertEqual(("behind the busbar", False), (texts[-1], has_scale))
        self.assertLess(place, 236)

    def test_none_without_a_fault(self):
        quiet.open()
        self.assertEqual([], browser.texts(".faultDiagram, .operatingChart, .facts, .distances"))
        self.assertGreater(len(cells(".magnitudes")), 0)


class EventTable(unittest.TestCase):
    KINDS = {"other": "—"}

    def expected(self, event):
        state = str(event["state"])
        if event["kind"] == "breaker":
            state += " closed" if event["active"] else " open"
        return [event["at"][11:26], ("+" if event["time"] >= 0 else "") + number(event["time"] * 1000, 3),
                "" if event["since"] is None else number(event["since"] * 1000, 3), event["circuit"],
                event["name"].replace(CIRCUIT, "").strip(), self.KINDS.get(event["kind"], event["kind"]), state]

    def test_table_has_every_event(self):
        again.open()
        self.assertEqual([self.expected(event) for event in again.summary["events"]], cells(".events"))

    def changes(self):
        """Samples at which discrete channels change, from the bytes of the record: [(sample, number of the channel)]."""
        out = folder / "again-record"
        out.mkdir(exist_ok=True)
        ini = again.recording.parent / "ZuDrv.ini"
        run("convert", "--ini", ini, "--defaults", "Default", "--out", out, again.recording)
        configuration = next(out.glob("*.cfg"))
        analog = int(configuration.read_text(encoding="utf-8").splitlines()[1].split(",")[1].rstrip("A"))
        rows = [line.split(",")[2 + analog:] for line in configuration.with_suffix(".dat").read_text().split()]
        return [(sample, number + 1) for sample in range(1, len(rows)) for number in range(len(rows[0]))
                if rows[sample][number] != rows[sample - 1][number]]

    def test_a_click_moves_cursor_1_to_the_very_sample_and_shows_it(self):
        again.open()
        changes = self.changes()
        self.assertEqual(len(changes), len(again.summary["events"]))
        for place in (0, 3, 9, len(changes) - 1):
            browser.run("zuView.page.openSheet('answerSheet')")
            browser.run("document.querySelector(`.events [data-event='${arguments[0]}'] td:nth-child(5)`).click()", place)
            browser.settle()
            sample, opened, inside, shown = browser.run(
                "const p = zuView.page; const t = p.cursors.time(0); return [p.cursors.samples[0], p.opened, t >= p.frame.from && t <= p.frame.to,"
                "!document.querySelector('.line.first').hidden]")
            self.assertEqual((changes[place][0], "oscillogram", True, True), (sample, opened, inside, shown))
            self.assertEqual(changes[place][1], again.summary["events"][place]["channel"])
            span = browser.run("const f = zuView.page.frame; return f.to - f.from")
            self.assertAlmostEqual(240, span, places=6)

    def test_the_keyboard_does_the_same(self):
        again.open()
        browser.run("document.querySelector('.events [data-event=\"1\"] button').focus()")
        browser.press(TAB)
        browser.press(ENTER)
        self.assertEqual([self.changes()[2][0], "oscillogram"], browser.run("const p = zuView.page; return [p.cursors.samples[0], p.opened]"))

    def test_a_moment_that_the_page_does_not_hold_cannot_be_chosen(self):
        short = Fault("short", "--fault", "AG", window=("--window", "0.09")).open()
        held = browser.run("return [...document.querySelectorAll('.events tbody tr')].map((row) => row.querySelector('button') !== null)")
        first, last = browser.run("const a = zuView.page.axis; return [a.timeOf(0), a.timeOf(a.count - 1)]")
        self.assertEqual([first <= event["time"] * 1000 + 1e-3 and event["time"] * 1000 <= last + 1e-3 for event in short.summary["events"]], held)
        self.assertTrue(any(held) and not all(held))

    TABLE = """const answer = {...zuView.page.data.answer}; const [circuits, leftOut] = arguments;
        answer.summary = {...answer.summary, eventsLeftOut: leftOut, events: answer.summary.events.map((event, place) =>
            ({...event, circuit: circuits[place % circuits.length]}))};
        window.table = new zuView.EventTable(answer, zuView.page.data.count, () => {});
        table.build(); document.body.append(table.tools, table.element);"""

    def rows(self):
        return browser.run("return [...table.table.tBodies[0].rows].map((row) => row.cells[3].textContent)")

    def test_only_those_of_the_faulted_circuit_on_request(self):
        again.open()
        count = len(again.summary["events"])
        browser.run(self.TABLE, [CIRCUIT, "W2", "W2"], 0)
        self.assertEqual(count, len(self.rows()))
        self.assertEqual("only " + CIRCUIT, browser.run("return table.tools.querySelector('label').textContent"))
        own = -(-count // 3)
        for expected, listed in (([CIRCUIT] * own, "%d of %d" % (own, count)), (([CIRCUIT, "W2", "W2"] * count)[:count], "")):
            browser.run("table.tools.querySelector('input').click()")
            self.assertEqual(expected, self.rows())
            self.assertEqual(listed, browser.run("return table.tools.querySelector('.listed').textContent"))
        browser.run(self.TABLE, [CIRCUIT], 0)
        self.assertIsNone(browser.run("return table.tools.querySelector('input')"))

    def test_changes_that_are_not_listed_are_told(self):
        again.open()
        browser.run(self.TABLE, [CIRCUIT], 1234)
        self.assertEqual("Further changes, not listed: 1234", browser.run("return table.element.querySelector('.leftOut:not([hidden])').textContent"))
        self.assertIsNone(browser.run("return document.querySelector('#answerSheet .leftOut:not([hidden])')"))

    def test_a_long_list_is_shown_piece_by_piece_and_bounce_is_named(self):
        states = [("S%d" % one, "W1", [(i // (10 + one)) % 2 for i in range(6000)]) for one in range(4)]
        states.append(("Bouncing", "W1", [0] * 3000 + [1, 0] + [1] * 2998))
        states.append(("Pulse", "W1", [0] * 3000 + [1, 0, 1] + [0] * 2997))
        Written(folder / "long.cfg", [("Ua", "W1", "kV", 1.0, 0.0, [0] * 6000)], states)
        run("view", folder / "long.cfg")
        browser.open_page(folder / "long.html", ANSWER)
        events = json.loads(run("events", "--json", folder / "long.cfg"))["events"]
        self.assertEqual(6 + sum((5999 // (10 + one)) for one in range(4)) - 4, len(events))
        self.assertEqual(200, len(cells(".events")))
        self.assertEqual("200 of %d" % len(events), browser.text(".eventCard .listed"))
        self.assertEqual("Show 1000 more", browser.text(".eventCard .more"))
        browser.run("document.querySelector('.eventCard .more').click()")
        self.assertEqual("Show %d more" % (len(events) - 1200), browser.text(".eventCard .more"))
        browser.run("document.querySelector('.eventCard .more').click()")
        rows = cells(".events")
        self.assertEqual([event["name"] for event in events], [row[4] for row in rows])
        self.assertEqual({"Bouncing": "1 (bounce, 3 changes)", "Pulse": "0 (pulse, 4 changes)"},
                         {row[4]: row[6] for row in rows if not row[4].startswith("S")})
        self.assertTrue(browser.run("return document.querySelector('.eventCard .more').hidden"))


class AnyRecord(unittest.TestCase):
    def test_every_record_reads_well(self):
        sine = [round(1000 * math.sin(i * math.pi / 10)) for i in range(400)]
        step = [int(100 < i < 200) for i in range(400)]
        records = {
            "one": ([("Ua", "", "kV", 0.01, 0.0, sine)], []),
            "states": ([], [("Protection start", "W1", step)]),
            "circuitless": ([(name, "", unit, 0.01, 0.0, sine) for name, unit in (("Ua", "kV"), ("Ia", "A"), ("Ib", "A"), ("Ic", "A"))], []),
            "hostile": ([(name + " <i>x</i>", "<b>W1</b>", "A", 0.01, 0.0, sine) for name in ("Ia", "Ib", "Ic")], [("<u>S</u>", "<b>W1</b>", step)]),
            "empty": ([("Ua", "W1", "kV", 0.01, 0.0, [])], [("S", "W1", [])])}
        for name, (analog, states) in records.items():
            for trigger in (0.1, 30.0):
                path = folder / (name + ".cfg")
                Written(path, analog, states, trigger=trigger)
                zucmtr("view", path)
                browser.open_page(path.with_suffix(".html"), ANSWER)
                summary = json.loads(run("events", "--json", path))
                self.assertEqual(summary["text"], browser.texts("#answerSheet h2, #answerSheet .sentences p"))
                self.assertEqual(len(summary["events"]), len(cells(".events")))
                before = [(name, one["unit"], number(one["magnitude"], 3)) for name, one in summary["phasors"]["before"].items()]
                self.assertEqual(sorted(before), sorted(tuple(row[:3]) for row in cells(".magnitudes")))
                text = browser.run("return document.getElementById('answerSheet').innerText")
                self.assertIsNone(re.search("NaN|undefined|Infinity|null", text), text)
                self.assertEqual([], browser.log("browser"))
                self.assertEqual([], browser.texts("#answerSheet i, #answerSheet u, #answerSheet b:not([class])"))


class PageHead(unittest.TestCase):
    BOXES = """const box = (id) => { const b = document.querySelector(id).getBoundingClientRect(); return [b.left, b.top, b.right, b.bottom]; };
        return [box('.who'), box('.choices'), box('#tabs'), box('[aria-selected=true]'), document.documentElement.scrollWidth, innerWidth]"""

    def test_title_and_choices_in_one_row_and_tabs_below(self):
        again.open()
        self.addCleanup(browser.driver.set_window_size, *browser.size)
        for width in (1360, 1024, 760):
            for language in ("en", "ru"):
                browser.driver.set_window_size(width, 900)
                again.open("lang=%s&theme=light&sheet=recordSheet" % language)
                who, choices, tabs, chosen, page, window = browser.run(self.BOXES)
                self.assertLessEqual(who[2], choices[0])
                self.assertLess(choices[1], who[3])
                self.assertGreaterEqual(tabs[1], max(who[3], choices[3]))
                self.assertLessEqual(page, window)
                self.assertTrue(tabs[0] - 1 <= chosen[0] and chosen[2] <= tabs[2] + 1, (width, language, tabs, chosen))  # seen


if __name__ == "__main__":
    run_tests()
