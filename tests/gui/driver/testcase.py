"""Base classes for tests of the running program with unittest."""
import os
import pathlib
import sys
import unittest

from .program import Program


class ProgramTest(unittest.TestCase):
    """Tests that start programs themselves, one after the other; they are ended after the test.

    A test that fails saves a screenshot and prints the log of the last program. The environment variable
    VARNEL_PICTURES is the directory of screenshots; the default is the current one.
    """

    def launch(self, *arguments, **options):
        """Starts a program as `self.program`, with `self.varnel` as its client."""
        self.program = Program(*arguments, **options)
        self.addCleanup(self.program.close)
        self.addCleanup(self._show_failure, self.program)
        self.varnel = self.program.client

    def wait_for_keyboard(self):
        """Waits until the main window has the keyboard focus."""
        self.varnel.wait_for("mainWindow", "isActiveWindow", True)

    def run(self, result=None):
        result = self.defaultTestResult() if result is None else result
        self._problems = lambda: len(result.failures) + len(result.errors)
        self._problems_before = self._problems()
        return super().run(result)

    def _show_failure(self, program):
        if self._problems() == self._problems_before or program is not self.program:
            return
        picture = pathlib.Path(os.environ.get("VARNEL_PICTURES", ".")) / f"{self.id()}.png"
        program.screen.screenshot(picture)
        print(f"picture: {picture}\nlog:\n{program.log()}", file=sys.stderr)


class GuiTest(ProgramTest):
    """Starts a program for each test, with `arguments` and `settings` of the class."""

    arguments = ()
    settings = {}

    def setUp(self):
        self.launch(*self.arguments, settings=self.settings)
