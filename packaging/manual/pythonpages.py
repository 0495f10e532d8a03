"""Writes the pages of the manual that describe the types of a Python module, from their documentation strings.

It runs inside Varnel, where the module `varnel` exists: `./dev manual` does that. It makes no assumption about which
types and constants there are.
"""
import html
import importlib
import pathlib
import re

FOLDER = "python"  # below the folder of the pages
CONTENTS = "varnelpython.xml"  # a table of contents of its own, behind that of the manual

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{title}</title>
<meta name="description" content="{description}">
</head>
<body>
<h1>{title}</h1>
{body}
</body>
</html>
"""


def plain(text):
    """Text for a page: one line, escaped, and nothing but ASCII, as the full-text index needs it."""
    escaped = html.escape(" ".join((text or "").split()), quote=True)
    return escaped.encode("ascii", "xmlcharrefreplace").decode()


def signature_and_text(name, doc):
    """Splits "name(arguments) - text". Without a signature, it is that of a function without arguments."""
    match = re.match(r"\s*(\w+\s*\([^)]*\))\s*-?\s*(.*)", doc or "", re.DOTALL)
    if not match:
        return f"{name}()", doc or ""
    arguments = match.group(1)[match.group(1).index("("):]
    return name + arguments, match.group(2)  # a documentation string may misspell the name


def access_and_text(doc, writable):
    """Takes the access "[R]" or "[RW]" off the end of the text; without one, the descriptor decides."""
    match = re.match(r"(.*?)\s*\[(RW|R)\]\s*$", doc or "", re.DOTALL)
    if match:
        return ("read and write" if match.group(2) == "RW" else "read"), match.group(1)
    return ("read and write" if writable else "read"), doc or ""


def members(kind):
    """The public members of a type itself, not of its bases, in their order: functions and attributes."""
    functions, attributes = [], []
    for name, value in vars(kind).items():
        if name.startswith("_"):
            continue
        doc = getattr(value, "__doc__", "")
        if callable(value) or isinstance(value, (staticmethod, classmethod)):
            functions.append((name, *signature_and_text(name, doc)))
        else:
            attributes.append((name, *access_and_text(doc, getattr(value, "fset", None) is not None)))
    return functions, attributes


def table(heading, rows):
    lines = "".join("<tr>" + "".join(f"<td>{cell}</td>" for cell in row) + "</tr>\n" for row in rows)
    return "<table>\n<tr>" + "".join(f"<th>{cell}</th>" for cell in heading) + f"</tr>\n{lines}</table>\n"


def type_body(kind):
    functions, attributes = members(kind)
    body = f"<p>{plain(kind.__doc__)}</p>\n"
    if functions:
        rows = [(f'<a name="{plain(name)}"></a><code>{plain(signature)}</code>', plain(text))
                for name, signature, text in functions]
        body += "<h2>Functions</h2>\n" + table(("Function", "Effect"), rows)
    if attributes:
        rows = [(f'<a name="{plain(name)}"></a><code>{plain(name)}</code>', access, plain(text))
                for name, access, text in attributes]
        body += "<h2>Attributes</h2>\n" + table(("Attribute", "Access", "Meaning"), rows)
    return body + '<p>See also <a href="../scripts.html">Scripts</a> and <a href="index.html">all types</a>.</p>'


def types_of(module):
    return [value for name, value in vars(module).items() if isinstance(value, type) and not name.startswith("_")]


def name_of(module, kind):
    """The name under which the module has the type, which may differ from that of the type."""
    return next(name for name, value in vars(module).items() if value is kind)


def constants_of(module):
    return [(name, value) for name, value in vars(module).items()
            if isinstance(value, (int, str)) and not name.startswith("_")]


def index_body(module):
    links = "".join(f'<li><a href="{plain(name_of(module, kind))}.html">{plain(name_of(module, kind))}</a>: '
                    f"{plain(kind.__doc__)}</li>\n" for kind in types_of(module))
    body = (f"<p>The types of the module <code>{plain(module.__name__)}</code>, from their documentation strings. "
            f'<a href="../scripts.html">Scripts</a> has an introduction and examples.</p>\n<ul>\n{links}</ul>\n')
    if constants_of(module):
        rows = [(f"<code>{plain(name)}</code>", plain(str(value))) for name, value in constants_of(module)]
        body += "<h2>Constants</h2>\n" + table(("Name", "Value"), rows)
    return body.rstrip("\n")


def pages(module):
    """The texts of all pages by their file names, the index first."""
    result = {"index.html": PAGE.format(title="Python Reference", body=index_body(module),
                                        description="All types and constants of the Python module.")}
    for kind in types_of(module):
        name = plain(name_of(module, kind))
        result[f"{name}.html"] = PAGE.format(title=f"Python: {name}", body=type_body(kind),
                                             description=f"Functions and attributes of the Python type {name}.")
    return result


def contents(module):
    entries = "".join(f'  <page name="{plain(name_of(module, kind))}" '
                      f'path="html/{FOLDER}/{plain(name_of(module, kind))}.html"/>\n' for kind in types_of(module))
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<!-- Written by packaging/manual/pythonpages.py. -->\n'
            f'<help name="Python">\n  <page name="Python Reference" path="html/{FOLDER}/index.html"/>\n{entries}</help>\n')


def write(module_name, help_folder):
    """Replaces the pages and their contents below `help_folder`."""
    module = importlib.import_module(module_name)
    folder = pathlib.Path(help_folder) / "html" / FOLDER
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("*.html"):
        old.unlink()
    for name, text in pages(module).items():
        (folder / name).write_text(text, encoding="ascii")
    (pathlib.Path(help_folder) / CONTENTS).write_text(contents(module), encoding="ascii")
