"""The program in German: drivers and scripts reach everything by the same names as in English."""
import pathlib
import shutil
import tempfile
import unittest

from driver import ProgramTest
from templates import Creator

CALCULATOR = pathlib.Path(__file__).parents[2] / "examples/calculator"
BUILD_TIME = 300
GERMAN = {"Startup": {"Language": "de"}}

DIALOGS = {
    "fileNew": "newFileDialog", "projectNew": "newProjectDialog", "debugBreakpoints": "breakpointDialog",
    "toolsOptions": "optionsDialog", "helpReport": "problemReportDialog", "helpAbout": "aboutBox",
}


class GermanTest(ProgramTest):
    def open_calculator(self):
        parent = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-german.")))
        directory = parent / "calculator"
        shutil.copytree(CALCULATOR, directory, ignore=shutil.ignore_patterns("build"))
        self.launch("-w", directory / "calculator.vnw", settings=GERMAN)
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - calculator")

    def run_script(self, line):
        self.varnel.type("commandWindow", line)
        self.varnel.press("Return", on="commandWindow")

    def test_commands_and_menus_have_german_texts_and_their_names(self):
        self.launch(settings=GERMAN)
        self.assertEqual(self.varnel.read("fileNew", "text"), "&Neue Datei...")
        self.assertEqual(self.varnel.read("toolsMenu", "title"), "E&xtras")
        self.wait_for_keyboard()
        self.program.screen.keyboard.press("Alt+X")
        self.varnel.wait_for("toolsMenu", "visible", True)
        self.program.screen.keyboard.press("Escape")

    def test_dialogs_are_operated_by_their_names(self):
        self.open_calculator()
        for action, dialog in DIALOGS.items():
            with self.subTest(action):
                self.varnel.choose(action)
                self.varnel.wait_for(dialog, "visible", True)
                self.varnel.press("Escape", on=dialog)
                self.varnel.find_gone(dialog)

    def test_message_boxes_are_german(self):
        self.launch(settings=GERMAN)
        self.varnel.choose("debugBreakpoints")
        self.varnel.answer("Haltepunkte können nicht bearbeitet werden.", "Return")
        self.varnel.find_gone("messageBox")

    def test_forms_of_templates_are_german(self):
        self.launch(settings=GERMAN)
        self.wait_for_keyboard()
        creator = Creator(self.program, self.program.screen.keyboard)
        creator.directory.mkdir()
        creator.fill_in("embedded/device", "chip")
        creator.accept()
        self.varnel.wait_for("deviceDialog", "isActiveWindow", True)
        self.assertEqual(self.varnel.read("coreLabel", "text"), "&Kern:")
        self.varnel.call("flashSizeEdit", "setFocus()")
        self.program.screen.keyboard.press("Ctrl+A")
        self.program.screen.keyboard.type("viel\n")
        self.varnel.answer("'viel' ist keine Zahl.", "Return")
        self.varnel.wait_for("deviceDialog", "isActiveWindow", True)
        self.program.screen.keyboard.press("Escape")
        self.varnel.find_gone("deviceDialog")

    def test_example_is_built_by_a_driver(self):
        self.open_calculator()
        self.varnel.choose("buildBuild")
        self.varnel.wait_for("BuildPage", "plainText", lambda text: text.rstrip().endswith("Fertig."), BUILD_TIME)
        output = self.varnel.read("BuildPage", "plainText")
        self.assertRegex(output, r"\[1/\d\] Übersetze \w+\.cpp\n")
        self.assertNotRegex(output, "Compiling|Linking")

    def test_script_reaches_commands_and_pages_by_their_names(self):
        self.open_calculator()
        self.run_script("from varnel import app")
        self.run_script("app.doAction('helpAbout')")
        self.varnel.wait_for("aboutBox", "visible", True)
        self.varnel.press("Escape", on="aboutBox")
        self.varnel.find_gone("aboutBox")
        self.run_script("print('project ' + app.projects[0].name)")
        self.varnel.wait_for("commandWindow", "plainText", lambda text: "\nproject calculator" in text)

    def test_english_comes_back(self):
        self.launch()
        self.assertEqual(self.varnel.read("fileNew", "text"), "&New File...")


if __name__ == "__main__":
    unittest.main()
