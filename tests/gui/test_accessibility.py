"""What a screen reader finds in the running program: a name for each control of all windows and dialogs."""
import pathlib
import shutil
import tempfile
import unittest

from accessiblebus import AccessibleBus
from debugging import Debugging, copy_of_examples, line_of
from driver import ProgramTest
from templates import Creator

CALCULATOR = pathlib.Path(__file__).parents[2] / "examples/calculator"
DIALOGS = (
    "fileNew", "fileOpen", "fileSaveAs", "fileProperties", "editFind", "editReplace", "editFindInFiles", "editInsertFile",
    "viewGotoLine", "projectNew", "projectInsertFiles", "projectInsertProject", "projectProperties", "buildBatchBuild",
    "buildConfigurationsNew", "buildConfigurationsEdit", "debugBreakpoints", "toolsCustomise", "toolsOptions", "helpSearch",
    "helpAbout", "helpPlugins", "helpReport",
    "projectOpen",  # the last one: it closes the workspace first
)
DOCKS = ("navigatorDockWindow", "outputDockWindow", "registerDockWindow", "peripheralDockWindow", "watchDockWindow",
         "memoryDockWindow", "callStackDockWindow", "variablesDockWindow", "breakpointsDockWindow", "liveDockWindow",
         "processorDockWindow")
MENUS = ("fileMenu", "editMenu", "viewMenu", "projectMenu", "buildMenu", "debugMenu", "toolsMenu", "windowMenu", "helpMenu")
# An option with each kind of editor, the name of the editor, and of the dialog that its button opens.
EDITORS = (
    ("Output name", "propertyTextEditor", None),
    ("Parallel jobs", "propertyIntegerEditor", None),
    ("Optimisation", "propertyListEditor", None),
    ("Build directory", "propertyFileEditor", "chooseDirDialog"),
    ("Include directories", "propertyFileEditor", "fileListDialog"),
)


class AccessibleTest(ProgramTest):
    """The base: a program that is seen by the registry. A process can connect to one registry only."""

    bus = None

    @classmethod
    def setUpClass(cls):
        if not AccessibleTest.bus:
            AccessibleTest.bus = AccessibleBus()
            unittest.addModuleCleanup(AccessibleTest.bus.close)

    def find_application(self):
        self.application = self.varnel.wait_until(lambda: self.bus.application(self.program.process.pid), "the program in the registry")

    def titles(self):
        return self.bus.titles(self.application)

    def check(self):
        self.assertEqual(self.bus.unnamed(self.application), [])


