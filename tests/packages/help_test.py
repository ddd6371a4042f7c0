"""Manual pages and completions say what the program's help says.

help_test.py PROGRAM GENERATOR HELP_DIRECTORY
"""

import argparse
import gzip
import itertools
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

# An option's line in the help, as in "  -j,--jobs N".
OPTION = re.compile(r"^  (-[-\w]+(?:,-[-\w]+)*)")
# Where the pages of each language are below man/, and the headings of the one in the other.
LANGUAGES = ("man1", "ru/man1")
HEADINGS = {"NAME": "ИМЯ", "SYNOPSIS": "ВЫЗОВ", "DESCRIPTION": "ОПИСАНИЕ", "ARGUMENTS": "АРГУМЕНТЫ", "OPTIONS": "КЛЮЧИ",
            "COMMANDS": "КОМАНДЫ", "EXIT STATUS": "КОД ЗАВЕРШЕНИЯ", "EXAMPLES": "ПРИМЕРЫ", "SEE ALSO": "СМ. ТАКЖЕ"}
SUBCOMMAND = re.compile(r"^  ([a-z]+) ")

# Completes the command line given in the arguments, its last word being typed; one answer per line.
COMPLETE = """
source "$1"; shift
compopt() { :; }
COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
_zucmtr && ((${#COMPREPLY[@]})) && printf '%s\\n' "${COMPREPLY[@]}"
"""


def run(*command, **options):
    return subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          timeout=60, check=False, **options)


def help_lines(words):
    return run(arguments.program, *words[1:], "--help").stdout.splitlines()


def all_commands(words=("zucmtr",)):
    """The program and the commands of its help, as tuples of words; read here without the generator's parser."""
    yield words
    lines = help_lines(words)
    below = lines[lines.index("Subcommands:") + 1:] if "Subcommands:" in lines else []
    for line in below:
        if not line.startswith("  "):
            break
        if SUBCOMMAND.match(line):
            yield from all_commands(words + (SUBCOMMAND.match(line).group(1),))


def options_of(words):
    matches = [OPTION.match(line) for line in help_lines(words)]
    return [flag for match in matches if match for flag in match.group(1).split(",")]


def page(words, directory="man1"):
    return arguments.help / "man" / directory / ("-".join(words) + ".1.gz")


def source_of(words, directory):
    return gzip.decompress(page(words, directory).read_bytes()).decode()


def complete(*words, directory="/"):
    result = run("bash", "-c", COMPLETE, "complete", arguments.help / "bash/zucmtr", *words, cwd=directory)
    assert not result.stderr, result.stderr
    return result.stdout.splitlines()


