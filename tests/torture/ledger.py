"""The books: what was ever put into the input, and where it must be in the end.

Each content that was put there and not taken back is to be in the input, in the archive, or in a record that holds
all its samples. The counts of what is not as it must be:

    lost        a content that is nowhere any more
    unread      a recording that lies in the archive and is in no record
    cut         a record that lacks samples of its chain, or cannot be read, though a line says that it is verified,
                or though the last run ended well
    half        a configuration without its whole data at a moment between two runs
    stuck       the normal run afterwards fails, or leaves a recording without a record
    orphaned    a continuation without its first file that no line names
    twice       a recording that was converted more often than it came or changed (watch); one of which a run said that
                it could not be noted may come once more
    debris      files that do not belong where they are
"""
import collections
import contextlib
import dataclasses
import re

import recordings
import records
import station as stations

COLUMNS = ["lost", "unread", "cut", "half", "stuck", "orphaned", "twice", "debris"]
ZONE = 3 * 3600  # of all recordings made here
RECORD_FILE = re.compile(r"\d{6},\d{6}\.\d,\+3t,Object,Source\.Subject\.(cfg|dat|hdr|inf|cff)")


@dataclasses.dataclass
class Entry:
    """A content that must not get lost."""
    path: str  # below the input
    content: bytes
    file: recordings.File  # None if it is no recording

    def is_first(self):
        return recordings.first_name(self.path) == self.path


class Findings:
    """Counts, and a line for each of the first findings."""

    def __init__(self):
        self.counts = collections.Counter()
        self.details = []

    def add(self, kind, text):
        self.counts[kind] += 1
        self.details.append(f"{kind}: {text}")

    def take(self, other, point):
        self.counts.update(other.counts)
        self.details += [f"{point}: {line}" for line in other.details]


class Out:
    """The records below a directory, read once."""

    def __init__(self, directory):
        self.records, self.broken = [], []
        for path in records.configurations(directory):
            try:
                self.records.append(records.Record(path))
            except (records.Unreadable, OSError, ValueError) as error:
                self.broken.append((path, error))

    def holds(self, entry):
        """Whether a record has all samples of a file in a row: of a first file, the record with its trigger. A
        continuation goes with whatever first file is beside it."""
        if entry.is_first():
            return any(_contains(record, entry.file, True) for record in self.of(entry.file))
        return any(_contains(record, entry.file, False) for record in self.records)

    def of(self, file):
        """The records with the trigger of a file."""
        return [record for record in self.records if record.trigger == (file.trigger + ZONE, file.micros)]


def _contains(record, file, from_start):
    if len(record.columns) != len(file.columns) or record.points < file.points:
        return False
    if from_start:
        return all(mine[:file.points] == its for mine, its in zip(record.columns, file.columns))
    head = file.columns[0].tobytes()
    body = record.columns[0].tobytes()
    at = body.find(head)
    while at >= 0:
        row = at // 2
        if at % 2 == 0 and all(mine[row:row + file.points] == its
                               for mine, its in zip(record.columns, file.columns)):
            return True
        at = body.find(head, at + 1)
    return False


