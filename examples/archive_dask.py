"""The same table by dask, on one machine or a cluster: archive_dask.py DIRECTORY [TABLE.csv]"""

from __future__ import annotations

import sys
from pathlib import Path

import dask
import dask.bag

from archive_futures import COLUMNS, row_of


def main() -> None:
    recordings = sorted(path for path in Path(sys.argv[1]).rglob("*") if path.suffix in (".ZU", ".zu"))
    rows = dask.bag.from_sequence(recordings, partition_size=16).map(row_of)
    table = rows.to_dataframe(meta={name: object for name in COLUMNS})
    with dask.config.set(scheduler="processes", **{"multiprocessing.context": "spawn"}):
        table.compute().to_csv(sys.argv[2] if len(sys.argv) > 2 else sys.stdout, index=False)


if __name__ == "__main__":
    main()
