#!/usr/bin/python3
"""How fast the page of `zucmtr view` opens and pans: pagespeed.py ZUCMTR [OTHER] [--channels N,...] [--samples N] [--rounds N]

Writes a record with three-phase circuits and some discrete channels, has its page written and opens it in Chromium
without a screen. With a second program both are measured in turn, and the last column is the ratio of the first one to
the second: an earlier build, say. All values are medians. "Opens in" is from the request to the first strip that is
drawn, with the oscillogram as the first sheet; "first sheet" is the same for the page as it opens by itself.
"""
import argparse
import array
import math
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests" / "view"))
from browser import Browser, until  # noqa: E402

RATE = 4000  # samples a second
STATES = 32
DRAWN = """const p = globalThis.zuView && zuView.page;
if (!p || !p.strips) return false;
return p.opened && p.opened !== 'oscillogram' || p.strips.some((strip) => strip.chart && !strip.stale);"""
WATCH = """(function () {
  const drawn = () => { %s };
  const look = () => { if (drawn()) globalThis.drawnAt = performance.now(); else requestAnimationFrame(look); };
  requestAnimationFrame(look);
})();""" % DRAWN
STEPS = """const { frame } = zuView.page;
const done = arguments[0];
const step = (move) => { const start = performance.now(); move(); zuView.page.drawPending(); return performance.now() - start; };
const median = (times) => times.sort((a, b) => a - b)[times.length >> 1];
const pans = [], zooms = [];
const next = (left) => {
  if (left === 0) return done([median(pans), median(zooms)]);
  pans.push(step(() => frame.pan(frame.span / 50)));
  zooms.push(step(() => frame.zoom(left % 2 ? 0.9 : 1 / 0.9, (frame.from + frame.to) / 2)));
  requestAnimationFrame(() => next(left - 1));
};
frame.show(frame.start, frame.start + (frame.end - frame.start) / 2);
requestAnimationFrame(() => next(60));"""


def write_record(path, channels, samples):
    """Circuits of Ua Ub Uc Ia Ib Ic with a short circuit in the middle of the first, binary, revision 2013."""
    names = ["%s%s" % (quantity, phase) for quantity in "UI" for phase in "abc"]
    lines = ["Speed,Device,2013", "%d,%dA,%dD" % (channels + STATES, channels, STATES)]
    for number in range(channels):
        circuit = "Line %d" % (number // 6 + 1)
        lines.append("%d,%s:%s,,%s,%s,%g,0,0,-32767,32767,1,1,P"
                     % (number + 1, circuit, names[number % 6], circuit, "VA"[number % 6 // 3], 10 if number % 6 < 3 else 1))
    for number in range(STATES):
        lines.append("%d,Signal %d,,Line 1,0" % (number + 1, number + 1))
    lines += ["50", "1", "%d,%d" % (RATE, samples), "01/02/2024,00:00:00.000000",
              "01/02/2024,00:00:%09.6f" % (samples / RATE / 2), "BINARY", "1", "0,0", "0,0"]
    path.write_text("\r\n".join(lines) + "\r\n", encoding="utf-8")
    columns = [wave(number, samples) for number in range(channels)]
    half = samples // 2
    with path.with_suffix(".dat").open("wb") as file:
        for sample in range(samples):
            state = 3 if 0 <= sample - half < RATE // 10 else 0
            file.write(array.array("I", [sample + 1, round(sample * 1e6 / RATE)]).tobytes()
                       + array.array("h", [column[sample] for column in columns]).tobytes()
                       + array.array("H", [state] + [0] * (STATES // 16 - 1)).tobytes())


def wave(number, samples):
    period = RATE // 50
    turn = 2 * math.pi * (number % 3) / 3 + 0.1 * number
    one = [round(3000 * math.sin(2 * math.pi * k / period - turn)) for k in range(period)]
    column = array.array("h", (one * (samples // period + 1))[:samples])
    if number == 3:  # a short circuit of phase A
        for sample in range(samples // 2, samples // 2 + RATE // 10):
            column[sample] = 8 * column[sample]
    return column


def measure(program, record, page, browser):
    start = time.monotonic()
    subprocess.run([program, "view", record, "-o", page], stdout=subprocess.DEVNULL, check=True)
    values = {"written": (time.monotonic() - start) * 1e3}
    for sheet, name in (("", "first"), ("&sheet=oscillogram", "opens")):
        browser.open(page, "lang=en&theme=light" + sheet)
        values[name] = until(lambda: browser.run("return globalThis.drawnAt"), "the page")
    browser.settle()
    values["pan"], values["zoom"] = browser.driver.execute_async_script(STEPS)
    return values


def row(channels, size, medians):
    cells = ["%d" % channels, "%.1f MB" % (size / 1e6)]
    for name, unit in (("written", "%.0f ms"), ("first", "%.0f ms"), ("opens", "%.0f ms"), ("pan", "%.1f ms"), ("zoom", "%.1f ms")):
        text = " / ".join(unit % median[name] for median in medians)
        if len(medians) == 2:
            text += " = %.2f" % (medians[0][name] / medians[1][name])
        cells.append(text)
    print("| " + " | ".join(cells) + " |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("other", nargs="?")
    parser.add_argument("--channels", default="8,64,256")
    parser.add_argument("--samples", type=int, default=100000)
    parser.add_argument("--rounds", type=int, default=5)
    options = parser.parse_args()
    programs = [program for program in (options.program, options.other) if program]
    print("| Analog channels | Page | Written in | First sheet in | Opens in | A step of panning | of zooming |")
    print("|---|---|---|---|---|---|---|")
    with tempfile.TemporaryDirectory() as scratch:
        record, page = Path(scratch, "record.cfg"), Path(scratch, "page.html")
        browser = Browser("chromedriver", "chromium")
        try:
            browser.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})
            for channels in map(int, options.channels.split(",")):
                write_record(record, channels, options.samples)
                found = [[measure(program, record, page, browser) for program in programs] for _ in range(options.rounds)]
                row(channels, page.stat().st_size,
                    [{name: statistics.median(one[i][name] for one in found) for name in found[0][i]} for i in range(len(programs))])
        finally:
            browser.close()


if __name__ == "__main__":
    main()
