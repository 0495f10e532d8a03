#!/usr/bin/env python3
"""What the manual shows, tried in the program: its first steps, its scripts, and its pages about the types for scripts."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from debugging import BUILD_TIME, Debugging, copy_of_examples, line_of
from debugtest import DebugTest
from driver import ProgramTest, Screen
from driver.client import Connection
from driver.program import DEFAULT_PROGRAM

ROOT = pathlib.Path(__file__).parents[2]
SAMPLES = ROOT / "help/samples"
CONSOLE = 3  # its page of the output window
TRIED = {"logvariable.py", "savememory.py", "showvalues.py",  # in a session
         "listprojects.py", "setoption.py", "watchpanel.py", "saveandbuild.py",  # in a workspace
         "checkboard.py"}  # without a window

# What else the manual shows. The test of the help finds each block of its pages here.
AUTOMATION = """
$ varnel -r 5000 &
$ nc localhost 5000
GETPROPERTY mainWindow windowTitle
OK 3 Varnel
DOACTION toolsOptions
"""
USAGE = """
varnel-run SCRIPT [ARGUMENTS]
varnel-run -m MODULE [ARGUMENTS]
"""
SHELL = """
$ varnel-run checkboard.py thermostat/thermostat.vnw thermostat/main.c 60 regulator.power
regulator.power is 1000
$ echo $?
0
"""
INSTALLATION = """
sudo apt install ninja-build gcc-arm-none-eabi gdb-multiarch qemu-system-arm
"""
# run by the tests of scripts
TESTS = """
cp -r /usr/share/varnel/examples ~/varnel-examples
varnel-run -m pytest ~/varnel-examples/tests
"""
# compared with the guide for authors of plug-ins
PLUGIN_PROJECT = """
<project buildenvironment="{0b7a3c52-9f51-4c0e-8a52-6f1d3ce0a7d4}" buildenvironmentname="Script Build"
         buildenvironmentoption="./build.sh" executionenvironment="" executionenvironmentname=""
         executionenvironmentoption=""/>
