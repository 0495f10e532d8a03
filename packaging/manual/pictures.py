#!/usr/bin/env python3
"""Takes the pictures of the manual from the running program, and writes the pages about its Python types.

    pictures.py [--only STEP] [HELP_FOLDER]

Runs the staged program on a virtual screen, in light colours, with copies of the examples: builds them, debugs them, opens
dialogs, and saves a part of the screen for each picture that the pages use. `./dev manual` runs it.
"""
import argparse
import contextlib
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path.insert(0, str(ROOT / "tests/gui"))
from debugging import Debugging, copy_of_examples, line_of  # noqa: E402
from driver import Program, Screen  # noqa: E402

WIDTH, HEIGHT = 1200, 760
DOCK_HEIGHT, DOCUMENT_HEIGHT = 230, 420
NARROW = 720
COLOURS = 200  # of a picture: enough for a window, and a third of the size
SETTLED = 0.4  # seconds without a change of the screen
LONGEST = 10.0
SETTINGS = {"Startup": {"DisableSplashScreen": 1}, "Editor": {"LineNumbers": 1}}


class Camera:
    """Saves parts of the screen."""

    def __init__(self, screen, folder):
        self._screen = screen
        self._folder = folder
        self.varnel = None

    def window(self, name):
        """The whole main window."""
        self._wait_until_settled()
        self._save(name, *self._place("mainWindow"))

    def dialog(self, name, dialog):
        self.varnel.wait_for(dialog, "visible", True)
        self._wait_until_settled()
        self._save(name, *self._place(dialog))

    def dock(self, name, dock, highest=HEIGHT):
        """A dock window, or the documents ("viewManager"), cut off below `highest`."""
        self._wait_until_settled()
        left, top = (self.varnel.read("mainWindow", side) for side in ("x", "y"))
        x, y, width, height = self._place(dock)
        self._save(name, left + x, top + y, width, min(height, highest))

    def narrow(self):
        """Makes the window so narrow that wide dock windows fit on a page in their own size."""
        self.varnel.write("mainWindow", "maximumWidth", NARROW)

    def _place(self, name):
        return tuple(self.varnel.read(name, side) for side in ("x", "y", "width", "height"))

    def _wait_until_settled(self):
        """A screen has no event for "everything is painted"."""
        end = time.monotonic() + LONGEST
        last, since = self._screen.pixels(), time.monotonic()
        while time.monotonic() - since < SETTLED and time.monotonic() < end:
            time.sleep(0.1)
            now = self._screen.pixels()
            if now != last:
                last, since = now, time.monotonic()

    def _save(self, name, x, y, width, height):
        with tempfile.NamedTemporaryFile(suffix=".png") as whole:
            self._screen.screenshot(whole.name)
            subprocess.run(["convert", whole.name, "-crop", f"{width}x{height}+{x}+{y}", "+repage", "-strip", "+dither",
                            "-colors", str(COLOURS), f"PNG8:{self._folder / name}.png"], check=True)
        print(f"{name}.png", flush=True)


@contextlib.contextmanager
def folder_of_projects():
    """A new folder that has the same name each time, because pictures show it."""
    folder = pathlib.Path(tempfile.gettempdir(), "projects")
    folder.mkdir()
    try:
        yield folder
    finally:
        shutil.rmtree(folder)


@contextlib.contextmanager
def program(camera, screen, *arguments):
    with Program(*arguments, screen=screen, settings=SETTINGS) as running:
        camera.varnel = running.client
        camera.varnel.wait_for("mainWindow", "visible", True)
        camera.varnel.wait_for("mainWindow", "isActiveWindow", True)
        try:
            yield running
        except Exception:
            seen = pathlib.Path(tempfile.gettempdir(), "varnel-pictures-failed.png")
            screen.screenshot(str(seen))
            print(f"The screen at the time of the error is in {seen}.", file=sys.stderr)
            raise


def with_dialog(camera, action, dialog, picture, prepare=lambda: None):
    camera.varnel.choose(action)
    camera.varnel.wait_for(dialog, "visible", True)
    prepare()
    camera.dialog(picture, dialog)
    camera.varnel.press("Escape", on=dialog)
    camera.varnel.find_gone(dialog)


def without_session(camera, screen, examples):
    """The windows and dialogs of a workspace that is edited and built."""
    with program(camera, screen, "-w", examples / "twoprocessors.vnw") as running:
        varnel, user = running.client, Debugging(running, "twoprocessors", "thermostat")
        user.wait_for_state("")
        user.open_file(examples / "thermostat/regulator.c", 1)
        user.build()
        for key in "Home Down Right Down Right".split():
            varnel.press(key, on="ProjectTree")
        camera.window("mainwindow")
        camera.dock("navigator", "navigatorDockWindow", DOCK_HEIGHT)
        with_dialog(camera, "projectProperties", "propertyEditorDialog", "properties")
        with_dialog(camera, "toolsOptions", "optionsDialog", "options")
        with_dialog(camera, "toolsCustomise", "optionsDialog", "keys", lambda: varnel.write("searchEdit", "text", "step"))
        with_dialog(camera, "editFindInFiles", "findInFilesDialog", "findinfiles",
                    lambda: (varnel.write("LookInCombo", "currentText", "thermostat"),
                             varnel.write("FindWhatCombo", "currentText", "regulator_")))
        with_dialog(camera, "projectNew", "newProjectDialog", "newproject", lambda: choose_template(varnel))
        camera.narrow()
        camera.dock("output", "outputDockWindow")
        show_console(varnel)
        camera.dock("console", "outputDockWindow")


