"""Every line that the program prints for programs, against docs/zucmtr.schema.json and docs/json.md.

    json_test.py ZUCMTR SOURCE_DIRECTORY FAULTS

FAULTS is the library of watchfaults.cpp.
"""
import json
import os
import pathlib
import re
import signal
import sqlite3
import struct
import subprocess
import sys
import tempfile
import unittest

from jsonschema import Draft202012Validator

from zufiles import analog, discrete, recording

sys.path.append(str(pathlib.Path(sys.argv[2]).absolute() / "tests/validate"))
from faultyrecords import FAULTS as RECORD_FAULTS  # pylint: disable=wrong-import-position

PROGRAM = pathlib.Path(sys.argv[1]).absolute()
SOURCE = pathlib.Path(sys.argv[2]).absolute()
FAULTS = sys.argv[3]
SCHEMA = json.loads((SOURCE / "docs/zucmtr.schema.json").read_text(encoding="utf-8"))
PAGE = (SOURCE / "docs/json.md").read_text(encoding="utf-8")
QUIET = 50  # milliseconds until a recording counts as complete

# Words for what no test can cause: they run as root as well, on machines of any size.
UNSEEN = {"noPermission", "notOnDisk", "unexpected", "directoryUnreadable", "fileUnreadable"}

# What only records with faults print: kinds, directions, distances, and what lacks for them.
OF_FAULTS = {"AG", "BG", "CG", "AB", "BC", "CA", "ABG", "BCG", "CAG", "ABC", "ABCG", "unknown", "forward", "reverse",
             "lineData", "voltages", "tooShort", "reactance", "takagi", "modifiedTakagi", "onset", "start"}
KEYS_OF_FAULTS = {"kind", "onset", "direction", "distance", "reactance", "takagi", "modifiedTakagi", "percent", "km",
                  "resistance", "best", "range", "to", "lack", "parts", "magnitude", "angle"}

# Line and word of the findings in the ini file that has one mistake of each kind.
FINDINGS = (
    "0 channelsUnknown; 0 channelsUnknown; 0 recordingUnreadable; 1 byteOrderMark; 1 lineOutsideSection; "
    "2 keyMissing; 4 charactersLeftOut; 5 commaInText; 6 percentInText; 10 recordingsDeleted; 12 cffIgnored; "
    "16 notAskedFor; 18 dictionaryInDefaults; 19 blanksInSectionName; 20 brokenHeading; 21 sectionTwice; "
    "22 takenFromDefaults; 22 cffIgnored; 22 recordingsDeleted; 23 strayLine; 24 keyTwice; 24 quotationMarks; "
    "25 quotationMarks; 25 lettersLost; 26 numberOutOfRange; 27 unknownKey; 28 numberTooLarge; 30 badNumbering; "
    "31 noSignal; 32 notEquipmentSignal; 32 extraFields; 33 noParameters; 34 signalTwice; 35 parameterMissing; "
    "36 unknownCode; 37 unknownParameter; 38 voltagesAndCurrents; 39 equipmentDiffers; 40 emptyEntry; "
    "41 beyondMaximum; 45 emptyBay; 46 bayWithoutText; 47 bayTwice; 48 notUtf8; 48 unknownKey")


# Words for the data of lines alone.
OF_LINES = {"notANumber", "badZone", "lineMatched", "lineNotMatched", "lineMissing", "unknownCircuit"}


class Place:
    """A directory with an ini file and recordings, and what the program printed there."""

    def __init__(self, root, name, **recordings):
        self.directory = root / name
        self.directory.mkdir()
        ini = (root / "station/ZuDrv.ini").read_text(encoding="utf-8")
        self.ini = re.sub(r"^Время ожидания=.*", f"Время ожидания={QUIET}", ini, flags=re.M)
        self.write("ZuDrv.ini", self.ini.encode())
        (self.directory / "out").mkdir()
        for stem, content in recordings.items():
            self.write(f"{stem}.ZU", content)

    def write(self, name, content):
        path = self.directory / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)

    def run(self, *words, **environment):
        """The objects of a run."""
        done = subprocess.run([PROGRAM, *words], cwd=self.directory, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, env=dict(os.environ, **environment), check=False)
        return [keep(name_of(words), line) for line in done.stdout.splitlines()]

    def convert(self, *words, **environment):
        return self.run("convert", "--json", "--out", "out", *words, **environment)

    def info(self, *words):
        return self.run("info", "--json", *words)

    def watch(self, *words, **environment):
        return self.run("watch", "--once", "--out", "out", *words, **environment)

    def record(self):
        return next((self.directory / "out").glob("*.cfg"))


STATUS = []  # files of 'watch --status'
KEPT = []  # command and object of every line
LINES = []  # as printed


def name_of(words):
    """The schema's name of a command: convert, archivePage."""
    return words[0] + words[1].capitalize() if words[0] == "archive" else words[0]


def keep(command, line):
    LINES.append(line)
    KEPT.append((command, json.loads(line)))
    return KEPT[-1][1]


def reasons(objects):
    return [one.get("reason") for one in objects]


def validator(command):
    return Draft202012Validator({**SCHEMA, "anyOf": [{"$ref": f"#/$defs/{command}"}]})


def below(schema):
    """The schema's parts, itself first; references are followed."""
    if isinstance(schema, list):
        for part in schema:
            yield from below(part)
    elif isinstance(schema, dict):
        yield schema
        for key, part in schema.items():
            if key == "$ref":
                yield from below(SCHEMA["$defs"][part.rsplit("/", 1)[1]])
            elif key == "properties":
                for one in part.values():
                    yield from below(one)
            elif key != "$defs":
                yield from below(part)


def keys_of(schema):
    return {key for part in below(schema) for key in part.get("properties", {})}


def words_of(schema):
    words = {word for part in below(schema) for word in part.get("enum", [part.get("const")])}
    return {word for word in words if isinstance(word, str)}


def found_in(value, keys, words):
    """Adds the keys and texts of a value."""
    if isinstance(value, dict):
        for key, one in value.items():
            keys.add(key)
            found_in(one, keys, words)
    elif isinstance(value, list):
        for one in value:
            found_in(one, keys, words)
    else:
        words.add(value)


