#!/usr/bin/env python3
"""The scripts that the manual shows, run in the program, and its pages about the types for scripts."""
import pathlib
import tempfile
import unittest

from debugging import copy_of_examples
from driver import ProgramTest

ROOT = pathlib.Path(__file__).parents[2]
SAMPLES = ROOT / "help/samples"
CONSOLE = 3  # its page of the output window
NEEDED = {"logvariable.py": "debugger", "savememory.py": "debugger", "setoption.py": "projects",
          "showvalues.py": "debugger", "watchpanel.py": "createUI", "saveandbuild.py": "addMacro"}


class ManualTest(ProgramTest):
    def setUp(self):
        super().setUp()
        directory = tempfile.TemporaryDirectory(prefix="varnel-manual.")
        self.addCleanup(directory.cleanup)
        self.examples = copy_of_examples(directory.name)
        self.launch("-w", self.examples / "calculator/calculator.vnw")
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - calculator")
        self.varnel.write("outputTabs", "currentIndex", CONSOLE)

    def enter(self, statement, answer=""):
        """Runs a statement in the console. Returns what it printed."""
        before = self.console()
        self.varnel.type("commandWindow", statement + "\n")
        self.varnel.wait_until(lambda: answer in self.console()[len(before):] and self.console().endswith(">>> "),
                               f"the end of '{statement}'")
        return self.console()[len(before) + len(statement):]

    def console(self):
        return self.varnel.read("commandWindow", "plainText")

    def need(self, attribute):
        if "True" not in self.enter(f"import varnel; print(hasattr(varnel.app, '{attribute}'))", "e\n"):
            self.skipTest(f"the program has no app.{attribute}")

    def run_sample(self, name):
        self.need(NEEDED[name])
        self.assertNotIn("Traceback", self.enter(f"exec(open({str(SAMPLES / name)!r}).read())"))

    def test_every_sample_is_run_here(self):
        self.assertEqual(sorted(NEEDED), sorted(file.name for file in SAMPLES.glob("*.py")))

    def test_sample_logvariable(self):
        self.run_sample("logvariable.py")

    def test_sample_showvalues(self):
        self.run_sample("showvalues.py")

    def test_sample_watchpanel(self):
        self.run_sample("watchpanel.py")
        self.varnel.wait_for("clock", "text", lambda text: text.count(":") == 2)

    def test_sample_saveandbuild(self):
        self.run_sample("saveandbuild.py")

    def test_sample_setoption(self):
        self.run_sample("setoption.py")
        project = (self.examples / "calculator/calculator.vnp").read_text(encoding="utf-8")
        self.assertIn('<property key="buildWarningsAsErrors">true</property>', project)

    def test_sample_savememory_asks_for_the_file(self):
        self.need("debugger")
        self.varnel.type("commandWindow", f"exec(open({str(SAMPLES / 'savememory.py')!r}).read())\n")
        self.varnel.wait_for("inputDialog", "visible", True)
        self.varnel.press("Escape", on="inputDialog")
        self.varnel.wait_until(lambda: self.console().endswith(">>> "), "the end of the script")
        self.assertNotIn("Traceback", self.console())

    def test_pages_about_types_are_those_that_the_program_writes(self):
        self.need("projects")
        with tempfile.TemporaryDirectory() as written:
            self.enter(f"import sys; sys.dont_write_bytecode = True; sys.path.insert(0, {str(ROOT / 'packaging/manual')!r})")
            self.enter(f"import pythonpages; pythonpages.write('varnel', {written!r})")
            new = {file.name: file.read_text() for file in pathlib.Path(written).rglob("*.*ml")}
        old = {file.name: file.read_text() for file in (*(ROOT / "help/html/python").glob("*.html"),
                                                        ROOT / "help" / "varnelpython.xml")}
        self.assertEqual(new, old, "run './dev manual'")


if __name__ == "__main__":
    unittest.main()
