"""COMTRADE records as devices of other vendors write them, made for tests: all kinds of data, several rates, time
stamps instead of rates, missing samples, primary and secondary values."""
import datetime
import math
import struct

# How each kind of data writes a code, and one that is missing. ASCII has two ways for that.
BINARY = {"BINARY": ("<h", -0x8000), "BINARY32": ("<i", -0x80000000), "FLOAT32": ("<f", math.nan)}
ASCII_MISSING = ("99999", "")
MISSING = None


class Channel:
    """An analog channel; codes are the samples as stored, MISSING where there is none."""

    def __init__(self, name, unit, a, b, codes, circuit="W1", primary=1.0, secondary=1.0, side="P"):
        self.name, self.unit, self.circuit, self.codes = name, unit, circuit, codes
        self.a, self.b, self.primary, self.secondary, self.side = a, b, primary, secondary, side

    def value(self, sample):
        """The primary value, NaN where it is missing."""
        code = self.codes[sample]
        if code is MISSING:
            return math.nan
        return (self.a * code + self.b) * (self.primary / self.secondary if self.side == "S" else 1)


class Foreign:
    """Rates are (samples per second, last sample); without any, stamps are the microseconds of the samples. The trigger
    is so many seconds after the start; states are (name, circuit, states), the zone is the time code of revision 2013."""

    def __init__(self, channels, kind="ASCII", rates=(), stamps=None, frequency=50, revision=2013, trigger=0.1,
                 announced=None, start=datetime.datetime(2024, 2, 1), zone="0", station="Foreign substation", states=()):
        self.channels, self.kind, self.rates, self.stamps = channels, kind, list(rates), stamps
        self.frequency, self.revision, self.trigger = frequency, revision, trigger
        self.start, self.zone, self.station, self.states = start, zone, station, states
        self.count = len(channels[0].codes)
        self.announced = self.count if announced is None else announced

    def write(self, path):
        path.write_text("\r\n".join(self._configuration()) + "\r\n", encoding="utf-8")
        write = self._line if self.kind == "ASCII" else self._record
        path.with_suffix(".dat").write_bytes(b"".join(write(sample) for sample in range(self.count)))

    def _configuration(self):
        yield "%s,Other recorder,%d" % (self.station, self.revision)
        yield "%d,%dA,%dD" % (len(self.channels) + len(self.states), len(self.channels), len(self.states))
        for number, one in enumerate(self.channels, 1):
            yield "%d,%s,,%s,%s,%r,%r,0,-99999,99998,%r,%r,%s" % (
                number, one.name, one.circuit, one.unit, one.a, one.b, one.primary, one.secondary, one.side)
        for number, (name, circuit, _) in enumerate(self.states, 1):
            yield "%d,%s,,%s,0" % (number, name, circuit)
        yield "%g" % self.frequency if self.frequency else ""
        rates = self.rates[:-1] + [(self.rates[-1][0], self.announced)] if self.rates else [(0, self.announced)]
        yield str(len(self.rates))
        yield from ("%r,%d" % rate for rate in rates)
        for moment in (self.start, self.start + datetime.timedelta(seconds=self.trigger)):
            yield moment.strftime("%d/%m/%Y,%H:%M:%S.%f")
        yield from [self.kind, "1"] + (["%s,%s" % (self.zone, self.zone), "0,0"] if self.revision == 2013 else [])

    def _stamp(self, sample):
        return self.stamps[sample] if self.stamps else round(sample * 1e6 / self.rates[0][0])

    def _line(self, sample):
        fields = [str(sample + 1), str(self._stamp(sample))]
        for one in self.channels:
            code = one.codes[sample]
            fields.append(ASCII_MISSING[sample % 2] if code is MISSING else "%r" % code)
        fields += [str(states[sample]) for _, _, states in self.states]
        return (",".join(fields) + "\r\n").encode()

    def _record(self, sample):
        form, missing = BINARY[self.kind]
        codes = (missing if one.codes[sample] is MISSING else one.codes[sample] for one in self.channels)
        words = (sum(states[sample] << place for place, (_, _, states) in enumerate(self.states[first:first + 16]))
                 for first in range(0, len(self.states), 16))
        return (struct.pack("<II", sample + 1, self._stamp(sample)) + b"".join(struct.pack(form, code) for code in codes)
                + b"".join(struct.pack("<H", word) for word in words))


def times(rates, count):
    """Seconds of the samples from the first: the first sample of a rate comes one of its steps after the last one."""
    at, result = 0.0, []
    for sample in range(count):
        hertz = next((rate for rate, last in rates if sample < last), rates[-1][0])
        at = at + 1 / hertz if sample else 0.0
        result.append(at)
    return result


def sampled(kind, a, b, values):
    """The codes of values, as this kind of data stores them."""
    codes = [(value - b) / a for value in values]
    if kind == "FLOAT32":
        return [struct.unpack("<f", struct.pack("<f", code))[0] for code in codes]
    return [max(-32000, min(32000, round(code))) for code in codes] if kind == "BINARY" else [round(code) for code in codes]
