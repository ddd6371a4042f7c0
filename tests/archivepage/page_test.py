"""The page of an archive in a browser, against the rows of its catalogue."""
import datetime
import json
import math
import statistics
import unittest

from archives import HOSTILE, Archive, browser, folder, make_up, run_tests, wave, zucmtr
from browser import until

LOADED = "return Boolean(globalThis.zuView && zuView.page && zuView.page.entries.loadedCount === zuView.page.entries.total && !zuView.page.isRequested)"
PAGE_UP, PAGE_DOWN, END, HOME, UP, DOWN, ENTER, ESCAPE, TAB = "\ue00e", "\ue00f", "\ue010", "\ue011", "\ue013", "\ue015", "\ue007", "\ue00c", "\ue004"
NEWEST = "moment IS NULL, moment / 1000 DESC, path DESC"
LOCAL = "date(moment / 1000000 + utc_offset * 60, 'unixepoch')"

_archives = {}


def archive():
    """Five thousand entries, two of them hostile; made once."""
    if not _archives:
        made = Archive("archive")
        make_up(made.path, 5000)
        made.add("h/hostile " + HOSTILE.replace("/", "|"), station=HOSTILE, recorder=HOSTILE, circuit=HOSTILE, cause=HOSTILE,
                 moment=made.column("SELECT max(moment) + 1000000 FROM entries")[0], trigger_time="2025-12-31T23:59:59+03:00",
                 fault_kind="AG", fault_circuit=HOSTILE, fault_direction="forward", fault_duration=0.1, fault_current=1000)
        made.add("h/wrong.cfg", kind="record", moment=made.column("SELECT max(moment) + 1000000 FROM entries")[0], verified="wrong")
        made.write("--title", "Net " + HOSTILE)
        _archives["one"] = made
    return _archives["one"]


def open_page(made=None, settings="lang=en&theme=light"):
    browser.open((made or archive()).page / "index.html", settings)
    until(lambda: browser.run(LOADED), "the entries")
    browser.settle()


def found():
    """The file names in the list, in its order."""
    return browser.run("const { list, entries } = zuView.page; return [...list.found].map((entry) => entries.names[entry])")


def put(field, value):
    """Sets a field as a hand would."""
    browser.run("""const field = document.getElementById('filter-' + arguments[0]);
        field.value = arguments[1]; field.dispatchEvent(new Event(field.tagName === 'SELECT' ? 'change' : 'input'));""", field, value)
    until(lambda: browser.run("return new URLSearchParams(location.hash.slice(1)).get(arguments[0]) === (arguments[1] || null)", field, value), field)
    browser.settle()


def press_button(selector):
    browser.run("document.querySelector(arguments[0]).click()", selector)
    browser.settle()


