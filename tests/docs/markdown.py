"""Just enough Markdown for the documents here: headings, blocks of code, tables, spans of code and links."""

import re
from dataclasses import dataclass, field

FENCE = re.compile(r"^```(\w*)$")
HEADING = re.compile(r"^(#+) +(.*)$")
SPAN = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)\s]+)\)")


@dataclass
class Document:
    """What a document consists of, each list in the order of the text."""

    headings: list = field(default_factory=list)  # (level, text)
    blocks: list = field(default_factory=list)    # (language, lines); without a fence the language is ""
    tables: list = field(default_factory=list)    # rows of cells; the line under the heads is left out
    spans: list = field(default_factory=list)     # spans of code, in tables too
    links: list = field(default_factory=list)     # addresses of links and pictures

    @property
    def anchors(self):
        """The anchors that the headings get, as GitHub makes them."""
        result, seen = set(), {}
        for _, text in self.headings:
            slug = re.sub(r"[^\w\- ]", "", text.lower()).replace(" ", "-")
            number = seen.get(slug, 0)
            seen[slug] = number + 1
            result.add(f"{slug}-{number}" if number else slug)
        return result


def read_document(text):
    document, prose, language, before = Document(), [], None, ""
    in_table = False
    for line in text.splitlines():
        fence = FENCE.match(line)
        if fence and language is None:
            language = fence.group(1)
            document.blocks.append((language, []))
        elif fence:
            language = None
        elif language is not None:
            document.blocks[-1][1].append(line)
        elif line.startswith("    ") and (not before.strip() or before.startswith("    ")):
            if not before.startswith("    "):
                document.blocks.append(("", []))
            document.blocks[-1][1].append(line[4:])
        else:
            if HEADING.match(line):
                document.headings.append((len(HEADING.match(line).group(1)), HEADING.match(line).group(2)))
            if line.startswith("|"):
                _add_row(document.tables, line, in_table)
            prose.append(line)
        in_table = line.startswith("|") and language is None
        before = line
    text = "\n".join(prose)
    document.links = LINK.findall(text)
    # A span may be broken at the end of a line.
    document.spans = [span.replace("\n", " ") for span in re.findall(r"`([^`]+)`", text)]
    return document


def _add_row(tables, line, in_table):
    if not in_table:
        tables.append([])
    if not re.fullmatch(r"[|:\- ]+", line):
        tables[-1].append([cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]])
    elif line.replace("|", "").strip() == "":  # heads without words
        tables[-1].append([""] * (line.count("|") - 1))


def cell_spans(cell):
    return [span.replace("\\|", "|") for span in SPAN.findall(cell)]
