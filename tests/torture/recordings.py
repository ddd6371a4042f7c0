"""Recorder files: a builder, and a reader independent of the program's (plain samples only)."""
import array
import struct

HEADER = struct.Struct("<3s21s128s81sIiIiIHhHI")
SECTION = struct.Struct("<H66sII")
ANALOG = struct.Struct("<IfhffffxxxxxxxxHfH12s")
DISCRETE = struct.Struct("<IB")
EXTENSIONS = ["U"] + [f"{n:02x}" for n in range(1, 16)]
RATE = 1000  # samples per second
BASE = 1706691600  # 31/01/2024 12:00:00 at +3 hours is the first trigger

assert HEADER.size == 263 and SECTION.size == 76 and ANALOG.size == 54


def _text(text, size, filler=b"\0"):
    return text.encode("cp866").ljust(size, filler)[:size]


def _analog(number, samples):
    data = samples.tobytes()
    section = SECTION.pack(0, _text(f"W1:I{number}", 66), SECTION.size + ANALOG.size, len(data))
    head = bytearray(ANALOG.pack(len(samples), RATE, 0, 1.0, 1.0, 1.0, 0.0, 0, 0.0, 32767, b""))
    head[26:34] = _text("А", 8)
    return section + bytes(head) + data


def _discrete(points):
    change = struct.pack("<BI", 0, 0) + struct.pack("<BI", 1, points * 1000000 // RATE // 2)
    section = SECTION.pack(1, _text("W1:Trip", 66), SECTION.size + DISCRETE.size, len(change))
    return section + DISCRETE.pack(2, 0) + change


def segment(rng, number, trigger, points, channels):
    """The bytes of file `number` of a chain: random samples, which differ from those of every other one."""
    start = trigger * 1000000 - 500000 + number * points * 1000000 // RATE
    whole, parts = divmod(start, 1000000)
    out = [HEADER.pack(b"40\0", _text("Данные РАС", 21, b" "), _text("", 128), _text("Torture", 81), whole, parts,
                       trigger, 0, points * 1000000 // RATE, channels + 1, 3, 0, 263)]
    for channel in range(channels):
        samples = array.array("h")
        samples.frombytes(rng.randbytes(2 * points))
        for position, value in enumerate(samples) if points < 10000 else ():
            if value == -32768:  # stands for a missing value in a record
                samples[position] = 0
        out.append(_analog(channel, samples))
    out.append(_discrete(points))
    return b"".join(out)


def chain(seed, number, files=1, points=40, channels=2):
    """The contents of a recording's files. Each number has a trigger, and so a record name, of its own."""
    import random  # not needed by those who only read

    rng = random.Random(f"{seed}/{number}")
    return [segment(rng, n, BASE + number, points, channels) for n in range(files)]


def chain_name(first, n):
    """The name of file n of the chain that starts with `first`."""
    return first if n == 0 else first[:-1] + EXTENSIONS[n]


def first_name(name):
    """The name of the first file of the chain that `name` belongs to; None if it is no recording's."""
    stem, dot, extension = name.rpartition(".")
    if not dot or not extension or extension[0] not in "Zz":
        return None
    return f"{stem}.{extension[0]}U" if extension[1:] in EXTENSIONS else None


class Bad(Exception):
    """Bytes that are no recording."""


class File:
    """One recorder file, read: trigger (seconds and microseconds), points, and a column of codes a channel."""

    def __init__(self, content):
        if len(content) < HEADER.size:
            raise Bad("header")
        fields = HEADER.unpack_from(content)
        if fields[0] != b"40\0" or fields[-1] != 263:
            raise Bad("header")
        self.trigger, self.micros, count = fields[6], fields[7], fields[9]
        self.columns = []
        at = HEADER.size
        for _ in range(count):
            if at + SECTION.size > len(content):
                raise Bad("section")
            kind, _name, description, length = SECTION.unpack_from(content, at)
            if at + description + length > len(content):
                raise Bad("data")
            if kind == 0:
                points = ANALOG.unpack_from(content, at + SECTION.size)[0]
                column = array.array("h", content[at + description:at + description + length])
                if len(column) != points:
                    raise Bad("points")
                self.columns.append(column)
            at += description + length
        if not self.columns:
            raise Bad("no channels")
        self.points = len(self.columns[0])


def read_file(content):
    """The file, or None if the bytes are no recording."""
    try:
        return File(content)
    except Bad:
        return None


def digest(content):
    import hashlib

    return hashlib.sha256(content).hexdigest()[:16]
