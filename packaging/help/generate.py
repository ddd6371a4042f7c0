#!/usr/bin/env python3
"""Makes the manual pages and shell completions of zucmtr from the program's own description of its commands.

generate.py VERSION DATE DIRECTORY PROGRAM...: into man/, bash/ and zsh/ of the directory, which are made anew. The manual
pages are there in English and in Russian, as `man` finds them where MANPATH names man/. An emulator may come before a
program of another processor.
"""

import gzip
import json
import os
import pathlib
import shutil
import subprocess
import sys
from types import SimpleNamespace

import completions
import manpages

TEMPLATES = pathlib.Path(__file__).parent


def main(version, date, directory, *program):
    files = {}
    for language in manpages.LANGUAGES:
        root = read_commands(program, language.locale)
        for command in all_commands(root):
            name = f"man/{language.directory}/{manpages.page_name(command)}.1.gz"
            files[name] = _compressed(manpages.man_page(command, root, version, date, language))
    root = read_commands(program, manpages.ENGLISH.locale)
    commands = list(all_commands(root))
    files["bash/zucmtr"] = _filled("zucmtr.bash.in", "@TABLES@", completions.bash_tables(commands))
    files["zsh/_zucmtr"] = _filled("zucmtr.zsh.in", "@FUNCTIONS@", completions.zsh_functions(root))
    for name in ("man", "bash", "zsh"):
        shutil.rmtree(directory / name, ignore_errors=True)
    for name, content in files.items():
        (directory / name).parent.mkdir(parents=True, exist_ok=True)
        (directory / name).write_bytes(content)


def read_commands(program, locale):
    """The program and its commands, with the names of tools/zucmtr/terminal/helpdump.h as attributes, in the language
    of a locale. The program finds its texts by the locale's name, so that it need not be installed."""
    environment = dict(os.environ, LC_ALL=locale, LANGUAGE="")
    result = subprocess.run([*program, "help", "--dump-json"], env=environment, stdout=subprocess.PIPE, timeout=60,
                            check=True)
    return json.loads(result.stdout, object_hook=lambda keys: SimpleNamespace(**keys))


def all_commands(command):
    """The command and all below it, parents first."""
    yield command
    for below in command.commands:
        yield from all_commands(below)


def _compressed(page):
    # Without a time in it the file is the same each time.
    return gzip.compress(page.encode(), compresslevel=9, mtime=0)


def _filled(template, mark, text):
    return (TEMPLATES / template).read_text(encoding="utf-8").replace(mark, text).encode()


if __name__ == "__main__":
    if len(sys.argv) < 5:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3]), *sys.argv[4:])