class Help(unittest.TestCase):
    def setUp(self):
        self.commands = list(all_commands())

    def test_the_help_lists_commands_with_options(self):
        self.assertIn(("zucmtr", "convert"), self.commands)
        self.assertIn(("zucmtr", "archive", "update"), self.commands)
        self.assertIn(("zucmtr", "archive", "page"), self.commands)
        self.assertIn("--ini", options_of(("zucmtr", "convert")))

    def test_each_command_has_a_page_and_no_other_is_there(self):
        for directory in LANGUAGES:
            self.assertEqual({path.name for path in (arguments.help / "man" / directory).iterdir()},
                             {page(words).name for words in self.commands})
        self.assertEqual({path.name for path in (arguments.help / "man").iterdir()}, {"man1", "ru"})

    def test_pages_are_without_warnings_and_have_each_option(self):
        for words, directory in itertools.product(self.commands, LANGUAGES):
            formatted = run("man", "--warnings", "-E", "UTF-8", "-Tutf8", "-l", page(words, directory),
                            env=dict(os.environ, MANWIDTH="200"))
            self.assertEqual((formatted.returncode, formatted.stderr), (0, ""), words)
            text = re.sub(r".\x08|\x1b\[[\d;]*m", "", formatted.stdout)  # bold letters are struck twice or between escapes
            # A term has a line of its own or, if it is short, one with the start of its text.
            terms = [line for line in text.splitlines() if re.match(r"^ {7}-", line)]
            listed = {flag for line in terms for flag in re.findall(r"(?<![-\w])-[-\w]+", line.strip().split("  ")[0])}
            self.assertLessEqual(set(options_of(words)), listed, words)

    def test_pages_name_the_command_above_and_those_beside(self):
        for words, directory in itertools.product(self.commands, LANGUAGES):
            named = set(re.findall(r"^\.BR (\S+) \(1\)", source_of(words, directory).replace("\\-", "-"), re.MULTILINE))
            family = {words[:-1]} | {other for other in self.commands if other[:-1] == words[:-1]}
            self.assertLessEqual({"-".join(other) for other in family - {words, ()}}, named, words)

    def test_footer_stands_in_the_page(self):
        for directory, status, first, examples in (
                ("man1", "EXIT STATUS", "0 all recordings converted", "EXAMPLES"),
                ("ru/man1", "КОД ЗАВЕРШЕНИЯ", "0 все преобразованы", "ПРИМЕРЫ")):
            source = source_of(("zucmtr", "convert"), directory)
            self.assertRegex(source, rf"\n\.SH {status}\n.*{first}")
            self.assertRegex(source, rf"\n\.SH {examples}\n(.*\n)+?zucmtr sample \\-\\-out station\n")

    def test_pages_of_both_languages_have_the_same_sections(self):
        for words in self.commands:
            english, russian = (re.findall(r"^\.SH (.*)$", source_of(words, directory), re.MULTILINE)
                                for directory in LANGUAGES)
            self.assertEqual([HEADINGS[heading] for heading in english], russian, words)

    def test_man_shows_the_page_of_the_language_that_is_asked_for(self):
        environment = dict(os.environ, MANPATH=str(arguments.help / "man"))
        for language, synopsis in (("ru", "ВЫЗОВ\n       zucmtr convert [КЛЮЧИ] ФАЙЛ...\n"),
                                   ("en", "SYNOPSIS\n       zucmtr convert [OPTIONS] FILE...\n")):
            for name in (["zucmtr-convert"], ["zucmtr", "convert"]):
                text = run("man", "-L", language, "-E", "UTF-8", *name, env=environment).stdout
                self.assertIn(synopsis, text, (language, name))

    def test_descriptions_can_be_searched_for(self):
        for words, directory in itertools.product(self.commands, LANGUAGES):
            name = "-".join(words)
            self.assertRegex(run("lexgrog", page(words, directory)).stdout, rf': "{name} - [^"]+"\n$')


class Bash(unittest.TestCase):
    def test_each_option_is_offered(self):
        for words in all_commands():
            self.assertEqual(complete(*words, "-"), options_of(words), words)

    def test_commands_are_offered_first(self):
        self.assertEqual(complete("zucmtr", "conv"), ["convert"])
        self.assertEqual(complete("zucmtr", "")[:-3], [words[1] for words in all_commands() if len(words) == 2])

    def test_choices_of_an_option(self):
        self.assertEqual(complete("zucmtr", "sample", "--fault", "t"), ["two", "three"])
        self.assertEqual(complete("zucmtr", "sample", "--fault", "=", "tw"), ["two"])
        self.assertEqual(complete("zucmtr", "sample", "--code-page", ""), ["cp866", "cp1251"])
        self.assertEqual(complete("zucmtr", "convert", "--jobs", ""), [])

    def test_commands_are_offered_after_help(self):
        self.assertEqual(complete("zucmtr", "help", "c"), ["check", "convert"])
        self.assertEqual(complete("zucmtr", "help", "archive", ""), [words[2] for words in all_commands(("zucmtr", "archive"))
                                                                     if len(words) == 3])

    def test_files_directories_and_sections(self):
        with tempfile.TemporaryDirectory() as name:
            directory = pathlib.Path(name)
            (directory / "out put").mkdir()
            (directory / "other.ZU").touch()
            (directory / "a *.ZU").touch()
            (directory / "my.ini").write_text("[Default]\nOut=1\n[Line A]\n[$(touch made)]\n", encoding="utf-8")
            self.assertEqual(complete("zucmtr", "convert", "--out", "o", directory=name), ["out put"])
            self.assertEqual(sorted(complete("zucmtr", "convert", "o", directory=name)), ["other.ZU", "out put"])
            self.assertEqual(complete("zucmtr", "convert", "a", directory=name), ["a *.ZU"])
            self.assertEqual(complete("zucmtr", "convert", "--ini", "my.ini", "--device", "", directory=name),
                             ["Default", "Line\\ A", "\\$\\(touch\\ made\\)"])
            self.assertEqual(complete("zucmtr", "convert", "--ini", "=", "my.ini", "--device", "Line\\ ", directory=name),
                             ["Line\\ A"])
            self.assertFalse((directory / "made").exists())


