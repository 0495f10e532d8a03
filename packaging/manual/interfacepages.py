#!/usr/bin/env python3
"""Writes the pages of the manual that describe the interfaces of plug-ins, from the comments of their headers.

    interfacepages.py [--check] [HELP_FOLDER]

With --check nothing is written, and the exit code is 1 if a page differs from its header.
"""
import dataclasses
import html
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
HEADERS = ROOT / "source/interfaces"
FOLDER = "interfaces"  # below the folder of the pages
CONTENTS = "varnelinterfaces.xml"
SKIPPED = {"interfaceobject.h"}  # a template for authors, which the guide describes

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Interface: {title}</title>
<meta name="description" content="{description}">
</head>
<body>
<h1>{title}</h1>
{body}
<p>Header: <code>{header}</code>. See also <a href="../plugins.html">Plug-ins</a> and <a href="index.html">all interfaces</a>.</p>
</body>
</html>
"""


@dataclasses.dataclass
class Member:
    """A declaration with its comment."""
    text: str
    comment: str


@dataclasses.dataclass
class Type:
    """A class, structure or enumeration."""
    kind: str
    name: str
    comment: str
    members: list


def escaped(text):
    """Text for a page: nothing but ASCII, as the full-text index needs it."""
    return html.escape(text, quote=True).encode("ascii", "xmlcharrefreplace").decode()


def prose(comment):
    """A comment as HTML: names of parameters and code in the font of code."""
    text = re.sub(r"@p (\w+)", r"`\1`", comment)
    parts = escaped(text).split("`")
    return "".join(f"<code>{part}</code>" if i % 2 else part for i, part in enumerate(parts))


def first_sentence(comment):
    return re.split(r"(?<=[.:])\s", comment + " ", maxsplit=1)[0].rstrip(":").strip()


class Reader:
    """Reads the declarations of a header. The headers have one form, which the formatter keeps."""

    def __init__(self, text):
        self._lines = text.splitlines()
        self._at = 0
        self._comment = []
        self.types = []

    def read(self):
        while self._at < len(self._lines):
            line = self._next()
            start = re.match(r"(class|struct|enum) (\w+)[^;]*$", line)
            if start:
                self._read_type(start.group(1), start.group(2), line)
            elif not line.startswith("///"):
                self._comment = []
        return self.types

    def _next(self):
        line = self._lines[self._at].strip()
        self._at += 1
        if line.startswith("///") and not line.startswith("///<"):
            self._comment.append(line[3:].strip())
        return re.sub(r"(?<=\S)\s+//(?!/).*$", "", line)  # without a remark for the reader of the code

    def _take_comment(self):
        comment, self._comment = " ".join(filter(None, self._comment)), []
        return comment

    def _read_type(self, kind, name, line):
        made = Type(kind, name, self._take_comment(), [])
        self.types.append(made)
        if kind == "enum" and "}" in line:  # on one line
            body = re.sub(r"^[^{]*\{|\};?.*$", "", line)
            made.members = [Member(value.strip(), "") for value in body.split(",") if value.strip()]
            return
        while self._at < len(self._lines):
            line = self._next()
            if line.startswith("};"):
                return
            inner = re.match(r"(class|struct|enum) (\w+)[^;]*$", line) or re.match(r"(enum) (\w+).*\};", line)
            if inner:
                self._read_type(inner.group(1), inner.group(2), line)
            elif not line.startswith("//"):
                self._read_member(made, line)

    def _read_member(self, made, line):
        text, _, behind = line.partition("///<")
        while made.kind != "enum" and text.strip() and not re.search(r"[;:{}]\s*$", text) and text.strip() != "public":
            more, _, behind = self._next().partition("///<")
            text += " " + more.strip()
        while behind and self._at < len(self._lines) and self._lines[self._at].strip().startswith("///<"):
            behind += " " + self._next()[4:].strip()
        comment = behind.strip() or self._take_comment()
        self._comment = []
        text = " ".join(text.split()).rstrip(",;").strip()
        if self._is_shown(made, text):
            made.members.append(Member(re.sub(r"^virtual (.*) = 0$", r"\1", text), comment))

    @staticmethod
    def _is_shown(made, text):
        if not text or text in ("{", "}", "public:", "protected:", "private:", "using namespace Qt::StringLiterals"):
            return False
        if made.kind == "enum":
            return True
        return "~" not in text and " Iid" not in text and "{" not in text.split("=")[0]


def table(heading, members):
    rows = "".join(f"<tr><td><code>{escaped(member.text)}</code></td><td>{prose(member.comment)}</td></tr>\n"
                   for member in members)
    return f"<table>\n<tr><th>{heading}</th><th>Meaning</th></tr>\n{rows}</table>\n"


def body(types):
    first, *others = types
    text = f"<p>{prose(first.comment)}</p>\n"
    if first.members:
        text += "<h2>Functions</h2>\n" + table("Function", first.members)
    for other in others:
        text += f'<h2>{escaped(other.name)}</h2>\n<p>{prose(other.comment)}</p>\n'
        if other.members:
            text += table("Value" if other.kind == "enum" else "Member", other.members)
    return text.rstrip("\n")


def main_type_first(types, header):
    """The interface after which a header is named before the types that it uses, and interfaces before others."""
    name = header.removesuffix(".h")
    return sorted(types, key=lambda made: (made.name.lower() not in (name, f"i{name}"), made.kind != "class"))


def headers():
    """The types of each header with an interface, by the name of the interface."""
    result = {}
    for path in sorted(HEADERS.glob("*.h")):
        types = []
        if path.name not in SKIPPED:
            types = main_type_first(Reader(path.read_text(encoding="utf-8")).read(), path.name)
        if types and types[0].kind == "class":
            result[types[0].name] = (path.name, types)
    return result


def pages():
    """The texts of all files by their names below the help folder."""
    found = headers()
    links = "".join(f'<li><a href="{name}.html">{name}</a>: {prose(first_sentence(types[0].comment))}</li>\n'
                    for name, (_, types) in found.items())
    index = PAGE.format(title="Plug-in Interfaces", description="All interfaces between Varnel and its plug-ins.",
                        header="pluginfactory.h",
                        body="<p>The interfaces of the plug-in contract, from the comments of their headers. "
                             '<a href="../plugins.html">Plug-ins</a> explains how they work together.</p>\n'
                             f"<ul>\n{links}</ul>")
    index = index.replace("Interface: Plug-in", "Plug-in")
    result = {f"html/{FOLDER}/index.html": index}
    for name, (header, types) in found.items():
        result[f"html/{FOLDER}/{name}.html"] = PAGE.format(
            title=name, body=body(types), header=header, description=f"Functions of the plug-in interface {name}.")
    entries = "".join(f'  <page name="{name}" path="html/{FOLDER}/{name}.html"/>\n' for name in found)
    result[CONTENTS] = ('<?xml version="1.0" encoding="UTF-8"?>\n<!-- Written by packaging/manual/interfacepages.py. '
                        f'-->\n<help name="Plug-in Interfaces">\n  <page name="Plug-in Interfaces" '
                        f'path="html/{FOLDER}/index.html"/>\n{entries}</help>\n')
    return result


def main(arguments):
    check = "--check" in arguments
    names = [argument for argument in arguments if argument != "--check"]
    folder = pathlib.Path(names[0]) if names else ROOT / "help"
    made = pages()
    present = {f"html/{FOLDER}/{path.name}" for path in (folder / "html" / FOLDER).glob("*.html")}
    stale = sorted(present - set(made))
    for name, text in made.items():
        path = folder / name
        if path.exists() and path.read_text(encoding="ascii") == text:
            continue
        stale.append(name)
        if not check:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="ascii")
    if not check:
        for name in present - set(made):
            (folder / name).unlink()
        return 0
    for name in stale:
        print(f"{name} differs from its header: run packaging/manual/interfacepages.py", file=sys.stderr)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
