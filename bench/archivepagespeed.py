#!/usr/bin/python3
"""How fast the page of `zucmtr archive page` opens and filters: archivepagespeed.py ZUCMTR [--entries N] [--rounds N] [--keep DIR]

Makes up a catalogue of faults on the lines of forty stations, has its page written and opens it in Chromium without a
screen. "First rows" is from the request to the first rows of the list, "opens in" to the last entry that is loaded and
shown. The others are from the change of a filter to the end of the frame that shows it. All values are medians. With
--keep the page stays in that directory, to be looked at.
"""
import argparse
import datetime
import math
import random
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests" / "view"))
from browser import Browser, until  # noqa: E402

LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_"
KINDS = ["AG"] * 9 + ["BG"] * 8 + ["CG"] * 9 + ["AB", "BC", "CA"] * 2 + ["ABG", "BCG", "CAG", "ABC", "ABCG"]
TOWNS = ["Северная", "Южная", "Восточная", "Западная", "Узловая", "Центральная", "Заречная", "Луговая", "Лесная", "Степная"]
SIGNALS = ["ДЗЛ", "ДФЗ", "ДЗ 1 ст.", "ДЗ 2 ст.", "ТЗНП 1 ст.", "ТЗНП 2 ст.", "МТЗ", "УРОВ", "АПВ", "Отключение выключателя"]
DAYS = 5 * 365
WATCH = """(function () {
  const look = () => {
    const page = globalThis.zuView && zuView.page;
    if (page && page.selected && page.selected.count > 0 && !globalThis.firstAt) globalThis.firstAt = performance.now();
    if (page && page.entries.loadedCount === page.entries.total && !page.isRequested) globalThis.openAt = performance.now();
    else requestAnimationFrame(look);
  };
  requestAnimationFrame(look);
})();"""
# Sets a field as a hand would, and waits for the frame that shows what it does.
CHANGE = """const [change, done] = [arguments[0], arguments[arguments.length - 1]];
const start = performance.now();
new Function('page', 'set', change)(zuView.page, (id, value) => {
  const field = document.getElementById(id);
  field.value = value;
  field.dispatchEvent(new Event(field.tagName === 'SELECT' ? 'change' : 'input'));
});
requestAnimationFrame(() => setTimeout(() => done(performance.now() - start)));"""
# What is measured, each with what brings the page back.
CHANGES = [
    ("station", "set('filter-station', 'ПС 220 кВ Южная 3')", "set('filter-station', '')"),
    ("faults", "set('filter-show', 'fault')", "set('filter-show', '')"),
    ("longer", "set('filter-longer', '120')", "set('filter-longer', '')"),
    ("text", "page.filter.set('text', 'дфз южная'); page.select()", "page.filter.set('text', ''); page.select()"),
    ("span", "page.timeline.choose([zuView.dayOfText('2022-03-01'), zuView.dayOfText('2022-09-30')])", "page.timeline.choose(null)"),
    ("sorting", "page.list.sort('duration')", "page.list.sort('time'); page.list.isDown || page.list.sort('time')"),
    ("statistics", "page.openSheet('statisticsSheet')", "page.openSheet('listSheet')"),
]


def waves(kind, chance):
    """A picture's letters: currents that are large in the phases of the fault, voltages that are small."""
    texts = []
    for quantity in "IU":
        for number, phase in enumerate("ABC"):
            size = (31, 9) if (phase in kind) == (quantity == "I") else (12 if quantity == "I" else 31, 12)
            high = size[0] if quantity == "I" or phase not in kind else 14
            turn = 2 * math.pi * number / 3 + chance
            texts.append("".join(LETTERS[31 + round((high if 22 < column < 80 else (9 if quantity == "I" else 31)) * math.sin(2 * math.pi * column / 12.8 - turn))]
                                 for column in range(128)))
    return " ".join(texts)


