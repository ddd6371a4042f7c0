"""The oscillogram of a fault: what it opens with, its marks, and cursors that snap to events."""
import itertools
import json
import math
import unittest

from pages import browser, folder, run_tests, zucmtr
from records import Written

SHIFT, HOME = "\ue008", "\ue011"
RATE, PERIOD = 2400, 20  # of the sample; milliseconds

FRAME = "const f = zuView.page.frame; return [f.from, f.to];"
SAMPLES = "return zuView.page.cursors.samples"
# The first plot on the screen, and within it the area of the trace: left, top, width.
AREA = """const box = document.querySelector('.strip.analog .plot').getBoundingClientRect();
const area = zuView.page.strips[0].chart.getArea();
return [box.left + area.x, box.top + area.y, area.w];"""
FLAGS = """return [...document.querySelectorAll('.flag')].map((flag) => {
  const box = flag.getBoundingClientRect();
  return {kind: flag.dataset.kind, title: flag.title, text: flag.textContent, hidden: flag.hidden,
    bare: flag.classList.contains('bare'), left: box.left, right: box.right, bottom: box.bottom};
});"""


class Fault:
    """A simulated fault: its page, and what `zucmtr events` has to say."""

    def __init__(self, name, *options):
        place = folder / name
        zucmtr("sample", "--out", place, *options)
        recording = place / "Vostochnaya_fault.ZU"
        self.page = folder / (name + ".html")
        zucmtr("view", recording, "-o", self.page)
        self.summary = json.loads(zucmtr("events", "--json", recording).stdout)
        self.fault, self.events, self.operating = (self.summary[key] for key in ("fault", "events", "operating"))
        self.trigger = json.loads(data_of(self.page))["trigger"]

    def sample(self, seconds):
        """The nearest one."""
        return self.trigger + round(seconds * RATE)

    def marks(self):
        """(kind, seconds) of all, in order."""
        marks = []
        for number, part in enumerate(self.fault["parts"]):
            marks.append(("onset" if number == 0 else "again" if part["afterReclosing"] else "change", part["onset"]))
            further = [later["onset"] for later in self.fault["parts"][number + 1:]]
            if part["clearing"] is not None and part["clearing"] not in further:
                marks.append(("clearing", part["clearing"]))
        marks += [("trip", event["time"]) for event in self.events if event["kind"] == "trip" and event["active"]]
        if self.operating["deadTime"] is not None:
            marks.append(("reclosing", sum(self.operating[key] for key in ("from", "breaker", "deadTime"))))
        return sorted(marks, key=lambda mark: mark[1])

    def event_samples(self):
        seconds = [event["time"] for event in self.events] + [mark[1] for mark in self.marks()] + [0]
        return sorted({self.sample(time) for time in seconds})


def data_of(page):
    return page.read_text(encoding="utf-8").split('id="data">', 1)[1].split("</script>", 1)[0]


def setUpModule():
    global simple, evolving
    simple = Fault("simple", "--fault", "AG", "--distance", "42", "--resistance", "5")
    evolving = Fault("evolving", "--fault", "BC", "--distance", "70", "--evolving", "ABC", "--reclose", "fault")