class Runs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.root = pathlib.Path(temporary.name)
        (cls.root / "station").mkdir()
        subprocess.run([PROGRAM, "sample", "--out", cls.root / "station", "--seconds", "0.1"], check=True,
                       stdout=subprocess.DEVNULL)

    def place(self, **recordings):
        return Place(self.root, self.id().rsplit(".", 1)[1], **recordings)

    # zucmtr convert

    def test_convert_recordings_that_succeed(self):
        place = self.place(a=recording(), b=recording(minutes=1), c=recording([analog()], minutes=1),
                           d=recording(minutes=2))
        place.write("a.Z01", recording())
        (planned,) = place.convert("--dry-run", "a.ZU")
        self.assertEqual(planned["status"], "planned")
        (converted,) = place.convert("--view", "a.ZU")
        self.assertEqual((converted["status"], converted["reason"], len(converted["files"])), ("converted", None, 5))
        (present,) = place.convert("--remove-source", "a.ZU")
        self.assertEqual((present["status"], present["source"], present["sources"]),
                         ("present", "removed", ["a.ZU", "a.Z01"]))
        self.assertEqual([one.get("replaced") for one in place.convert("--replace", "b.ZU", "c.ZU")],
                         [None, "b.ZU"])
        (place.directory / "archive").mkdir()
        (archived,) = place.convert("--archive", "archive", "d.ZU")
        self.assertEqual(archived["source"], "archived")

    def test_convert_and_info_of_a_recording_that_is_cut_off(self):
        place = self.place(a=recording()[:-1])
        place.write("a.Z01", b"junk")
        self.assertEqual(reasons(place.convert("a.ZU")), ["notConverted"])
        (salvaged,) = place.convert("--salvage", "a.ZU")
        expected = {"analog": 1, "discrete": 0, "allAnalog": 1, "allDiscrete": 1, "channels": 2, "nameless": 0,
                    "lost": ["Q1:x"], "lostFiles": ["a.Z01"]}
        self.assertEqual((salvaged["status"], salvaged["salvaged"]), ("converted", expected))
        (shown,) = place.info("a.ZU")
        self.assertEqual((shown["reason"], shown["salvageable"]), ("recordingUnreadable", expected))

    def test_convert_files_that_are_no_recordings(self):
        place = self.place()
        (place.directory / "in").mkdir()
        (place.directory / os.fsdecode(b"in/\xff.ZU")).write_bytes(recording())
        place.write("in/junk.ZU", b"junk")
        refused = place.convert("in", "c.Z01")
        self.assertEqual(sorted(reasons(refused)), ["continuationFile", "nameNotUtf8", "notConverted"])
        self.assertEqual([one["directory"] for one in refused], ["", "", "out"])

    def test_convert_recordings_that_the_library_gives_up(self):
        place = self.place(comment=recording([analog(), discrete(), analog("I")], comment="Пуск ДЗ (I,1.5)"),
                           comma=recording([analog("Q1:Ia,b"), discrete()], minutes=1))
        self.assertEqual(reasons(place.convert("comment.ZU", "comma.ZU")), ["converterException", "recordWrong"])

    def test_convert_names_that_are_taken(self):
        place = self.place(a=recording(), b=recording([analog(points=2), discrete()]), c=recording(minutes=1),
                           d=recording([analog(), analog("I"), discrete()]))
        place.convert("a.ZU", "c.ZU")
        self.assertEqual(reasons(place.convert("--remove-source", "b.ZU", "d.ZU")),
                         ["longerRecordPresent", "otherRecordPresent"])
        place.write("archive/a.ZU", b"another")
        self.assertEqual(reasons(place.convert("--archive", "archive", "a.ZU")), ["notPutAway"])
        record = place.record()
        (record.parent / f"{record.stem}.events.json").mkdir()
        self.assertEqual(reasons(place.convert("--events", "a.ZU" if ",1200" in record.name else "c.ZU")),
                         ["eventsNotWritten"])
        record.with_suffix(".html").mkdir()
        self.assertEqual(reasons(place.convert("--view", "a.ZU" if ",1200" in record.name else "c.ZU")),
                         ["pageNotWritten"])
        for name in (place.directory / "out").glob("*.cfg"):
            name.unlink()
            name.mkdir()
        self.assertEqual(reasons(place.convert("--replace", "c.ZU")), ["recordNotInPlace"])

    def test_lack_of_memory_has_its_word(self):
        place = self.place()
        points = 1 << 29
        head = bytearray(recording([analog(points=1)]))
        head[263 + 76:263 + 80] = points.to_bytes(4, "little")          # points
        head[263 + 76 + 34:263 + 76 + 36] = (1).to_bytes(2, "little")   # compressed
        block = 65535
        area = (2 * points).to_bytes(4, "little") + block.to_bytes(2, "little") + bytes(2 * block) + bytes(9000)
        head[263 + 72:263 + 76] = len(area).to_bytes(4, "little")
        place.write("bomb.ZU", bytes(head[:263 + 76 + 54]) + area)
        self.assertEqual(reasons(place.convert("--max-memory", "256M", "bomb.ZU")), ["outOfMemory"])
        self.assertEqual(reasons(place.info("--max-memory", "256M", "bomb.ZU")), ["outOfMemory"])
        self.assertEqual(reasons(self.events(place, "--max-memory", "256M", "bomb.ZU")), ["outOfMemory"])
        self.assertEqual(reasons(self.export(place, "--max-memory", "256M", "bomb.ZU")), ["outOfMemory"])
        place.write("b.ZU", recording())
        place.convert("b.ZU")
        self.assertEqual(reasons(self.verify(place, "--max-memory", "256M", "bomb.ZU",
                                             str(place.record().relative_to(place.directory)))), ["outOfMemory"])

    def test_words_are_the_same_in_russian_and_texts_are_not(self):
        place = self.place(junk=b"junk")
        (english,) = place.convert("junk.ZU")
        (russian,) = place.convert("junk.ZU", LC_ALL="ru_RU.UTF-8", LANGUAGE="")
        self.assertEqual((english["status"], english["reason"]), (russian["status"], russian["reason"]))
        self.assertTrue(english["error"].startswith("not converted: "), english)
        self.assertTrue(russian["error"].startswith("не преобразована: "), russian)

    def test_names_with_control_characters_are_whole(self):
        place = self.place()
        name = "a\u0007\u0085\u009b.ZU"  # a terminal minds the second and third, too
        place.write("in/" + name, recording())
        (converted,) = place.convert("in")
        self.assertEqual(converted["file"], "in/" + name)
        self.assertNotRegex(LINES[-1].decode(), "[\u0000-\u001f\u007f-\u009f]")

    # zucmtr info

    def test_info_of_recordings(self):
        start = "Пуск ПП (Q1:Ia,12.0,11.4,0) I1 больше 31.01.24 12:00:00.250000 (GPS)"
        place = self.place(a=recording(comment=start), windows=recording(page="cp1251"),
                           cut=recording()[:300], tiny=b"40",
                           rates=recording([analog(), analog("Q1:Ib", rate=1200.0), discrete()]),
                           states=recording([discrete()]))
        (whole,) = place.info("a.ZU")
        self.assertEqual((whole["kind"], whole["chainEnd"], whole["start"]),
                         ("recording", "noNextFile", "2024-01-31T11:59:59.750000+03:00"))
        self.assertEqual(place.info("windows.ZU")[0]["codePage"], "Windows-1251")
        self.assertNotIn("analog", place.info("--no-channels", "a.ZU")[0])
        for name, content, word in (("Z01", recording(identity="other"), "nextFileDiffers"),
                                    ("Z01", b"junk", "nextFileUnreadable")):
            place.write(f"a.{name}", content)
            self.assertEqual(place.info("a.ZU")[0]["chainEnd"], word)
        for number in range(1, 16):
            place.write(f"a.Z0{number:x}", recording())
        self.assertEqual(place.info("a.ZU")[0]["chainEnd"], "allFiles")
        self.assertEqual(reasons(place.info("cut.ZU", "tiny.ZU", "rates.ZU", "none.ZU", ".", "states.ZU")),
                         2 * ["recordingUnreadable"] + ["recordingInconsistent", "doesNotExist", "notAFile", None])
        for sample in sorted((self.root / "station").glob("*.ZU")):
            place.info(str(sample))

    def test_info_of_records_of_all_forms(self):
        place = self.place(a=recording())
        forms = {"ASCII": "", "BINARY": "BIN=1", "CFF": "CFF=1", "1999": "1999=1"}
        for form, key in forms.items():
            ini = re.sub(rf"^(Тип Comtrade {key[:-1]})0", r"\g<1>1", place.ini, flags=re.M) if key else place.ini
            place.write("ZuDrv.ini", ini.encode())
            place.run("convert", "--json", "--out", form, "--make-out", "a.ZU")
            (record,) = place.info(str(next((place.directory / form).glob("*.cf[fg]"))))
            self.assertEqual((record["samples"], record["samplesFound"], record["missing"]), (3, 3, 0), form)
            self.assertEqual(record["start"], "2024-01-31T11:59:59.750000" + ("" if form == "1999" else "+03:00"))

    def test_info_of_records_of_other_makers(self):
        place = self.place()
        rates = {"one": "1\n100,4", "two": "2\n100,1\n50,4", "none": "0\n0,4", "more": "1\n100,3", "less": "1\n100,9"}
        for name, lines in rates.items():
            place.write(f"{name}.cfg", (f"S,D,2013\n2,1A,1D\n1,I,A,W,A,1,0,0,-9,9,1,1,S\n1,On,,W,1\n50\n{lines}\n"
                                        "01/02/2024,03:04:05.5\n01/02/2024,03:04:06\nASCII\n1\nx,x\n0,0\n").encode())
            place.write(f"{name}.dat", b"1,,7,0\n2,,,1\n3,,7,1\n4,,7,0\n")
        place.write("cut.cfg", (place.directory / "one.cfg").read_bytes())
        place.write("cut.dat", b"1,,7,0\n2,,7")
        place.write("old.cfg", (place.directory / "one.cfg").read_bytes().replace(b"2013", b"2005"))
        place.write("old.dat", b"1,,7,0\n\n2,,,1\n3,,7,1\n4,,7,0\n")
        place.write("odd.cfg", (place.directory / "one.cfg").read_bytes())
        place.write("odd.dat", b"1,,7,0\ntext\n3,,7,1\n4,,7,0\n")
        place.write("bad.cfg", b"no configuration")
        shown = place.info("one.cfg", "two.cfg", "none.cfg", "more.cfg", "less.cfg", "cut.cfg", "old.cfg", "odd.cfg",
                           "bad.cfg")
        self.assertEqual(reasons(shown), [None] * 7 + ["dataUnreadable", "recordUnreadable"])
        self.assertEqual([[finding["reason"] for finding in one["forgiven"]][1:] for one in shown[:6]],
                         [[], [], [], ["samplesLeftOver"], ["samplesLacking"], ["sampleCutOff", "samplesLacking"]])
        self.assertEqual([(one["line"], one.get("column"), one["severity"], one["reason"])
                          for one in shown[6]["forgiven"]],
                         [(1, None, "note", "lineEnds"), (1, 5, "error", "revisionUnknown"),
                          (2, None, "warning", "blankLine")])
        self.assertEqual(shown[6]["encoding"], "ASCII")
        self.assertEqual([one["seconds"] for one in shown[:3]], [0.04, 0.01 + 3 / 50, None])
        self.assertEqual((shown[0]["missing"], shown[0]["discrete"][0]["changes"]), (1, 2))
        for form, code in (("BINARY", "h"), ("BINARY32", "i"), ("FLOAT32", "f")):
            text = (place.directory / "one.cfg").read_text(encoding="utf-8")
            place.write("b.cfg", text.replace("ASCII", form).encode())
            place.write("b.dat", b"".join(struct.pack(f"<II{code}H", n + 1, n, 7, n % 2) for n in range(4)))
            (binary,) = place.info("b.cfg")
            self.assertEqual((binary["dataType"], binary["discrete"][0]["changes"]), (form, 3))

    # zucmtr events

    def events(self, place, *words):
        return place.run("events", "--json", *words)

    def test_events_of_recordings_and_records(self):
        place = self.place(a=recording())
        place.convert("--events", "a.ZU")
        record = place.record()
        stored = json.loads((record.parent / f"{record.stem}.events.json").read_text(encoding="utf-8"))
        keep("events", json.dumps(stored).encode())
        (ofrecord,) = self.events(place, str(record))
        (ofrecording,) = self.events(place, "a.ZU")
        for one in (stored, ofrecord):
            self.assertEqual({**one, "file": 0}, {**ofrecording, "file": 0})
        subprocess.run([PROGRAM, "sample", "--out", place.directory, "--force"], check=True, stdout=subprocess.DEVNULL)
        place.write("ZuDrv.ini", re.sub(r"^Время ожидания=.*", f"Время ожидания={QUIET}", (
            place.directory / "ZuDrv.ini").read_text(encoding="utf-8"), flags=re.M).encode())
        fault = "Vostochnaya_000123.ZU"
        (shown,) = self.events(place, fault)
        self.assertEqual({one["kind"] for one in shown["events"]}, {"start", "trip", "breaker", "reclosing", "other"})
        self.assertIs(shown["operating"]["reclosed"], True)
        (described,) = place.info(fault)
        (converted,) = place.convert("--replace", fault)
        self.assertEqual(described["summary"], converted["summary"])
        self.assertEqual(described["summary"]["operating"], shown["operating"])
        self.assertEqual(described["summary"]["events"], len(shown["events"]))
        place.write("in/" + fault, (place.directory / fault).read_bytes())
        self.assertEqual([one["summary"] for one in place.watch("--events", "--ini", "ZuDrv.ini", "in")
                          if one["event"] == "converted"], [described["summary"]])

    def test_events_of_files_that_are_none(self):
        place = self.place(junk=b"junk")
        place.write("bad.cfg", b"no configuration")
        self.assertEqual(reasons(self.events(place, "none.ZU", ".", "junk.ZU", "bad.cfg")),
                         ["doesNotExist", "notAFile", "recordingUnreadable", "recordUnreadable"])

    # zucmtr export

    def export(self, place, *words):
        return place.run("export", "--json", *words)

    def test_export_of_recordings_and_records(self):
        place = self.place(a=recording())
        (record,) = self.export(place, "a.ZU")
        self.assertEqual((record["files"], record["form"], record["samples"]),
                         (["./a.cfg", "./a.dat", "./a.hdr", "./a.inf"], "cfg 2013 binary utf8", 3))
        for form, text in (("cff", "cff 2013 binary utf8"), ("csv", "csv"), ("mat", "mat")):
            (one,) = self.export(place, "--form", form, "a.cfg")
            self.assertEqual((one["form"], one["files"]), (text, [f"./a.{form}"]))
        (old,) = self.export(place, "--revision", "1999", "--data", "ascii", "--out-encoding", "cp1251", "a.cfg", "-o", "old.cfg")
        self.assertEqual((old["form"], len(old["notes"])), ("cfg 1999 ascii cp1251", 1))

    def test_export_of_what_cannot_be(self):
        place = self.place(a=recording(), junk=b"junk")
        place.write("bad.cfg", b"no configuration")
        self.assertEqual(reasons(self.export(place, "none.ZU", "junk.ZU", "bad.cfg", "--form", "csv")),
                         ["doesNotExist", "recordingUnreadable", "recordUnreadable"])
        (place.directory / "dir.ZU").mkdir()
        self.assertEqual(reasons(self.export(place, "dir.ZU")), ["notAFile"])
        self.assertEqual(reasons(self.export(place, "a.ZU", "--channels", "nothing")), ["channelMissing"])
        self.assertEqual(reasons(self.export(place, "a.ZU", "--window", "fault")), ["nothingThere"])
        self.assertEqual(reasons(self.export(place, "a.ZU", "--from", "5")), ["nothingThere"])
        self.export(place, "a.ZU", "-o", "there.csv")
        self.assertEqual(reasons(self.export(place, "a.ZU", "-o", "there.csv")), ["filePresent"])
        place.write("far.cfg", b"S,D,2013\n1,1A,0D\n1,I,A,W,A,1,0,0,-9,9,1,1,S\n50\n1\n100,1\n01/02/2024,03:04:05.5\n"
                               b"01/02/2024,03:04:06\nASCII\n1\nx,x\n0,0\n")
        place.write("far.dat", b"1,,70000\n")
        self.assertEqual(reasons(self.export(place, "far.cfg", "--data", "binary", "-o", "near.cfg")), ["formCannotHold"])
        (place.directory / "taken.csv").mkdir()
        place.write("taken.ZU", recording())
        self.assertEqual(reasons(self.export(place, "--replace", "--form", "csv", "taken.ZU")), ["recordNotInPlace"])

    # zucmtr verify

    def verify(self, place, *words):
        return place.run("verify", "--json", *words)

    def test_archive_page_of_a_catalogue(self):
        place = self.place(a=recording())
        place.run("archive", "update", "--quiet", ".")
        (shown,) = place.run("archive", "page", "--json", "--pages", "all", "-o", "page")
        self.assertEqual(shown, {"page": str(place.directory / "page/index.html"), "entries": 1, "faults": 0, "pages": 1,
                                 "made": 1, "failed": 0})

    def test_verify_records_with_their_recordings(self):
        place = self.place(a=recording(), b=recording(minutes=1))
        place.run("convert", "--json", "--out", "out", "--revision", "1999", "--data", "ascii", "a.ZU")
        record = place.record()
        name = str(record.relative_to(place.directory))
        (whole,) = self.verify(place, "a.ZU", name)
        self.assertEqual((whole["good"], whole["compared"], whole["reason"], whole["limit"]), (True, "bytes", None, ""))
        (samples,) = self.verify(place, "--plain", "a.ZU", name)
        self.assertEqual((samples["good"], samples["compared"], samples["ini"]), (True, "samples", ""))
        self.assertEqual(reasons(self.verify(place, "b.ZU", name)), ["otherRecording"])
        text, data = record.read_bytes(), record.with_suffix(".dat").read_bytes()
        for other, lines, word in ((text.replace(b"ASCII", b"ascii"), data, None),
                                   (text.replace("РАС-1".encode(), b"?"), data, "textsDiffer"),
                                   (text, data.replace(b",", b",9", 2), "samplesDiffer")):
            place.write("other.cfg", other)
            place.write("other.dat", lines)
            (shown,) = self.verify(place, "a.ZU", "other.cfg")
            if word is None:
                self.assertEqual((shown["good"], shown["compared"]), (True, "names"))
            else:
                self.assertIn(word, [one["reason"] for one in shown["findings"]])
        record.write_bytes(text.replace(b"ASCII", b"ascii"))
        self.assertEqual(reasons(self.verify(place, "a.ZU", name)), ["bytesDiffer"])
        record.write_bytes(text)
        record.with_suffix(".dat").write_bytes(
            re.sub(rb",([01])(\r?\n)\Z", lambda last: b",%d%s" % (1 - int(last[1]), last[2]), data))
        (states,) = self.verify(place, "a.ZU", name)
        self.assertEqual({one["kind"] for one in states["differences"]}, {"discrete"})

    def test_verify_records_alone(self):
        place = self.place(a=recording())
        place.run("convert", "--json", "--out", "out", "--data", "ascii", "a.ZU")
        record = place.record()
        name = str(record.relative_to(place.directory))
        self.assertEqual([one["good"] for one in self.verify(place, "out")], [True])
        text, data = record.read_bytes(), record.with_suffix(".dat").read_bytes()
        report = record.with_suffix(".hdr").read_bytes()
        for change, word in ((data[:-12], "dataUnreadable"), (data[:data.rindex(b"\n3,") + 1], "samplesLacking"),
                             (data + data[data.rindex(b"\n3,") + 1:], "samplesLeftOver"),
                             (data.replace(b"2,", b"3,", 1), "sampleNumbering"),
                             (data.replace(b"\n2,", b"\n2,7", 1), "timesDisagree")):
            record.with_suffix(".dat").write_bytes(change)
            (shown,) = self.verify(place, name)
            self.assertIn(word, [one["reason"] for one in shown["findings"]])
        record.with_suffix(".dat").write_bytes(data)
        record.write_bytes(text.replace(b"-32767,32767", b"32766,32767", 1))
        self.assertIn("samplesOutsideLimits", [one["reason"] for one in self.verify(place, name)[0]["findings"]])
        record.write_bytes(text)
        record.with_suffix(".hdr").write_bytes(report.replace("РАС-1".encode(), b"?"))
        self.assertEqual(reasons(self.verify(place, name)), ["piecesDiffer"])
        record.with_suffix(".hdr").unlink()
        self.assertEqual(reasons(self.verify(place, name)), ["pieceMissing"])

    def test_verify_files_that_are_none(self):
        place = self.place(a=recording(), junk=b"junk")
        place.write("bad.cfg", b"no configuration")
        self.assertEqual(reasons(self.verify(place, "none.cfg", "bad.cfg")), ["doesNotExist", "recordUnreadable"])
        place.convert("a.ZU")
        name = str(place.record().relative_to(place.directory))
        (place.directory / "d.cfg").mkdir()
        pairs = [reasons(self.verify(place, *pair)) for pair in (("none.ZU", name), ("junk.ZU", name), ("a.ZU", "bad.cfg"))]
        self.assertEqual(pairs, [["doesNotExist"], ["recordingUnreadable"], ["recordUnreadable"]])
        os.mkfifo(place.directory / "pipe.cfg")
        self.assertEqual(reasons(self.verify(place, "pipe.cfg")), ["notAFile"])

    # zucmtr check

    def test_check_explains_the_data_of_lines(self):
        place = self.place()
        place.write("ZuDrv.ini", place.ini.encode())
        place.write("lines.ini", """length=1
[ВЛ-110 Восточная]
length=0
r1=0,1
stray
new=1
r1=1
voltages=Nowhere
zone1=circle
[Elsewhere]
[ВЛ-110 Восточная]
""".encode())
        findings = [one for one in place.run("check", "--json", "ZuDrv.ini") if one["file"] == "lines.ini"]
        self.assertEqual([f"{one['line']} {one['reason']}" for one in findings],
                         "0 lineMissing; 1 lineOutsideSection; 2 keyMissing; 2 lineMatched; 2 unknownCircuit; "
                         "3 numberOutOfRange; 4 notANumber; 5 strayLine; 6 unknownKey; 7 keyTwice; 9 badZone; "
                         "10 lineNotMatched; 10 keyMissing; 11 sectionTwice; 11 lineMatched; 11 keyMissing".split("; "))

    def test_check_has_a_word_for_each_finding(self):
        place = self.place(a=recording([analog("Q1:Ia"), discrete()]))
        place.write("cut.ZU", (place.directory / "a.ZU").read_bytes()[:-1])
        good, signal = "V_L=110 E_G=L S_G=VT", "V_L=110 E_G=L D_G=RP S_T=FD"
        defaults = "".join(f"{key}\n" for key in (
            "Энергосистема=E", "Субъект=A/B", "Объект=ПС, 1", "Источник=РАС %2", "Версия ПО=1",
            "Версия аппаратной части=1", "Версия ZU=1", "Удалять исходные=1", "Время ожидания=60000",
            "Тип Comtrade CFF=1", "Тип Comtrade BIN=0", "Кодировка Comtrade UTF8=0",
            "Переименовать сигналы Comtrade=0", "Доп.индексы для имен сигналов=1", "Тип Comtrade 1999=1", "nAnMax=1"))
        place.write("bad.ini", f"""\ufeffahead=1
[Default]
{defaults}[ Blank]
[D] ; broken
[Default]
[D]
stray
Модель="Ω"
Модель="Ω"
Версия ZU=9
Обьект=X
Тип Comtrade BIN=4294967297
nAnMax=12
A1=W:U,{good}
A02=,{good}
A03=U,{good},more
A04=W:Ua
A05=W:Ua,{good}
A06=W:Ub,V_L=110 E_G=L
A07=W:Uc,V_L=111 E_G=L S_G=VT
A08=W:Ud,{good} CIMID=1
A09=W:Ia,V_L=110 E_G=L S_G=CT
A10=W:Ib,V_L=220 E_G=L S_G=CT
A11=
A13=W:Ue,{good}
nDiMax=1
D01=W:x,{signal}
nBayMax=3
BAY01=W
BAY02=W,,V
BAY03=W,V
""".encode() + b"\xff=1\n")
        findings = place.run("check", "--json", "--ini", "bad.ini", "--device", "D", "a.ZU", "cut.ZU")
        self.assertEqual([f"{one['line']} {one['reason']}" for one in findings if one["reason"] != "channelMissing"],
                         FINDINGS.split("; "))
        self.assertEqual(words_of(SCHEMA["$defs"]["check"]["properties"]["reason"]) - OF_LINES, set(reasons(findings)))
        self.assertEqual({one["severity"] for one in findings}, {"note", "warning", "error"})

    # zucmtr validate

    def test_validate_has_a_word_for_each_finding(self):
        place = self.place()
        names = ["none.cfg", "."]
        place.write("cut.cfg", b"no configuration")
        for number, fault in enumerate(RECORD_FAULTS):
            for ending, content in fault.record().items():
                place.write(f"{number}.{ending}", content)
            names.append(f"{number}.{'cff' if 'cff' in fault.record() else 'cfg'}")
        findings = place.run("validate", "--json", "cut.cfg", *names)
        self.assertEqual(words_of(SCHEMA["$defs"]["validate"]["properties"]["reason"]) - UNSEEN, set(reasons(findings)))
        self.assertEqual({one["severity"] for one in findings}, {"note", "warning", "error"})

    # zucmtr archive

    def test_archive_update_says_what_it_has_done(self):
        place = self.place(a=recording(), bad=b"no recording")
        first = {"unchanged": 0, "read": 2, "moved": 0, "gone": 0, "unread": 1}
        self.assertEqual(place.run("archive", "update", "--json", "."), [first])
        (place.directory / "a.ZU").rename(place.directory / "b.ZU")
        (place.directory / "bad.ZU").unlink()
        second = {"unchanged": 0, "read": 0, "moved": 1, "gone": 1, "unread": 0}
        self.assertEqual(place.run("archive", "update", "--json", "."), [second])

    def test_archive_check_has_a_word_for_each_finding(self):
        place = self.place(**{name: recording(minutes=minute) for minute, name in enumerate("abcdefgh")})
        place.run("archive", "update", "--json", ".")
        self.assertEqual([one["findings"] for one in place.run("archive", "check", "--json")], [0])
        (place.directory / "a.ZU").unlink()
        place.write("b.ZU", recording([analog(), analog()]))
        place.write("c.Z01", recording())
        state = (place.directory / "d.ZU").stat()
        place.write("d.ZU", recording(minutes=100))
        os.utime(place.directory / "d.ZU", ns=(state.st_atime_ns, state.st_mtime_ns))
        place.write("new.ZU", recording(minutes=200))
        with sqlite3.connect(place.directory / "zucmtr-archive.db") as database:
            database.execute("UPDATE entries SET gone = '2024' WHERE path = 'e.ZU'")
            database.execute("UPDATE entries SET bytes = 1 WHERE path = 'f.ZU'")
            database.execute("UPDATE entries SET recording = 1 WHERE path = 'g.ZU'")
            database.execute("DELETE FROM channels")
        database.close()
        found = place.run("archive", "check", "--json")
        self.assertEqual(words_of(SCHEMA["$defs"]["archiveFinding"]["properties"]["reason"]) - UNSEEN,
                         set(reasons(found[:-1])))
        self.assertEqual(found[-1]["findings"], len(found) - 1)

    def test_archive_find_and_stats(self):
        place = self.place(a=recording(), bad=b"no recording")
        subprocess.run([PROGRAM, "sample", "--out", place.directory / "fault", "--random-fault", "12"], check=True,
                       stdout=subprocess.DEVNULL)
        place.run("archive", "update", "--json", ".")
        found = place.run("archive", "find", "--json", "--sort", "path")
        self.assertEqual([pathlib.Path(one["path"]).name for one in found],
                         ["a.ZU", "bad.ZU", "Vostochnaya_fault_0000012.ZU"])
        self.assertEqual([one["reason"] for one in found], [None, "recordingUnreadable", None])
        self.assertEqual([one["fault"] and one["fault"]["kind"] for one in found], [None, None, "BG"])
        stats = place.run("archive", "stats", "--json")[0]
        self.assertEqual((stats["recordings"], stats["unread"], stats["kinds"]), (3, 1, [{"kind": "BG", "faults": 1}]))
        self.assertEqual(stats["slowest"], found[2:])
        self.assertEqual(list(place.run("archive", "stats", "--json", "--only", "months")[0]), ["months"])

    # zucmtr watch

    def test_watch_until_nothing_is_left(self):
        place = self.place()
        place.write("in/a.ZU", recording())
        place.write("in/b.ZU", recording())
        place.write("in/junk.ZU", b"junk")
        place.write("ini/ZuDrv.ini", place.ini.encode())
        events = place.watch("--ini", "ZuDrv.ini", "in")
        self.assertEqual([one["event"] for one in events],
                         ["started"] + 3 * ["found"] + 2 * ["converting", "converted"] +
                         ["converting", "failed", "stopped"])
        self.assertEqual((events[9]["reason"], events[9]["retrySeconds"]), ("notConverted", None))
        self.assertEqual((events[10]["reason"], events[10]["converted"], events[10]["failed"]), ("done", 2, 1))
        faults = {"LD_PRELOAD": FAULTS, "END_AT": "b.ZU"}
        (place.directory / "out/.zucmtr-watch").unlink()
        for _ in range(2):
            place.watch("--ini", "ZuDrv.ini", "in", **faults)
        self.assertIn("processKilled", reasons(place.watch("--ini", "ZuDrv.ini", "in", **faults)))
        faults["END_BY"] = str(int(signal.SIGSEGV))
        self.assertIn("neverEnded", reasons(place.watch("--ini", "ZuDrv.ini", "in", **faults)))

    def test_watch_that_puts_recordings_away(self):
        place = self.place()
        (place.directory / "archive").mkdir()
        for minutes, words, fate in ((0, ["--remove-source"], "removed"), (1, ["--archive", "archive"], "archived")):
            place.write("in/a.ZU", recording(minutes=minutes))
            events = place.watch(*words, "--ini", "ZuDrv.ini", "in")
            self.assertEqual([one["source"] for one in events if "source" in one], [fate])

    def test_watch_of_what_is_no_recording(self):
        place = self.place()
        place.write("in/a.Z01", recording())
        place.write("in/.b.ZU.zucmtr-abc123", recording())
        events = place.watch("--ini", "ZuDrv.ini", "in", LD_PRELOAD=FAULTS, NO_WATCHES="1")
        shown = {one["event"]: one for one in events}
        self.assertEqual((shown["orphan"]["file"], shown["orphan"]["first"]), ("in/a.Z01", "in/a.ZU"))
        self.assertEqual(shown["leftovers"]["back"], ["in/b.ZU"])
        self.assertEqual(shown["unwatched"]["count"], 1)

    def test_watch_that_waits_for_directories(self):
        place = self.place()
        for name in ("in", "archive", "state"):
            (place.directory / name).mkdir()
        words = ["watch", "--ini", "ZuDrv.ini", "--out", "out", "--archive", "archive", "--state", "state/journal",
                 "--rescan", "0.05", "--retry-after", "0.01", "in"]
        child = subprocess.Popen([PROGRAM, *words], cwd=place.directory, stdout=subprocess.PIPE,
                                 stderr=subprocess.DEVNULL)
        try:
            self.next(child, "started")
            for name, word in (("out", "outputUnusable"), ("archive", "archiveUnusable"),
                               ("state", "journalNotWritten")):
                (place.directory / name).rename(place.directory / "away")
                self.assertEqual(self.next(child, "trouble")["reason"], word)
                (place.directory / "away").rename(place.directory / name)
                self.assertEqual(self.next(child, "recovered")["reason"], word)
        finally:
            child.kill()
            child.communicate()

    def test_watch_whose_catalogue_is_none_for_a_while(self):
        place = self.place()
        (place.directory / "in").mkdir()
        place.write("archive.db", b"no database, but long enough to be looked at as one " * 20)
        child = subprocess.Popen([PROGRAM, "watch", "--ini", "ZuDrv.ini", "--out", "out", "--retry-after", "0.01", "--catalogue",
                                  "archive.db", "in"],
                                 cwd=place.directory, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            self.assertIn("it is no catalogue", self.next(child, "copyBehind")["text"])
            (place.directory / "archive.db").unlink()
            self.assertGreater(self.next(child, "copyCaughtUp")["seconds"], 0)
        finally:
            child.kill()
            child.communicate()

    def test_watch_that_ends_by_trouble(self):
        place = self.place()
        place.write("in/a.ZU", recording())
        (place.directory / "archive").mkdir()
        events = place.watch("--ini", "ZuDrv.ini", "--archive", "archive", "in", LD_PRELOAD=FAULTS, UNUSABLE="archive",
                             UNUSABLE_WHILE="in")
        self.assertEqual((events[-1]["reason"], events[-1]["waiting"]), ("trouble", 1))

    def test_watch_until_a_signal(self):
        place = self.place()
        (place.directory / "in").mkdir()
        for ending in (signal.SIGTERM, signal.SIGINT):
            place.write("in/junk.ZU", b"junk " + str(ending).encode())
            child = subprocess.Popen([PROGRAM, "watch", "--ini", "ZuDrv.ini", "--out", "out", "--rescan", "0.05",
                                      "--retry-after", "0.01", "--attempts", "2", "in"],
                                     cwd=place.directory, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
            try:
                self.follow(place.directory, child, ending)
            finally:
                child.kill()
                child.communicate()
            (place.directory / "away").rename(place.directory / "in")
            (place.directory / os.fsdecode(b"in/\xff.ZU")).unlink()

    def test_watch_with_a_command(self):
        place = self.place()
        place.write("in/a.ZU", recording())
        place.write("hook", b"#!/bin/sh\ncase $ZUCMTR_ATTEMPT in\n1) echo no; exit 1;;\n2) kill -9 $$;;\n"
                            b"3) sleep 1000;;\n4) mv hook away; exit 1;;\nesac\n")
        (place.directory / "hook").chmod(0o700)
        child = subprocess.Popen([PROGRAM, "watch", "--ini", "ZuDrv.ini", "--out", "out", "--exec", "./hook",
                                  "--exec-timeout", "0.2", "--retry-after", "0.01", "--exec-retries", "1000", "in"],
                                 cwd=place.directory, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            self.assertEqual([self.next(child, "commandFailed")["reason"] for _ in range(5)],
                             ["commandFailed", "commandKilled", "commandTimeout", "commandFailed", "commandNotStarted"])
            (place.directory / "away").rename(place.directory / "hook")
            self.next(child, "commandDone")
        finally:
            child.kill()
            child.communicate()

    def test_watch_of_several_recorders(self):
        place = self.place()
        for name, out in (("good", "out"), ("later", "later"), ("crash", "out")):
            place.write(f"conf/{name}.conf", f"ini = ../ZuDrv.ini\ndirectory = ../in-{name}\nout = ../{out}\n"
                                             f"state = ../{name}\nrescan = 0.05\nexec = true\n".encode())
            (place.directory / f"in-{name}").mkdir()
        place.write("conf/wrong.conf", b"out = x\n")
        place.write("in-crash/crash.ZU", recording())
        child = subprocess.Popen([PROGRAM, "watch", "--config", "conf", "--status", "status", "--status-every", "0.05"],
                                 cwd=place.directory, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                 env=dict(os.environ, LD_PRELOAD=FAULTS, END_AT="crash.ZU"))
        try:
            seen = {down["recorder"]: down["reason"] for down in
                    (self.next(child, "recorderDown") for _ in range(3))}
            self.assertEqual(seen, {"wrong": "misconfigured", "later": "notStarted", "crash": "crashed"})
            (place.directory / "conf/crash.conf").unlink()
            child.send_signal(signal.SIGHUP)
            self.assertEqual(self.next(child, "reloaded")["endedRecorders"], ["crash"])
            place.write("in-good/a.ZU", recording(minutes=1))
            self.assertEqual(self.next(child, "commandDone")["recorder"], "good")
        finally:
            child.terminate()
            child.communicate()
        STATUS.append(json.loads((place.directory / "status").read_bytes()))

    def follow(self, directory, child, ending):
        self.next(child, "failed")
        last = self.next(child, "failed")
        self.assertEqual((last["attempt"], last["retrySeconds"]), (2, None))
        (directory / os.fsdecode(b"in/\xff.ZU")).write_bytes(b"")
        self.assertEqual(self.next(child, "unreadable")["reason"], "nameNotUtf8")
        (directory / "in").rename(directory / "away")
        self.assertEqual(self.next(child, "unreadable")["reason"], "directoryGone")
        child.send_signal(ending)
        self.assertEqual(self.next(child, "stopped")["reason"], signal.Signals(ending).name)

    def next(self, child, event):
        """The next event of a kind that a running watch prints."""
        for line in child.stdout:
            shown = keep("watch", line)
            if shown["event"] == event:
                return shown
        raise AssertionError(f"the program ended without '{event}'")


class Output(unittest.TestCase):
    """What all the runs printed, the schema and the page."""

    def test_every_line_is_as_the_schema_says(self):
        self.assertGreater(len(KEPT), 100)
        for command, shown in KEPT:
            errors = [error.message for error in validator(command).iter_errors(shown)]
            self.assertEqual(errors, [], shown)

    def test_schema_refuses_what_it_does_not_know(self):
        Draft202012Validator.check_schema(SCHEMA)
        whole = Draft202012Validator(SCHEMA)
        for command, shown in KEPT:
            self.assertTrue(whole.is_valid(shown), shown)
            self.assertFalse(validator(command).is_valid({**shown, "new": 1}), shown)
            if shown.get("reason"):
                self.assertFalse(validator(command).is_valid({**shown, "reason": "newWord"}), shown)

    def test_schema_has_nothing_that_is_never_printed(self):
        for command in ("convert", "info", "check", "validate", "watch", "events", "export", "verify", "archiveCheck",
                        "archiveUpdate", "archiveFind", "archiveStats", "archivePage"):
            keys, words = set(), set()
            found_in([shown for whose, shown in KEPT if whose == command], keys, words)
            schema = SCHEMA["$defs"][command]
            self.assertEqual(keys_of(schema) - keys - KEYS_OF_FAULTS, set(), command)
            missing = words_of(schema) - words - UNSEEN - OF_FAULTS
            if command == "export":  # what is written is right; tests/forms makes it wrong
                missing -= {"recordWrong"}
            if command == "info":  # tests/comtrade has a record for each of these
                missing -= words_of(SCHEMA["$defs"]["forgiven"]["properties"]["reason"])
            if command in ("archiveFind", "archiveStats"):  # tests/archive has what cannot be read
                missing -= words_of(SCHEMA["$defs"]["archiveFind"]["properties"]["reason"]) | {"record", "right", "wrong"}
            if command in ("convert", "watch"):  # they share the words of failures
                missing -= words_of(SCHEMA["$defs"]["failureReason"])
            self.assertEqual(missing, set(), command)

    def test_status_is_as_the_schema_and_the_page_say(self):
        schema = SCHEMA["$defs"]["status"]
        self.assertEqual([error.message for error in validator("status").iter_errors(STATUS[0])], [])
        keys = set()
        found_in(STATUS[0], keys, set())
        self.assertEqual(keys, keys_of(schema))
        named = set(re.findall(r"`([\w.-]+)`", PAGE[PAGE.index("The file of `--status`"):]))
        self.assertEqual((keys | {"running", "waiting", "misconfigured", "ended"}) - named, set())

    def test_page_names_every_key_and_word(self):
        sections = {name_of(title.split()): section
                    for title, section in re.findall(r"^## zucmtr ([\w ]+)\n(.*?)(?=^## |\Z)", PAGE, flags=re.M | re.S)}
        self.assertEqual(set(sections),
                         {"convert", "watch", "info", "check", "validate", "events", "export", "verify", "archiveCheck",
                          "archiveUpdate", "archiveFind", "archiveStats", "archivePage"})
        for command, section in sections.items():
            if command == "watch":
                section += sections["convert"]
            if command == "archiveStats":
                section += sections["archiveFind"]  # the slowest
            if command in ("convert", "watch", "info"):
                section += sections["events"]  # the summary
            named = set(re.findall(r"`([\w.-]+)`", section))
            schema = SCHEMA["$defs"][command]
            self.assertEqual((keys_of(schema) | words_of(schema)) - named, set(), command)

    def test_page_and_schema_have_the_words_of_the_program(self):
        header = (SOURCE / "tools/text/reasons.h").read_text(encoding="utf-8")
        words = set(re.findall(r'inline constexpr char \w+\[\] = "(\w+)";', header))
        reasons_of = [part["properties"][key] for part in below(SCHEMA) for key in ("reason", "chainEnd")
                      if key in part.get("properties", {})]
        self.assertEqual(words, set().union(*(words_of(one) for one in reasons_of)))

    def test_times_have_their_offset(self):
        for command, shown in KEPT:
            if command == "watch":
                self.assertRegex(shown["time"], r"[+-]\d\d:\d\d$|Z$")
            for key in ("start", "trigger"):
                if shown.get("kind") == "recording" and shown.get(key):
                    self.assertRegex(shown[key], r"\+03:00$")


def load_tests(loader, _tests, _pattern):
    return unittest.TestSuite(loader.loadTestsFromTestCase(case) for case in (Runs, Output))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]] + sys.argv[4:])
