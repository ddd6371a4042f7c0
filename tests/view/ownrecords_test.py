"""The page of small records that are made here, and its scripts on their own."""
import unittest

from pages import browser, folder, run_tests, zucmtr
from records import Written

HOME = "\ue011"


def view(analog, states=(), options=(), name="own", **settings):
    """Opens the page of a record made here."""
    Written(folder / (name + ".cfg"), analog, states, **settings)
    result = zucmtr("view", folder / (name + ".cfg"), "-o", folder / (name + ".html"), *options)
    browser.open_page(folder / (name + ".html"))
    return result


class OwnRecords(unittest.TestCase):
    def test_a_peak_one_sample_wide_is_seen_at_the_widest_zoom(self):
        codes = [0] * 100000
        codes[61234] = 20000
        view([("Ua", "W1", "В", 0.01, 0.0, codes)], name="peak")
        browser.press(HOME)
        browser.settle()
        left, width, column = browser.run(
            "const s = zuView.page.strips[0]; const a = s.chart.getArea(); "
            "return [a.x, a.w, a.x + Math.floor((61234 / 99999) * a.w)]")
        self.assertLess(width, 1100)
        tops = browser.run(PAINTED_TOPS, left, width)
        height = browser.run("return zuView.page.strips[0].chart.getArea().h")
        high = [x for x, top in tops if top < height / 4]
        self.assertTrue(high and all(abs(x - column) <= 1 for x in high), (high, column))

    def test_names_are_shown_as_text_and_run_nothing(self):
        evil = "</script><script>window.hit=1</script><img src=x onerror=window.hit=1>"
        view([(evil, evil + "W", "В", 1.0, 0.0, [1, 2] * 50)], [(evil + "D", evil, [0, 1] * 50)], name="evil",
             station=evil)
        self.assertEqual(evil, browser.text("#station"))
        self.assertEqual(evil + "W", browser.text("#groups h3"))
        self.assertEqual(evil, browser.text(".strip.analog .name"))
        self.assertEqual(evil + "D", browser.text(".row.state .name"))
        self.assertIn(evil, browser.text("#channels"))
        self.assertEqual([None, 0], browser.run("return [window.hit, document.images.length]"))
        self.assertEqual([], browser.log("browser"))

    def test_a_window_around_the_trigger_is_held_and_said(self):
        codes = [index % 1000 for index in range(9000)]
        result = view([("Ua", "W1", "В", 1.0, 0.0, codes)], options=["--window", "3"], name="window", trigger=4)
        self.assertIn("the page holds 3001 of 9000 samples", result.stderr)
        self.assertFalse(browser.run("return document.getElementById('partial').hidden"))
        self.assertIn("holds 3.000 s around the trigger: 3001 of 9000 samples", browser.text("#partial"))
        self.assertEqual([-1000, 2000], browser.run("const p = zuView.page; return [p.frame.start, p.frame.end]"))
        self.assertEqual(codes[3000 + 17], browser.run("return zuView.page.analog[0].codes[17]"))

    def test_a_restless_discrete_channel_is_drawn_in_bounded_time(self):
        view([], [("D", "W1", [0, 1] * 30000), ("E", "W1", [0] * 59999 + [1])], name="restless")
        count, spans = browser.run(
            "const p = zuView.page; p.frame.showAll(); const area = zuView.plotArea(800);"
            "return [p.states[0].changes.length, zuView.trackSpans(p.states[0], p.frame, area).length]")
        self.assertEqual(59999, count)
        self.assertLessEqual(spans, 800)
        self.assertEqual([], browser.log("browser"))

    def test_an_empty_record_says_so(self):
        view([("Ua", "W1", "В", 1.0, 0.0, [])], name="empty")
        self.assertEqual("The record has no samples.", browser.text("#partial"))
        self.assertEqual([], browser.log("browser"))


# The topmost painted pixel of each column of the first plot: [[x, y] ...] in CSS pixels of the trace's area.
PAINTED_TOPS = """const [left, width] = arguments; const chart = zuView.page.strips[0].chart;
const canvas = document.querySelector('.strip.analog canvas'); const area = chart.getArea();
const scale = canvas.width / canvas.clientWidth; const tops = [];
const color = zuView.styleColor('--phaseA').slice(1).match(/../g).map((part) => parseInt(part, 16));
const pixels = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
for (let x = Math.ceil(left); x < left + width; x++)
  for (let y = 0; y < area.h; y++) {
    const at = 4 * (Math.round((area.y + y) * scale) * pixels.width + Math.round(x * scale));
    const near = color.every((part, i) => Math.abs(part - pixels.data[at + i]) < 40);
    if (near && pixels.data[at + 3] > 60) { tops.push([x, y]); break; }
  }
return tops;"""


class Scripts(unittest.TestCase):
    """The page's own calculations, in the page of some record."""

    @classmethod
    def setUpClass(cls):
        view([("Ua", "W1", "В", 1.0, 0.0, [1, 2] * 50)], name="scripts")

    def test_extremes_of_any_span_are_those_of_all_its_samples(self):
        self.assertEqual([], browser.run("""
            const samples = Int16Array.from({length: 3000}, (_, i) => ((i * 7919) % 65521) - 32760);
            const pyramid = new zuView.Pyramid(samples); const wrong = [];
            for (let n = 0; n < 4000; n++) {
              const from = (n * 613) % 3000; const to = Math.min(3000, from + 1 + ((n * 389) % 1700));
              const part = samples.subarray(from, to);
              const [low, high] = pyramid.extremes(from, to);
              if (low !== Math.min(...part) || high !== Math.max(...part)) wrong.push([from, to]);
            }
            return wrong;"""))

    def test_extremes_pass_over_what_is_no_number(self):
        self.assertEqual([1, 7], browser.run("""
            const samples = Float32Array.from({length: 100}, (_, i) => i === 50 ? 7 : i % 2 ? NaN : 1);
            return new zuView.Pyramid(samples).extremes(1, 100);"""))

    def test_time_and_sample_are_inverse_over_several_rates(self):
        self.assertEqual([[0, 4, 5, 9], [-10, -6, -5.5, -3.5], 5, 10, 0], browser.run("""
            const axis = new zuView.TimeAxis({pieces: [[0, -10, 1], [5, -5.5, 0.5]]}, 10);
            const samples = [0, 4, 5, 9];
            return [samples.map((s) => axis.sampleAt(axis.timeOf(s))), samples.map((s) => axis.timeOf(s)),
                    axis.firstFrom(-5.9), axis.firstFrom(99), axis.firstFrom(-99)];"""))


if __name__ == "__main__":
    run_tests()
