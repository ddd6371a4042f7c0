"""Records of all forms, written by hand: nothing of the project's own writers is in them."""

import math
import random
import struct
from dataclasses import dataclass

TYPES = ("ASCII", "BINARY", "BINARY32", "FLOAT32")
DIGITS = {"BINARY": ("h", 0x7FFF), "BINARY32": ("i", 0x7FFFFFFF)}


@dataclass(frozen=True)
class Form:
    """What a record is like. The seed makes its coefficients, ratios, skews, codes, states and missing values."""

    name: str
    revision: int = 2013
    kind: str = "ASCII"
    container: bool = False
    analog: int = 5
    digital: int = 19
    rates: tuple = ((2400, 60),)  # hertz, last sample; a rate of 0: the samples have stamps
    encoding: str = "utf-8"
    clock: str = "+3h00,+3h00"
    first: int = 1  # number of the first sample

    @property
    def count(self):
        return self.rates[-1][1]


def _variants():
    for revision in (1991, 1999, 2013):
        for kind in TYPES:
            for container in (False, True):
                yield Form(f"{revision}-{kind}-{'cff' if container else 'cfg'}", revision, kind, container)
    for kind in TYPES:
        yield Form(f"two-rates-{kind}", kind=kind, rates=((1000, 20), (4000, 90)))
        yield Form(f"stamps-{kind}", kind=kind, rates=((0, 70),))
        yield Form(f"no-analog-{kind}", kind=kind, analog=0)
        yield Form(f"no-digital-{kind}", kind=kind, digital=0)
    for encoding in ("cp866", "cp1251", "koi8-r", "utf-8-sig", "utf-16"):
        yield Form(f"texts-{encoding}", 1999, encoding=encoding)
    yield Form("many-samples", 1999, "BINARY", digital=33, rates=((2400, 30001),))
    yield Form("many-lines", 1999, digital=33, rates=((2400, 5001),))
    yield Form("one-sample", rates=((2400, 1),))
    yield Form("many-rates", kind="FLOAT32", rates=tuple((100.0 * i, 7 * i) for i in range(1, 30)))
    yield Form("zone-of-minutes", clock="-5h30,-5h30")
    yield Form("numbers-from-1000", kind="BINARY32", first=1000)


FORMS = tuple(_variants())


def write(form, directory):
    """Writes the record of a form into a directory; the path of its CFG or CFF file."""
    random_ = random.Random(form.name)
    configuration = _configuration(form, random_)
    data = _ascii(form, random_) if form.kind == "ASCII" else _binary(form, random_)
    path = directory / f"{form.name}.{'cff' if form.container else 'cfg'}"
    if form.container:
        title = f"--- file type: DAT {form.kind}{'' if form.kind == 'ASCII' else f': {len(data)}'} ---\r\n"
        path.write_bytes(b"--- file type: CFG ---\r\n" + configuration.encode(form.encoding) + title.encode() + data)
    else:
        path.write_bytes(configuration.encode(form.encoding))
        path.with_suffix(".dat").write_bytes(data)
    return path


def _configuration(form, random_):
    is_old = form.revision == 1991
    lines = ["Подстанция Северная,Регистратор" + ("" if is_old else f",{form.revision}")]
    lines.append(f"{form.analog + form.digital},{form.analog}A,{form.digital}D")
    for i in range(form.analog):
        a = random_.choice(("0.5", "-1.25e-3", "0.0123456789", "1"))
        b = random_.choice(("0", "-17.5", "1e3", "0.1"))
        skew = random_.choice(("0", "12.5", "104"))
        line = f"{i + 1},Ток фазы {'ABC'[i % 3]} {i},{'ABC'[i % 3]},ВЛ {i // 3},{random_.choice(('A', 'kV'))},{a},{b},{skew},-99999,99998"
        lines.append(line if is_old else f"{line},{random_.choice(('1000,5,P', '1000,5,S', '0,0,S', '110,0.1,S'))}")
    for i in range(form.digital):
        lines.append(f"{i + 1},Откл. {i},{random_.randrange(2)}" if is_old
                     else f"{i + 1},Откл. {i},,ВЛ {i // 5},{random_.randrange(2)}")
    lines.append("50")
    if form.rates[0][0] == 0:
        lines += ["0", f"0,{form.count}"]
    else:
        lines.append(str(len(form.rates)))
        lines += [f"{hertz},{last}" for hertz, last in form.rates]
    day = "01/31/24" if is_old else "31/01/2024"
    lines += [f"{day},11:59:59.998123", f"{day},12:00:00.000001", form.kind]
    if not is_old:
        lines.append("1")
    if form.revision == 2013:
        lines += [form.clock, "0,3"]
    return "".join(line + "\r\n" for line in lines)


def _stamp(form, sample):
    return sample * 417 + sample % 3


def _codes(form, random_):
    """The codes of a sample; None is a missing one."""
    codes = []
    for channel in range(form.analog):
        if random_.random() < 0.05:
            codes.append(None)
        elif form.kind == "FLOAT32":
            codes.append(random_.uniform(-1e6, 1e6))
        elif form.kind == "ASCII":
            # The first channels are short, long and broken numbers.
            most = (32767, 99998, 99998)[channel % 3]
            codes.append(random_.randint(-most, most) / (8 if channel % 3 == 2 else 1))
        else:
            most = DIGITS[form.kind][1]
            codes.append(random_.randint(-most, most))
    return codes


def _ascii(form, random_):
    lines = []
    for sample in range(form.count):
        fields = [str(sample + form.first), str(_stamp(form, sample))]
        fields += ["" if code is None else f"{code:g}" if code == int(code) else repr(code) for code in _codes(form, random_)]
        fields += [str(random_.randrange(2)) for _ in range(form.digital)]
        lines.append(",".join(fields))
    return "".join(line + "\r\n" for line in lines).encode()


def _binary(form, random_):
    pieces = []
    letter, most = DIGITS.get(form.kind, ("f", None))
    for sample in range(form.count):
        missing = math.nan if most is None else -most - 1
        codes = [missing if code is None else code for code in _codes(form, random_)]
        words = [random_.getrandbits(min(16, form.digital - at)) for at in range(0, form.digital, 16)]
        pieces.append(struct.pack(f"<II{form.analog}{letter}{len(words)}H", sample + form.first, _stamp(form, sample), *codes, *words))
    return b"".join(pieces)