def python_pages(camera, screen, help_folder):
    """The pages about the types that scripts see, written by the program's own Python."""
    with program(camera, screen) as running:
        varnel = running.client
        varnel.write("outputTabs", "currentIndex", 3)
        for statement in ("import sys", "sys.dont_write_bytecode = True", f"sys.path.insert(0, {str(HERE)!r})", "import pythonpages",
                          f"pythonpages.write('varnel', {str(help_folder)!r})", "print('pages', 'written')"):
            varnel.type("commandWindow", statement + "\n")
        varnel.wait_for("commandWindow", "plainText", lambda text: "pages written" in text)
        text = varnel.read("commandWindow", "plainText")
        if "Error" in text:
            raise SystemExit(text)
        print("pages about Python")


def choose_template(varnel):
    varnel.press("Home", on="TemplateListView")
    varnel.press("Home", on="TemplateIconView")
    varnel.press("Right", on="TemplateIconView")
    varnel.write("NameLineEdit", "text", "blink")
    varnel.write("LocationLineEdit", "text", "/home/user/projects")


def show_console(varnel):
    varnel.write("outputTabs", "currentIndex", 3)
    for statement in ("from varnel import app", "for project in app.projects:", "    print(project.name)", "",
                      "app.currentProject.configurations"):
        varnel.type("commandWindow", statement + "\n")


def with_session(camera, screen, examples):
    """The windows of the debugger, while both processors of the example are paused."""
    with program(camera, screen, "-w", examples / "twoprocessors.vnw") as running:
        varnel, user = running.client, Debugging(running, "twoprocessors", "thermostat")
        user.wait_for_state("")
        file = examples / "thermostat/regulator.c"
        user.open_file(file, 1)
        user.build()
        line = line_of(file, "regulator->power = limited(")
        user.click_margin("regulator.c", line)
        with_dialog(camera, "debugBreakpoints", "breakpointDialog", "breakpoints")
        user.show_docks()
        varnel.choose("debugRun")
        user.wait_for_function(f"regulator_step regulator.c, {line}")
        user.wait_for_state("paused")
        varnel.call("outputDockWindow", "hide()")
        session_windows(camera, varnel, user, screen.keyboard)
        varnel.choose("debugStop")
        user.wait_for_state("")


def session_windows(camera, varnel, user, keyboard):
    user.open_local("regulator")
    varnel.call("watchDockWindow", "bringUp()")
    for expression in ("regulator->target", "*regulator", "$sp,x"):
        varnel.press("End", on="watchListView")
        varnel.press("F2", on="watchListView")
        keyboard.type(expression + "\n")
        varnel.wait_for("thermostat/watches", "text", lambda text, wanted=expression: wanted in text)
    camera.window("session")
    narrow = {"callstack": "callStackDockWindow", "locals": "variablesDockWindow", "targetconsole": "pluginTarget-console",
              "watches": "watchDockWindow", "registers": "registerDockWindow"}
    wide = {"processors": "processorDockWindow", "memory": "memoryDockWindow"}
    docks(camera, varnel, narrow, {**narrow, **wide})
    varnel.choose("debugViewDisassembly")
    camera.dock("disassembly", "viewManager", DOCUMENT_HEIGHT)
    camera.narrow()
    varnel.call("navigatorDockWindow", "hide()")
    docks(camera, varnel, wide, {**narrow, **wide})


def docks(camera, varnel, pictures, all_docks):
    """Shows one dock window at a time, so that it has enough room."""
    for picture, dock in pictures.items():
        for other in all_docks.values():
            varnel.call(other, "hide()")
        varnel.call(dock, "bringUp()")
        camera.dock(picture, dock, DOCK_HEIGHT)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--only", choices=("without_session", "with_session", "python_pages"))
    parser.add_argument("help", nargs="?", type=pathlib.Path, default=ROOT / "help", help="where the pages are")
    options = parser.parse_args()
    folder = options.help.resolve() / "pictures"
    folder.mkdir(exist_ok=True)
    screen = Screen(WIDTH, HEIGHT, pointer=False)
    camera = Camera(screen, folder)
    try:
        with folder_of_projects() as directory:
            examples = copy_of_examples(directory)
            for step, where in ((without_session, examples), (with_session, examples),
                                (python_pages, options.help.resolve())):
                if options.only in (None, step.__name__):
                    step(camera, screen, where)
    finally:
        screen.close()


if __name__ == "__main__":
    main()