class List(unittest.TestCase):
    def setUp(self):
        open_page()

    def names(self, where="1", order=NEWEST, *values):
        return [path.split("/")[-1] for path in archive().column("SELECT path FROM entries WHERE %s ORDER BY %s" % (where, order), *values)]

    def assert_found(self, where, *values):
        expected = self.names(where, NEWEST, *values)
        self.assertEqual(expected, found(), where)
        return expected

    def test_all_entries_are_there_the_newest_first(self):
        self.assertEqual(self.names(), found())
        self.assertEqual("Found: 5\u202f002 of 5\u202f002".replace("\u202f", browser.run("return zuView.count(1000)[1]")), browser.text("#found"))

    def test_filters_let_through_what_sql_does(self):
        station = archive().column("SELECT station FROM entries GROUP BY station ORDER BY count(*) DESC")[0]
        circuit = archive().column("SELECT fault_circuit FROM entries WHERE fault_kind IS NOT NULL AND station = ? GROUP BY 1 ORDER BY count(*) DESC", station)[0]
        put("station", station)
        self.assert_found("station = ?", station)
        put("circuit", circuit)
        self.assert_found("station = ? AND circuit = ?", station, circuit)
        put("station", "")
        put("circuit", "")
        put("show", "fault")
        self.assert_found("fault_kind IS NOT NULL")
        put("longer", "80,5")
        self.assert_found("fault_duration >= 0.0805")
        put("shorter", "300")
        self.assert_found("fault_duration BETWEEN 0.0805 AND 0.3")
        put("current", "4000")
        self.assert_found("fault_duration BETWEEN 0.0805 AND 0.3 AND fault_current >= 4000")
        press_button("[value=one]")
        press_button("[value=twoEarth]")
        press_button(".field.phases [value=B]")
        self.assert_found("fault_duration BETWEEN 0.0805 AND 0.3 AND fault_current >= 4000 AND fault_kind IN ('BG', 'ABG', 'BCG')")
        press_button("#reset")
        self.assert_found("1")
        for show, where in (("none", "fault_kind IS NULL AND reason IS NULL"), ("unread", "reason IS NOT NULL"), ("gone", "gone IS NOT NULL"), ("wrong", "verified = 'wrong'")):
            put("show", show)
            self.assertTrue(self.assert_found(where))

    def test_days_are_those_of_the_recorders_clock(self):
        put("from", "2022-03-01")
        put("to", "2022-09-30")
        self.assert_found("%s BETWEEN '2022-03-01' AND '2022-09-30'" % LOCAL)
        put("to", "")
        self.assert_found("%s >= '2022-03-01'" % LOCAL)

    def test_text_is_searched_for_in_names_and_signals_without_regard_to_case(self):
        put("text", "дфз 17 южная")
        until(lambda: browser.run("return zuView.page.searching.isWhole"), "the words")
        browser.settle()
        # SQLite's own LIKE knows the case of Latin letters alone.
        words = {}
        for entry, name in archive().run("SELECT entry, name FROM changes JOIN channels ON channels.id = channel"):
            words.setdefault(entry, []).append(name)
        expected = []
        for entry, path, *texts in archive().run("SELECT id, path, station, recorder, circuit, fault_circuit, cause, setting FROM entries ORDER BY " + NEWEST):
            searched = [path.split("/")[-1], *filter(None, texts), *words.get(entry, [])]
            if all(any(word in text.lower() for text in searched) for word in ("дфз", "17", "южная")):
                expected.append(path.split("/")[-1])
        self.assertGreater(len(expected), 3)
        self.assertEqual(expected, found())

    def test_columns_sort_both_ways_with_nothing_last(self):
        for key, column in (("duration", "fault_duration"), ("greatest", "fault_current"), ("distance", "distance_km"), ("time", "moment")):
            values = archive().column("SELECT %s FROM entries WHERE %s IS NOT NULL" % (column, column))
            empty = 5002 - len(values)
            for _ in range(2):
                press_button("[data-key=%s]" % key)
                sort = browser.run("return document.querySelector('.cell.%s').getAttribute('aria-sort')" % key)
                by_name = dict(archive().run("SELECT path, %s FROM entries" % column))
                by_name = {path.split("/")[-1]: value for path, value in by_name.items()}
                shown = [by_name[name] for name in found()]
                self.assertEqual([None] * empty, shown[len(values):])
                single = browser.run("return [...new Float32Array(arguments[0])]", sorted(values, reverse=sort == "descending")) if key != "time" else sorted(values, reverse=sort == "descending")
                self.assertEqual(len(values), len(single))
                differences = [abs(a - b) for a, b in zip(sorted(values, reverse=sort == "descending"), shown)]
                self.assertLess(max(differences), 1000 if key == "time" else 6e-4 * max(values))

    def test_only_the_rows_on_the_screen_are_made_and_the_last_one_is_reached(self):
        self.assertLess(browser.run("return document.querySelectorAll('.row').length"), 60)
        browser.run("zuView.page.list.grid.focus()")
        browser.press(END)
        row = browser.run("const row = document.querySelector('.row[aria-selected=true]'); return [row.getAttribute('aria-rowindex'), row.querySelector('.time').textContent, document.getElementById('detail').hidden]")
        self.assertEqual("5003", row[0])
        self.assertIn(self.names()[-1], row[1])
        self.assertFalse(row[2])
        for key, place in ((HOME, 0), (DOWN, 1), (DOWN, 2), (UP, 1)):
            browser.press(key)
            self.assertEqual(place, browser.run("return zuView.page.list.active"))
            self.assertEqual("row-%d" % place, browser.run("return zuView.page.list.grid.getAttribute('aria-activedescendant')"))
        browser.press(PAGE_DOWN)
        self.assertGreater(browser.run("return zuView.page.list.active"), 5)
        browser.press(ESCAPE)
        self.assertTrue(browser.run("return document.getElementById('detail').hidden"))

    def test_settings_are_in_the_address_and_survive_a_reload(self):
        put("show", "fault")
        press_button("[data-key=duration]")
        expected = found()
        address = browser.run("return location.hash.slice(1)")
        open_page(settings=address)
        self.assertEqual(expected, found())
        self.assertEqual("fault", browser.run("return document.getElementById('filter-show').value"))

    def test_paper_has_the_first_rows_and_says_of_how_many(self):
        browser.run("globalThis.dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(300, browser.run("return document.querySelectorAll('.row').length"))
        self.assertIn("The first 300 of ", browser.text("#found"))
        browser.run("globalThis.dispatchEvent(new Event('afterprint'))")
        self.assertLess(browser.run("return document.querySelectorAll('.row').length"), 60)


class Shown(unittest.TestCase):
    def test_texts_of_the_archive_are_shown_as_they_are_and_run_nothing(self):
        open_page()
        browser.run("zuView.page.list.activate(1)")
        until(lambda: browser.run("return document.querySelector('#detail .path') !== null"), "the details")
        self.assertIsNone(browser.run("return globalThis.hacked"))
        self.assertEqual(0, browser.run("return document.querySelectorAll('img').length"))
        self.assertEqual("Net " + HOSTILE, browser.text("#title"))
        self.assertEqual("Net " + HOSTILE.replace("\u2028\u2029", "\u2028\u2029"), browser.run("return document.getElementById('title').textContent"))
        self.assertEqual([HOSTILE] * 3, browser.run("return [...document.querySelectorAll('#row-1 .place div:first-child, #row-1 .place .quiet, #row-1 .circuit div:first-child')].map((one) => one.textContent)"))
        path = "%s/h/hostile %s" % (archive().place, HOSTILE.replace("/", "|"))
        self.assertEqual(path, browser.text("#detail .path"))
        self.assertEqual("zucmtr view '%s'" % path.replace("'", "'\\''"), browser.text("#detail code"))
        self.assertEqual([], [entry for entry in browser.log("browser") if entry["level"] == "SEVERE"])

    def test_details_are_those_of_the_catalogue(self):
        open_page()
        row = archive().run("SELECT path, cause, setting, bytes, fault_kind, fault_circuit FROM entries WHERE fault_kind IS NOT NULL AND gone IS NULL AND moment < 1700000000000000 ORDER BY moment DESC LIMIT 1")[0]
        browser.run("const { list, entries } = zuView.page; list.activate(list.found.findIndex((entry) => entries.names[entry] === arguments[0]))", row[0].split("/")[-1])
        until(lambda: browser.run("return document.querySelector('#detail .path') !== null"), "the details")
        facts = browser.run("return Object.fromEntries([...document.querySelectorAll('#detail dt')].map((one) => [one.textContent, one.nextSibling.textContent]))")
        self.assertEqual(("%s/%s" % (archive().place, row[0]), row[1], row[2], row[5]),
                         (facts["File"], facts["Cause"], facts["Setting"], facts["Faulted circuit"]))
        self.assertEqual("–".join([*row[4].rstrip("G"), *(["earth"] if "G" in row[4] else [])]), facts["Fault"])

    def test_pictures_are_drawn_from_their_letters_and_loaded_when_they_are_seen(self):
        open_page(settings="lang=en&theme=light&show=fault")
        until(lambda: browser.run("return document.querySelector('#row-1 .waves') !== null"), "a picture")
        loaded = sum("/pictures-" in address for address in browser.requests())
        self.assertLess(loaded, len(archive().names("pictures")) / 2)
        name = browser.run("const { list, entries } = zuView.page; return entries.names[list.found[1]]")
        waves = archive().column("SELECT waves FROM entries e JOIN pictures ON entry = e.id WHERE path LIKE ?", "%/" + name)[0].split(" ")
        paths = browser.run("return [...document.querySelectorAll('#row-1 .waves path[class^=phase]')].map((one) => one.getAttribute('d'))")
        self.assertEqual(6, len(paths))
        for strip, path in enumerate(paths):
            points = [tuple(map(float, point.split(" "))) for point in path[1:].split("L")]
            height, top = 20, 1 if strip < 3 else 25  # of a strip of the picture, which is 132 by 46
            expected = [(column * 132 / 127, top + height / 2 - value * height / 2) for column, value in enumerate(wave(waves[strip]))]
            self.assertLess(max(math.dist(one, other) for one, other in zip(points, expected)), 0.1)

    def test_narrow_screen_shows_times_and_names_whole(self):
        browser.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {"width": 400, "height": 800, "deviceScaleFactor": 1, "mobile": False})
        self.addCleanup(browser.driver.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})
        open_page(settings="lang=en&theme=light&show=fault")
        cut = browser.run("return [...document.querySelectorAll('.row .time > div, .row .fault > div')].filter((one) => one.scrollWidth > one.clientWidth && !one.textContent.includes('hostile')).map((one) => one.textContent)")
        self.assertEqual([], cut)
        self.assertGreater(browser.run("return document.querySelector('.who').clientWidth"), 340)

    def test_nothing_is_loaded_but_the_pieces_beside_the_page(self):
        open_page()
        requests = browser.requests()
        self.assertEqual([], [address for address in requests if not address.startswith(("file://%s/" % archive().page, "data:", "about:"))])
        self.assertEqual([], [address for address in requests if "/details-" in address or "/words-" in address])

    def test_piece_that_is_missing_is_said_to_be(self):
        made = Archive("missing")
        make_up(made.path, 5000)
        made.write()
        name = made.head()["timed"][0]["entries"]
        (made.page / "data" / (name + ".js")).unlink()
        browser.open(made.page / "index.html")
        until(lambda: browser.run("return globalThis.zuView && !document.getElementById('trouble').hidden"), "the trouble")
        self.assertIn("data/%s.js" % name, browser.text("#trouble"))
        # The pieces arrive one after the other: the missing one is spoken of before the last has come.
        until(lambda: browser.run("return zuView.page.list.found.length") == 5000 - 4096, "the entries of the other pieces")

    def test_archive_without_entries_says_so(self):
        made = Archive("empty")
        made.write()
        open_page(made)
        self.assertEqual("There are no entries in this archive.", browser.text("#event"))
        browser.run("document.getElementById('tab-statisticsSheet').click()")
        self.assertIn("There are no faults", browser.text("#statisticsSheet"))
        self.assertEqual([], [entry for entry in browser.log("browser") if entry["level"] == "SEVERE"])

    def test_both_languages_have_all_texts(self):
        open_page()
        english, russian = browser.run("const { en, ru } = zuView.textsForTests; return [Object.keys(en).sort(), Object.keys(ru).sort()]")
        self.assertEqual(english, russian)
        press_button("[data-language=ru]")
        self.assertEqual(["Записи", "Статистика"], browser.texts("#tabs button"))
        self.assertEqual("ru", browser.run("return document.documentElement.lang"))
        self.assertTrue(browser.text("#found").startswith("Найдено: "))

    def test_entry_leads_to_its_page(self):
        place = folder / "recordings"
        zucmtr("sample", "--out", place, "--random-fault", "1-2")
        zucmtr("archive", "update", "--quiet", place)
        zucmtr("archive", "page", "--pages", "faults", "-o", place / "page", place)
        browser.open(place / "page" / "index.html", "lang=ru&theme=dark")
        until(lambda: browser.run(LOADED), "the entries")
        links = browser.run("return [...document.querySelectorAll('.row a')].map((one) => one.href)")
        self.assertEqual(2, len(links))
        browser.open(links[0].split("://")[1].split("#")[0], links[0].split("#")[1])
        until(lambda: browser.run("return Boolean(globalThis.zuView && zuView.page && zuView.page.data)"), "the page of the entry")
        self.assertEqual(["ru", "dark"], browser.run("return [document.documentElement.lang, document.documentElement.dataset.theme]"))
        self.assertIn(browser.run("return zuView.page.data.identity.source"), {path.name for path in place.glob("*.ZU")})


