"""What `zucmtr --help` and the help of its commands tell, as data for man pages and completions."""

import os
import re
import subprocess
from dataclasses import dataclass, field

HEADING = re.compile(r"^([A-Z][^:]*):$")
# An entry's left part stands two columns in; its description follows from column 30, or on the next line if the
# left part is too long.
DESCRIPTION_COLUMN = 30
RELATION = re.compile(r" (Excludes|Needs): ((?:-\S+ ?)+)")
TRAILING_LIST = re.compile(r": ([\w.-]+(?:, [\w.-]+)+)(?: \([\w.-]+\))?$")
BRACED_LIST = re.compile(r"\{([^}]*)\}")


class UnexpectedHelp(Exception):
    """The help has a shape that is not understood; its text tells which line of which command."""


@dataclass
class Entry:
    """An option, or a positional argument (no flags)."""

    flags: list  # as in ["-j", "--jobs"]
    value: str  # what is to be given, as in "FILE"; empty for a flag
    required: bool
    repeated: bool
    excludes: list
    description: str
    choices: list = field(default_factory=list)  # the words that the value may be, if they are told


@dataclass
class Command:
    """The program itself, or one of its commands."""

    words: list  # as in ["zucmtr", "convert"]
    description: str
    usage: str
    positionals: list
    options: list
    commands: list
    footer: list  # lines


def read_help(program, words):
    """The Command that `program words[1:] --help` tells, with the commands below it. Raises UnexpectedHelp."""
    lines = _help_lines(program, words[1:])
    body, footer = _split_footer(lines)
    command = Command(words, "", "", [], [], [], footer)
    names = []
    section = "description"
    for left, text in _entries(body):
        if left is None and HEADING.match(text):
            section = HEADING.match(text).group(1)
        elif left is None and text.startswith("Usage: "):
            command.usage = text[len("Usage: "):]
        elif left is None and section == "description":
            command.description = (command.description + " " + text).strip()
        elif left is None:
            raise UnexpectedHelp(f"{' '.join(words)} --help: line not understood: {text}")
        elif section == "Subcommands":
            names.append(left.split(",")[0])
        elif section == "Positionals":
            command.positionals.append(_entry(left, text))
        else:
            command.options.append(_entry(left, text))
    if not command.usage or not command.options:
        raise UnexpectedHelp(f"{' '.join(words)} --help: no usage line, or no options")
    command.commands = [read_help(program, words + [name]) for name in names]
    return command


def all_commands(command):
    """The command and all below it, parents first."""
    yield command
    for below in command.commands:
        yield from all_commands(below)


def _help_lines(program, words):
    environment = dict(os.environ, LC_ALL="C.UTF-8", LANGUAGE="")
    result = subprocess.run([program, *words, "--help"], env=environment, capture_output=True, text=True,
                            encoding="utf-8", timeout=60, check=True)
    return result.stdout.splitlines()


def _split_footer(lines):
    """The footer follows the last section of entries, behind an empty line."""
    end = 0
    for number, line in enumerate(lines):
        heading = HEADING.match(line) and number + 1 < len(lines)
        if heading and (line in ("Positionals:", "Subcommands:") or lines[number + 1].startswith("  -")):
            end = number + 1
            while end < len(lines) and lines[end].startswith("  "):
                end += 1
    footer = lines[end:]
    while footer and not footer[0]:
        footer.pop(0)
    return lines[:end], footer


def _entries(lines):
    """Pairs of left part and description; lines of other shapes have None on the left."""
    lines = [line for line in lines if line]
    number = 0
    while number < len(lines):
        line = lines[number]
        continuation = []
        while number + 1 < len(lines) and lines[number + 1].startswith(" " * DESCRIPTION_COLUMN):
            number += 1
            continuation.append(lines[number].strip())
        number += 1
        if not line.startswith("  "):
            yield None, line
        elif _holds_description(line, bool(continuation)):
            yield line[:DESCRIPTION_COLUMN].strip(), " ".join([line[DESCRIPTION_COLUMN:].strip()] + continuation)
        else:
            yield line.strip(), " ".join(continuation)


def _holds_description(line, has_continuation):
    """A long left part may have a blank at the column's edge; its description is then on the next line."""
    edge = line[DESCRIPTION_COLUMN - 2:DESCRIPTION_COLUMN]
    return len(line) > DESCRIPTION_COLUMN and edge.endswith(" ") and not (has_continuation and edge != "  ")


def _entry(left, description):
    excludes = []
    for relation in RELATION.finditer(left):
        if relation.group(1) == "Excludes":
            excludes += relation.group(2).split()
    rest = RELATION.sub("", left)
    required = rest.endswith(" REQUIRED")
    rest = rest[:-len(" REQUIRED")] if required else rest
    flags, _, rest = rest.partition(" ") if rest.startswith("-") else ("", "", rest)
    value = rest.split(" ")[0].split(":")[0]
    repeated = rest.split(" ")[1:2] == ["..."]
    return Entry(flags.split(",") if flags else [], value, required, repeated, excludes, description,
                 _choices(rest, description))


def _choices(shape, description):
    braced = BRACED_LIST.search(shape)
    if braced:
        return [word.split("->")[0].strip() for word in braced.group(1).split(",")]
    listed = TRAILING_LIST.search(description)
    if listed and shape:
        return listed.group(1).split(", ")
    return []
