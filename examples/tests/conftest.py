"""Opens, builds and starts the workspace with two processors, for tests of its firmware.

    varnel-run -m pytest examples/tests
"""
import pathlib
import time

import pytest
from varnel import app

EXAMPLES = pathlib.Path(__file__).resolve().parents[1]
RUNNING = 1  # values of Processor.programStatus
BREAKPOINT_HIT = 5


def wait_until(condition, what, timeout=60.0):
    """Lets the program work until `condition()` is true."""
    end = time.monotonic() + timeout
    while not condition():
        assert time.monotonic() < end, f"waited {timeout} s for {what}"
        app.processEvents(50)


class Board:
    """One processor of the running workspace, and where its sources are."""

    def __init__(self, processor, directory):
        self.processor = processor
        self.directory = directory

    def source(self, file):
        return str(self.directory / file)

    def line_of(self, file, text):
        lines = (self.directory / file).read_text(encoding="utf-8").splitlines()
        return next(number for number, line in enumerate(lines, 1) if text in line)

    def set_breakpoint(self, file, text):
        """At the first line that contains `text`. Returns its number."""
        line = self.line_of(file, text)
        self.processor.setBreakpoint(self.source(file), line)
        return line

    def remove_breakpoints(self):
        for file, line, _ in self.processor.breakpoints:
            self.processor.removeBreakpoint(file, line)

    @property
    def place(self):
        file, line = self.processor.currentProgramLocation
        return pathlib.PurePath(file).name, line

    def number(self, expression):
        return int(self.processor.evaluate(f"(int)({expression})"))


@pytest.fixture(scope="session")
def workspace():
    """The open workspace, built."""
    app.openWorkspace(str(EXAMPLES / "twoprocessors.vnw"))
    app.currentProject.build(0)
    wait_until(lambda: app.state == 0, "the build", 300.0)
    yield app.projects
    app.closeWorkspace()


@pytest.fixture
def boards(workspace):
    """{name: Board} of a new session in which all processors are paused at the start of main."""
    debugger = app.debugger
    debugger.restart()
    found = {name: Board(debugger.processors[name], EXAMPLES / name) for name in ("thermostat", "morse")}
    wait_until(lambda: all(board.place[0] == "main.c" for board in found.values()), "main")
    yield found
    for board in found.values():
        board.remove_breakpoints()
    debugger.stop()


@pytest.fixture
def run(boards):
    """A function that runs all processors until one of them hits a breakpoint, and returns that board's name."""
    def run():
        hits = []
        app.debugger.onBreakpointHit = lambda: hits.append(app.currentProject.name)
        app.doAction("debugRun")
        wait_until(lambda: hits, "a breakpoint")
        app.debugger.onBreakpointHit = None
        wait_until(lambda: all(board.processor.programStatus != RUNNING for board in boards.values()), "the pause")
        return hits[0]

    return run
