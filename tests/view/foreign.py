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


def fault(random_source, kind, rates=(), stamps=None, count=1500, offset=0.0, gaps=0, side="P", frequency=50, **settings):
    """A record of three voltages and currents with a fault, harmonics and noise, and of three channels that are no
    sine."""
    seconds = [stamp / 1e6 for stamp in stamps] if stamps else times(rates, count)
    omega = 2 * math.pi * (frequency or 50)

    def wave(size, phase, decay):
        for t in seconds:
            is_fault = t > seconds[-1] / 3
            yield (size * (1.7 if is_fault else 1) * math.sin(omega * t - phase) + 0.1 * size * math.sin(5 * omega * t)
                   + (decay * math.exp(-(t - seconds[-1] / 3) / 0.05) if is_fault else 0) + random_source.gauss(0, 0.02 * size))

    ratio = {"primary": 1200.0, "secondary": 5.0, "side": side}
    channels = []
    for index, phase in enumerate("abc"):
        for quantity, size, unit in (("U", 90.0, "V"), ("I", 7.0, "kA")):
            b = offset if quantity == "I" else 0.0
            a = size / 8000
            values = wave(size, index * 2 * math.pi / 3 + (0.4 if quantity == "I" else 0), size * (index - 1))
            channels.append(Channel(quantity + phase, unit, a, b, sampled(kind, a, b, values), **ratio))
    for name, unit, values in (("Frequency", "Hz", [50 + 0.2 * math.sin(t) for t in seconds]),
                               ("Battery", "V", [221.5 + random_source.gauss(0, 0.3) for _ in seconds]),
                               ("Load", "%", [math.sin(omega * t) for t in seconds])):
        channels.append(Channel(name, unit, 0.01, 0.0, sampled(kind, 0.01, 0.0, values), circuit="Station"))
    for _ in range(gaps):
        channel = random_source.choice(channels[:6])
        first = random_source.randrange(count)
        for sample in range(first, min(first + random_source.randrange(1, 30), count)):
            channel.codes[sample] = MISSING
    return Foreign(channels, kind, rates, stamps, frequency, **settings)