class Times(unittest.TestCase):
    def bars(self):
        return browser.run("const { timeline } = zuView.page; return [timeline.unit.text(timeline.firstBar), [...timeline.faults], [...timeline.others]]")

    def test_bars_count_faults_and_others_by_month(self):
        open_page()
        months = dict(archive().run("SELECT strftime('%Y-%m', moment / 1000000 + utc_offset * 60, 'unixepoch'), sum(fault_kind IS NOT NULL) FROM entries WHERE moment NOT NULL GROUP BY 1"))
        others = dict(archive().run("SELECT strftime('%Y-%m', moment / 1000000 + utc_offset * 60, 'unixepoch'), sum(fault_kind IS NULL) FROM entries WHERE moment NOT NULL GROUP BY 1"))
        first, faults, rest = self.bars()
        self.assertEqual(min(months), first)
        self.assertEqual([months[month] for month in sorted(months)], faults)
        self.assertEqual([others[month] for month in sorted(others)], rest)

    def test_dragging_over_bars_chooses_their_months_and_enlarging_shows_days(self):
        open_page()
        box = browser.run("const box = document.querySelector('.bars').getBoundingClientRect(); return [box.left, box.top, zuView.page.timeline.step]")
        x = lambda bar: box[0] + (bar + 0.5) * box[2]  # noqa: E731
        browser.mouse(("move", x(3), box[1] + 40), ("down", 0), ("move", x(4), box[1] + 40), ("move", x(5), box[1] + 40), ("up", 0))
        self.assertEqual(["2021-04-01", "2021-06-30"], browser.run("return ['from', 'to'].map((name) => document.getElementById('filter-' + name).value)"))
        self.assertEqual(archive().column("SELECT count(*) FROM entries WHERE %s BETWEEN '2021-04-01' AND '2021-06-30'" % LOCAL)[0], len(found()))
        press_button("#zoomTime")
        days = dict(archive().run("SELECT %s, count(*) FROM entries WHERE %s BETWEEN '2021-04-01' AND '2021-06-30' GROUP BY 1" % (LOCAL, LOCAL)))
        first, faults, rest = self.bars()
        self.assertEqual(("2021-04-01", 91), (first, len(faults)))
        start = datetime.date(2021, 4, 1)
        self.assertEqual([days.get(str(start + datetime.timedelta(day)), 0) for day in range(91)], [one + other for one, other in zip(faults, rest)])
        press_button("#wholeTime")
        self.assertEqual(5002, len(found()))