class Opening(unittest.TestCase):
    def test_the_faulted_circuit_is_first_and_has_its_changing_channels_under_its_strips(self):
        browser.open_page(simple.page)
        circuit = simple.fault["circuit"]
        self.assertEqual(circuit, browser.text("#groups section:first-child h3"))
        self.assertEqual("The faulted circuit", browser.run("return document.querySelector('#groups h3 .bolt').title"))
        self.assertEqual(1, browser.run("return document.querySelectorAll('.bolt').length"))
        own = dict.fromkeys(event["name"].replace(circuit, "").strip() for event in simple.events
                            if event["circuit"] == circuit)
        self.assertEqual(list(own), browser.texts("#groups section:first-child .row.state .name"))
        below = dict.fromkeys(event["name"] for event in simple.events if event["circuit"] != circuit)
        self.assertEqual(list(below), browser.texts("#tracks .row.state .name"))
        self.assertEqual("Other discrete channels", browser.text("#tracks h3"))
        self.assertEqual([], browser.log("browser"))

    def test_span_and_cursors_are_those_of_the_fault(self):
        browser.open_page(evolving.page)
        onset, clearing = 1000 * evolving.fault["onset"], 1000 * evolving.fault["clearing"]
        self.assertLess(clearing + 3 * PERIOD, onset + 9 * PERIOD)
        expected = [onset - 3 * PERIOD, onset + 9 * PERIOD]
        self.assertEqual([round(time, 4) for time in expected], [round(time, 4) for time in browser.run(FRAME)])
        after = [math.ceil((onset + periods * PERIOD) * RATE / 1000) for periods in (1, 3)]
        self.assertEqual([evolving.trigger + sample for sample in after], browser.run(SAMPLES))
        self.assertEqual(evolving.fault["circuit"], browser.run(
            "return document.getElementById('choice-circuit').selectedOptions[0].text"))
        browser.press(HOME)
        browser.press("t")
        self.assertEqual([round(time, 4) for time in expected], [round(time, 4) for time in browser.run(FRAME)])

    def test_a_longer_fault_is_shown_to_its_clearing_but_no_more_than_25_periods(self):
        browser.open_page(evolving.page)
        spans = browser.run("const {cursors, frame} = zuView.page; return [[0, 200], [0, 700], [5, 5]].map(([from, to]) => {"
                            "cursors.fault = {from, to}; cursors.showFault(); return [frame.from, frame.to]; })")
        self.assertEqual([[-60, 260], [-60, 500], [-55, 185]], [[round(end, 6) for end in span] for span in spans])

    def test_without_a_fault_it_opens_at_the_trigger_with_the_circuits_in_their_order(self):
        wave = [round(1000 * math.sin(math.pi * i / 10)) for i in range(600)]
        Written(folder / "quiet.cfg", [("Ia", "W1", "А", 1.0, 0.0, wave), ("Ia", "W2", "А", 1.0, 0.0, wave)],
                [("Work", "W2", [0] * 150 + [1] * 450)])
        zucmtr("view", folder / "quiet.cfg", "-o", folder / "quiet.html")
        browser.open_page(folder / "quiet.html")
        self.assertEqual(["W1", "W2"], browser.texts("#groups h3"))
        self.assertEqual([-60, 180], [round(time, 6) for time in browser.run(FRAME)])
        self.assertEqual(["+20.000 ms", "+60.000 ms"], [browser.text("#time1"), browser.text("#time2")])
        self.assertEqual(["Work"], browser.texts("#tracks .row.state .name"))
        self.assertEqual([True, 0, "Trigger", "Discrete channels"], browser.run(
            "return [document.getElementById('marks').parentElement.hidden, document.querySelectorAll('.bolt, .mark').length,"
            "document.getElementById('toTrigger').textContent, document.querySelector('#tracks h3').textContent]"))


