"""The documents for users are there in English and in Russian, and both are as new as the program's options.

twins_test.py PROGRAM PROJECT_DIRECTORY
"""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import unittest

from markdown import cell_spans, read_document

# The English documents that have a twin of the same name in docs/ru, with the commands that they are the reference of.
REFERENCES = {
    "analysis.md": [], "archive.md": ["archive update", "archive find", "archive stats", "archive check"],
    "archivepage.md": ["archive page"], "check.md": ["check"], "convert.md": ["convert"], "dictionary.md": ["dictionary"],
    "events.md": ["events"], "info.md": ["info"], "ini.md": [], "packages.md": [], "python.md": [], "view.md": ["view"],
    "watch.md": ["watch"],
}
TWINS = {f"docs/{name}": f"docs/ru/{name}" for name in REFERENCES} | {"README.md": "README.ru.md"}

OPTION = re.compile(r"(?<![\w-])(?:--[a-z][a-z0-9-]*|-[a-zA-Z0](?![\w-]))")
# Headings that are the same in each language: commands, files, symbols.
NAME = re.compile(r"zucmtr [a-z ]+|ZuCmtrConverter|\S+\.ini|I²t")
# For the build alone, so that no help has it.
HIDDEN = {"--dump-json"}
# What starts a line of a block that is the same in every language, however many words it has.
COMMAND = re.compile(r"(?:\$ |sudo |\(?cd |(?:zucmtr|apt|dpkg|cmake|ctest|pip|python3|journalctl|systemctl|sqlite3|awk|grep|"
                     r"rsync|mkdir|mail|echo|find_package|target_\w+|scripts/|bench/|\./)\b|[\[/\"]|\w+ ?=|zucmtr_|time\()")
# Blocks whose every line counts, but for its comment.
LITERAL = {"sh", "sql", "ini", "python", "cpp"}
COMMENTS = {"sql": r"\s*--.*$", "ini": r"\s*;.*$", "cpp": r"\s*//.*$"}


class Program:
    """The program's commands: their options, and its words for values in both languages."""

    def __init__(self, path):
        english, russian = ([*_commands(_dump(path, locale))] for locale in ("C.UTF-8", "ru_RU.UTF-8"))
        # Of each command the spellings of each option, as {"-j", "--jobs"}.
        self.spellings = {" ".join(command["words"][1:]): [set(option["flags"]) for option in command["options"]]
                          for command in english}
        self.options = {command: set().union(*spellings) for command, spellings in self.spellings.items()}
        self.values = {}  # КАТАЛОГ -> {DIR, DIRECTORY}
        for one, other in zip(english, russian):
            for entry, twin in zip(one["options"] + one["positionals"], other["options"] + other["positionals"]):
                if entry["shown"] != twin["shown"]:
                    self.values.setdefault(twin["shown"], set()).add(entry["shown"])

    def all_options(self):
        return set().union(*self.options.values())

    def in_english(self, text):
        """A span or command with one word for each value, whichever language it was in."""
        for russian, english in self.values.items():
            text = re.sub(rf"\b(?:{'|'.join(map(re.escape, {russian} | english))})\b", "<" + min(english) + ">", text)
        text = re.sub(r"<\w+>", "<VALUE>", text)
        # A document may have a word of its own, as PART.
        return re.sub(r"(?<![\w-])(--?[a-z][\w-]*) [A-ZА-Я]+\b", r"\1 <VALUE>", text)


def _dump(path, locale):
    result = subprocess.run([path, "help", "--dump-json"], stdout=subprocess.PIPE, timeout=60, check=True,
                            env=dict(os.environ, LC_ALL=locale, LANGUAGE=""))
    return json.loads(result.stdout)


def _commands(command):
    yield command
    for below in command["commands"]:
        yield from _commands(below)


def commands_of(block):
    """The commands, statements and settings of a block of code, without comments and what a program prints."""
    language, lines = block
    if language == "pycon":
        lines = [line for line in lines if line.startswith((">>> ", "... "))]
    elif language not in LITERAL:
        lines = [line for line in lines if COMMAND.match(line) or not is_printed(line)]
    comment = COMMENTS.get(language, r"(?:^|\s+)#(?: .*)?$")
    return [line for line in (re.sub(comment, "", line).rstrip() for line in lines) if line]


def is_printed(line):
    return len(re.findall(r"(?<![\w-])[^\W\d_]{2,}(?![\w-])", line)) >= 3


def calls_of(text):
    """The calls of zucmtr in a line, each up to where the shell ends it; what it quotes may be another program's."""
    text = re.sub(r"'[^']*'", "''", text)
    return [match.group().strip() for match in re.finditer(r"(?<![\w./-])zucmtr (?=[a-z]|--)[^|&;#`]*", text)]


def options_in(document):
    """The options of zucmtr that a document names; those of other programs do not count."""
    texts = [call for _, lines in document.blocks for line in lines for call in calls_of(line)]
    for span in document.spans:
        texts += [span] if span.startswith("-") else calls_of(span)
    return {option for text in texts for option in OPTION.findall(text)}


def is_sentence(span):
    """What the program prints, in the language of the document."""
    return is_printed(span) and not re.match(r"-|zucmtr\b|man |[A-Z]+ ", span)


