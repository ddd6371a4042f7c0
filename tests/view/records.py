"""COMTRADE records: small ones to be written for a test, and a plain reader to compare with."""
import math
import struct


class Written:
    """Writes a binary record of revision 2013: channels are (name, circuit, unit, a, b, codes)."""

    def __init__(self, path, analog, states=(), rate=1000, trigger=0.1, station="Station"):
        self.path = path
        count = len(analog[0][-1]) if analog else len(states[0][-1])
        lines = ["%s,Device,2013" % station, "%d,%dA,%dD" % (len(analog) + len(states), len(analog), len(states))]
        for number, (name, circuit, unit, a, b, _) in enumerate(analog, 1):
            lines.append("%d,%s,,%s,%s,%r,%r,0,-32767,32767,1,1,P" % (number, name, circuit, unit, a, b))
        for number, (name, circuit, _) in enumerate(states, 1):
            lines.append("%d,%s,,%s,0" % (number, name, circuit))
        lines += ["50", "1", "%d,%d" % (rate, count), "01/02/2024,00:00:00.000000",
                  "01/02/2024,00:00:%09.6f" % trigger, "BINARY", "1", "0,0", "0,0"]
        path.write_text("\r\n".join(lines) + "\r\n", encoding="utf-8")
        path.with_suffix(".dat").write_bytes(b"".join(self._row(i, analog, states, rate) for i in range(count)))

    @staticmethod
    def _row(index, analog, states, rate):
        row = struct.pack("<II", index + 1, round(index * 1e6 / rate))
        row += struct.pack("<%dh" % len(analog), *(channel[-1][index] for channel in analog))
        for first in range(0, len(states), 16):
            bits = (channel[-1][index] << place for place, channel in enumerate(states[first:first + 16]))
            row += struct.pack("<H", sum(bits))
        return row


class Read:
    """The analog values of an ASCII record, and its report."""

    def __init__(self, path):
        lines = path.read_text(encoding="utf-8").splitlines()
        count = int(lines[1].split(",")[1].rstrip("A"))
        self.channels = [line.split(",") for line in lines[2:2 + count]]
        rows = [line.split(",") for line in path.with_suffix(".dat").read_text().split()]
        self.codes = [[int(row[2 + channel]) for row in rows] for channel in range(count)]
        self.report = path.with_suffix(".hdr").read_text(encoding="utf-8").splitlines()

    def value(self, channel, sample):
        """In the unit of the record."""
        return float(self.channels[channel][5]) * self.codes[channel][sample] + float(self.channels[channel][6])

    def rms_before(self, channel, sample, period):
        values = [self.value(channel, i) for i in range(sample - period, sample)]
        return math.sqrt(sum(value * value for value in values) / period)

    def report_table(self, number):
        """The rows of the report's table 0 to 3: name to (module, angle) as printed."""
        titles = [i for i, line in enumerate(self.report) if line.startswith(("Действующие", "Симметричные"))]
        rows = {}
        for line in self.report[titles[number] + 1:]:
            if "модуль =" not in line:
                break
            name, rest = line.split(":", 1)
            words = rest.replace("=", " ").replace(",", " ").split()
            rows[name] = (words[1], words[4])
        return rows
