"""The page in a browser: what it shows, what it does, and that it asks for nothing."""
import base64
import json
import math
import re
import struct
import subprocess
import unittest
import xml.etree.ElementTree

from browser import until
from pages import PROGRAM, browser, folder, run_tests, zucmtr
from records import Read

CONTROL, SHIFT, ALT, HOME, LEFT, RIGHT = "\ue009", "\ue008", "\ue00a", "\ue011", "\ue012", "\ue014"
STARTED = "ВЛ 110 кВ Восточная"

FRAME = "const f = zuView.page.frame; return [f.from, f.to];"
# The first plot on the screen, and within it the area of the trace: left, top, width, height.
AREA = """const box = document.querySelector('.strip.analog .plot').getBoundingClientRect();
const area = zuView.page.strips[0].chart.getArea();
return [box.left + area.x, box.top + area.y, area.w, area.h];"""


def setUpModule():
    global record, page
    zucmtr("sample", "--out", folder)
    settings = ["--ini", folder / "ZuDrv.ini", "--device", "Vostochnaya"]
    (folder / "comtrade").mkdir()
    recording = folder / "Vostochnaya_000123.ZU"
    zucmtr("convert", *settings, "--defaults", "Default", "--out", folder / "comtrade", recording)
    record = Read(next((folder / "comtrade").glob("*.cfg")))
    page = folder / "page.html"
    zucmtr("view", recording, *settings, "-o", page)


def legend_row(channel):
    """Values, RMS and angles at both cursors as shown for an analog channel."""
    cells = browser.run("return [...document.querySelectorAll(`[data-channel='${arguments[0]}'] [class*=cursor]`)]"
                        ".map((cell) => cell.textContent)", channel)
    numbers = [float(cell.replace("−", "-").strip("°=").replace("—", "nan")) for cell in cells]
    return numbers[:3], numbers[3:]


