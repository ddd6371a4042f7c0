"""COMTRADE records, read independently of the program: CFG and DAT or one CFF, ASCII or binary."""
import array
import calendar
import re
import sys

EPOCH = re.compile(rb"(\d+)/(\d+)/(\d+),(\d+):(\d+):(\d+)\.(\d+)")
MARK = re.compile(rb"--- file type: (\w+)(?: (\w+))?(?:: ?(\d+))? ---\r?\n")


class Unreadable(Exception):
    """A record that is not whole."""


class Record:
    """A record: its trigger (as in its texts, taken as UTC; seconds, microseconds) and its columns of codes."""

    def __init__(self, configuration):
        self.path = configuration
        if configuration.suffix == ".cff":
            cfg, dat = _cff_parts(configuration.read_bytes())
        else:
            cfg = configuration.read_bytes()
            data = configuration.with_suffix(".dat")
            if not data.exists():
                raise Unreadable("no DAT")
            dat = data.read_bytes()
        lines = cfg.splitlines()
        try:
            _all, analog, digital = lines[1].split(b",")
            analog, digital = int(analog[:-1]), int(digital[:-1])
            tail = lines[2 + analog + digital:]  # frequency, rates, the rate's line, stamps, form
            stated = int(tail[2].split(b",")[1])
            self.trigger = _stamp(tail[4])
            form = tail[5].strip().upper()
            if analog < 1 or form not in (b"ASCII", b"BINARY"):
                raise Unreadable("CFG")
        except (IndexError, ValueError, AttributeError) as error:
            raise Unreadable("CFG") from error
        self.columns = _ascii(dat, analog) if form == b"ASCII" else _binary(dat, analog, digital)
        self.points = len(self.columns[0])
        if self.points != stated:
            raise Unreadable(f"{self.points} of {stated} samples")


def _stamp(text):
    day, month, year, hour, minute, second, part = EPOCH.match(text).groups()
    moment = tuple(map(int, (year, month, day, hour, minute, second)))
    return calendar.timegm(moment), int(part.ljust(6, b"0")[:6])


def _cff_parts(content):
    parts = {}
    marks = list(MARK.finditer(content))
    for mark, after in zip(marks, marks[1:] + [None]):
        end = after.start() if after else len(content)
        if mark.group(1) == b"DAT" and mark.group(3):
            end = mark.end() + int(mark.group(3))
        parts[mark.group(1)] = content[mark.end():end]
    if b"CFG" not in parts or b"DAT" not in parts:
        raise Unreadable("CFF")
    return parts[b"CFG"], parts[b"DAT"]


def _ascii(dat, analog):
    columns = [array.array("h") for _ in range(analog)]
    if dat and not dat.endswith(b"\n"):
        raise Unreadable("DAT")
    for line in dat.splitlines():
        fields = line.split(b",")
        if fields == [b""]:
            continue
        if len(fields) < 2 + analog:
            raise Unreadable("DAT")
        for column, field in zip(columns, fields[2:]):
            column.append(int(field))
    return columns


def _binary(dat, analog, digital):
    words = 4 + analog + (digital + 15) // 16
    if len(dat) % (2 * words) != 0:
        raise Unreadable("DAT")
    numbers = array.array("h", dat)
    if sys.byteorder != "little":
        numbers.byteswap()
    return [numbers[4 + channel::words] for channel in range(analog)]


def configurations(directory):
    """The files below a directory that each represent a record."""
    found = []
    for path in sorted(directory.rglob("*")):
        if path.suffix in (".cfg", ".cff") and path.is_file() and not hidden(path, directory):
            found.append(path)
    return found


def hidden(path, directory):
    """Whether a path is in one of the program's own directories."""
    return any(part.startswith(".") for part in path.relative_to(directory).parts)