"""
# read by the test of the table of regions
REGIONS = """
Flash:0x08000000:1M:rom;RAM:0x20000000:192K:ram;Devices:0x40000000:0x30000:io
"""


class Console:
    """Enters statements in the Python console. For test cases with `varnel`."""

    def enter(self, statement, answer=""):
        """Runs a statement in the console. Returns what it printed."""
        before = self.console()
        self.varnel.type("commandWindow", statement + "\n")
        self.varnel.wait_until(lambda: answer in self.console()[len(before):] and self.console().endswith(">>> "),
                               f"the end of '{statement}'")
        return self.console()[len(before) + len(statement):]

    def console(self):
        return self.varnel.read("commandWindow", "plainText")

    def run_sample(self, name):
        self.assertNotIn("Traceback", self.enter(run(name)))


def run(name):
    """The statement that runs a script of the manual."""
    return f"exec(open({str(SAMPLES / name)!r}).read())"


class PluginProjectTest(unittest.TestCase):
    def test_project_of_a_plugin_is_that_of_the_guide(self):
        guide = (ROOT / "docs/plugin-authors.md").read_text(encoding="utf-8")
        self.assertIn(f"```xml{PLUGIN_PROJECT}```", guide)
        configurations = re.findall(r'<configuration name="(\w+)"', PLUGIN_PROJECT) or ["Default"]
        self.assertIn(f'the page "Build" shows `build {configurations[0]}`', guide)


class ManualTest(Console, ProgramTest):
    def setUp(self):
        super().setUp()
        directory = tempfile.TemporaryDirectory(prefix="varnel-manual.")
        self.addCleanup(directory.cleanup)
        self.examples = copy_of_examples(directory.name)
        self.launch("-w", self.examples / "calculator/calculator.vnw")
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - calculator")
        self.varnel.write("outputTabs", "currentIndex", CONSOLE)

    def test_every_sample_is_run_here(self):
        self.assertEqual(TRIED, {file.name for file in SAMPLES.glob("*.py")})

    def test_sample_listprojects(self):
        self.enter(run("listprojects.py"), "calculator Debug")

    def test_sample_watchpanel(self):
        self.run_sample("watchpanel.py")
        self.varnel.wait_for("clock", "text", lambda text: text.count(":") == 2)

    def test_sample_saveandbuild(self):
        self.run_sample("saveandbuild.py")
        self.wait_for_keyboard()
        self.program.screen.keyboard.press("Ctrl+Alt+S")
        self.varnel.wait_for("BuildPage", "plainText", lambda text: text.rstrip().endswith("Done."), BUILD_TIME)

    def test_sample_setoption(self):
        self.run_sample("setoption.py")
        project = (self.examples / "calculator/calculator.vnp").read_text(encoding="utf-8")
        self.assertIn('<property key="buildWarningsAsErrors">true</property>', project)

    def test_pages_about_types_are_those_that_the_program_writes(self):
        with tempfile.TemporaryDirectory() as written:
            self.enter(f"import sys; sys.dont_write_bytecode = True; sys.path.insert(0, {str(ROOT / 'packaging/manual')!r})")
            self.enter(f"import pythonpages; pythonpages.write('varnel', {written!r})")
            new = {file.name: file.read_text() for file in pathlib.Path(written).rglob("*.*ml")}
        old = {file.name: file.read_text() for file in (*(ROOT / "help/html/python").glob("*.html"),
                                                        ROOT / "help" / "varnelpython.xml")}
        self.assertEqual(new, old, "run './dev manual'")


class SessionTest(Console, DebugTest):
    """The scripts that need a paused program."""

    workspace = "thermostat/thermostat.vnw"
    project = "thermostat"

    def setUp(self):
        super().setUp()
        self.user.build()
        file = self.examples / "thermostat/main.c"
        self.varnel.write("outputTabs", "currentIndex", CONSOLE)
        self.enter(f"from varnel import app; app.debugger.currentProcessor.setBreakpoint({str(file)!r}, "
                   f"{line_of(file, 'keep_sample();')})")

    def run_to_breakpoint(self):
        self.varnel.choose("debugRun")
        self.user.wait_for_stop(line_of(self.examples / "thermostat/main.c", "keep_sample();"))

    def test_sample_logvariable(self):
        self.run_sample("logvariable.py")
        self.varnel.choose("debugRun")
        self.varnel.wait_until(lambda: "samples = 3" in self.console(), "three hits", 60)
        self.assertNotIn("Traceback", self.console())

    def test_sample_showvalues(self):
        self.run_sample("showvalues.py")
        self.varnel.wait_for("pythonOutputDockWindow", "visible", True)
        self.run_to_breakpoint()
        processor = "app.debugger.currentProcessor"
        self.enter(f"print('same', app.outputWindow['pc'] == hex({processor}.registers['pc']))", "same True")
        self.assertNotIn("Traceback", self.console())

    def test_sample_savememory(self):
        self.run_to_breakpoint()
        before = len(self.console())
        file = self.examples / "ram.bin"
        self.varnel.type("commandWindow", run("savememory.py") + "\n")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.keyboard.press("Ctrl+A")
        self.keyboard.type(f"{file}\n")
        self.varnel.wait_until(lambda: self.console()[before:].endswith(">>> "), "the end of the script")
        self.assertNotIn("Traceback", self.console())
        self.assertEqual(file.stat().st_size, 256)
        self.assertNotEqual(file.read_bytes(), bytes(256))


class AutomationTest(ProgramTest):
    """The dialogue with the automation port."""

    def test_dialogue(self):
        self.launch()
        lines = [line for line in AUTOMATION.split("\n") if line and not line.startswith("$")]
        title, answer, options = lines
        connection = Connection(self.program.port)
        self.addCleanup(connection.close)
        connection.send(title)
        self.assertEqual(connection.receive(), answer)
        connection.send(options)
        self.varnel.wait_for("optionsDialog", "visible", True)


class ShellTest(unittest.TestCase):
    """What needs no window."""

    program = pathlib.Path(os.environ.get("VARNEL_PROGRAM") or DEFAULT_PROGRAM).with_name("varnel-run")

    def test_usage(self):
        run = subprocess.run([self.program], capture_output=True, text=True, timeout=60)
        for line in USAGE.split("\n"):
            self.assertIn(line, run.stderr)

    def test_packages_are_known(self):
        packages = (ROOT / "packages.txt").read_text(encoding="utf-8").split()
        for package in INSTALLATION.split()[3:]:
            self.assertIn(package, packages)

    def test_command_of_checkboard(self):
        examples = copy_of_examples(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-shell.")))
        command, answer, _, code = SHELL.strip().split("\n")
        arguments = command.split()[3:]
        self.assertEqual(int(arguments[2]), line_of(examples / arguments[1], "keep_sample();"))
        run = subprocess.run([self.program, SAMPLES / "checkboard.py", *arguments], cwd=examples, capture_output=True,
                             text=True, timeout=BUILD_TIME)
        self.assertEqual((run.stdout, run.returncode), (answer + "\n", int(code)), run.stderr)

    def test_sample_checkboard(self):
        examples = copy_of_examples(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-shell.")))
        file = examples / "thermostat/main.c"
        for expression, value, code in (("regulator.power", 1000, 0), ("samples", 0, 1)):
            run = subprocess.run([self.program, SAMPLES / "checkboard.py", examples / "thermostat/thermostat.vnw", file,
                                  str(line_of(file, "keep_sample();")), expression], capture_output=True, text=True, timeout=BUILD_TIME)
            self.assertEqual(run.returncode, code, run.stderr)
            self.assertEqual(run.stdout, f"{expression} is {value}\n")


class FirstStepsTest(ProgramTest):
    """The page "First Steps", step by step, with mouse and keys."""

    def setUp(self):
        self.directory = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-first.")))
        screen = Screen(1440, 900)
        self.addCleanup(screen.close)
        self.launch(screen=screen)
        self.keyboard = screen.keyboard
        self.wait_for_keyboard()
        self.user = Debugging(self.program, "blink", "blink")

    def test_from_an_empty_folder_to_a_breakpoint(self):
        self.create_the_project()
        source = self.directory / "blink/main.c"
        self.open_from_the_navigator("main.c")
        self.build("Done.")
        self.break_and_mend(source)
        line = line_of(source, "uart_number(seconds);")
        self.user.click_margin("main.c", line)
        self.wait_for_keyboard()
        self.keyboard.press("F5")
        self.user.wait_for_stop(line)
        self.keyboard.press("F10")
        self.user.wait_for_stop(line + 1)
        self.look_around()
        self.keyboard.press("Shift+F5")
        self.user.wait_for_state("")

    def create_the_project(self):
        self.keyboard.press("Ctrl+Shift+N")
        self.varnel.wait_for("newProjectDialog", "isActiveWindow", True)
        self.varnel.press("Home", on="TemplateListView")  # Embedded firmware
        self.varnel.press("Home", on="TemplateIconView")
        self.varnel.press("Right", on="TemplateIconView")  # Cortex-M firmware
        self.varnel.write("NameLineEdit", "text", "blink")
        self.varnel.write("LocationLineEdit", "text", str(self.directory))
        self.varnel.click("OKButton")
        self.varnel.find_gone("newProjectDialog")
        self.user.wait_for_state("")
        self.wait_for_keyboard()

    def open_from_the_navigator(self, name):
        """Opens a file of the folder "Source Files", which is below the project."""
        for key in "Home Down Down Right".split():
            self.varnel.press(key, on="ProjectTree")
        for _ in range(5):
            self.varnel.press("Down", on="ProjectTree")
            self.varnel.press("Return", on="ProjectTree")
            if self.varnel.exists(f"{name.split('.')[0]}/text"):
                return
        self.fail(f"no {name} in the navigator")

    def build(self, end):
        self.varnel.call("main/text", "setFocus()")
        self.keyboard.press("Ctrl+B")
        self.varnel.wait_for("BuildPage", "plainText", lambda text: end in text, BUILD_TIME)
        self.varnel.wait_for("buildBuild", "enabled", True)

    def break_and_mend(self, source):
        """An error, to which F4 leads."""
        line = line_of(source, "board_init();")
        self.user.click_margin("main.c", line)  # finds the line
        self.user.click_margin("main.c", line)
        self.user.click_margin("main.c", line)  # no breakpoint any more
        self.varnel.press("End", on="main/text")
        self.varnel.press("Backspace", on="main/text")
        self.build("error: ")
        self.varnel.press("Home", on="main/text")
        self.keyboard.press("F4")
        self.varnel.wait_for("cursorLabel", "text", lambda text: f"Ln {line}" in text or f"Ln {line + 1}" in text)
        self.varnel.press("Ctrl+Z", on="main/text")
        self.build("Done.")

    def look_around(self):
        if not self.varnel.read("watchDockWindow", "visible"):
            self.keyboard.press("Alt+4")
        self.varnel.wait_for("watchDockWindow", "visible", True)
        self.varnel.press("End", on="watchListView")
        self.varnel.press("F2", on="watchListView")
        self.keyboard.type("seconds\n")
        self.varnel.wait_for("blink/watches", "text", lambda text: "seconds = 1" in text)
        self.varnel.call("pluginTarget-console", "bringUp()")
        self.varnel.wait_until(lambda: self.user.console().startswith("started\n"), "the output of the program")


class PicturesTest(unittest.TestCase):
    def test_script_takes_every_picture_of_the_pages(self):
        directory = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-pictures.")))
        pages = directory / "help"
        pages.mkdir()
        script = ROOT / "packaging/manual/pictures.py"
        steps = []
        for step in ("without_session", "with_session"):  # at the same time, each on a screen of its own
            (directory / step).mkdir()
            steps.append(subprocess.Popen([sys.executable, "-B", script, "--only", step, pages],
                                          env={**os.environ, "TMPDIR": str(directory / step)}))
        self.assertEqual([step.wait() for step in steps], [0, 0])
        named = set()
        for page in (ROOT / "help/html").rglob("*.html"):
            named |= set(re.findall(r'src="[./]*/pictures/([^"]+)"', page.read_text(encoding="utf-8")))
        self.assertGreater(len(named), 15)
        self.assertEqual({picture.name for picture in (pages / "pictures").iterdir()}, named)


if __name__ == "__main__":
    unittest.main()