class Marks(unittest.TestCase):
    def test_they_stand_at_the_times_of_the_events(self):
        browser.open_page(evolving.page)
        browser.press(HOME)
        expected = evolving.marks()
        kinds = ["onset", "change", "trip", "clearing", "reclosing", "again", "trip", "clearing"]
        self.assertEqual(sorted(kinds), sorted(kind for kind, _ in expected))
        flags = browser.run(FLAGS)
        self.assertEqual([(kind, "%+.3f ms" % (1000 * time)) for kind, time in expected],
                         [(flag["kind"], flag["title"].rsplit(", ", 1)[1].replace("−", "-")) for flag in flags])
        left, _, width = browser.run(AREA)
        start, end = browser.run(FRAME)
        lines = browser.run("return zuView.page.marks.lines.map((line) => line.getBoundingClientRect().left + 0.5)")
        for (_, time), line in zip(expected, lines):
            self.assertAlmostEqual(left + (1000 * time - start) / (end - start) * width, line, delta=0.6)

    def test_their_flags_do_not_overlap_in_either_language_and_end_above_those_of_the_cursors(self):
        for language in ("en", "ru"):
            browser.open_page(evolving.page, "theme=light&lang=" + language)
            shown = 0
            for span in ((-60, 180), (-20, 120), (-280, 860), (20, 60), (500, 700), (-1000, 1000)):
                browser.run("zuView.page.frame.show(...arguments)", *span)
                browser.settle()
                flags = [flag for flag in browser.run(FLAGS) if not flag["hidden"] and not flag["bare"]]
                shown += len(flags)
                for one, other in itertools.combinations(sorted(flags, key=lambda flag: flag["left"]), 2):
                    self.assertLessEqual(one["right"], other["left"], (one, other))
                tops = browser.run("return [...document.querySelectorAll('.line span')].map((flag) => "
                                   "flag.getBoundingClientRect()).filter((box) => box.width > 0).map((box) => box.top)")
                self.assertTrue(all(flag["bottom"] <= top for flag in flags for top in tops))
            self.assertGreater(shown, 15)
            self.assertEqual([], browser.log("browser"))

    def test_a_flag_stands_at_the_right_or_left_of_its_line_or_leaves_a_dot(self):
        browser.open_page(simple.page)
        places = browser.run("""return [
            [{x: 100, width: 60, rank: 0}, {x: 190, width: 60, rank: 1}], // the right end is near, the left is taken
            [{x: 100, width: 60, rank: 1}, {x: 190, width: 60, rank: 0}],
            [{x: 100, width: 60, rank: 0}, {x: 130, width: 60, rank: 1}], // another line is at the right
            [{x: 30, width: 60, rank: 0}, {x: 60, width: 20, rank: 0}, {x: 70, width: 60, rank: 0}],
            [{x: 100, width: 60, rank: 0, isBefore: true}, {x: 165, width: 60, rank: 1}], // of what comes before
        ].map((marks) => zuView.placeFlags(marks, {left: 0, width: 200}))""")
        self.assertEqual([[[100, 160], None], [[40, 100], [130, 190]], [[40, 100], [130, 190]],
                          [None, [40, 60], [70, 130]], [[40, 100], [105, 165]]], places)

    def test_a_flag_takes_the_chosen_cursor_to_its_sample(self):
        browser.open_page(simple.page, "lang=en&theme=light&snap=off")  # whatever cursors snap to
        self.assertFalse(browser.run("return document.getElementById('snap').checked || zuView.page.cursors.snaps"))
        browser.press("2")
        browser.run("document.querySelector('.flag[data-kind=clearing]').click()")
        self.assertEqual(simple.sample(simple.fault["clearing"]), browser.run(SAMPLES)[1])


