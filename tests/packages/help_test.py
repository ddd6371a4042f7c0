"""Manual pages and completions say what the program's help says.

help_test.py PROGRAM GENERATOR HELP_DIRECTORY
"""

import argparse
import gzip
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


def page(words):
    return arguments.help / "man" / ("-".join(words) + ".1.gz")


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
        self.assertIn("--ini", options_of(("zucmtr", "convert")))

    def test_each_command_has_a_page_and_no_other_is_there(self):
        self.assertEqual({path.name for path in (arguments.help / "man").iterdir()},
                         {page(words).name for words in self.commands})

    def test_pages_are_without_warnings(self):
        for words in self.commands:
            formatted = run("man", "--warnings", "-E", "UTF-8", "-Tutf8", "-l", page(words))
            self.assertEqual((formatted.returncode, formatted.stderr), (0, ""), words)

    def test_each_option_stands_in_the_page(self):
        for words in self.commands:
            text = run("man", "-l", page(words), env=dict(os.environ, MANWIDTH="200")).stdout
            terms = [line for line in text.splitlines() if re.match(r"^ {7}-", line)]
            listed = {flag for line in terms for flag in re.findall(r"-[-\w]+", line.strip().split("  ")[0])}
            self.assertLessEqual(set(options_of(words)), listed, words)

    def test_pages_name_the_command_above_and_those_beside(self):
        for words in self.commands:
            source = gzip.decompress(page(words).read_bytes()).decode().replace("\\-", "-")
            named = set(re.findall(r"^\.BR (\S+) \(1\)", source, re.MULTILINE))
            family = {words[:-1]} | {other for other in self.commands if other[:-1] == words[:-1]}
            self.assertLessEqual({"-".join(other) for other in family - {words, ()}}, named, words)

    def test_footer_stands_in_the_page(self):
        source = gzip.decompress(page(("zucmtr", "convert")).read_bytes()).decode()
        self.assertRegex(source, r"\n\.SH EXIT STATUS\n.*0 all recordings converted")
        self.assertRegex(source, r"\n\.SH EXAMPLES\n(.*\n)+?zucmtr sample \\-\\-out station\n")


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
        self.assertEqual([{"flags": [], "value": "FILE", "required": True, "repeated": True, "excludes": [], "choices": [],
                           "description": "First files of the recordings, or directories with recordings"}],
                         convert["positionals"])
        self.assertEqual([{"flags": ["--plain"], "value": "", "required": False, "repeated": False,
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
                program, page = pathlib.Path(name, "program"), pathlib.Path(name, "man", "zucmtr.1.gz")
                program.write_text(f"#!/bin/sh\necho '{text}'\n", encoding="utf-8")
                program.chmod(0o755)
                page.parent.mkdir()
                page.touch()
                result = run(sys.executable, "-B", arguments.generator, program, "1.0", "2026-01-01", name)
                self.assertEqual((1, True), (result.returncode, page.exists()), text)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("program", "generator", "help"):
        parser.add_argument(name, type=pathlib.Path)
    arguments = parser.parse_args()
    unittest.main(argv=sys.argv[:1])
