"""Small recorder files, built byte by byte."""
import struct

START = 1706691599  # 2024-01-31 11:59:59 in the zone of +3 hours


def analog(name="Q1:Ia", points=3, rate=2400.0):
    header = struct.pack("<Ifhffff8sHfH12s", points, rate, 0, 1, 1, 1, 0, "А".encode("cp866"), 0, 0,
                         32767, b"")
    return section(0, name, header, struct.pack(f"<{points}h", *(i % 100 for i in range(points))))


def discrete(name="Q1:x", changes=((0, 1),)):
    rows = b"".join(struct.pack("<BI", value, time) for time, value in changes)
    return section(1, name, struct.pack("<IB", len(changes), 0), rows)


def section(kind, name, header, data):
    return struct.pack("<H66sII", kind, name.encode("cp866"), 76 + len(header), len(data)) + header + data


def recording(sections=None, minutes=0, comment="", identity="", duration=1250, page="cp866"):
    """The bytes of a recorder file that starts some minutes after START."""
    parts = [analog(), discrete()] if sections is None else sections
    start = START + 60 * minutes
    header = struct.pack("<3s21s128s81sIiIiIHhHI", b"40", "Данные РАС".ljust(21).encode(page), comment.encode(page),
                         identity.encode(page), start, 750000, start + 1, 250000, duration, len(parts), 3, 0, 263)
    return header + b"".join(parts)
