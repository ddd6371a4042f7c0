"""Manual pages, one for the program and one for each command, in the man(7) language."""

import re

# Characters that the roff formatter would interpret.
ESCAPES = str.maketrans({"\\": r"\e", "-": r"\-", "'": r"\(aq", "^": r"\(ha", "~": r"\(ti", "`": r"\(ga"})
PARAGRAPH_LINE = re.compile(r"^\S")


def page_name(command):
    """As in zucmtr-convert, which `man zucmtr convert` finds too."""
    return "-".join(command.words)


def man_page(command, root, version, date):
    """The page's source. The footer's paragraphs become DESCRIPTION, the last ones EXIT STATUS and EXAMPLES."""
    lines = [f'.TH "{page_name(command).upper()}" 1 "{date}" "zucmtr {version}" "User Commands"',
             ".SH NAME", f"{_text(page_name(command))} \\- {_text(_as_name(command.description))}",
             ".SH SYNOPSIS"]
    lines += _synopsis(command)
    lines += [".SH DESCRIPTION", _line(command.description.rstrip(".") + ".")]
    footer = command.footer.splitlines()
    paragraphs = _paragraphs(_part(footer, "description"))
    lines += [".PP"] * bool(paragraphs) + paragraphs
    lines += _entries(command)
    for heading in ("exit status", "examples"):
        part = _part(footer, heading)
        if part:
            lines += [f".SH {heading.upper()}"] + _paragraphs(part)
    lines += _see_also(command, root)
    return "\n".join(lines) + "\n"


def _text(text):
    return text.translate(ESCAPES)


def _line(text):
    """A line of text; a full stop at its start would be a request."""
    return ("\\&" if text.startswith(".") else "") + _text(text)


def _as_name(description):
    text = description.rstrip(".")
    return text[:1].lower() + text[1:]


def _synopsis(command):
    places = ["[OPTIONS]"] * bool(command.options)
    for entry in command.positionals:
        place = entry.value + "..." * entry.repeated
        places.append(place if entry.required else f"[{place}]")
    places += ["[SUBCOMMAND]"] * bool(command.commands)
    return [f".B {_text(' '.join(command.words))}", _line(" ".join(places))]


def _part(footer, wanted):
    """The lines of the footer that belong under a heading, chosen by how their paragraphs start."""
    paragraphs, part = [], "description"
    for number, line in enumerate(footer):
        if number == 0 or not footer[number - 1]:
            if line.startswith("Exit code"):
                part = "exit status"
            elif re.match(r"Examples?\b", line) or "To try the program" in line:
                part = "examples"
            elif part == "exit status":
                part = "description"
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


def _entries(command):
    lines = []
    for heading, entries in (("ARGUMENTS", command.positionals), ("OPTIONS", command.options)):
        if entries:
            lines.append(f".SH {heading}")
        for entry in entries:
            lines += [".TP", _term(entry), _line(entry.description.rstrip(".") + ".")]
            if entry.excludes:
                lines.append(_line("Not together with " + ", ".join(entry.excludes) + "."))
    if command.commands:
        lines.append(".SH COMMANDS")
    for below in command.commands:
        lines += [".TP", f".BR {_text(page_name(below))} (1)", _line(below.description.rstrip(".") + ".")]
    return lines


def _term(entry):
    value = f"\\fI{_text(entry.value)}\\fR" if entry.value else ""
    flags = ", ".join(f"\\fB{_text(flag)}\\fR" for flag in entry.flags)
    return " ".join(filter(None, [flags, value])) + (" ..." if entry.repeated else "") + \
        (" (required)" if entry.required and entry.flags else "")


def _see_also(command, root):
    family = next((other for other in root.commands if command in other.commands), root)
    others = [root] if command is not root else []
    others += [family] if family is not root else []
    others += [other for other in family.commands if other is not command]
    lines = [".SH SEE ALSO"]
    for number, other in enumerate(others):
        comma = "," if number + 1 < len(others) else ""
        lines.append(f".BR {_text(page_name(other))} (1){comma}")
    return lines