class Ledger:
    def __init__(self, station):
        self.station = station
        self.entries = {}  # by digest
        self.current = {}  # path below the input: digest of what the operator put there last
        self.changes = collections.Counter()  # of recordings, by the path of the first file
        self.converted = collections.Counter()
        self.texts = ""
        self.findings = Findings()
        self.lock = contextlib.nullcontext()  # of the operator, where others may shut him out

    # What the operator does

    def put(self, path, content):
        """A content is now in the input under a path."""
        key = recordings.digest(content)
        self.entries[key] = Entry(path, content, recordings.read_file(content))
        self.current[path] = key
        self.changes[recordings.first_name(path)] += 1

    def take_back(self, content):
        """The operator has this content again, or has destroyed it."""
        self.entries.pop(recordings.digest(content), None)

    # What the program says

    def note(self, run):
        """Takes in what a run said."""
        self.texts += run.text
        if run.code == stations.HUNG:
            self.findings.add("stuck", f"hung, {run.plan or 'without a plan'}: {self.complaint(run)}")
        for event in run.events:
            if event.get("event") == "converted" and event["status"] == "converted":
                path = str(event["file"])
                self.converted[path.rpartition("/in/")[2]] += 1

    def check_claims(self, run):
        """A line that says verified must be true, of all files of the recording. Nothing may change meanwhile."""
        out = None
        for event in run.events:
            if event.get("verified") is not True:
                continue
            out = out or Out(self.station.out)
            first = str(event["file"]).rpartition("/in/")[2]
            for path, key in self.current.items():
                entry = self.entries.get(key)
                if recordings.first_name(path) == first and entry and entry.file and not out.holds(entry):
                    self.findings.add("cut", f"{path} is not in the record that is called verified")

    def check_halves(self):
        """Between two runs: whatever has a configuration is whole."""
        for path, error in Out(self.station.out).broken:
            self.findings.add("half", f"{path.name}: {error}")

    # How it must be in the end

    def check(self, run, excused=lambda path: False):
        """After the normal run that follows. excused(path): this recording may have failed."""
        out = Out(self.station.out)
        failed = {str(event.get("file")).rpartition("/in/")[2] for event in run.events
                  if event.get("error") and not self._is_explained(event, out)}
        explained = any(event.get("error") for event in run.events) and not failed
        guilty = {path for path in failed if not excused(path)}
        if run.code != 0 and not explained and (guilty or not failed):
            self.findings.add("stuck", f"exit code {run.code}: {self.complaint(run, guilty)}")
        here, there = self._contents(self.station.input), self._contents(self.station.archive)
        for path, error in out.broken:
            self.findings.add("cut", f"{path.name}: {error}")
        for key, entry in self.entries.items():
            self._check_entry(key, entry, here, there, out, run, excused)
        self._check_orphans()
        self.check_debris()
        for path, times in self.converted.items():
            if times > max(1, self.changes[path]):
                self.findings.add("twice", f"{path}: {times} times")

    def has_former_record(self, first):
        """Whether a record of this first file has samples that are not of the files that are there now: it is
        another recording's, and nothing may replace it."""
        chain = [self.entries[key] for path, key in self.current.items()
                 if key in self.entries and recordings.first_name(path) == first]
        out = Out(self.station.out)
        for chief in chain:
            if chief.is_first() and chief.file:
                for record in out.of(chief.file):
                    held = [entry for entry in chain if entry.file and _contains(record, entry.file, False)]
                    if chief in held and record.points > sum(entry.file.points for entry in held):
                        return True
        return False

    def _is_explained(self, event, out):
        """Whether a recording failed because its record holds more than the files that are left of it, by no doing of
        the program: the record stays as it is."""
        if event.get("reason") != "longerRecordPresent":
            return False
        first = str(event["file"]).rpartition("/in/")[2]
        chain = []
        for n in range(16):
            path = self.station.input / recordings.chain_name(first, n)
            if not path.is_file():
                break
            chain.append(recordings.read_file(path.read_bytes()))
        return bool(chain) and all(chain) and any(
            record.points > sum(file.points for file in chain) and all(_contains(record, file, False) for file in chain)
            for record in out.of(chain[0]))

    def _check_entry(self, key, entry, here, there, out, run, excused):
        if entry.file and out.holds(entry):
            return
        if key not in here and key not in there:
            self.findings.add("lost", f"{entry.path}: {self.complaint(run)}")
        elif key not in here and entry.file:
            self.findings.add("unread", entry.path)
        elif entry.file and self.current.get(entry.path) == key and not excused(entry.path):
            self._check_unconverted(entry, out, run)

    def _check_unconverted(self, entry, out, run):
        first = recordings.first_name(entry.path)
        chief = self.entries.get(self.current.get(first))
        if chief is None or not (self.station.input / first).exists() or run.code != 0:
            return  # an orphan, or stuck: counted as such
        if chief.file and out.of(chief.file):
            self.findings.add("cut", f"the record lacks {entry.path}")
        elif entry.is_first():
            self.findings.add("stuck", f"{entry.path} has no record, and the run says nothing")

    @staticmethod
    def _contents(directory):
        contents = {}
        for path in directory.rglob("*"):
            if path.is_file():
                contents[recordings.digest(path.read_bytes())] = path
        return contents

    @staticmethod
    def complaint(run, of=()):
        """What the run said last, or the first error; of: the recordings whose errors count, otherwise all."""
        lines = [line for line in run.text.splitlines() if not line.startswith("QIODevice")]
        for event in run.events:
            if event.get("error") and (not of or str(event.get("file")).rpartition("/in/")[2] in of):
                return str(event["error"])[:300]
        return " | ".join(lines[-2:])[:300]

    def _check_orphans(self):
        for path in self.station.input.rglob("*"):
            first = recordings.first_name(path.name)
            if first is None or first == path.name or (path.parent / first).exists():
                continue
            if path.name not in self.texts:
                self.findings.add("orphaned", str(path.relative_to(self.station.input)))

    def check_debris(self):
        station = self.station
        known = set(self.current) | {entry.path for entry in self.entries.values()}
        names = {path.rpartition("/")[2] for path in known}
        for directory in (station.input, station.archive):
            for path in directory.rglob("*"):
                strange = path.is_dir() and path.name.startswith(".") or path.is_file() and path.name not in names
                if strange and path.name not in self.texts:
                    self.findings.add("debris", f"{directory.name}/{path.name}")
        for path in station.out.rglob("*"):
            if not RECORD_FILE.fullmatch(path.name) and not path.is_dir() or path.name.startswith("."):
                self.findings.add("debris", f"out/{path.name}")
        for directory, own in ((station.tmp, None), (station.state, "journal")):
            for path in directory.rglob("*"):
                if path.name != own:
                    self.findings.add("debris", f"{directory.name}/{path.name}")
