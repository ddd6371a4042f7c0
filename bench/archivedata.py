#!/usr/bin/env python3
"""Makes up the catalogue of a region: archivedata.py PROGRAM FILE [ENTRIES].

100 stations with two recorders and ten lines each, ten years, a fault in every seventh recording; the same each time. The
program makes the tables; they are filled here past it, which takes a minute for a million entries, and without files.
"""
import datetime
import random
import sqlite3
import subprocess
import sys
import tempfile

KINDS = {"AG": 22, "BG": 22, "CG": 21, "AB": 5, "BC": 5, "CA": 5, "ABG": 4, "BCG": 4, "CAG": 4, "ABC": 6, "ABCG": 2}
STARTS = ["Пуск защит", "Откл. от защит", "Выходное реле", "АПВ", "УРОВ", "Выключатель включен", "Ускорение", "Блокировка"]
WAVES = ["Ia", "Ib", "Ic", "3I0", "Ua", "Ub", "Uc", "3U0"]
NAMES = ["Восточная", "Западная", "Северная", "Южная", "Речная", "Луговая", "Береговая", "Озерная", "Дубовая", "Рудничная"]
FIRST = datetime.datetime(2015, 1, 1)
MICROSECOND = datetime.timedelta(microseconds=1)
ZONE = datetime.timedelta(hours=3)


def stations():
    """Name, and the names of the lines, of each; the first is the one of `zucmtr sample`."""
    for number in range(100):
        suffix = f" {number}" if number else ""
        yield "ПС Узловая" + suffix, [f"ВЛ {220 if line % 3 == 0 else 110} кВ {name}{suffix}" if line else
                                      f"ВЛ 110 кВ {name}{suffix}" for line, name in enumerate(NAMES)]


