#!/usr/bin/env python3
"""Makes the manual pages and shell completions of zucmtr from its --help, so that they tell what the program does.

generate.py PROGRAM VERSION DATE DIRECTORY: into man/, bash/ and zsh/ of the directory, which are made anew.
"""

import gzip
import pathlib
import shutil
import sys

import completions
import helptext
import manpages

TEMPLATES = pathlib.Path(__file__).parent


def main(program, version, date, directory):
    root = helptext.read_help(program, ["zucmtr"])
    commands = list(helptext.all_commands(root))
    for name in ("man", "bash", "zsh"):
        shutil.rmtree(directory / name, ignore_errors=True)
        (directory / name).mkdir(parents=True)
    for command in commands:
        page = manpages.man_page(command, root, version, date)
        # Without a time in it the file is the same each time.
        (directory / "man" / f"{manpages.page_name(command)}.1.gz").write_bytes(
            gzip.compress(page.encode(), compresslevel=9, mtime=0))
    _fill("zucmtr.bash.in", "@TABLES@", completions.bash_tables(commands), directory / "bash" / "zucmtr")
    _fill("zucmtr.zsh.in", "@FUNCTIONS@", completions.zsh_functions(root), directory / "zsh" / "_zucmtr")


def _fill(template, mark, text, target):
    target.write_text((TEMPLATES / template).read_text(encoding="utf-8").replace(mark, text), encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    try:
        main(sys.argv[1], sys.argv[2], sys.argv[3], pathlib.Path(sys.argv[4]))
    except helptext.UnexpectedHelp as error:
        sys.exit(f"generate.py: {error}")
