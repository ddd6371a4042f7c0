#!/usr/bin/env python3
"""Times the ten questions of docs/archive.md: archivequestions.py PROGRAM FILE [--plans]

Each as SQL and as a whole command, warm: the first of nine runs is left out, the shortest of the others counts, on the clock
and in processor time, which other work on the machine prolongs less. With --plans, how SQLite goes about each.
"""
import os
import pathlib
import re
import sqlite3
import subprocess
import sys
import time

DOCUMENT = pathlib.Path(__file__).resolve().parent.parent / "docs/archive.md"
LIMIT = 0.05  # s


def questions():
    text = DOCUMENT.read_text(encoding="utf-8")
    return re.findall(r"^### (\d+)\. ([^\n]+)\n\n```sh\n(.*?)\n```\n\n```sql\n(.*?)\n```", text, re.MULTILINE | re.DOTALL)


def now():
    """On the clock, and processor time with that of children that have ended; s."""
    used = os.times()
    return time.perf_counter(), used.user + used.system + used.children_user + used.children_system


def shortest(work, rounds=8):
    """Text of the shortest times of some runs, and the shorter one."""
    work()
    times = []
    for _ in range(rounds):
        start = now()
        work()
        times.append([after - before for before, after in zip(start, now())])
    clock, processor = map(min, zip(*times))
    return f"{clock * 1000:.1f} / {processor * 1000:.0f} ms", min(clock, processor)


def main(program, file, *options):
    program, file = pathlib.Path(program).resolve(), pathlib.Path(file).resolve()
    database = sqlite3.connect(f"file:{file}?mode=ro", uri=True)
    environment = dict(os.environ, LC_ALL="C.UTF-8", PATH=f"{program.parent}:{os.environ['PATH']}")
    print("| Question | SQL | Command | Rows |\n|---|---|---|---|")
    slow = 0
    for number, title, command, sql in questions():
        rows = len(database.execute(sql).fetchall())
        query, seconds = shortest(lambda sql=sql: database.execute(sql).fetchall())
        words = ["sh", "-c", f"exec {command} --catalogue '{file}'"]
        whole, _ = shortest(lambda words=words: subprocess.run(words, env=environment, stdout=subprocess.DEVNULL, check=False))
        print(f"| {number}. {title} | {query} | {whole} | {rows} |", flush=True)
        slow += seconds > LIMIT
        if "--plans" in options:
            for row in database.execute("EXPLAIN QUERY PLAN " + sql):
                print("   ", row[3])
    print(f"{slow} of the queries take more than {LIMIT * 1000:.0f} ms")
    return 1 if slow else 0


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
