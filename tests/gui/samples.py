"""Runs the samples of a page in their order, in one namespace: varnel-run samples.py PAGE EXAMPLES.

A page is a Markdown file of the documentation or an HTML file of the manual. Lines that begin with ">>>" are entered one by
one, and the answers compared. A sample that begins with "# NAME.py" and a form are files in the user's folder of scripts.
"""
import doctest
import html
import pathlib
import re
import sys

from varnel import app

USERS_COPY = "/home/me/examples"


def samples(page):
    """Each sample of a page: its kind and its text, with as many empty lines in front as the page has lines before it."""
    text = page.read_text(encoding="utf-8")
    pattern = r"<pre>\n(?P<html>.*?)</pre>" if page.suffix == ".html" else r"```(?P<kind>\w+)\n(?P<text>.*?)```"
    for found in re.finditer(pattern, text, re.DOTALL):
        groups = found.groupdict()
        code = html.unescape(groups["html"]) if "html" in groups else groups["text"]
        yield groups.get("kind", "html"), code, text[:found.start()].count("\n") + 1


def is_python(code):
    try:
        compile(code, "sample", "exec")
        return True
    except SyntaxError:
        return False


def enter(code, names, where):
    test = doctest.DocTestParser().get_doctest(code, names, *where, None)
    test.globs = names
    runner = doctest.DocTestRunner(verbose=False)
    if runner.run(test, clear_globs=False).failed:
        sys.exit(f"{where[0]}, line {where[1]}: another answer")


def run(code, names, where):
    exec(compile("\n" * where[1] + code, where[0], "exec"), names)
    for name in re.findall(r"^def (recorded\d+)", code, re.MULTILINE):
        names[name]()


def main(page, examples, users_folder):
    shown = {file.read_text(encoding="utf-8") for file in page.parents[1].glob("samples/*.py")}  # which have tests of their own
    names, count = {"__name__": "samples"}, 0
    for kind, code, line in samples(page):
        where = (page.name, line)
        code = code.replace(USERS_COPY, str(examples))
        file = re.match(r"# (\w+\.py)\n", code)
        if kind == "xml" or file:
            name = file.group(1) if file else re.search(r"<class>(\w+)<", code).group(1).lower() + ".ui"
            (users_folder / name).write_text(code, encoding="utf-8")
        elif kind == "pycon":
            enter(code, names, where)
        elif kind == "python" or kind == "html" and code not in shown and is_python(code):
            run(code, names, where)
        else:
            continue
        count += 1
    print(f"{count} samples")


page, examples, users_folder = map(pathlib.Path, sys.argv[1:])
if page.suffix == ".html":
    app.openWorkspace(str(examples / "thermostat/thermostat.vnw"))
main(page, examples, users_folder)
