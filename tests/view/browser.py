"""A browser without a screen, driven by selenium."""
import functools
import json
import os
import re
import shutil
import tempfile
import time

from selenium.webdriver import Chrome, ChromeOptions
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.actions.action_builder import ActionBuilder
from selenium.webdriver.common.actions.pointer_actions import PointerActions
from selenium.webdriver.common.print_page_options import PrintOptions

PATIENCE = 20  # seconds for what should take a fraction of one
BESIDE_THE_WINDOW = re.compile('"[12] points out of Y bounds:')


def until(condition, what):
    """Waits for a condition and returns its value."""
    end = time.monotonic() + PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError("waited in vain: " + what)
        time.sleep(0.01)


class Driver(Service):
    """The driver's process. Selenium polls it every half second when it starts, and every second when it ends."""

    def is_connectable(self):
        return until(super().is_connectable, "chromedriver")

    def send_remote_shutdown_command(self):
        """Nothing: a signal follows, which ends it at once."""


def path_of(program):
    """Its path. Without one selenium would run a helper of its own, which uses the network."""
    path = shutil.which(program)
    assert path, program + " is not installed; run scripts/install-packages.sh view"
    return path


def with_page(chromium, place):
    """A script in a directory that starts the browser with a page: without a word for one it opens none, and the driver says none."""
    script = os.path.join(place, "browser")
    with open(script, "w", encoding="utf-8") as file:
        file.write('#!/bin/sh\nexec "%s" "$@" about:blank\n' % chromium)
    os.chmod(script, 0o700)
    return script


class Browser:
    """Starts when it is first used."""

    def __init__(self, driver, chromium, width=1400, height=1000):
        self.programs = driver, chromium
        self.size = width, height
        self.is_open = False

    @functools.cached_property
    def driver(self):
        driver, chromium = map(path_of, self.programs)
        # The browser leaves directories in TMPDIR.
        self.place = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        options = ChromeOptions()
        options.binary_location = with_page(chromium, self.place.name) if "headless-shell" in chromium else chromium
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--lang=en-US",
                         "--user-data-dir=" + os.path.join(self.place.name, "profile"), "--window-size=%d,%d" % self.size):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        options.ignore_local_proxy_environment_variables()
        started = Chrome(options=options, service=Driver(driver, env={**os.environ, "TMPDIR": self.place.name}))
        self.is_open = True
        return started

    def close(self):
        if self.is_open:
            self.driver.quit()
            self.place.cleanup()

    def open(self, path, settings="lang=en&theme=light"):
        self.driver.get("about:blank")  # ends what the page before, or the browser's own first one, still does
        self.log("performance")
        self.log("browser")
        self.driver.get("file://%s#%s" % (path, settings))

    def run(self, script, *arguments):
        """The value that a script returns."""
        return self.driver.execute_script(script, *arguments)

    def settle(self):
        """Waits until the page has drawn what it was asked for."""
        self.driver.execute_async_script("const done = arguments[0];"
                                         "requestAnimationFrame(() => requestAnimationFrame(() => done(true)));")

    def log(self, kind):
        """What the browser has noted since it was last asked, without a note of dygraphs that says nothing against a page:
        newer versions count the two points of a line that lie beside the window, where they need not fit its height."""
        return [entry for entry in self.driver.get_log(kind) if not BESIDE_THE_WINDOW.search(entry["message"])]

    def requests(self):
        """The addresses that were asked for since the page was opened."""
        events = [json.loads(entry["message"])["message"] for entry in self.log("performance")]
        return [event["params"]["request"]["url"] for event in events if event["method"] == "Network.requestWillBeSent"]

    def press(self, key, *held):
        """Presses a key of the keyboard while others are held."""
        actions = ActionBuilder(self.driver)
        for one in (*held, key):
            actions.key_action.key_down(one)
        for one in (key, *reversed(held)):
            actions.key_action.key_up(one)
        self._perform(actions)

    def mouse(self, *moves, held=None):
        """Moves and presses: ("move", x, y), ("down", button), ("up", button); a key may be held meanwhile."""
        actions = ActionBuilder(self.driver, duration=0)
        with Held(actions.key_action, held, actions.pointer_action) as keys:
            for move in moves:
                step(actions.pointer_action, *move)
                keys.pause()
        self._perform(actions)

    def fingers(self, *paths):
        """One finger for each list of (x, y), all moving at once."""
        actions = ActionBuilder(self.driver)
        for number, (first, *others) in enumerate(paths):
            finger = PointerActions(actions.add_pointer_input("touch", "finger%d" % number), duration=0)
            for move in [("move", *first), ("down", 0), *(("move", *point) for point in others), ("up", 0)]:
                step(finger, *move)
        self._perform(actions)

    def wheel(self, x, y, delta_x, delta_y, held=None):
        """Turns the wheel at a place; a key may be held meanwhile."""
        actions = ActionBuilder(self.driver)
        with Held(actions.key_action, held, actions.wheel_action) as keys:
            actions.wheel_action.scroll(x, y, delta_x, delta_y)
            keys.pause()
        self._perform(actions)

    def paper(self):
        """The page as it is printed: PDF in base64."""
        options = PrintOptions()
        options.background = True
        return self.driver.print_page(options)

    def picture(self):
        """The page as it is on the screen: PNG."""
        return self.driver.get_screenshot_as_png()

    def _perform(self, actions):
        actions.perform()
        actions.clear_actions()
        self.settle()


class Held:
    """Holds a key down, if there is one, while another device works: the steps of all devices keep pace."""

    def __init__(self, keys, key, device):
        self.keys, self.key, self.device = keys, key, device

    def __enter__(self):
        if self.key:
            self.keys.key_down(self.key)
            self.device.pause()
        return self

    def pause(self):
        if self.key:
            self.keys.pause()

    def __exit__(self, *failure):
        if self.key:
            self.keys.key_up(self.key)


def step(pointer, kind, *values):
    if kind == "move":
        pointer.move_to_location(*map(round, values))
    elif kind == "down":
        pointer.pointer_down(button=values[0])
    else:
        pointer.pointer_up(button=values[0])
