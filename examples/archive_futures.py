"""A table of the faults in a directory of recordings: archive_futures.py DIRECTORY [TABLE.csv]

All processors work, each with 16 recordings at a time; what cannot be read gets a row with the reason.
"""

from __future__ import annotations

import csv
import sys
from concurrent.futures import ProcessPoolExecutor
from multiprocessing import get_context
from pathlib import Path

import zucmtr

COLUMNS = ["recording", "trigger", "station", "circuit", "kind", "duration_ms", "distance_km", "error"]


def row_of(path: Path) -> dict[str, object]:
    """One line of the table."""
    row: dict[str, object] = {"recording": str(path)}
    try:
        with zucmtr.open(path) as record:
            row.update(trigger=record.trigger.isoformat(), station=record.station)
            fault = record.fault()
        if fault:
            row.update(circuit=fault.circuit, kind=fault.kind)
            row.update(duration_ms="" if fault.duration is None else round(1000 * fault.duration, 1))
            row.update(distance_km="" if fault.distance is None else round(fault.distance.km, 2))
    except zucmtr.Error as error:
        row["error"] = str(error)
    return row


def main() -> None:
    recordings = sorted(path for path in Path(sys.argv[1]).rglob("*") if path.suffix in (".ZU", ".zu"))
    with ProcessPoolExecutor(mp_context=get_context("spawn")) as pool:
        rows = list(pool.map(row_of, recordings, chunksize=16))
    with open(sys.argv[2], "w", newline="", encoding="utf-8") if len(sys.argv) > 2 else sys.stdout as file:
        table = csv.DictWriter(file, COLUMNS)
        table.writeheader()
        table.writerows(rows)


if __name__ == "__main__":
    main()