class Statistics(unittest.TestCase):
    def tiles(self):
        return browser.run("return Object.fromEntries([...document.querySelectorAll('.tiles div')].map((one) => [one.dataset.fact, one.lastChild.textContent]))")

    def rows(self, card):
        return browser.run("return [...document.querySelectorAll(arguments[0] + ' tbody tr')].map((row) => [...row.cells].map((cell) => cell.textContent))", "." + card)

    def setUp(self):
        open_page(settings="lang=en&theme=light&sheet=statisticsSheet&from=2022-01-01&to=2022-12-31")

    where = "FROM entries WHERE fault_kind IS NOT NULL AND gone IS NULL AND %s BETWEEN '2022-01-01' AND '2022-12-31'" % LOCAL

    def test_figures_are_those_of_the_entries_that_are_found(self):
        durations = sorted(archive().column("SELECT fault_duration " + self.where))
        count, reclosed = archive().run("SELECT count(*), sum(reclosed) " + self.where)[0]
        tiles = self.tiles()
        self.assertEqual(str(count), tiles["statFaults"])
        median = statistics.median_low(durations) * 1000
        self.assertEqual("%g ms" % round(median, 1), tiles["statMedian"])
        self.assertEqual("%g ms" % round(durations[-1] * 1000, 1), tiles["statSlowest"])
        self.assertEqual("%d of %d" % (reclosed, count), tiles["statReclosed"])

    def test_months_and_lines_are_counted_by_kind(self):
        groups = {"one": "'AG', 'BG', 'CG'", "two": "'AB', 'BC', 'CA'", "twoEarth": "'ABG', 'BCG', 'CAG'", "three": "'ABC', 'ABCG'"}
        months = browser.run("const { groups } = zuView.page.statistics.months; return Object.fromEntries(Object.entries(groups).map(([name, counts]) => [name, [...counts]]))")
        for group, kinds in groups.items():
            counts = dict(archive().run("SELECT substr(%s, 6, 2), count(*) %s AND fault_kind IN (%s) GROUP BY 1" % (LOCAL, self.where, kinds)))
            self.assertEqual([counts.get("%02d" % month, 0) for month in range(1, 13)], months[group])
        press_button(".byLine .more")
        expected = {}
        for circuit, kind, count in archive().run("SELECT fault_circuit, fault_kind, count(*) %s GROUP BY 1, 2" % self.where):
            line = expected.setdefault(circuit, dict.fromkeys(groups, 0))
            line[next(group for group, kinds in groups.items() if "'%s'" % kind in kinds)] += count
        shown = {row[0]: [int(cell or 0) for cell in row[1:6]] for row in self.rows("byLine")}
        self.assertEqual({circuit: [*line.values(), sum(line.values())] for circuit, line in expected.items()}, shown)

    def test_faults_are_those_of_archive_stats_without_what_is_gone(self):
        self.assertGreater(archive().column(self.where.replace("FROM", "SELECT count(*) FROM").replace("gone IS NULL", "gone IS NOT NULL"))[0], 0)
        stats = json.loads(zucmtr("archive", "stats", "--json", "--since", "2022", "--until", "2022", "--only", "months", "--only", "circuits", archive().place).stdout)
        self.assertEqual(str(sum(month["faults"] for month in stats["months"])), self.tiles()["statFaults"])
        months = browser.run("const { groups } = zuView.page.statistics.months; return [...Object.values(groups)[0].keys()].map((month) => Object.values(groups).reduce((sum, counts) => sum + counts[month], 0))")
        self.assertEqual([month["faults"] for month in stats["months"]], months)
        press_button(".byLine .more")
        self.assertEqual({one["circuit"]: one["faults"] for one in stats["circuits"]}, {row[0]: int(row[5]) for row in self.rows("byLine")})

    def test_slowest_clearings_lead_to_their_entries(self):
        slowest = archive().run("SELECT path, fault_circuit %s AND fault_duration IS NOT NULL ORDER BY fault_duration DESC LIMIT 15" % self.where)
        self.assertEqual([circuit for _, circuit in slowest], [row[3] for row in self.rows("slow")])
        press_button(".slow tbody tr:nth-child(3) button")
        self.assertEqual(slowest[2][0].split("/")[-1], browser.run("const { list, entries } = zuView.page; return entries.names[list.found[list.active]]"))
        self.assertFalse(browser.run("return document.getElementById('listSheet').hidden"))

    def test_silent_recorders_come_first_counted_to_the_newest_entry(self):
        newest = datetime.date.fromisoformat(archive().column("SELECT max(%s) FROM entries" % LOCAL)[0])
        silence = {(station, recorder): (newest - datetime.date.fromisoformat(last)).days
                   for station, recorder, last in archive().run("SELECT station, recorder, max(%s) FROM entries WHERE moment NOT NULL GROUP BY 1, 2" % LOCAL)}
        if browser.run("return document.querySelector('.recorders .more') !== null"):
            press_button(".recorders .more")
        rows = self.rows("recorders")
        self.assertEqual(silence, {(row[0], row[1]): int(row[3].replace("silent ", "").replace("silent", "").replace(browser.run("return zuView.count(1000)[1]"), "")) for row in rows})
        silent = [row for row in rows if "silent" in row[3]]
        self.assertEqual(silent, rows[:len(silent)])
        self.assertGreater(len(silent), 0)


if __name__ == "__main__":
    run_tests()