class Maker:
    def __init__(self, database):
        self.random = random.Random(18)
        self.database = database
        self.stations = list(stations())
        self.channels = {}

    def add_channels(self):
        rows = []
        for _, lines in self.stations:
            for line in lines:
                rows += [("analog", line, f"{wave} {line}", wave[1].upper() if wave[1].isalpha() else "N",
                          "А" if "I" in wave else "В") for wave in WAVES]
                rows += [("digital", line, f"{start} {line}", "", "") for start in STARTS]
        self.database.executemany("INSERT INTO channels (kind, circuit, name, phase, unit) VALUES (?, ?, ?, ?, ?)", rows)
        self.channels = {(circuit, name.split(" " + circuit)[0]): number for number, circuit, name in
                         self.database.execute("SELECT id, circuit, name FROM channels")}

    def entry(self, number, count):
        """The row of an entry, with what changed in it."""
        chance = self.random
        place = chance.randrange(len(self.stations))
        station, lines = self.stations[place]
        line = lines[chance.randrange(len(lines))]
        recorder = f"РАС-{1 + chance.randrange(2)}"
        span = 10 * 365 * 86400 * 1000000
        local = FIRST + (number * span // count + chance.randrange(span // count)) * MICROSECOND
        stamp = local.isoformat(timespec="microseconds") + "+03:00"
        moment = (local - ZONE - datetime.datetime(1970, 1, 1)) // MICROSECOND
        row = {"id": number + 1, "kind": "recording", "bytes": 200000 + chance.randrange(100000), "station": station,
               "recorder": recorder, "start_time": stamp, "trigger_time": stamp, "utc_offset": 180, "moment": moment,
               "circuit": line, "path": f"{place:03}/{local:%Y/%m}/{recorder[-1]}_{number:07}.ZU",
               "print": f"{chance.getrandbits(256):064x}", "noted": stamp, "looked": stamp, "duration": 2.0,
               "samples": 4800, "rates": "2400", "frequency": 50.0, "analog": 32, "digital": 64, "events": 0,
               "greatest_current": chance.uniform(100, 900), "greatest_voltage": 180000.0, "forgiven": 0,
               "cause": "Пуск по изменению ДС " + line}
        if chance.random() < 0.005:
            row = {key: row[key] for key in ("id", "kind", "bytes", "path", "print", "noted", "looked", "analog", "digital",
                                             "events", "forgiven")}
            row.update(station="", recorder="", analog=0, digital=0, reason="recordingUnreadable", error="it is cut off")
            return row, []
        if chance.random() < 0.01:
            row["gone"] = stamp
        if chance.random() >= 1 / 7:
            return row, [(self.channels[line, chance.choice(STARTS)], 0.01)]
        row.update(self.fault(line))
        changed = [STARTS[0], STARTS[1], STARTS[2], STARTS[5]] + [STARTS[3]] * (chance.random() < 0.7) + \
            [STARTS[4]] * (chance.random() < 0.01)
        return row, [(self.channels[line, name], 0.01 * place) for place, name in enumerate(changed, 1)]

    def fault(self, line):
        chance = self.random
        clearing = min(0.05 + chance.expovariate(30), 1.5)
        row = {"fault_kind": chance.choices(list(KINDS), KINDS.values())[0], "fault_circuit": line,
               "fault_direction": "forward", "fault_onset": 0.0002, "fault_current": 300 + chance.expovariate(1 / 2500),
               "distance_method": "takagi", "distance_percent": chance.uniform(0, 100), "distance_km": chance.uniform(0, 80),
               "fault_resistance": chance.expovariate(0.2), "start_after": 0.012, "trip_after": clearing - 0.04,
               "breaker_after": clearing - 0.01, "clearing_after": clearing, "events": 10}
        if chance.random() < 0.97:
            row.update(fault_clearing=clearing + 0.0002, fault_duration=clearing)
        return row

    def fill(self, count):
        columns = [row[1] for row in self.database.execute("PRAGMA table_info(entries)")]
        insert = f"INSERT INTO entries ({', '.join(columns)}) VALUES ({', '.join('?' * len(columns))})"
        for start in range(0, count, 20000):
            entries, changes = [], []
            for number in range(start, min(start + 20000, count)):
                row, changed = self.entry(number, count)
                entries.append([row.get(column) for column in columns])
                changes += [(channel, row["id"], 2, first) for channel, first in changed]
            self.database.executemany(insert, entries)
            self.database.executemany("INSERT INTO changes VALUES (?, ?, ?, ?)", changes)

    def fill_others(self):
        """What follows from the entries and the changes."""
        for command in """
            INSERT INTO pieces SELECT id, substr(path, 13), bytes, moment * 1000, print FROM entries WHERE reason IS NULL;
            INSERT INTO extremes SELECT e.id, c.id, -e.greatest_current, e.greatest_current FROM entries e
                CROSS JOIN channels c WHERE c.circuit = e.line AND c.kind = 'analog';
            INSERT INTO events SELECT entry, row_number() OVER (PARTITION BY entry ORDER BY channel) - 1, first, channel,
                'trip', 1, 1 FROM changes ORDER BY entry;
            INSERT INTO words SELECT id, substr(path, 13) || char(10) || station || char(10) || recorder || char(10) ||
                coalesce(circuit, '') || char(10) || coalesce(cause, '') || char(10) || coalesce(fault_kind, '') || char(10) ||
                coalesce((SELECT group_concat(c.name, char(10)) FROM changes h JOIN channels c ON c.id = h.channel
                          WHERE h.entry = entries.id), '') FROM entries;
            INSERT INTO search (rowid, words) SELECT entry, words FROM words;
            INSERT INTO search (search) VALUES ('optimize')
        """.split(";"):
            self.database.execute(command)


def main(program, file, count):
    with tempfile.TemporaryDirectory() as empty:
        subprocess.run([program, "archive", "update", "--quiet", "--catalogue", file, empty], check=True)
    database = sqlite3.connect(file, isolation_level=None)
    database.executescript("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA foreign_keys=OFF; PRAGMA cache_size=-1000000;")
    database.execute("BEGIN")
    indexes = database.execute("SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL").fetchall()
    for name, _ in indexes:  # a new index is made faster than an old one is kept
        database.execute(f"DROP INDEX {name}")
    maker = Maker(database)
    maker.add_channels()
    maker.fill(count)
    for _, command in indexes:
        database.execute(command)
    maker.fill_others()
    database.execute("COMMIT")
    database.executescript("PRAGMA journal_mode=WAL; ANALYZE;")
    database.close()


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], int(sys.argv[3]) if len(sys.argv) == 4 else 1000000)