def make_up(path, count):
    """Fills an empty catalogue with entries, the same each time."""
    chance = random.Random(7)
    database = sqlite3.connect(path)
    stations = ["ПС %d кВ %s %d" % (chance.choice((110, 220, 500)) if number != 12 else 220, TOWNS[number % 10], number // 10 + 1) for number in range(40)]
    stations[21] = "ПС 220 кВ Южная 3"
    circuits = {station: ["ВЛ %s – %s %d" % (station.split()[-2], TOWNS[(number * 3 + 1) % 10], number + 1) for number in range(10)] for station in stations}
    names = ["%s %d" % (signal, number) for signal in SIGNALS for number in range(1, 81)]
    database.executemany("INSERT INTO channels (id, kind, circuit, name, phase, unit) VALUES (?, 'digital', '', ?, '', '')",
                         list(enumerate(names, 1)))
    pictures = {kind: [waves(kind, turn / 3) for turn in range(8)] for kind in set(KINDS)}
    start = datetime.datetime(2021, 1, 1, tzinfo=datetime.timezone(datetime.timedelta(hours=3)))
    entries, shown, changes = [], [], []
    for number in range(1, count + 1):
        station = stations[min(int(chance.random() ** 1.5 * 40), 39)]
        day = chance.random() * DAYS
        if station == stations[5]:
            day *= 0.8  # silent since
        moment = start + datetime.timedelta(days=day + 20 * math.sin(day / 58), seconds=chance.random() * 60)
        circuit = chance.choice(circuits[station])
        fault = [None] * 11
        if chance.random() < 0.3:
            kind = chance.choice(KINDS)
            lasting = round(abs(chance.gauss(0.062, 0.02)) + (chance.random() < 0.04) * chance.random(), 4)
            current = round(chance.lognormvariate(8, 0.6), 1)
            fault = [kind, circuit, "forward", 0.0, lasting, lasting, current, "takagi", round(chance.random() * 100, 1), round(chance.random() * 60, 2), int(chance.random() < 0.8)]
            shown.append((number, -0.04, 0.2, current, 110e3, chance.choice(pictures[kind])))
        is_gone = chance.random() < 0.01
        is_unread = not is_gone and chance.random() < 0.003
        changes += [(channel, number, 2, 0.01) for channel in chance.sample(range(1, len(names) + 1), 8)]
        common = ["recording", "%s/%06d.ZU" % (station, number), "%064x" % number, 400000 + number % 1000, "2026-01-01T00:00:00Z", "2026-01-01T00:00:00Z",
                  "2026-01-02T00:00:00Z" if is_gone else None]
        if is_unread:
            entries.append(common + ["recordingUnreadable", "it is no recording", "", ""] + [None] * 11 + [0, 0, 0] + [None] * 11 + [0])
            shown = shown[:-1] if shown and shown[-1][0] == number else shown
            continue
        text = moment.isoformat(timespec="microseconds")
        entries.append(common + [None, None, station, "РАС-%d" % (number % 2 + 1), text, text, 180, round(moment.timestamp() * 1e6), circuit,
                                 "Пуск по току %s" % circuit, "Порог 1.5", 2.5, 6000, "2400", 50.0, 32, 96, 16, *fault, 0])
    columns = ("kind, path, print, bytes, noted, looked, gone, reason, error, station, recorder, start_time, trigger_time, utc_offset, moment, circuit, cause, "
               "setting, duration, samples, rates, frequency, analog, digital, events, fault_kind, fault_circuit, fault_direction, fault_onset, fault_clearing, "
               "fault_duration, fault_current, distance_method, distance_percent, distance_km, reclosed, forgiven")
    database.executemany("INSERT INTO entries (%s) VALUES (%s)" % (columns, ", ".join("?" * len(columns.split(",")))), entries)
    database.executemany("INSERT INTO pictures VALUES (?, ?, ?, ?, ?, ?)", shown)
    database.executemany("INSERT INTO changes VALUES (?, ?, ?, ?)", changes)
    database.commit()
    database.close()


def measure(browser, page):
    browser.open(page)
    values = {"opens": until(lambda: browser.run("return globalThis.openAt"), "the page")}
    values["first"] = browser.run("return globalThis.firstAt")
    browser.settle()
    change = lambda script: browser.driver.execute_async_script(CHANGE, script)  # noqa: E731
    change("page.filter.set('text', 'дфз'); page.select()")
    until(lambda: browser.run("return zuView.page.searching.isWhole"), "the words")
    change("page.filter.set('text', ''); page.select()")
    for name, there, back in CHANGES:
        values[name] = change(there)
        change(back)
    return values


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--entries", type=int, default=100000)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--keep", type=Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        archive = Path(scratch, "archive")
        archive.mkdir()
        subprocess.run([options.program, "archive", "update", "--quiet", archive], check=True)
        make_up(archive / "zucmtr-archive.db", options.entries)
        page = options.keep or Path(scratch, "page")
        start = time.monotonic()
        subprocess.run([options.program, "archive", "page", "--title", "Archive", "-o", page, archive], stdout=subprocess.DEVNULL, check=True)
        written = time.monotonic() - start
        size = sum(file.stat().st_size for file in page.rglob("*") if file.is_file())
        browser = Browser("chromedriver", "chromium")
        try:
            browser.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})
            found = [measure(browser, (page / "index.html").absolute()) for _ in range(options.rounds)]
        finally:
            browser.close()
    names = ["first", "opens"] + [name for name, _, _ in CHANGES]
    print("| Entries | Size | Written in | First rows | Opens in | " + " | ".join(names[2:]) + " |")
    print("|" + "---|" * (len(names) + 3))
    print("| %d | %.1f MB | %.1f s | %s |" % (options.entries, size / 1e6, written,
                                             " | ".join("%.0f ms" % statistics.median(one[name] for one in found) for name in names)))


if __name__ == "__main__":
    main()