class AccessibilityTest(AccessibleTest):
    def setUp(self):
        parent = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-accessible.")))
        directory = parent / "calculator"
        shutil.copytree(CALCULATOR, directory, ignore=shutil.ignore_patterns("build"))
        self.launch("-w", directory / "calculator.vnw", environment=self.bus.environment)
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - calculator")
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", directory / "expression.cpp")
        self.varnel.wait_for("viewManagerTabBar", "count", 1)
        self.find_application()

    def test_every_control_of_the_window_has_a_name(self):
        for dock in DOCKS:
            self.varnel.call(dock, "show()")
        names = self.bus.names(self.application)
        self.assertGreater(len(names), 100)
        self.assertIn(("text", "Text of expression.cpp"), names)
        self.check()

    def test_every_item_of_the_menus_has_a_name(self):
        self.wait_for_keyboard()
        for menu in MENUS:
            with self.subTest(menu):
                title = self.varnel.read(menu, "title")
                self.program.screen.keyboard.press("Alt+" + title[title.index("&") + 1].upper())
                self.varnel.wait_for(menu, "visible", True)
                try:
                    self.check()
                finally:
                    self.program.screen.keyboard.press("Escape")
                    self.varnel.wait_for(menu, "visible", False)

    def test_every_control_of_the_dialogs_has_a_name(self):
        for action in DIALOGS:
            with self.subTest(action):
                before = self.titles()
                self.varnel.choose(action)
                self.varnel.wait_until(lambda: len(self.titles()) > len(before), f"a dialog of {action}")
                try:
                    self.check_pages()
                finally:
                    self.program.screen.keyboard.press("Escape")
                    self.varnel.wait_until(lambda: len(self.titles()) == len(before), "the dialog to close")

    def test_every_control_of_the_forms_of_templates_has_a_name(self):
        self.wait_for_keyboard()
        creator = Creator(self.program, self.program.screen.keyboard)
        creator.directory.mkdir()
        for form, template in (("deviceDialog", "embedded/device"), ("fromFolderDialog", "existing/folder")):
            with self.subTest(template):
                creator.fill_in(template, "new")
                creator.accept()
                self.varnel.wait_for(form, "isActiveWindow", True)
                creator.has_recent = True
                try:
                    self.assertIn("dialog", [role for role, _ in self.bus.names(self.application)])
                    self.check()
                finally:
                    self.program.screen.keyboard.press("Escape")
                    self.varnel.find_gone(form)
                    self.wait_for_keyboard()

    def test_every_editor_of_an_option_has_a_name(self):
        self.wait_for_keyboard()
        keyboard = self.program.screen.keyboard
        self.varnel.choose("projectProperties")
        for option, editor, dialog in EDITORS:
            with self.subTest(option):
                self.varnel.wait_for("propertyEditorDialog", "isActiveWindow", True)
                self.varnel.call("FilterEdit", "setFocus()")
                self.varnel.call("FilterEdit", "selectAll()")
                keyboard.type(option)
                self.varnel.wait_for("FilterEdit", "text", option)
                keyboard.press("Down")
                self.varnel.wait_for(editor, "visible", True)
                self.check()
                if dialog:
                    self.varnel.call("browseButton", "click()")
                    self.varnel.wait_for(dialog, "isActiveWindow", True)
                    self.check()
                    keyboard.press("Escape")
                    self.varnel.find_gone(dialog)
                    self.varnel.wait_for("propertyEditorDialog", "isActiveWindow", True)

    def test_every_control_of_the_questions_has_a_name(self):
        self.wait_for_keyboard()
        keyboard = self.program.screen.keyboard
        keyboard.type("x")
        self.varnel.wait_for("fileSave", "enabled", True)
        for action in ("fileClose", "fileExit"):
            with self.subTest(action):
                self.varnel.choose(action)
                self.varnel.wait_for("messageBox", "isActiveWindow", True)
                self.assertIn(("push button", "Cancel"), self.bus.names(self.application))
                self.check()
                keyboard.press("Escape")
                self.varnel.find_gone("messageBox")
                self.wait_for_keyboard()

    def check_pages(self):
        """Looks at all pages of the options."""
        self.check()
        if not self.varnel.exists("OptionsTabs"):
            return
        for page in range(self.varnel.read("OptionsTabs", "count")):
            self.varnel.write("OptionsTabs", "currentIndex", page)
            self.check()


class PausedAccessibilityTest(AccessibleTest):
    def setUp(self):
        parent = self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-accessible."))
        self.examples = copy_of_examples(parent)
        self.launch("-w", self.examples / "thermostat/thermostat.vnw", environment=self.bus.environment)
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - thermostat")
        self.user = Debugging(self.program, "thermostat", "thermostat")
        self.find_application()

    def test_every_control_of_a_paused_session_has_a_name(self):
        self.user.build()
        self.user.show_docks()
        self.varnel.choose("debugStepOver")
        self.user.wait_for_stop(line_of(self.examples / "thermostat/main.c", "int main") + 3)
        for dock in DOCKS:
            self.varnel.call(dock, "show()")
        self.varnel.choose("debugViewDisassembly")
        self.varnel.wait_for("viewManagerTabBar", "count", 2)
        names = self.bus.names(self.application)
        self.assertIn("Go to address or symbol", [name for _, name in names])
        self.assertIn("Machine instructions", [name for _, name in names])
        self.check()
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")


class LargeFileAccessibilityTest(AccessibleTest):
    def test_every_control_of_a_large_file_has_a_name(self):
        directory = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-accessible.")))
        file = directory / "long.log"
        file.write_bytes(b"a line of a log that another program has written to this file\n" * 1_000_000)
        self.launch(environment=self.bus.environment)
        self.find_application()
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", file)
        self.varnel.answer("The file is too large to open for editing.\n\nIt will be opened read-only.", "Return")
        self.varnel.wait_for("long/lines", "visible", True)
        self.wait_for_keyboard()
        self.program.screen.keyboard.press("Ctrl+F")
        self.varnel.wait_for("LargeTextFindWhat", "visible", True)
        self.assertIn("Find in the file", [name for _, name in self.bus.names(self.application)])
        self.check()


if __name__ == "__main__":
    unittest.main()