class Twins(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.program = Program(arguments.program)
        cls.documents = {}
        for name in [name for pair in TWINS.items() for name in pair]:
            path = arguments.project / name
            if path.is_file():
                cls.documents[name] = read_document(path.read_text(encoding="utf-8"))

    def for_each_pair(self, check):
        """Calls a check with the English and the Russian document of those that are there twice."""
        for english, russian in TWINS.items():
            if english in self.documents and russian in self.documents:
                with self.subTest(russian):
                    check(self.documents[english], self.documents[russian])

    def test_each_document_has_its_twin_and_no_other_is_there(self):
        self.assertEqual(set(self.documents), set(TWINS) | set(TWINS.values()))
        there = {f"docs/ru/{path.name}" for path in (arguments.project / "docs/ru").glob("*.md")}
        self.assertEqual(there - {"docs/ru/terms.md"}, set(TWINS.values()) - {"README.ru.md"})

    def test_headings_are_as_many_of_the_same_level_in_each_languages_letters(self):
        self.for_each_pair(self.compare_headings)

    def compare_headings(self, english, russian):
        self.assertEqual([level for level, _ in russian.headings], [level for level, _ in english.headings],
                         "\n".join(f"{one}  |  {other}" for one, other in zip(english.headings, russian.headings)))
        for (_, text), (_, original) in zip(russian.headings, english.headings):
            is_name = text == original and NAME.fullmatch(text)
            self.assertTrue(re.search("[а-яё]", text.lower()) or is_name, f"not translated: {text}")

    def test_blocks_of_code_have_the_same_commands(self):
        self.for_each_pair(self.compare_blocks)

    def compare_blocks(self, english, russian):
        self.assertEqual([language for language, _ in russian.blocks], [language for language, _ in english.blocks])
        for block, original in zip(russian.blocks, english.blocks):
            self.assertEqual(*([self.program.in_english(line) for line in commands_of(one)] for one in (block, original)))

    def test_tables_have_the_same_shape_and_the_same_code_in_each_cell(self):
        self.for_each_pair(self.compare_tables)

    def compare_tables(self, english, russian):
        self.assertEqual([len(table) for table in russian.tables], [len(table) for table in english.tables])
        for table, original in zip(russian.tables, english.tables):
            for row, original_row in zip(table, original):
                self.assertEqual(*([self.code_in(cell) for cell in cells] for cells in (row, original_row)),
                                 f"\n{row}\n{original_row}")

    def code_in(self, cell):
        return sorted(self.program.in_english(span) for span in cell_spans(cell) if not is_sentence(span))

    def test_words_of_code_are_the_same(self):
        self.for_each_pair(self.compare_spans)

    def compare_spans(self, english, russian):
        one, other = ({self.program.in_english(span) for span in document.spans if not is_sentence(span)}
                      for document in (english, russian))
        self.assertEqual(one - other, other - one)  # both are empty

    def test_both_name_the_same_options(self):
        self.for_each_pair(lambda english, russian: self.assertEqual(options_in(russian), options_in(english)))

    def test_each_option_that_is_named_exists(self):
        for name, document in self.documents.items():
            with self.subTest(name):
                self.assertEqual(options_in(document) - self.program.all_options() - HIDDEN, set())

    def test_each_call_has_only_options_of_its_command(self):
        for name, document in self.documents.items():
            texts = document.spans + [line for _, lines in document.blocks for line in lines]
            for call in (call for text in texts for call in calls_of(text)):
                words = call.split()[1:3]
                command = next((known for known in (" ".join(words), words[0]) if known in self.program.options), None)
                if command and not call.startswith("zucmtr help"):
                    with self.subTest(name, call=call):
                        self.assertLessEqual(set(OPTION.findall(call)), self.program.options[command])

    def test_the_reference_of_a_command_names_all_its_options(self):
        for name, commands in REFERENCES.items():
            for twin in (f"docs/{name}", f"docs/ru/{name}"):
                if twin not in self.documents:
                    continue
                named = options_in(self.documents[twin]) | {"--help"}
                with self.subTest(twin):
                    self.assertEqual([spellings for command in commands for spellings in self.program.spellings[command]
                                      if not spellings & named], [])


class Links(unittest.TestCase):
    def test_links_lead_somewhere_and_to_the_twin_where_there_is_one(self):
        for name in TWINS.values():
            path = arguments.project / name
            if not path.is_file():
                continue
            document = read_document(path.read_text(encoding="utf-8"))
            for link in document.links:
                if re.match(r"[a-z]+:", link):
                    continue
                with self.subTest(name, link=link):
                    self.check_link(path, document, link)

    def check_link(self, path, document, link):
        place, _, anchor = link.partition("#")
        target = pathlib.Path(os.path.normpath(path.parent / place)) if place else path
        self.assertTrue(target.exists())
        relative = str(target.relative_to(arguments.project.resolve()))
        if path.name != "README.ru.md" or relative != "README.md":  # the way back to the other language
            self.assertNotIn(relative, TWINS, "its twin is " + TWINS.get(relative, ""))
        if anchor:
            there = document if target == path else read_document(target.read_text(encoding="utf-8"))
            self.assertIn(anchor, there.anchors)

    def test_readmes_lead_to_each_other_in_their_first_lines(self):
        for name, other in (("README.md", "README.ru.md"), ("README.ru.md", "README.md")):
            first = (arguments.project / name).read_text(encoding="utf-8").splitlines()[:4]
            self.assertIn(f"]({other})", "\n".join(first))

    def test_only_the_english_document_is_tested(self):
        for name in TWINS.values():
            path = arguments.project / name
            if path.is_file():
                self.assertNotIn("<!-- test", path.read_text(encoding="utf-8"), name)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("project", type=pathlib.Path)
    arguments = parser.parse_args()
    arguments.project = arguments.project.resolve()
    unittest.main(argv=sys.argv[:1])