class Snapping(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        browser.open_page(simple.page)

    def setUp(self):
        browser.run("const p = zuView.page; p.openSheet('oscillogram'); p.cursors.showFault(); p.cursors.set(0, 0);"
                    "for (const state of p.states) state.visible = true; p.changeVisible();")
        browser.settle()
        self.left, top, self.width = browser.run(AREA)
        self.y = top + 20
        self.start, self.end = browser.run(FRAME)
        breaker = next(event for event in simple.events if event["kind"] == "breaker")  # the clearing is 5 pixels later
        self.breaker = simple.sample(breaker["time"])
        self.at = self.left + (1000 * breaker["time"] - self.start) / (self.end - self.start) * self.width

    def own(self, pixel):
        """The sample under a pixel."""
        return simple.sample((self.start + (pixel - self.left) / self.width * (self.end - self.start)) / 1000)

    def click(self, pixel, held=None):
        browser.mouse(("move", pixel, self.y), ("down", 0), ("up", 0), held=held)
        return browser.run(SAMPLES)[0]

    def test_a_click_near_a_change_takes_its_sample_and_one_farther_away_its_own(self):
        near, far = round(self.at - 5), round(self.at - 9)
        self.assertNotEqual(self.breaker, self.own(near))
        self.assertEqual([self.breaker, self.own(far)], [self.click(near), self.click(far)])

    def test_a_click_near_a_mark_takes_the_nearest_sample_to_it(self):
        onset = self.left + (1000 * simple.fault["onset"] - self.start) / (self.end - self.start) * self.width
        self.assertEqual(simple.sample(simple.fault["onset"]), self.click(round(onset - 5)))

    def test_a_dragged_cursor_snaps_and_with_shift_does_not(self):
        for held, expected in ((None, self.breaker), (SHIFT, self.own(round(self.at - 4)))):
            browser.set_cursor(0, self.own(self.left + 60))
            first = self.left + (1000 * (browser.run(SAMPLES)[0] - simple.trigger) / RATE - self.start) / (
                self.end - self.start) * self.width
            browser.mouse(("move", first, self.y), ("down", 0), ("move", first + 30, self.y),
                          ("move", round(self.at - 4), self.y), ("up", 0), held=held)
            self.assertEqual(expected, browser.run(SAMPLES)[0])

    def test_it_is_switched_off_for_good_by_its_box(self):
        browser.run("document.getElementById('snap').click()")
        near = round(self.at - 5)
        self.assertEqual(self.own(near), self.click(near))
        self.assertEqual("off", browser.run("return zuView.address.get('snap')"))
        browser.run("document.getElementById('snap').click()")
        browser.set_cursor(0, 0)  # which a click would take hold of
        self.assertEqual(self.breaker, self.click(near))
        self.assertEqual(None, browser.run("return zuView.address.get('snap')"))

    def test_a_channel_that_is_switched_off_holds_no_cursor(self):
        number = [event for event in simple.events if event["kind"] == "breaker"][-1]["channel"]
        self.assertEqual(simple.event_samples(), browser.run("return [...zuView.page.cursors.events.samples]"))
        browser.run("const p = zuView.page; p.states[arguments[0]].visible = false; p.changeVisible()", number - 1)
        hidden = {simple.sample(event["time"]) for event in simple.events if event["channel"] == number}
        others = {simple.sample(event["time"]) for event in simple.events if event["channel"] != number}
        others |= {simple.sample(time) for _, time in simple.marks()} | {simple.trigger}
        self.assertNotEqual(set(), hidden - others)
        self.assertEqual(sorted(others), browser.run("return [...zuView.page.cursors.events.samples]"))

    def test_brackets_go_from_event_to_event_on_every_sheet(self):
        samples = simple.event_samples()
        for sheet in ("oscillogram", "answerSheet", "reportSheet"):
            browser.run("zuView.page.openSheet(arguments[0]); zuView.page.cursors.set(0, 0)", sheet)
            for sample in samples[:4]:
                browser.press("]")
                self.assertEqual(sample, browser.run(SAMPLES)[0])
            browser.press("[")
            self.assertEqual(samples[2], browser.run(SAMPLES)[0])

    def test_the_shown_span_follows_to_the_next_event(self):
        browser.run("zuView.page.frame.show(-60, -40)")
        browser.set_cursor(0, 0)
        browser.press("]")
        onset = 1000 * (simple.sample(simple.fault["onset"]) - simple.trigger) / RATE
        self.assertEqual([round(onset - 10, 6), round(onset + 10, 6)], [round(time, 6) for time in browser.run(FRAME)])

    def test_among_100000_changes_the_nearest_is_found(self):
        self.assertEqual([], browser.run("""
            const count = 150000; const axis = new zuView.TimeAxis({pieces: [[0, -50, 0.5, 2000]]}, count);
            const changes = [0, 1, 2].map((n) => Int32Array.from({length: 33334}, (_, i) => (i * 4 + n * 7919) % count).sort());
            const states = changes.map((samples, n) => ({changes: samples, visible: n !== 1}));
            const events = new zuView.EventSamples(axis, states, [-3, 17, count]); const wrong = [];
            const all = [...new Set([...changes[0], ...changes[2], 17])].sort((a, b) => a - b);
            if (String([...events.samples]) !== String(all)) wrong.push('samples');
            for (let n = 0; n < 300; n++) {
              const time = -60 + n * 251.37;
              const away = all.map((sample) => Math.abs(axis.timeOf(sample) - time));
              const least = away.reduce((a, b) => Math.min(a, b));
              const found = events.nearest(time, 0.6);
              if (least > 0.6 ? found !== null : Math.abs(axis.timeOf(found) - time) !== least) wrong.push([time, found]);
              const at = axis.sampleAt(time);
              if (events.beside(at, 1) !== (all.find((sample) => sample > at) ?? null)) wrong.push(['after', at]);
              if (events.beside(at, -1) !== (all.filter((sample) => sample < at).pop() ?? null)) wrong.push(['before', at]);
            }
            return wrong;"""))


if __name__ == "__main__":
    run_tests()