class SamplePage(unittest.TestCase):
    def setUp(self):
        """A span of round times; marks_test.py has those that the page opens with."""
        browser.open_page(page)
        browser.run("const p = zuView.page; p.frame.show(-60, 180); p.cursors.set(1, 1200 + 144); p.cursors.set(0, 1200 + 48)")
        browser.settle()

    def test_opens_without_a_message_and_asks_for_nothing(self):
        requests = [address for address in browser.requests() if not address.startswith(("data:", "about:"))]
        self.assertEqual(["file://%s" % page], requests)
        self.assertEqual([], browser.log("browser"))
        self.assertTrue(browser.run("return document.getElementById('partial').hidden"))

    def test_no_address_of_the_network_is_reachable(self):
        browser.run("const image = new Image(); window.blocked = []; document.addEventListener("
                    "'securitypolicyviolation', (event) => blocked.push(event.blockedURI));"
                    "image.src = 'http://127.0.0.1:9/x.png'; fetch('http://127.0.0.1:9/').catch(() => {});")
        self.assertEqual(["http://127.0.0.1:9/", "http://127.0.0.1:9/x.png"],
                         sorted(until(lambda: browser.run("return blocked.length > 1 && blocked"), "the policy")))

    def test_says_what_the_record_is(self):
        self.assertEqual("ПС Узловая", browser.text("#station"))
        self.assertEqual("РАС-1 · Trigger 2024-01-31 12:00:00.250000 · started by " + STARTED, browser.text("#event"))
        self.assertEqual("\n".join(record.report), browser.text("#report").rstrip("\n"))
        self.assertIn("Vostochnaya_000123.ZU", browser.text("#identity"))

    def test_groups_follow_the_circuits_in_the_order_of_the_record_but_the_faulted_one_is_first(self):
        circuits = list(dict.fromkeys(channel[3] for channel in record.channels))
        circuits.sort(key=lambda circuit: circuit != STARTED)
        titles = browser.run("return [...document.querySelectorAll('#groups h3')].map((title) => title.textContent)")
        self.assertEqual(circuits, titles)

    def test_shows_the_whole_record_on_home(self):
        browser.press(HOME)
        self.assertEqual([-500, 1499.583333], [round(time, 6) for time in browser.run(FRAME)])

    def test_keys_zoom_around_the_cursor_and_pan(self):
        browser.press("+")
        self.assertEqual([-20, 100], [round(time, 6) for time in browser.run(FRAME)])
        browser.press(RIGHT)
        self.assertEqual([-8, 112], [round(time, 6) for time in browser.run(FRAME)])
        browser.press(LEFT)
        browser.press("-")
        self.assertEqual([-60, 180], [round(time, 6) for time in browser.run(FRAME)])

    def test_wheel_with_control_zooms_where_the_pointer_is(self):
        left, top, width, height = browser.run(AREA)
        browser.wheel(round(left + width / 4), round(top + height / 2), 0, -300, held=CONTROL)
        start, end = browser.run(FRAME)
        self.assertAlmostEqual(240 * 1.0015 ** -300, end - start, places=6)
        self.assertAlmostEqual(0, start + (end - start) / 4, delta=0.3)

    def test_drag_pans_by_what_lies_under_the_pointer(self):
        left, top, width, _ = browser.run(AREA)
        start = round(left + width * 0.9)
        browser.mouse(("move", start, top + 20), ("down", 0), ("move", start - 60, top + 20),
                      ("move", start - 100, top + 20), ("up", 0))
        shift = 100 / width * 240
        self.assertEqual([round(-60 + shift, 3), round(180 + shift, 3)], [round(t, 3) for t in browser.run(FRAME)])

    def test_drag_with_shift_zooms_into_the_span(self):
        left, top, width, _ = browser.run(AREA)
        ends = [round(left + width * part) for part in (0.6, 0.8)]
        browser.mouse(("move", ends[0], top + 20), ("down", 0), ("move", ends[1] - 9, top + 20),
                      ("move", ends[1], top + 20), ("up", 0), held=SHIFT)
        expected = [round(-60 + (end - left) / width * 240, 3) for end in ends]
        self.assertEqual(expected, [round(time, 3) for time in browser.run(FRAME)])

    def test_two_fingers_zoom_and_one_pans(self):
        left, top, width, _ = browser.run(AREA)
        x, y = left + width * 0.7, top + 30
        browser.fingers([(x - 50, y), (x - 100, y)], [(x + 50, y), (x + 100, y)])
        start, end = browser.run(FRAME)
        self.assertAlmostEqual(120, end - start, delta=3)
        browser.fingers([(x, y), (x - 20, y), (x - 60, y)])
        self.assertAlmostEqual(start + 60 / width * (end - start), browser.run(FRAME)[0], delta=0.5)

    def test_clicks_set_the_cursors_and_the_time_between_is_shown(self):
        left, top, width, _ = browser.run(AREA)
        pixels = [round(left + width * part) for part in (0.4, 0.7)]
        browser.mouse(("move", pixels[0], top + 20), ("down", 0), ("up", 0))
        browser.mouse(("move", pixels[1], top + 20), ("down", 2), ("up", 2))
        samples = [round((-60 + (pixel - left) / width * 240) * 2.4) for pixel in pixels]
        times = ["%+.3f ms" % (sample / 2.4) for sample in samples]
        self.assertEqual(times, [browser.text("#time1"), browser.text("#time2")])
        self.assertEqual("%+.3f ms" % ((samples[1] - samples[0]) / 2.4), browser.text("#between"))

    def test_cursors_are_dragged_and_stepped_by_samples_and_periods(self):
        left, top, width, _ = browser.run(AREA)
        first = round(left + width / 3)
        browser.mouse(("move", first, top + 20), ("down", 0), ("move", first + 40, top + 20), ("up", 0))
        dragged = round((-60 + (first + 40 - left) / width * 240) * 2.4)
        self.assertEqual("%+.3f ms" % (dragged / 2.4), browser.text("#time1"))
        browser.press(".")
        browser.press(".", SHIFT)
        self.assertEqual("%+.3f ms" % ((dragged + 49) / 2.4), browser.text("#time1"))
        browser.press("2")
        browser.press(",")
        self.assertEqual("%+.3f ms" % (60 - 1 / 2.4), browser.text("#time2"))

    def test_values_at_the_cursors_are_the_records_own(self):
        browser.press(HOME)
        faulted = [index for index, channel in enumerate(record.channels) if channel[3] == STARTED]
        for sample in (100, 1200, 1337, 4799):
            browser.set_cursor(0, sample)
            browser.set_cursor(1, sample - 3)
            for channel in (faulted[0], faulted[3], faulted[5]):  # those on the screen
                first, second = legend_row(channel)
                for shown, at in ((first, sample), (second, sample - 3)):
                    self.assertAlmostEqual(record.value(channel, at) / 1000, shown[0], delta=0.05001)
                    self.assertAlmostEqual(record.rms_before(channel, at, 48) / 1000, shown[1], delta=0.05001)

    def test_values_ahead_of_the_fault_are_those_of_the_signal(self):
        """A line of 220 kV at 50 Hz: phase a rises through zero at the first sample."""
        browser.press(HOME)
        browser.run("document.querySelector('[data-channel=\"0\"]').scrollIntoView({block: 'center'})")
        until(lambda: browser.run("return zuView.page.strips.find((strip) => strip.channels[0].index === 0).onScreen"), "it")
        for sample in (0, 6, 12, 500, 1003, 1199):
            browser.set_cursor(0, sample)
            for phase in range(3):
                value = 220 * math.sqrt(2 / 3) * math.sin(2 * math.pi * (50 * sample / 2400 - phase / 3))
                self.assertAlmostEqual(value, legend_row(phase)[0][0], delta=0.06)

    def test_opens_with_the_first_period_of_the_fault_in_the_started_circuit(self):
        choices = browser.run("return ['circuit', 'method'].map((key) => "
                              "document.getElementById('choice-' + key).selectedOptions[0].text)")
        self.assertEqual([STARTED, "full-cycle Fourier"], choices)
        self.assertEqual("Phasors · cursor 1", browser.text("#side h3"))
        self.assertEqual("", browser.text("#why"))
        self.assertEqual("", browser.text("#notices"))

    def test_a_balanced_system_has_no_other_sequence_than_the_positive_one(self):
        browser.set_cursor(0, 1100)
        rows = browser.run("return [...document.querySelectorAll('#sequenceValues tr')].map((row) => "
                           "[Number(row.dataset.module), row.cells[3].textContent])")
        for first in (0, 3):
            positive, negative, zero = rows[first:first + 3]
            self.assertLess(negative[0], 5e-4 * positive[0])
            self.assertLess(zero[0], 5e-4 * positive[0])
            self.assertEqual(["—", "—"], [negative[1], zero[1]])  # no angle of what is no component

    def test_modules_and_angles_of_the_second_method_are_those_of_the_report(self):
        browser.choose_method(1)
        self.assertEqual("Phasors · cursor 1 · as in the report", browser.text("#side h3"))
        for sample, table in ((1200 - 480, 0), (1200, 2)):
            browser.set_cursor(0, sample)
            for selector, number in (("#phaseValues tr", table), ("#sequenceValues tr", table + 1)):
                shown = browser.run("return [...document.querySelectorAll(arguments[0])].map((row) => "
                                    "[row.cells[0].textContent, row.dataset.module, row.cells[3].textContent])", selector)
                report = record.report_table(number)
                self.assertEqual(len(report), len(shown))
                for name, module, angle in shown:
                    expected = report[name.rstrip("1") if name.startswith(("Ia", "Ib", "Ic", "3I0")) else name]
                    self.assertEqual(expected, ("%.2f" % float(module), angle.rstrip("°")), name)

    def test_fourier_method_gives_the_exact_angles_of_the_load(self):
        browser.set_cursor(0, 1200)
        rows = browser.run("return [...document.querySelectorAll('#phaseValues tr')].map((row) => "
                           "[Number(row.dataset.module), Number(row.dataset.angle)])")
        # 110 kV and the load of the first bay, which lags by 0.07 turns.
        for phase, (module, angle) in enumerate(rows[:3]):
            self.assertAlmostEqual(110 / math.sqrt(3), module, delta=0.02)
            self.assertAlmostEqual(0, (angle + 120 * phase + 180) % 360 - 180, delta=0.05)
        for phase, (_, angle) in enumerate(rows[4:7]):
            self.assertAlmostEqual(0, (angle + 0.07 * 360 + 120 * phase + 180) % 360 - 180, delta=0.2)

    def test_lines_traces_and_tracks_share_one_time_axis(self):
        left, _, width, _ = browser.run(AREA)
        ruler = browser.run("const box = document.getElementById('ruler').getBoundingClientRect();"
                            "const area = zuView.page.ruler.chart.getArea(); return [box.left + area.x, area.w]")
        self.assertEqual([left, width], ruler)
        line = browser.run("return document.querySelector('.line.trigger').getBoundingClientRect().left")
        self.assertAlmostEqual(left + width / 4, line, delta=1)
        canvas = browser.run("return document.querySelector('.states canvas').getBoundingClientRect().left")
        spans = browser.run("const p = zuView.page; return zuView.trackSpans(p.trackStrips[0].rows[0].channel, p.frame, "
                            "zuView.plotArea(document.querySelector('.states .plot').clientWidth))")
        change = browser.run("const p = zuView.page; return p.axis.timeOf(p.trackStrips[0].rows[0].channel.changes[0])")
        self.assertAlmostEqual(left + (change + 60) / 240 * width, canvas + spans[0][0], delta=0.5)

    def test_discrete_channels_that_change_come_first_and_the_others_are_folded(self):
        names = browser.run("return [...document.querySelectorAll('.row.state .name')].map((name) => name.textContent)")
        self.assertEqual("Пуск защит", names[0])  # under the strips of its circuit
        self.assertEqual("without changes: %d" % (64 - len(names)), browser.text("#tracks .folded summary"))
        self.assertFalse(browser.run("return document.querySelector('#tracks .folded').open"))

    def test_filter_shows_the_rows_with_every_word(self):
        browser.run("const filter = document.getElementById('filter'); filter.value = 'КВ северная ia';"
                    "filter.dispatchEvent(new Event('input'))")
        shown = browser.run("return [...document.querySelectorAll('#channels tbody tr')].filter((row) => !row.hidden)"
                            ".map((row) => row.cells[3].textContent)")
        self.assertEqual(["Ia1 ВЛ 220 кВ Северная"], shown)
        self.assertEqual("1 of 96", browser.text("#filtered"))

    def test_a_channel_that_is_switched_off_leaves_its_strip(self):
        browser.run("document.querySelectorAll('#channels tbody input')[3].click()")
        browser.settle()
        self.assertTrue(browser.run("return document.querySelector('[data-channel=\"3\"]').hidden"))
        strip = "return zuView.page.strips.find((strip) => strip.channels[0].index === 0).visibleChannels.length"
        self.assertEqual(3, browser.run(strip))

    def test_one_strip_for_each_channel_on_request(self):
        browser.run("document.querySelector('[data-layout=apart]').click()")
        browser.settle()
        self.assertEqual(32, browser.run("return document.querySelectorAll('.strip.analog').length"))

    def test_language_and_theme_are_switched(self):
        self.assertEqual("Fault report", browser.text("[data-sheet=reportSheet]"))
        light = browser.run("return getComputedStyle(document.body).backgroundColor")
        browser.run("document.querySelector('[data-language=ru]').click(); document.getElementById('theme').click()")
        browser.settle()
        self.assertEqual("Отчёт об аварии", browser.text("[data-sheet=reportSheet]"))
        self.assertEqual("ru", browser.run("return document.documentElement.lang"))
        self.assertNotEqual(light, browser.run("return getComputedStyle(document.body).backgroundColor"))
        self.assertEqual([], browser.log("browser"))

    def test_both_languages_have_all_texts_with_the_same_places_for_values(self):
        english, russian = browser.run("return [zuView.textsForTests.en, zuView.textsForTests.ru]")
        self.assertEqual(sorted(english), sorted(russian))
        for key, text in english.items():
            self.assertEqual(len(text) if isinstance(text, list) else sorted(re.findall(r"\{\d\}", text)),
                             len(russian[key]) if isinstance(text, list)
                             else sorted(re.findall(r"\{\d\}", russian[key])), key)
            if re.search("[A-Za-z]{2}", "".join(text)):  # signs and single letters are the same in both
                self.assertRegex("".join(russian[key]), "[А-Яа-яё№]", key)  # АПВ is a word, too

    def test_every_text_that_the_page_asks_for_is_there(self):
        source = page.read_text(encoding="utf-8")
        asked = set(re.findall(r"view\.text\('(\w+)'", source)) | set(re.findall(r"data-(?:text|hint)=\"(\w+)\"", source))
        asked |= set(re.findall(r"reason: '(why\w+)'", source))
        self.assertLess(45, len(asked))
        self.assertEqual(set(), asked - set(browser.run("return Object.keys(zuView.textsForTests.en)")))

    def test_paper_has_every_sheet_and_the_screen_comes_back(self):
        pdf = base64.b64decode(browser.paper())
        self.assertEqual(b"%PDF", pdf[:4])
        self.assertGreater(pdf.count(b"/Type /Page\n") + pdf.count(b"/Type /Page "), 3)
        self.assertEqual(["oscillogram"],
                         browser.run("return [...document.querySelectorAll('.sheet:not([hidden])')].map((sheet) => sheet.id)"))
        self.assertEqual("light", browser.run("return document.documentElement.dataset.theme"))


