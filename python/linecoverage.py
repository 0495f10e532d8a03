"""An example of a docked panel: which lines of the file in front the program reaches.

To try it, enter "import linecoverage" in the Command Window, open a source file, pause the program, press Start, and let
the program run. A breakpoint is set on each line with code. When it is hit, the line is noted, the breakpoint is removed
and the program goes on, so that it soon runs at full speed. Stop removes the other ones. The user's breakpoints stay, and
pause the program as ever. Lines are marked "+" for reached, "-" for not reached yet, and "?" for not watched: the target has no more breakpoints, or
the coverage was stopped.
"""

import html
import os

from panels import NoTarget, paused_processor, show
from varnel import app
from varneltexts import tr


class LineCoverage:
    def __init__(self):
        self.processor = None
        self.file = ""
        self.lines = []  # the text of the file
        self.waiting, self.reached, self.refused = set(), set(), set()
        self.handlers = {"onBreakpointHit": self.hit, "onStopped": self.ended}
        self.users = {}  # the handlers that the user had set
        self.panel = app.loadUI("linecoverage.ui")
        self.panel.startButton.onClicked = self.start
        self.panel.stopButton.onClicked = self.stop
        app.dockUI(self.panel, 1)

    def start(self, button):
        show(self.panel, self.panel.linesView, self.set_breakpoints)

    def set_breakpoints(self):
        self.remove_breakpoints()
        processor, document = paused_processor(), app.editor.currentDocument
        if document is None:
            raise NoTarget(tr("Open a source file first."))
        self.processor, self.file = processor, document.path
        with open(self.file, encoding="utf-8", errors="replace") as file:
            self.lines = file.read().splitlines()
        self.waiting, self.reached, self.refused = set(), set(), set()
        kept = self.breakpoints()
        for line in self.lines_with_code():
            if line in kept:
                continue
            try:
                processor.setBreakpoint(self.file, line)
            except ValueError:
                self.refused.add(line)
        self.waiting = self.breakpoints() - kept  # the debugger may have moved some to a line nearby
        for name, handler in self.handlers.items():
            self.users[name] = getattr(app.debugger, name)
            setattr(app.debugger, name, handler)
        return self.report()

    def lines_with_code(self):
        """Lines whose own address leads back to them; others have no code."""
        for line in range(1, len(self.lines) + 1):
            try:
                address = self.processor.getSourceAddress(self.file, line)
                if any(found == line and self.is_file(path) for path, found in self.processor.getSourceLines(address)):
                    yield line
            except ValueError:
                pass

    def breakpoints(self):
        return {line for path, line, state in self.processor.breakpoints if self.is_file(path)}

    def is_file(self, path):
        """Some debuggers name a file without its directory, or relative to the project's."""
        if not os.path.dirname(path):
            return path == os.path.basename(self.file)
        directory = self.processor.project.basePath
        return os.path.realpath(os.path.join(directory, path)) == os.path.realpath(self.file)

    def hit(self):
        path, line = self.processor.currentProgramLocation if self.processor else ("", 0)
        if line not in self.waiting or not self.is_file(path):
            return self.call_user("onBreakpointHit")
        self.waiting.discard(line)
        self.reached.add(line)
        self.processor.removeBreakpoint(self.file, line)
        show(self.panel, self.panel.linesView, self.report)
        self.processor.run()

    def stop(self, button):
        self.remove_breakpoints()
        if self.lines:
            show(self.panel, self.panel.linesView, self.report)

    def ended(self):
        self.stop(None)
        self.call_user("onStopped")

    def call_user(self, name):
        if self.users.get(name):
            self.users[name]()

    def remove_breakpoints(self):
        """Does nothing for a workspace that was closed."""
        for line in self.waiting if app.debugger else ():
            try:
                self.processor.removeBreakpoint(self.file, line)
            except (ValueError, RuntimeError):
                pass
        for name, handler in self.handlers.items() if app.debugger else ():
            if getattr(app.debugger, name) == handler:
                setattr(app.debugger, name, self.users.get(name))
        self.refused |= self.waiting
        self.waiting = set()
        self.processor = None

    def report(self):
        code = self.waiting | self.reached | self.refused
        summary = tr("{file}: {reached} of {all} lines with code were reached.").format(
            file=os.path.basename(self.file), reached=len(self.reached), all=len(code))
        rows = ["<p>%s</p><pre>" % html.escape(summary)]
        for number, text in enumerate(self.lines, 1):
            mark = "+" if number in self.reached else "-" if number in self.waiting else "?" if number in code else " "
            rows.append("%s %4d  %s\n" % (mark, number, html.escape(text)))
        return "".join(rows) + "</pre>"


lineCoverage = LineCoverage()