class Zsh(unittest.TestCase):
    def setUp(self):
        self.script = arguments.help / "zsh/_zucmtr"

    def test_script_is_well_formed_and_belongs_to_the_program(self):
        self.assertEqual(run("zsh", "-n", self.script).stderr, "")
        found = run("zsh", "-f", "-c", 'fpath=("$1" $fpath); autoload -U compinit; compinit -u -D; print $_comps[zucmtr]',
                    "zsh", self.script.parent)
        self.assertEqual(found.stdout, "_zucmtr\n")

    def test_each_option_is_offered(self):
        functions = dict(re.findall(r"^_([-a-z]+)\(\) \{\n(.*?)^\}$", self.script.read_text(encoding="utf-8"),
                                    re.DOTALL | re.MULTILINE))
        for words in all_commands():
            specs = re.findall(r"^ {8}('.*?)\[", functions["-".join(words)], re.MULTILINE)
            offered = {flag.rstrip("+=") for spec in specs
                       for flag in re.findall(r"-[-\w]+[+=]?", re.sub(r"\([^)]*\)", "", spec))}
            self.assertEqual(offered, set(options_of(words)), words)


class Dump(unittest.TestCase):
    """What the program says of its commands to the generator."""

    def dump(self, *words):
        return json.loads(run(arguments.program, "help", "--dump-json", *words).stdout)

    def test_one_command_is_dumped_as_it_is_within_the_whole(self):
        whole = self.dump()
        self.assertEqual(["zucmtr"], whole["words"])
        self.assertEqual([list(words) for words in all_commands() if len(words) == 2],
                         [command["words"] for command in whole["commands"]])
        for command in whole["commands"]:
            self.assertEqual(command, self.dump(command["words"][1]))
            for below in command["commands"]:
                self.assertEqual(below, self.dump(*below["words"][1:]))

    def test_entries_say_how_they_are_given(self):
        view, convert = self.dump("view"), self.dump("convert")
        self.assertEqual([{"flags": [], "value": "FILE", "shown": "FILE", "required": True, "repeated": True,
                           "excludes": [], "choices": [],
                           "description": "First files of the recordings, or directories with recordings"}],
                         convert["positionals"])
        self.assertEqual([{"flags": ["--plain"], "value": "", "shown": "", "required": False, "repeated": False,
                           "excludes": ["--ini", "--defaults", "--device", "--second-device"], "choices": [],
                           "description": "Take no ini file: names as in the recording, a report without the values of "
                                          "circuits"}],
                         [entry for entry in view["options"] if entry["flags"] == ["--plain"]])

    def test_the_option_is_not_spoken_of(self):
        self.assertNotIn("dump", "\n".join(help_lines(("zucmtr", "help"))))
        for words in (("help", "--dump-jsom"), ("view", "--dump-json"), ("--dump-jsom",)):
            said = run(arguments.program, *words)
            self.assertEqual(2, said.returncode)
            self.assertIn(f"has no option {words[-1]}\n", said.stderr)


class Generator(unittest.TestCase):
    def test_what_is_no_dump_fails_and_leaves_the_files_of_before(self):
        for text in ("Does it", "[]", '{"words": ["zucmtr"], "commands": []}'):
            with tempfile.TemporaryDirectory() as name:
                program, page = pathlib.Path(name, "program"), pathlib.Path(name, "man", "man1", "zucmtr.1.gz")
                program.write_text(f"#!/bin/sh\necho '{text}'\n", encoding="utf-8")
                program.chmod(0o755)
                page.parent.mkdir(parents=True)
                page.touch()
                result = run(sys.executable, "-B", arguments.generator, "1.0", "2026-01-01", name, program)
                self.assertEqual((1, True), (result.returncode, page.exists()), text)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("program", "generator", "help"):
        parser.add_argument(name, type=pathlib.Path)
    arguments = parser.parse_args()
    unittest.main(argv=sys.argv[:1])
