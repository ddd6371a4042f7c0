"""Manual pages, one for the program and one for each command, in the man(7) language."""

import re
from types import SimpleNamespace

# What a page says by itself, and how the program's help starts the paragraphs that get a heading of their own.
ENGLISH = SimpleNamespace(
    locale="C.UTF-8", directory="man1", manual="User Commands", name="NAME", synopsis="SYNOPSIS", description="DESCRIPTION",
    arguments="ARGUMENTS", options="OPTIONS", commands="COMMANDS", exit_status="EXIT STATUS", examples="EXAMPLES",
    see_also="SEE ALSO", some_options="[OPTIONS]", some_command="[SUBCOMMAND]", not_together="Not together with",
    required="(required)", exit_start=r"Exit code", examples_start=r"Examples?\b|.*To try the program")
RUSSIAN = SimpleNamespace(
    locale="ru_RU.UTF-8", directory="ru/man1", manual="Команды пользователя", name="ИМЯ", synopsis="ВЫЗОВ",
    description="ОПИСАНИЕ", arguments="АРГУМЕНТЫ", options="КЛЮЧИ", commands="КОМАНДЫ", exit_status="КОД ЗАВЕРШЕНИЯ",
    examples="ПРИМЕРЫ", see_also="СМ. ТАКЖЕ", some_options="[КЛЮЧИ]", some_command="[КОМАНДА]",
    not_together="Несовместимо с", required="(обязательно)", exit_start=r"Код завершения",
    examples_start=r"Примеры?\b|.*Чтобы попробовать программу")
LANGUAGES = (ENGLISH, RUSSIAN)

# Characters that the roff formatter would interpret.
ESCAPES = str.maketrans({"\\": r"\e", "-": r"\-", "'": r"\(aq", "^": r"\(ha", "~": r"\(ti", "`": r"\(ga"})
PARAGRAPH_LINE = re.compile(r"^\S")


def page_name(command):
    """As in zucmtr-convert, which `man zucmtr convert` finds too."""
    return "-".join(command.words)


def man_page(command, root, version, date, words):
    """The page's source, with the words of one of LANGUAGES, whose language the command's texts have as well. The
    footer's paragraphs become the description, the last ones the exit status and the examples."""
    lines = [f'.TH "{page_name(command).upper()}" 1 "{date}" "zucmtr {version}" "{words.manual}"',
             f".SH {words.name}", f"{_text(page_name(command))} \\- {_text(_as_name(command.description))}",
             f".SH {words.synopsis}"]
    lines += _synopsis(command, words)
    lines += [f".SH {words.description}", _line(command.description.rstrip(".") + ".")]
    footer = command.footer.splitlines()
    paragraphs = _paragraphs(_part(footer, words.description, words))
    lines += [".PP"] * bool(paragraphs) + paragraphs
    lines += _entries(command, words)
    for heading in (words.exit_status, words.examples):
        part = _part(footer, heading, words)
        if part:
            lines += [f".SH {heading}"] + _paragraphs(part)
    lines += _see_also(command, root, words)
    return "\n".join(lines) + "\n"


def _text(text):
    return text.translate(ESCAPES)


def _line(text):
    """A line of text; a full stop at its start would be a request."""
    return ("\\&" if text.startswith(".") else "") + _text(text)


def _as_name(description):
    text = description.rstrip(".")
    return text[:1].lower() + text[1:]


def _synopsis(command, words):
    places = [words.some_options] * bool(command.options)
    for entry in command.positionals:
        place = entry.shown + "..." * entry.repeated
        places.append(place if entry.required else f"[{place}]")
    places += [words.some_command] * bool(command.commands)
    return [f".B {_text(' '.join(command.words))}", _line(" ".join(places))]


def _part(footer, wanted, words):
    """The lines of the footer that belong under a heading, chosen by how their paragraphs start."""
    paragraphs, part = [], words.description
    for number, line in enumerate(footer):
        if number == 0 or not footer[number - 1]:
            if re.match(words.exit_start, line):
                part = words.exit_status
            elif re.match(words.examples_start, line):
                part = words.examples
            elif part == words.exit_status:
                part = words.description
        if part == wanted:
            paragraphs.append(line)
    return paragraphs


def _paragraphs(lines):
    """Indented lines are shown as they are; others are filled."""
    result, literal = [], False
    for line in lines:
        if not line:
            if not literal:
                result.append(".PP")
            continue
        indented = not PARAGRAPH_LINE.match(line)
        if indented != literal:
            _drop_paragraph_break(result)
            result += [".PP", ".in +4n", ".nf"] if indented else [".fi", ".in", ".PP"]
            literal = indented
        result.append(_line(line.strip() if indented else line))
    _drop_paragraph_break(result)
    while result and result[0] == ".PP":
        result.pop(0)
    return result + [".fi", ".in"] * literal


def _drop_paragraph_break(lines):
    while lines and lines[-1] == ".PP":
        lines.pop()


def _entries(command, words):
    lines = []
    for heading, entries in ((words.arguments, command.positionals), (words.options, command.options)):
        if entries:
            lines.append(f".SH {heading}")
        for entry in entries:
            lines += [".TP", _term(entry, words), _line(entry.description.rstrip(".") + ".")]
            if entry.excludes:
                lines.append(_line(f"{words.not_together} {', '.join(entry.excludes)}."))
    if command.commands:
        lines.append(f".SH {words.commands}")
    for below in command.commands:
        lines += [".TP", f".BR {_text(page_name(below))} (1)", _line(below.description.rstrip(".") + ".")]
    return lines


def _term(entry, words):
    value = f"\\fI{_text(entry.shown)}\\fR" if entry.value else ""
    flags = ", ".join(f"\\fB{_text(flag)}\\fR" for flag in entry.flags)
    return " ".join(filter(None, [flags, value])) + (" ..." if entry.repeated else "") + \
        (f" {words.required}" if entry.required and entry.flags else "")


def _see_also(command, root, words):
    family = next((other for other in root.commands if command in other.commands), root)
    others = [root] if command is not root else []
    others += [family] if family is not root else []
    others += [other for other in family.commands if other is not command]
    lines = [f".SH {words.see_also}"]
    for number, other in enumerate(others):
        comma = "," if number + 1 < len(others) else ""
        lines.append(f".BR {_text(page_name(other))} (1){comma}")
    return lines
