"""What tests of debug sessions share: a user who builds, sets breakpoints, runs and steps the examples."""
import contextlib
import pathlib
import shutil

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
BUILD_TIME = 300  # seconds, on a machine that others use, too
DOCKS = ("Call stack", "Locals", "Target console")


def copy_of_examples(parent):
    """A copy in the directory `parent`, so that the source tree stays as it is. Returns its path."""
    return pathlib.Path(shutil.copytree(EXAMPLES, pathlib.Path(parent) / "examples",
                                        ignore=shutil.ignore_patterns("build")))


def line_of(file, text):
    """The number of the first line of a file that contains `text`."""
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        if text in line:
            return number
    raise ValueError(f"'{text}' is not in {file}")


class Debugging:
    """Operates the program by names alone, so it works wherever the keyboard is, unless it says otherwise."""

    def __init__(self, program, workspace, project):
        self._process = program.process
        self._varnel = program.client
        self._caption = f"Varnel - {workspace}"
        self._project = project  # whose dock windows are looked at

    # The sources ------------------------------------------------------------

    def build(self):
        """Builds the current project and returns what the Build page shows."""
        self._varnel.choose("buildBuild")
        self._varnel.wait_for("BuildPage", "plainText", lambda text: text.rstrip().endswith("Done."), BUILD_TIME)
        self._varnel.wait_for("buildBuild", "enabled", True)
        return self._varnel.read("BuildPage", "plainText")

    def open_file(self, file, count):
        """Opens a file, so that `count` are open, and waits until the keyboard reaches it."""
        self._varnel.choose("fileOpen")
        self._varnel.choose_file("openFileDialog", file)
        self._varnel.wait_for("viewManagerTabBar", "count", count)
        self._varnel.wait_for("mainWindow", "isActiveWindow", True)

    def click_margin(self, file, line):
        """Clicks beside a line of the current file, which has that name and shows the line."""
        self._varnel.click(f"{file}/margin", y=self._height_of(file, line))

    def _height_of(self, file, line):
        """Where a line is: the cursor that clicks into the text leave tells."""
        top, bottom = 0, self._varnel.read(f"{file}/text", "height")
        while top < bottom:
            middle = (top + bottom) // 2
            self._varnel.click(f"{file}/text", x=1, y=middle)
            found = self.cursor_line()
            if found == line:
                return middle
            top, bottom = (middle + 1, bottom) if found < line else (top, middle)
        raise ValueError(f"line {line} is not on the screen")

    def cursor_line(self):
        return int(self._varnel.read("cursorLabel", "text").split()[1].rstrip(","))

    # The session ------------------------------------------------------------

    def show_docks(self):
        for name in DOCKS:
            self._varnel.call(f"plugin{name}", "bringUp()")

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
        """The numbers of the processes that the program has started, oldest first, whose name contains `word`."""
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
        """The full name of "callStackView", "localsView", "targetConsole" or a part of them."""
        return f"{self._project}/{name}"

    def console(self):
        """What the program has written to its serial port or terminal."""
        return self._varnel.read(self.window("targetConsole"), "text")

    def call_stack(self):
        """A line a function, innermost first, such as "0 main main.c, 12"."""
        return self._varnel.read(self.window("callStackView"), "text").splitlines()

    def wait_for_function(self, place):
        """Waits until the innermost function is shown as one that begins with `place`, such as "main main.c, 12"."""
        self._varnel.wait_for(self.window("callStackView"), "text", lambda text: text.startswith(f"0 {place}"))

    def locals(self):
        """{name: value} of the rows that "Locals" shows, members under their own names."""
        rows = self._varnel.read(self.window("localsView"), "text").splitlines()
        return dict(row.strip().split(" = ", 1) for row in rows)

    def change_local(self, name, value):
        """Edits a value in "Locals"."""
        self._go_to_local(name)
        self._varnel.press("F2", on=self.window("localsTree"))
        self._varnel.wait_for("valueEdit", "visible", True)
        self._varnel.write("valueEdit", "text", value)
        self._varnel.press("Return", on="valueEdit")
        self._varnel.wait_until(lambda: not self._varnel.exists("valueEdit"), "the value to be taken")

    def open_local(self, name):
        self._go_to_local(name)
        self._varnel.press("Right", on=self.window("localsTree"))

    def _go_to_local(self, name):
        self._varnel.wait_until(lambda: name in self.locals(), f"a variable '{name}'")
        self._varnel.press("Home", on=self.window("localsTree"))
        for _ in range(list(self.locals()).index(name)):
            self._varnel.press("Down", on=self.window("localsTree"))
