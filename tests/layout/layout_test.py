#!/usr/bin/env python3
"""Holds the order of the folders: layout_test.py ROOT lists the include lines that break it and the files without a room.

A file may include what is in its own room and in the rooms of the rows above, not what is in another room of its row. A
room is a folder or a file; of two that hold a file the longer one counts.
"""
import re
import sys
from pathlib import Path

ROWS = [
    "src/base", "src/qt6", "src/device", "src/config", "src/recording", "src/resorter", "src/preparation", "src/service",
    "src/writers",
    "tools/text",
    "tools/explain tools/recorderfile",
    "tools/comtrade tools/output tools/station tools/dictionary tools/salvage tools/sql",
    "tools/analysis",
    "tools/verify tools/info tools/inicheck tools/view tools/validate tools/forms tools/catalogue",
    "tools/archivepage tools/picture",
    "tools/zucmtr/terminal",
    "tools/zucmtr/host tools/zucmtr/files",
    "tools/zucmtr/run",
    "tools/zucmtr/archive",
    "tools/zucmtr/watch",
    "tools/zucmtr/commands",
    "tools/zucmtr/main.cpp",
    "python/core",
]
ROW_OF = {room: number for number, row in enumerate(ROWS) for room in row.split()}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def room_of(path):
    return max((room for room in ROW_OF if f"{path}/".startswith(f"{room}/")), key=len, default=None)


def wrong_lines(root):
    for file in sorted(file for column in ("src", "tools", "python") for file in (root / column).rglob("*")
                       if file.suffix in (".h", ".cpp")):
        path = file.relative_to(root).as_posix()
        own = room_of(path)
        if own is None:
            yield f"{path}: in no room"
        for name in INCLUDE.findall(file.read_text(encoding="utf-8")) if own else []:
            places = [f"{place}/{name}" for place in (file.parent.relative_to(root).as_posix(), "src", "tools", "python")]
            other = next((room_of(place) for place in places if (root / place).is_file()), own)
            if other != own and ROW_OF.get(other, len(ROWS)) >= ROW_OF[own]:
                yield f"{path}: {own} may not include {name}"


if __name__ == "__main__":
    wrong = list(wrong_lines(Path(sys.argv[1])))
    print("\n".join(wrong))
    sys.exit(1 if wrong else 0)
