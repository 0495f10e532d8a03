"""A base for tests of the running program under unittest."""
import os
import pathlib
import sys
import unittest

from .program import Program


class ProgramTest(unittest.TestCase):
    """Tests that start programs themselves, one after the other, and have them ended afterwards.

    A test that fails leaves a picture and the log of the last one. Pictures go to the directory that the environment
    variable VARNEL_PICTURES names, or to the current one.
    """

    def launch(self, *arguments, **options):
        """Starts a program, which is `self.program` from now on, with `self.varnel` to drive it."""
        self.program = Program(*arguments, **options)
        self.addCleanup(self.program.close)
        self.addCleanup(self._show_failure, self.program)
        self.varnel = self.program.client

    def wait_for_keyboard(self):
        """Waits until keys of the screen's keyboard reach the main window."""
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
    """Starts a program for each test. `arguments` and `settings` of the class go to Program."""

    arguments = ()
    settings = {}

    def setUp(self):
        self.launch(*self.arguments, settings=self.settings)
