"""The still picture: what happened, against `zucmtr events --json`, and the waves of the faulted circuit."""
import unittest
import xml.etree.ElementTree

from faults import RUSSIAN, Fault, again, duration, evolving, quiet, ranged, run
from pages import folder, run_tests

SVG = "{http://www.w3.org/2000/svg}"


class FaultPictures(unittest.TestCase):
    def picture(self, fault, environment=None, *options):
        """The texts of the still picture, and the lines of two points: (colour, dashes, points)."""
        path = folder / "picture.svg"
        run("view", fault.recording, "--svg", path, *options, environment=environment)
        root = xml.etree.ElementTree.parse(path).getroot()
        texts = " ".join("".join(root.itertext()).split())
        lines, traces = [], []
        for group in root.iter(SVG + "g"):
            for line in group.iter(SVG + "polyline"):
                points = [tuple(map(float, point.split(","))) for point in line.get("points").split()]
                (lines if len(points) == 2 else traces).append((group.get("stroke"), group.get("stroke-dasharray"), points))
        return texts, lines, traces

    def assertHas(self, words, texts):
        """Qt splits a text where the script or the line changes."""
        self.assertIn("".join(words.split()), "".join(texts.split()))

    def test_sentences_and_figures_in_the_users_language(self):
        for fault in (again, ranged):
            found = fault.summary["fault"]
            best = found["distance"][found["best"]]
            for environment, sentences, texts in (
                    (None, fault.summary["text"], ["%.1f km, %.1f %%" % (best["km"], best["percent"]), "%.1f ohm" % best["resistance"],
                                                   "Fault current" + duration(fault.summary["operating"]["clearing"]),
                                                   "Trip" + duration(fault.summary["operating"]["trip"]), "● "]),
                    (RUSSIAN, fault.russian, ["Времена срабатывания от начала КЗ", ("%.1f км" % best["km"]).replace(".", ",")])):
                shown, _, _ = self.picture(fault, environment)
                for words in (*sentences, *texts):
                    self.assertHas(words, shown)
                self.assertNotIn("As in the fault report", shown)

    def test_waves_cover_the_fault_and_marks_are_at_its_moments(self):
        for fault in (again, evolving):
            _, lines, traces = self.picture(fault)
            found, operating = fault.summary["fault"], fault.summary["operating"]
            start = found["onset"] - 0.06
            length = max(0.24, found["clearing"] + 0.06 - start)
            # The voltage of phase A goes through the whole span.
            trace = next(points for stroke, _, points in traces if stroke == "#c08a00" and len(points) > 100)
            left, right = trace[0][0], trace[-1][0]
            tall = [line for line in lines if line[2][0][0] == line[2][1][0] and line[2][1][1] - line[2][0][1] > 500]
            marks = {(stroke, dashes is None or dashes == "none"): points[0][0] for stroke, dashes, points in tall}
            for key, time in ((("#17202e", True), found["onset"]), (("#b02a72", True), operating["from"] + operating["trip"]),
                              (("#d9480f", True), found["clearing"]), (("#d9480f", False), 0)):
                self.assertAlmostEqual(left + (time - start) / length * (right - left), marks[key], delta=2, msg=key)

    def test_a_long_fault_is_shown_for_thirty_periods(self):
        long = Fault("long-fault", "--random-fault", "12")
        found = long.summary["fault"]
        self.assertGreater(found["clearing"] - found["onset"], 0.43)
        _, lines, traces = self.picture(long)
        trace = next(points for stroke, _, points in traces if stroke == "#c08a00" and len(points) > 100)
        tall = {stroke: points[0][0] for stroke, dashes, points in lines if points[1][1] - points[0][1] > 500 and dashes in (None, "none")}
        scale = (tall["#d9480f"] - tall["#17202e"]) / (found["clearing"] - found["onset"])
        length = min(0.6, found["clearing"] - found["onset"] + 0.12)
        self.assertAlmostEqual(length, (trace[-1][0] - trace[0][0]) / scale, delta=0.003)

    def test_without_a_fault_it_has_the_figures_of_the_report(self):
        shown, _, _ = self.picture(quiet)
        for words in (*quiet.summary["text"], "As in the fault report:", "Условие пуска №1:"):
            self.assertHas(words, shown)
        self.assertNotIn("Operating times", shown)

    def test_png_is_as_high_as_what_it_shows(self):
        sizes = []
        for fault in (again, quiet):
            run("view", fault.recording, "--png", folder / "picture.png")
            png = (folder / "picture.png").read_bytes()
            sizes.append((int.from_bytes(png[16:20], "big"), int.from_bytes(png[20:24], "big")))
        self.assertEqual([1400, 1400], [width for width, _ in sizes])
        run("view", again.recording, "--svg", folder / "picture.svg")
        box = xml.etree.ElementTree.parse(folder / "picture.svg").getroot().get("viewBox")
        self.assertEqual("0 0 %d %d" % sizes[0], box)


if __name__ == "__main__":
    run_tests()
