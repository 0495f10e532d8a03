"""Shared by tests of debug sessions: builds the examples, sets breakpoints, runs and steps."""
import contextlib
import pathlib
import re
import shutil

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
BUILD_TIME = 300  # seconds, on a slow shared machine
DOCKS = ("callStackDockWindow", "variablesDockWindow", "pluginTarget-console")


def copy_of_examples(parent):
    """Copies the examples into the directory `parent`, so that the source tree is not changed. Returns the path."""
    return pathlib.Path(shutil.copytree(EXAMPLES, pathlib.Path(parent) / "examples",
                                        ignore=shutil.ignore_patterns("build")))


def line_of(file, text):
    """The number of the first line of a file that contains `text`."""
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        if text in line:
            return number
    raise ValueError(f"'{text}' is not in {file}")


def base_of(file):
    """The name of the editor's objects for a file."""
    return file.split(".")[0]


class Debugging:
    """Operates the program by object names, so the keyboard focus does not matter, unless stated otherwise."""

    def __init__(self, program, workspace, project):
        self._process = program.process
        self._varnel = program.client
        self._caption = f"Varnel - {workspace}"
        self._project = project  # its dock windows are examined

    # The sources ------------------------------------------------------------

    def build(self):
        """Builds the current project and returns what the Build page shows."""
        self._varnel.choose("buildBuild")
        self._varnel.wait_for("BuildPage", "plainText", lambda text: text.rstrip().endswith("Done."), BUILD_TIME)
        self._varnel.wait_for("buildBuild", "enabled", True)
        return self._varnel.read("BuildPage", "plainText")

    def open_file(self, file, count):
        """Opens a file, and waits until `count` files are open and the main window is active."""
        self._varnel.choose("fileOpen")
        self._varnel.choose_file("openFileDialog", file)
        self._varnel.wait_for("viewManagerTabBar", "count", count)
        self._varnel.wait_for("mainWindow", "isActiveWindow", True)

    def click_margin(self, file, line):
        """Clicks into the margin at a visible line of the current file, which has that name."""
        self._varnel.click(f"{base_of(file)}/margin", y=self._height_of(file, line))

    def _height_of(self, file, line):
        """The vertical position of a line, found by clicks into the text that move the cursor."""
        height = self._varnel.read(f"{base_of(file)}/text", "height")
        top, bottom = 0, height
        while top < bottom:
            middle = (top + bottom) // 2
            found = self._line_at(file, middle)
            if found == line and self._line_at(file, middle) == line:
                return middle
            if found == line:  # it was cut off at the bottom, and the click has scrolled
                top, bottom = 0, height
            else:
                top, bottom = (middle + 1, bottom) if found < line else (top, middle)
        raise ValueError(f"line {line} is not on the screen")

    def _line_at(self, file, height):
        self._varnel.click(f"{base_of(file)}/text", x=1, y=height)
        return self.cursor_line()

    def cursor_line(self):
        return int(self._varnel.read("cursorLabel", "text").split()[1].rstrip(","))

    # The session ------------------------------------------------------------

    def show_docks(self):
        for name in DOCKS:
            self._varnel.call(name, "bringUp()")

    def wait_for_state(self, state, timeout=60):
        """`state` is a word like "running", or empty outside of sessions."""
        caption = f"{self._caption} [{state}]" if state else self._caption
        self._varnel.wait_for("mainWindow", "windowTitle", caption, timeout)

    def wait_for_stop(self, line, timeout=60):
        """Waits until the program is paused with the cursor at the start of that line."""
        self.wait_for_state("paused", timeout)
        self._varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col 1", timeout)
        self.wait_for_state("paused", timeout)

    def children(self, word=""):
        """The ids of the child processes whose name contains `word`, oldest first."""
        found = []
        for file in pathlib.Path("/proc").glob("[0-9]*/stat"):
            with contextlib.suppress(OSError):  # it has just ended
                head, _, tail = file.read_text(encoding="utf-8", errors="replace").rpartition(")")
                number, _, name = head.partition(" (")
                state, parent, *rest = tail.split()
                if int(parent) == self._process.pid and word in name and state != "Z":
                    found.append((int(rest[17]), int(number)))  # when it was started, in ticks
        return [number for _, number in sorted(found)]

    # The dock windows -------------------------------------------------------

    def window(self, name):
        """The full name of "callStackView", "variablesView", "targetConsole" or a part of them."""
        return re.sub(r"[^\w-]", "-", self._project) + "/" + name

    def console(self):
        """The program's output to its serial port or terminal."""
        return self._varnel.read(self.window("targetConsole"), "text")

    def call_stack(self):
        """One line per function, innermost first, such as "0 main main.c, 12".

        A program with several threads has a line per thread, and indented lines for the functions of open threads.
        """
        return self._varnel.read(self.window("callStackView"), "text").splitlines()

    def wait_for_function(self, place):
        """Waits until the innermost function, of an open thread, starts with `place`, such as "main main.c, 12"."""
        self._varnel.wait_until(lambda: any(line.lstrip().startswith(f"0 {place}") for line in self.call_stack()),
                                f"the innermost function {place}")

    def choose_function(self, level):
        """Chooses a function in the window "Call Stack"; the innermost one is 0."""
        self._varnel.press("Home", on="callStack")
        for _ in range(level):
            self._varnel.press("Down", on="callStack")
        self._varnel.press("Return", on="callStack")

    def locals(self):
        """{name: value} of the rows in "Variables"; members have their own names."""
        rows = self._varnel.read(self.window("variablesView"), "text").splitlines()
        return {name: value for name, _, value in (row.lstrip().partition(" = ") for row in rows)}

    def change_local(self, name, value):
        """Edits a value in "Variables"."""
        self._go_to_local(name)
        self._varnel.press("F2", on="variables")
        self._varnel.wait_for("renameEdit", "visible", True)
        self._varnel.write("renameEdit", "text", value)
        self._varnel.press("Return", on="renameEdit")
        self._varnel.wait_until(lambda: not self._varnel.exists("renameEdit"), "the value to be taken")

    def open_local(self, name):
        self._go_to_local(name)
        self._varnel.press("Right", on="variables")

    def _go_to_local(self, name):
        self._varnel.wait_until(lambda: name in self.locals(), f"a variable '{name}'")
        self._varnel.press("Home", on="variables")
        for _ in range(list(self.locals()).index(name)):
            self._varnel.press("Down", on="variables")
