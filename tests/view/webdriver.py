"""A browser without a screen, driven over the WebDriver protocol on the loopback."""
import json
import os
import shutil
import socket
import subprocess
import tempfile
import time
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
PATIENCE = 20  # seconds for what should take a fraction of one


def until(condition, what):
    """Waits for a condition and gives its value."""
    end = time.monotonic() + PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError("waited in vain: " + what)
        time.sleep(0.01)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Browser:
    def __init__(self, driver, chromium, width=1400, height=1000):
        self.port = free_port()
        # The browser leaves directories in TMPDIR.
        self.place = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.process = subprocess.Popen([driver, "--port=%d" % self.port], stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL, env={**os.environ, "TMPDIR": self.place.name})
        self.base = "http://127.0.0.1:%d" % self.port
        until(self._is_ready, "chromedriver")
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--lang=en-US",
                     "--user-data-dir=" + os.path.join(self.place.name, "profile"), "--window-size=%d,%d" % (width, height)]
        capabilities = {"browserName": "chrome", "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"},
                        "goog:chromeOptions": {"binary": shutil.which(chromium), "args": arguments}}
        answer = self._call("POST", "/session", {"capabilities": {"alwaysMatch": capabilities}})
        self.base += "/session/" + answer["sessionId"]

    def _is_ready(self):
        try:
            return self._call("GET", "/status")["ready"]
        except OSError:
            return False

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, {"Content-Type": "application/json"}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=PATIENCE * 3) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise AssertionError(json.load(error)["value"]["message"]) from None

    def close(self):
        try:
            self._call("DELETE", "")
        finally:
            self.process.terminate()
            self.process.wait()
            self.place.cleanup()

    def open(self, path, wishes="lang=en&theme=light"):
        self.log("performance")
        self.log("browser")
        self._call("POST", "/url", {"url": "about:blank"})
        self._call("POST", "/url", {"url": "file://%s#%s" % (path, wishes)})

    def run(self, script, *arguments):
        """The value that a script returns."""
        return self._call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def settle(self):
        """Waits until the page has drawn what it was asked for."""
        self._call("POST", "/execute/async", {"script": "const done = arguments[0];"
                   "requestAnimationFrame(() => requestAnimationFrame(() => done(true)));", "args": []})

    def log(self, kind):
        return self._call("POST", "/se/log", {"type": kind})

    def requests(self):
        """The addresses that were asked for since the page was opened."""
        events = [json.loads(entry["message"])["message"] for entry in self.log("performance")]
        return [event["params"]["request"]["url"] for event in events if event["method"] == "Network.requestWillBeSent"]

    def actions(self, *sources):
        self._call("POST", "/actions", {"actions": list(sources)})
        self._call("DELETE", "/actions")
        self.settle()

    def press(self, key, *held):
        """Presses a key of the keyboard while others are held."""
        down = [{"type": "keyDown", "value": value} for value in (*held, key)]
        up = [{"type": "keyUp", "value": value} for value in (key, *reversed(held))]
        self.actions({"type": "key", "id": "keys", "actions": down + up})

    def mouse(self, *moves, held=None):
        """Moves and presses: ("move", x, y), ("down", button), ("up", button)."""
        steps = [self._step(*move) for move in moves]
        mouse = {"type": "pointer", "id": "mouse", "parameters": {"pointerType": "mouse"}, "actions": steps}
        if held is None:
            return self.actions(mouse)
        keys = [{"type": "keyDown", "value": held}] + [{"type": "pause"}] * (len(steps) - 1)
        mouse["actions"] = [{"type": "pause"}] + steps[:]
        keys += [{"type": "pause"}, {"type": "keyUp", "value": held}]
        return self.actions({"type": "key", "id": "keys", "actions": keys}, mouse)

    def fingers(self, *paths):
        """One finger for each list of (x, y), all moving at once."""
        sources = []
        for number, path in enumerate(paths):
            steps = [self._step("move", *path[0]), self._step("down", 0)]
            steps += [self._step("move", *point) for point in path[1:]] + [self._step("up", 0)]
            sources.append({"type": "pointer", "id": "finger%d" % number, "parameters": {"pointerType": "touch"},
                            "actions": steps})
        self.actions(*sources)

    def wheel(self, x, y, delta_x, delta_y, held=None):
        wheel = {"type": "wheel", "id": "wheel", "actions": [{"type": "scroll", "x": x, "y": y, "deltaX": delta_x,
                                                             "deltaY": delta_y}]}
        if held is None:
            return self.actions(wheel)
        wheel["actions"].insert(0, {"type": "pause"})
        keys = [{"type": "keyDown", "value": held}, {"type": "pause"}, {"type": "keyUp", "value": held}]
        return self.actions({"type": "key", "id": "keys", "actions": keys}, wheel)

    @staticmethod
    def _step(kind, *values):
        if kind == "move":
            return {"type": "pointerMove", "duration": 0, "x": round(values[0]), "y": round(values[1])}
        return {"type": "pointerDown" if kind == "down" else "pointerUp", "button": values[0]}

    def paper(self):
        """The page as it is printed: PDF in base64."""
        return self._call("POST", "/print", {"background": True})
