"""Options of a file and of a project, changed by keys in the dialog, take effect in the next build and session."""
import re
import tempfile
import unittest

from debugging import Debugging, copy_of_examples
from driver import ProgramTest


class PropertiesTest(ProgramTest):
    def setUp(self):
        examples = copy_of_examples(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-properties.")))
        self.directory = examples / "calculator"
        self.launch("-w", self.directory / "calculator.vnw")
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - calculator")
        self.user = Debugging(self.program, "calculator", "calculator")
        self.keyboard = self.program.screen.keyboard

    def build(self):
        """Builds, and returns the names of the compiled files."""
        return set(re.findall(r"Compiling (\S+)$", self.user.build(), re.M))

    def rule(self, source):
        """What the build files say of a source: its line and the variables of its own below that."""
        text = (self.directory / "build/Debug/build.ninja").read_text(encoding="utf-8")
        return re.search(rf"^build \S+: cxx {source}\n(  .*\n)*", text, re.M).group(0)

    def edit_option(self, name, editor):
        """Opens the editor of the only option whose row contains `name`."""
        self.varnel.wait_for("propertyEditorDialog", "isActiveWindow", True)
        self.varnel.call("FilterEdit", "setFocus()")
        self.keyboard.type(name)
        self.varnel.wait_for("FilterEdit", "text", name)
        self.keyboard.press("Down")
        self.varnel.wait_for(editor, "visible", True)

    def end_edit(self):
        """Without waiting, the next click could close the dialog first, and the main window would get the key."""
        self.keyboard.press("Return")
        self.varnel.wait_for("PropertyList", "focus", True)

    def accept_dialog(self):
        self.varnel.click("OkButton")
        self.varnel.find_gone("propertyEditorDialog")
        self.wait_for_keyboard()

    def test_option_of_one_file_recompiles_only_that_file(self):
        self.assertEqual(self.build(), {"expression.cpp", "lexer.cpp", "main.cpp", "parser.cpp"})
        self.user.open_file(self.directory / "expression.cpp", 1)
        self.varnel.choose("fileProperties")
        self.edit_option("Optimisation", "propertyListEditor")
        self.keyboard.type("si")  # the first letters of the choice
        self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
        self.end_edit()
        self.accept_dialog()
        self.assertEqual(self.build(), {"expression.cpp"})
        self.assertIn("-Os", self.rule("expression.cpp"))
        self.assertNotIn("-Os", self.rule("lexer.cpp"))
        self.assertEqual(self.build(), set())

    def test_reset_removes_the_option_of_a_file(self):
        self.build()
        self.user.open_file(self.directory / "expression.cpp", 1)
        self.varnel.choose("fileProperties")
        self.edit_option("Optimisation", "propertyListEditor")
        self.keyboard.type("si")
        self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
        self.end_edit()
        self.accept_dialog()
        self.build()
        self.assertIn("-Os", self.rule("expression.cpp"))
        self.varnel.choose("fileProperties")
        self.edit_option("Optimisation", "propertyListEditor")
        self.end_edit()
        self.keyboard.press("Shift+F10")
        self.varnel.wait_for("propertyMenu", "visible", True)
        self.keyboard.press("r")
        self.varnel.find_gone("propertyMenu")
        self.accept_dialog()
        self.assertEqual(self.build(), {"expression.cpp"})
        self.assertNotIn("-Os", self.rule("expression.cpp"))

    def test_all_configurations_get_the_option(self):
        self.varnel.choose("projectProperties")
        self.varnel.wait_for("propertyEditorDialog", "visible", True)
        self.varnel.press("End", on="ConfigurationsCombo")
        self.varnel.wait_for("ConfigurationsCombo", "currentText", "All configurations")
        self.edit_option("Optimisation", "propertyListEditor")
        self.keyboard.type("si")
        self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
        self.end_edit()
        self.accept_dialog()
        for configuration in ("Debug", "Release"):
            self.varnel.choose("projectProperties")
            self.varnel.wait_for("propertyEditorDialog", "visible", True)
            self.varnel.type("ConfigurationsCombo", configuration[0])
            self.varnel.wait_for("ConfigurationsCombo", "currentText", configuration)
            self.edit_option("Optimisation", "propertyListEditor")
            self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
            self.varnel.click("CancelButton")
            self.varnel.find_gone("propertyEditorDialog")
            self.wait_for_keyboard()

    def test_change_that_cannot_be_saved_is_refused(self):
        self.user.open_file(self.directory / "expression.cpp", 1)
        self.varnel.choose("fileProperties")
        self.varnel.wait_for("propertyEditorDialog", "visible", True)
        self.varnel.press("End", on="ConfigurationsCombo")
        self.edit_option("Optimisation", "propertyListEditor")
        self.keyboard.type("si")
        self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
        self.varnel.click("OkButton")
        self.varnel.answer("cannot be saved in", "Return")
        self.varnel.find_gone("messageBox")
        self.assertTrue(self.varnel.read("propertyEditorDialog", "visible"))
        self.varnel.click("CancelButton")
        self.varnel.find_gone("propertyEditorDialog")

    def test_option_of_the_debugger_takes_effect_in_the_next_session(self):
        self.build()
        self.varnel.choose("projectProperties")
        self.edit_option("Run to", "propertyTextEditor")
        self.keyboard.press("Ctrl+A")
        self.keyboard.type("work")
        self.varnel.wait_for("propertyEdit", "text", "work")
        self.end_edit()
        self.accept_dialog()
        self.keyboard.press("F10")
        self.user.wait_for_state("paused")
        self.user.show_docks()
        self.user.wait_for_function("work main.cpp, ")
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")


if __name__ == "__main__":
    unittest.main()
