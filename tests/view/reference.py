"""The numbers of the page once more, computed in another way: by plain sums where a period is a whole number of
samples, otherwise by orthogonal columns (Gram and Schmidt). Nothing is taken from the page's scripts.

Of a period that is neither whole nor of few samples the page fits the ends of its filters alone: there these numbers are nearly the
same, and derived_test.py has the exact comparison."""
import cmath
import math

HARMONICS = 50
FEW = 32  # samples, up to which the RMS is that of the harmonics


class Window:
    """The samples before a cursor that make a period, or the reason why there are none."""

    def __init__(self, record, sample):
        self.reason = None
        frequency = record.frequency or 50
        if record.rates:
            self._by_rates(record.rates, sample, frequency)
        else:
            self._by_stamps(record.stamps, sample, frequency)

    def _by_rates(self, rates, sample, frequency):
        starts = [0] + [last for _, last in rates[:-1]]
        number = max(i for i, start in enumerate(starts) if start <= sample)
        self._take(sample, rates[number][0] / frequency)
        if self.reason is None and self.first < starts[number]:
            self.reason = "whyRates" if number else "whyBeginning"

    def _by_stamps(self, stamps, sample, frequency):
        """For stamps that are either even throughout or far from it."""
        step = (stamps[-1] - stamps[0]) / (len(stamps) - 1)
        self._take(sample, 1e6 / frequency / step)
        if self.first < 0:
            self.reason = "whyBeginning"
        elif any(abs(stamps[i] - stamps[self.first] - (i - self.first) * step) > 5 for i in range(self.first, sample + 1)):
            self.reason = "whyUneven"

    def _take(self, sample, per_period):
        self.per_period = per_period
        self.count = math.ceil(per_period - 1e-6)
        self.first = sample - self.count
        if per_period < 3:
            self.reason = "whySlow"


_bases = {}


def basis(count, per_period):
    """Orthogonal columns and the coefficients that make them of 1, sin, cos, sin 2, cos 2 ..."""
    key = (count, per_period)
    if key not in _bases:
        plain = [[1.0] * count]
        highest = min(HARMONICS, (count - 1) // 2, math.ceil(per_period / 2 - 0.25) - 1)  # not too near to half the rate
        for harmonic in range(1, highest + 1):
            angles = [2 * math.pi * harmonic * (i - count) / per_period for i in range(count)]
            plain += [[math.sin(angle) for angle in angles], [math.cos(angle) for angle in angles]]
        columns, shares = [], []
        for place, column in enumerate(plain):
            share = [0.0] * len(plain)
            share[place] = 1.0
            for other, of_other in zip(columns, shares):
                part = dot(column, other)
                column = [x - part * y for x, y in zip(column, other)]
                share = [x - part * y for x, y in zip(share, of_other)]
            length = math.sqrt(dot(column, column))
            columns.append([x / length for x in column])
            shares.append([x / length for x in share])
        _bases[key] = columns, shares
    return _bases[key]


def dot(one, other):
    return sum(x * y for x, y in zip(one, other))


def is_plain(count, per_period):
    """Whether sums over the samples are exact, and fit the squares too."""
    return count > FEW and abs(per_period - count) < 1e-12


def fitted(values, per_period):
    """Mean, sine 1, cosine 1, sine 2 ... with angle 0 at the cursor, as far as they are needed."""
    count = len(values)
    if is_plain(count, per_period):
        turns = [2 * math.pi * i / count for i in range(count)]
        return [sum(values) / count, 2 / count * sum(v * math.sin(t) for v, t in zip(values, turns)),
                2 / count * sum(v * math.cos(t) for v, t in zip(values, turns))]
    columns, shares = basis(count, per_period)
    along = [dot(values, column) for column in columns]
    return [sum(part * share[place] for part, share in zip(along, shares)) for place in range(len(columns))]


def rms_of(values, per_period):
    """The root of the mean square: with few samples of the harmonics that they show, otherwise of what is left of the values too."""
    mean, *waves = fitted(values, per_period)
    count = len(values)
    if is_plain(count, per_period):
        return math.sqrt(sum(value * value for value in values) / count)
    if count <= FEW:
        return math.sqrt(mean ** 2 + sum(wave * wave for wave in waves) / 2)
    angles = [2 * math.pi * (i - count) / per_period for i in range(count)]
    rest = [value - mean - waves[0] * math.sin(angle) - waves[1] * math.cos(angle) for value, angle in zip(values, angles)]
    return math.sqrt(mean ** 2 + (waves[0] ** 2 + waves[1] ** 2) / 2 + fitted([value * value for value in rest], per_period)[0])


class Reading:
    """What a channel comes to before a cursor. Angles in degrees; NaN where there is no value."""

    def __init__(self, record, channel, sample):
        window = Window(record, sample)
        self.value = channel.value(sample)
        self.reason = window.reason
        self.rms = self.module = self.angle = self.direct = math.nan
        self.phasor = None
        if self.reason:
            return
        values = [channel.value(i) for i in range(window.first, sample)]
        if any(math.isnan(value) for value in values):
            self.reason = "whyMissing"
            return
        direct, sine, cosine = fitted(values, window.per_period)[:3]
        self.rms = rms_of(values, window.per_period)
        self.phasor = complex(sine, cosine) / math.sqrt(2)
        self.module = abs(self.phasor)
        if channel.unit not in ("Hz", "%") and self.module > 0 and self.module >= self.rms / 2:
            self.angle = math.degrees(cmath.phase(self.phasor))
        if abs(direct) > self.module:
            self.direct = direct


def sequences(readings):
    """Positive, negative and threefold zero sequence of three phases as phasors, None where a phase has none."""
    if any(reading.phasor is None for reading in readings):
        return [None] * 3
    a, b, c = (reading.phasor for reading in readings)
    turn = cmath.exp(2j * math.pi / 3)
    return [(a + turn * b + turn ** 2 * c) / 3, (a + turn ** 2 * b + turn * c) / 3, a + b + c]
