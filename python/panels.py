"""What the panels of examples share: values of the target, and text for windows."""

import html
import re

from varnel import app
from varneltexts import tr

PAUSED = (0, 5)  # values of programStatus: paused, paused at a breakpoint


class NoTarget(Exception):
    """There is no paused program; the text says why."""


def paused_processor():
    """The current processor, whose program is paused."""
    processor = app.debugger.currentProcessor if app.debugger else None
    if processor is None or app.state != 2:
        raise NoTarget(tr("No debug session is running."))
    if processor.programStatus not in PAUSED:
        raise NoTarget(tr("The program is not paused."))
    return processor


def number(processor, expression):
    """The value of an expression as a number; also of a pointer, "0x2000 <name>", and of a character, "97 'a'"."""
    text = processor.evaluate(expression)
    found = re.search(r"(?<![\w.])-?(0x[0-9a-fA-F]+|\d+)", text)
    if not found:
        raise ValueError(tr("'{}' is no number: {}").format(expression, text))
    return int(found.group(), 0)


def text(processor, expression):
    """The value of an expression for people: of a text its characters, otherwise what the debugger shows."""
    value = processor.evaluate(expression)
    found = re.search(r'"((?:[^"\\]|\\.)*)"', value)
    return re.sub(r"(\\000)+$", "", found.group(1)) if found else value


def table(header, rows):
    """HTML of a table. All cells are texts."""
    def line(tag, cells):
        return "<tr>" + "".join("<%s align='left'>%s</%s>" % (tag, html.escape(each), tag) for each in cells) + "</tr>"

    return "<table cellpadding='3'>" + line("th", header) + "".join(line("td", row) for row in rows) + "</table>"


def show(panel, view, fill):
    """Puts what `fill()` returns into the text `view` of a panel, or the reason why it fails into its label."""
    try:
        view.html = fill()
        panel.messageLabel.text = ""
    except (NoTarget, ValueError, KeyError, OSError, RuntimeError, OverflowError) as error:
        view.html = ""
        panel.messageLabel.text = str(error.args[0]) if error.args else type(error).__name__
