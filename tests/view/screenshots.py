"""Makes the pictures of docs/images again from the sample station.

    screenshots.py ZUCMTR CHROMEDRIVER CHROMIUM DIRECTORY [LANGUAGE]

With the language ru it makes those of docs/images/ru, but for the ones that docs/images has in Russian already.
PYTHONPATH names the directory of the Python module, whose picture is that of the tour; a test compares it. Before they are committed, `pngquant --force --ext .png` makes them a third as large.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

from browser import Browser, until

HOME = "\ue011"
LOCALES = {"en": "C.UTF-8", "ru": "ru_RU.UTF-8"}
SHEETS = ["answerSheet", "oscillogram", "planeSheet", "spectrumSheet", "valueSheet", "reportSheet", "channelSheet", "recordSheet"]
# The plane's loci come from the worker.
SETTLED = ("const { opened, parts } = zuView.page; return opened !== 'planeSheet' || Boolean(parts.planeSheet.loci && "
           "parts.planeSheet.loci.isReady)")


def main(program, driver, chromium, out, language="en"):
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        subprocess.run([program, "sample", "--out", folder], check=True, stdout=subprocess.DEVNULL)
        page = folder / "page.html"
        fault = folder / "fault"
        subprocess.run([program, "sample", "--out", fault, "--fault", "AG", "--distance", "42", "--resistance", "5",
                        "--reclose", "fault"], check=True, stdout=subprocess.DEVNULL)
        recording = next(fault.glob("*.ZU"))
        with (fault / "lines.ini").open("a", encoding="utf-8") as lines:
            lines.write("zone1=mho 5 8.5 9.9\nzone2=polygon -3,-3 14,-3 24,34 -10,34\n")
        answer = folder / "answer.html"
        subprocess.run([program, "view", recording, "-o", answer, "--png", pathlib.Path(out) / "view-overview.png"],
                       check=True, env=dict(os.environ, LC_ALL=LOCALES[language]))
        subprocess.run([program, "view", folder / "Vostochnaya_000123.ZU", "--ini", folder / "ZuDrv.ini", "--device",
                        "Vostochnaya", "-o", page], check=True)
        both = folder / "both.html"
        subprocess.run([program, "view", folder / "Vostochnaya_000123.ZU", folder / "Vostochnaya_000125.ZU", "--align",
                        "trigger", "-o", both], check=True, stdout=subprocess.DEVNULL)
        if language == "en":
            draw_tour(program, folder / "tour", pathlib.Path(out) / "python.png")
        browser = Browser(driver, chromium, 1360, 980)
        try:
            shoot_all(browser, page, both, pathlib.Path(out), language)
            if language == "en":
                shoot_answer(browser, answer, pathlib.Path(out))
                shoot_sheets(browser, answer, pathlib.Path(out) / "sheets")
        finally:
            browser.close()


def draw_tour(program, station, picture):
    subprocess.run([program, "sample", "--out", station, "--fault", "AG"], check=True, stdout=subprocess.DEVNULL)
    tour = pathlib.Path(__file__).parents[2] / "examples/fault.py"
    subprocess.run([sys.executable, tour, next(station.glob("*.ZU")), picture], check=True, stdout=subprocess.DEVNULL,
                   env=dict(os.environ, MPLBACKEND="Agg"))


def shoot_answer(browser, page, out):
    for name, settings in (("view-answer.png", "lang=en&theme=light"), ("view-answer-dark.png", "lang=ru&theme=dark")):
        browser.open(page, settings + "&sheet=answerSheet")
        until(lambda: browser.run("return Boolean(window.zuView && zuView.page)"), "the page")
        browser.settle()
        browser.settle()
        (out / name).write_bytes(browser.picture())


def shoot_sheets(browser, page, out):
    """Every sheet, light and dark, in both languages."""
    out.mkdir(exist_ok=True)
    for sheet in SHEETS:
        for theme in ("light", "dark"):
            for language in ("en", "ru"):
                browser.open(page, "lang=%s&theme=%s&sheet=%s" % (language, theme, sheet))
                until(lambda: browser.run("return Boolean(window.zuView && zuView.page)"), "the page")
                until(lambda: browser.run(SETTLED), "what the sheet shows")
                browser.settle()
                (out / ("%s-%s-%s.png" % (sheet.replace("Sheet", ""), language, theme))).write_bytes(browser.picture())


def shoot_all(browser, page, both, out, language):
    def shoot(name):
        browser.settle()
        browser.settle()
        (out / name).write_bytes(browser.picture())

    def show(settings, circuit, page=page):
        browser.open(page, settings + "&sheet=oscillogram")
        until(lambda: browser.run("return Boolean(window.zuView && zuView.page && zuView.page.strips[0].chart)"),
              "the page")
        browser.run("""const title = [...document.querySelectorAll('#groups h3')].find((t) => t.textContent === arguments[0]);
            const bar = document.getElementById('bar').getBoundingClientRect().height;
            scrollTo(0, title.getBoundingClientRect().top + scrollY - bar - 14);""", circuit)
        browser.press("2")

    show(f"lang={language}&theme=light", "ВЛ 110 кВ Восточная")
    browser.run("scrollTo(0, 0)")
    shoot("view.png")
    show(f"lang={language}&theme=dark", "ВЛ 110 кВ Восточная")
    shoot("view-dark.png")
    if language == "en":
        show("lang=ru&theme=light", "ВЛ 110 кВ Западная")
        shoot("view-russian.png")
    show(f"lang={language}&theme=light", "ВЛ 220 кВ Северная")
    browser.press(HOME)
    shoot("view-whole.png")
    show(f"lang={language}&theme=light", "ВЛ 110 кВ Восточная")
    browser.run("const f = zuView.page.frame; f.show(95, 113); zuView.page.cursors.set(1, 1200 + 251);"
                "zuView.page.cursors.set(0, 1200 + 240)")
    shoot("view-zoomed.png")
    browser.run("document.querySelector('[data-layout=apart]').click(); zuView.page.cursors.showFault()")
    shoot("view-apart.png")
    for sheet in ("reportSheet", "channelSheet", "recordSheet"):
        browser.run("document.querySelector(`[data-sheet=${arguments[0]}]`).click(); scrollTo(0, 0)", sheet)
        shoot("view-%s.png" % sheet)
    show(f"lang={language}&theme=light&shift=-1199997", "ВЛ 110 кВ Восточная", both)
    shoot("view-second.png")


if __name__ == "__main__":
    main(*sys.argv[1:])
