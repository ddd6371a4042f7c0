"""Makes the pictures of the archive's page for docs/images, from a made-up archive of 100,000 entries.

    screenshots.py ZUCMTR CHROMEDRIVER CHROMIUM DIRECTORY [LANGUAGE]

With the language ru it makes those of docs/images/ru, but for the one that docs/images has in Russian already. Before they
are committed, `pngquant --force --ext .png` makes them a third as large.
"""
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path[:0] = [str(ROOT / "tests" / "view"), str(ROOT / "bench")]
from archivepagespeed import make_up  # noqa: E402
from browser import Browser, until  # noqa: E402

LOADED = ("const page = globalThis.zuView && zuView.page; return Boolean(page && page.entries && "
          "page.entries.loadedCount === page.entries.total && !page.isRequested)")
FAULTS_OF_SUMMER = "show=fault&from=2023-03-01&to=2023-08-31"


def main(program, driver, chromium, out, language="en"):
    out = pathlib.Path(out)
    with tempfile.TemporaryDirectory() as scratch:
        archive, page = pathlib.Path(scratch, "archive"), pathlib.Path(scratch, "page")
        archive.mkdir()
        subprocess.run([program, "archive", "update", "--quiet", archive], check=True)
        make_up(archive / "zucmtr-archive.db", 100000)
        subprocess.run([program, "archive", "page", "--quiet", "--title", "Северные сети", "-o", page, archive], check=True)
        shots = [("archive-list.png", 1360, 980, f"lang={language}&theme=light&{FAULTS_OF_SUMMER}", 1),
                 ("archive-statistics.png", 1360, 1500, f"lang={language}&theme=light&sheet=statisticsSheet", None),
                 ("archive-narrow.png", 500, 980, f"lang={language}&theme=light", None)]
        if language == "en":
            shots.append(("archive-russian.png", 1360, 980, "lang=ru&theme=dark&kinds=twoEarth%20three&longer=80", None))
        for name, width, height, settings, chosen in shots:
            shoot(Browser(driver, chromium, width, height), page / "index.html", settings, chosen, out / name)


def shoot(browser, page, settings, chosen, picture):
    try:
        browser.open(page, settings)
        until(lambda: browser.run(LOADED), "the entries")
        browser.settle()
        if chosen is not None:
            browser.run("document.getElementById(`row-${arguments[0]}`).click()", chosen)
        browser.settle()
        browser.settle()
        picture.write_bytes(browser.picture())
    finally:
        browser.close()


if __name__ == "__main__":
    main(*sys.argv[1:])
