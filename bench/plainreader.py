"""A COMTRADE reader in plain Python, to measure the module against: struct, array and the text functions alone.

Reads revision 1999 and 2013, ASCII, BINARY, BINARY32 and FLOAT32, into an array of codes for each analog channel and a
bytearray of states for each digital one. Well-formed records only.
"""

import struct
from array import array
from pathlib import Path

TYPES = {"BINARY": ("h", "h", -32768), "BINARY32": ("i", "i", -(2**31)), "FLOAT32": ("f", "f", None)}


class Configuration:
    """What the CFG file says about the data."""

    def __init__(self, path):
        lines = Path(path).read_text(encoding="utf-8", errors="replace").splitlines()
        _, analog, digital = lines[1].split(",")
        self.analog_count = int(analog.strip().rstrip("Aa"))
        self.digital_count = int(digital.strip().rstrip("Dd"))
        self.analog = [line.split(",") for line in lines[2 : 2 + self.analog_count]]
        place = 2 + self.analog_count
        self.digital = [line.split(",") for line in lines[place : place + self.digital_count]]
        place += self.digital_count
        self.frequency = float(lines[place] or 0)
        rates = max(int(lines[place + 1]), 1)
        self.rates = [tuple(map(float, line.split(","))) for line in lines[place + 2 : place + 2 + rates]]
        self.start, self.trigger, self.type = lines[place + 2 + rates : place + 5 + rates]


class Record:
    """The samples of a record."""

    def __init__(self, path):
        self.config = Configuration(path)
        self.times = array("q")
        self.digital = [bytearray() for _ in range(self.config.digital_count)]
        data = Path(path).with_suffix(".dat")
        if self.config.type.strip().upper() == "ASCII":
            self.analog = [array("h") for _ in range(self.config.analog_count)]
            self._read_ascii(data)
        else:
            code, store, _ = TYPES[self.config.type.strip().upper()]
            self.analog = [array(store) for _ in range(self.config.analog_count)]
            self._read_binary(data, code)

    def _read_ascii(self, path):
        analog, digital, times = self.analog, self.digital, self.times
        first_state = 2 + len(analog)
        with open(path, encoding="ascii") as file:
            for line in file:
                fields = line.split(",")
                if len(fields) < first_state:
                    break
                times.append(int(fields[1]))
                for channel, field in zip(analog, fields[2:first_state]):
                    channel.append(int(field) if field else -32768)
                for channel, field in zip(digital, fields[first_state:]):
                    channel.append(field[0] == "1")

    def _read_binary(self, path, code):
        words = (len(self.digital) + 15) // 16
        row = struct.Struct(f"<Ii{len(self.analog)}{code}{words}H")
        analog, digital, times = self.analog, self.digital, self.times
        last_code = 2 + len(analog)
        for fields in row.iter_unpack(Path(path).read_bytes()):
            times.append(fields[1])
            for channel, value in zip(analog, fields[2:last_code]):
                channel.append(value)
            states = 0
            for place, word in enumerate(fields[last_code:]):
                states |= word << (16 * place)
            for channel in digital:
                channel.append(states & 1)
                states >>= 1