class Program(unittest.TestCase):
    """What the command does with files and options; no browser is used."""

    recording = "Vostochnaya_000123.ZU"

    def settings(self, **changed):
        """The options of an ini file with some keys of the device changed."""
        lines = (folder / "ZuDrv.ini").read_text(encoding="utf-8")
        extra = "".join("%s=%s\n" % item for item in changed.items())
        ini = folder / "changed.ini"
        ini.write_text(lines.replace("[Vostochnaya]\n", "[Vostochnaya]\n" + extra), encoding="utf-8")
        return ["--ini", ini, "--device", "Vostochnaya"]

    def data(self, path):
        content = path.read_text(encoding="utf-8").split('id="data">', 1)[1].split("</script>", 1)[0]
        return json.loads(content)

    def test_page_stands_beside_the_file_unless_told_otherwise(self):
        result = zucmtr("view", folder / "comtrade" / record_path().name)
        beside = record_path().with_suffix(".html")
        self.assertEqual(str(beside) + "\n", result.stdout)
        self.assertEqual(len(record.channels), len(self.data(beside)["analog"]))

    def test_a_recording_needs_no_ini_file(self):
        zucmtr("view", folder / self.recording, "--plain", "-o", folder / "plain.html")
        data = self.data(folder / "plain.html")
        self.assertEqual((32, 64, 4800, 1200), (len(data["analog"]), len(data["states"]), data["count"], data["trigger"]))
        self.assertEqual("ВЛ-110 Восточная", data["startedCircuit"])

    def test_the_ini_file_beside_the_recording_is_found(self):
        zucmtr("view", folder / self.recording, "-o", folder / "found.html")
        self.assertEqual(self.data(page), self.data(folder / "found.html"))
        alone = folder / "alone"
        alone.mkdir()
        (alone / self.recording).write_bytes((folder / self.recording).read_bytes())
        zucmtr("view", alone / self.recording)
        zucmtr("view", folder / self.recording, "--plain", "-o", folder / "plain.html")
        self.assertEqual(self.data(folder / "plain.html"), self.data(alone / "Vostochnaya_000123.html"))

    def test_the_whole_chain_of_segments_is_shown(self):
        chain = folder / "chain"
        chain.mkdir()
        zucmtr("sample", "--out", chain, "--segments", "3", "--analog", "8", "--seconds", "1")
        zucmtr("view", chain / self.recording, "-o", folder / "chain.html")
        self.assertEqual(7200, self.data(folder / "chain.html")["count"])

    def test_a_recording_is_never_deleted_and_kinds_of_output_do_not_matter(self):
        before = sorted(path.name for path in folder.glob("Vostochnaya*"))
        keys = {"Удалять исходные": 1, "Тип Comtrade CFF": 1, "Тип Comtrade 1999": 1, "Кодировка Comtrade UTF8": 0}
        zucmtr("view", folder / self.recording, *self.settings(**keys), "-o", folder / "kept.html")
        self.assertEqual(before, sorted(path.name for path in folder.glob("Vostochnaya*")))
        self.assertEqual("\n".join(record.report), self.data(folder / "kept.html")["report"].rstrip("\n"))

    def test_all_kinds_of_records_give_the_same_page(self):
        expected = self.data(page)
        for name, keys in (("cff", {"Тип Comtrade CFF": 1}), ("1999", {"Тип Comtrade 1999": 1}),
                           ("binary", {"Тип Comtrade BIN": 1, "Кодировка Comtrade UTF8": 0})):
            out = folder / ("as-" + name)
            out.mkdir()
            zucmtr("convert", *self.settings(**keys), "--defaults", "Default", "--out", out, folder / self.recording)
            zucmtr("view", next(out.glob("*.cf?")), "-o", folder / "kind.html")
            data = self.data(folder / "kind.html")
            for key in ("time", "analog", "states", "trigger", "count"):
                self.assertEqual(expected[key], data[key], (name, key))
            self.assertEqual("" if name == "1999" else expected["report"], data["report"], name)

    def test_example_of_the_help_works_as_it_stands(self):
        help_text = zucmtr("view", "--help").stdout
        lines = help_text.split("Example", 1)[1].splitlines()[1:]
        script = "\n".join(lines).replace("zucmtr ", '"%s" ' % PROGRAM)
        place = folder / "example"
        place.mkdir()
        subprocess.run(["sh", "-eu", "-c", script], cwd=place, check=True, stdout=subprocess.DEVNULL)
        self.assertTrue((place / "station" / "fault.html").read_bytes().startswith(b"<!doctype html>"))

    def test_pictures_are_written_and_alone_unless_a_page_is_named(self):
        zucmtr("view", record_path(), "--svg", folder / "o.svg", "--png", folder / "o.png")
        # Qt splits a text where the script changes.
        svg = "".join(piece.strip() for piece in xml.etree.ElementTree.parse(folder / "o.svg").getroot().itertext())
        for words in ("ПС Узловая", "Short circuit A to earth on", "No distance: there is no lines.ini", "Пуск защит ВЛ 110 кВ Восточная"):
            self.assertTrue(words in svg, words)
        png = (folder / "o.png").read_bytes()
        self.assertEqual(b"\x89PNG", png[:4])
        self.assertEqual((1400, 992), struct.unpack(">II", png[16:24]))
        zucmtr("view", record_path(), "--svg", folder / "p.svg", "-o", folder / "both.html")
        self.assertTrue((folder / "both.html").exists())

    def test_failures_name_the_file_and_leave_no_page(self):
        missing = zucmtr("view", folder / "none.ZU", code=1)
        self.assertIn("none.ZU: there is no such file; check the path", missing.stderr)
        (folder / "bad.cfg").write_text("nonsense\n")
        self.assertIn("bad.cfg", zucmtr("view", folder / "bad.cfg", code=1).stderr)
        self.assertFalse((folder / "bad.html").exists())
        (folder / "bad.ZU").write_bytes(b"nonsense")
        self.assertIn("bad.ZU: it is no recording: ", zucmtr("view", folder / "bad.ZU", code=1).stderr)
        nowhere = zucmtr("view", record_path(), "-o", folder / "no" / "where.html", code=1)
        self.assertIn("where.html' cannot be written", nowhere.stderr)

    def test_wrong_usage_is_told_before_anything_is_done(self):
        ini = folder / "ZuDrv.ini"
        for arguments, words in (((), "FILE is required"),
                                 ((folder / self.recording, "--window", "-1"), "--window"),
                                 ((folder / self.recording, "--window", "1", "--full"), "--full"),
                                 ((folder / self.recording, "--ini", ini, "--plain"), "--plain"),
                                 ((folder / self.recording, "--ini", folder / "no.ini"), "no.ini"),
                                 ((folder / self.recording, "--ini", ini, "--device", "None"), "[None]")):
            self.assertIn(words, zucmtr("view", *arguments, code=2).stderr)

    def test_data_beyond_the_limit_are_cut_unless_asked_for_in_full(self):
        path = folder / "large.cfg"
        channels = 2000
        count = 64 * 1024 * 1024 // (2 * channels + 1) + 1
        lines = ["S,D,2013", "%d,%dA,0D" % (channels, channels)]
        lines += ["%d,I%d,,,A,1,0,0,-9,9,1,1,P" % (number, number) for number in range(1, channels + 1)]
        lines += ["50", "1", "1000,%d" % count, "01/02/2024,00:00:00.000000", "01/02/2024,00:00:09.000000", "BINARY",
                  "1", "0,0", "0,0"]
        path.write_text("\n".join(lines) + "\n")
        path.with_suffix(".dat").write_bytes(
            b"".join(struct.pack("<II", i + 1, i * 1000) + bytes(2 * channels) for i in range(count)))
        result = zucmtr("view", path, "-o", folder / "large.html")
        self.assertIn("the page holds %d of %d samples" % (count - 1, count), result.stderr)
        self.assertEqual("", zucmtr("view", path, "-o", folder / "large.html", "--full").stderr)


def record_path():
    return next((folder / "comtrade").glob("*.cfg"))


if __name__ == "__main__":
    run_tests()
