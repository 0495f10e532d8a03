"""Builds of the native example: the program, an error, the jump to its line, and the repaired program."""
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from driver import ProgramTest

CALCULATOR = pathlib.Path(__file__).parents[2] / "examples/calculator"
WRONG = "int wrong = sine(1);"
EMPTY_LINE = 4  # of expression.cpp, after the includes
BUILD_TIME = 300


class BuildTest(ProgramTest):
    def setUp(self):
        parent = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-build.")))
        self.directory = parent / "calculator"
        shutil.copytree(CALCULATOR, self.directory, ignore=shutil.ignore_patterns("build"))
        self.launch("-w", self.directory / "calculator.vnw")
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - calculator")
        self.keyboard = self.program.screen.keyboard

    def build(self, outcome):
        """Builds until the last line of the Build page is `outcome`. Returns the text of the page."""
        self.varnel.choose("buildBuild")
        self.varnel.wait_for("BuildPage", "plainText", lambda text: text.rstrip().endswith(outcome), BUILD_TIME)
        self.varnel.wait_for("buildBuild", "enabled", True)
        return self.varnel.read("BuildPage", "plainText")

    def calculate(self, expression):
        calculator = self.directory / "build/Debug/calculator"
        return subprocess.run([calculator, expression], capture_output=True, text=True, check=True).stdout

    def open_file(self, name):
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", self.directory / name)
        self.wait_for_cursor(1, 1)
        self.wait_for_keyboard()

    def wait_for_cursor(self, line, column):
        self.varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col {column}")

    def go_to_the_error(self):
        """Triggers "Next Output Line" until a file is open. No file may be open before."""
        for _ in self.varnel.read("BuildPage", "plainText").splitlines():
            if self.varnel.read("viewManagerTabBar", "count"):
                return
            self.varnel.choose("editLookupNextLine")
        self.assertTrue(self.varnel.read("viewManagerTabBar", "count"), "no line led to a source file")

    def test_error_message_leads_to_the_line_and_the_repaired_file_builds(self):
        self.build("Done.")
        self.assertEqual(self.calculate("1+2*3"), "1+2*3 = 7\n")

        self.open_file("expression.cpp")
        for _ in range(EMPTY_LINE - 1):
            self.keyboard.press("Down")
        self.keyboard.type(WRONG)
        self.wait_for_cursor(EMPTY_LINE, 1 + len(WRONG))
        output = self.build("Failed. Errors: 1, warnings: 0")
        self.assertRegex(output, rf"expression\.cpp:{EMPTY_LINE}:13: error: .*sine")
        self.varnel.choose("fileClose")
        self.varnel.wait_for("viewManagerTabBar", "count", 0)

        self.go_to_the_error()
        self.wait_for_cursor(EMPTY_LINE, 13)
        self.wait_for_keyboard()
        self.keyboard.press("Ctrl+Home")
        self.wait_for_cursor(1, 1)
        self.keyboard.press("F8")  # the only message
        self.wait_for_cursor(EMPTY_LINE, 13)
        self.wait_for_keyboard()
        self.keyboard.press("Home")
        self.keyboard.press("Shift+End")
        self.wait_for_cursor(EMPTY_LINE, 1 + len(WRONG))
        self.keyboard.press("Delete")
        self.wait_for_cursor(EMPTY_LINE, 1)

        self.build("Done.")
        self.assertEqual((self.directory / "expression.cpp").read_bytes(), (CALCULATOR / "expression.cpp").read_bytes())
        self.assertEqual(self.calculate("1+2*3"), "1+2*3 = 7\n")


if __name__ == "__main__":
    unittest.main()
