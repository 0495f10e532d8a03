"""A base for tests of the running program under unittest."""
import os
import pathlib
import sys
import unittest

from .program import Program


class GuiTest(unittest.TestCase):
    """Starts a program for each test and ends it afterwards. A test that fails leaves a picture and the log.

    `arguments` and `settings` of the class go to Program. Pictures go to the directory that the environment variable
    VARNEL_PICTURES names, or to the current one.
    """

    arguments = ()
    settings = {}

    def setUp(self):
        self.program = Program(*self.arguments, settings=self.settings)
        self.addCleanup(self.program.close)
        self.addCleanup(self._show_failure)
        self.varnel = self.program.client

    def run(self, result=None):
        result = self.defaultTestResult() if result is None else result
        self._problems = lambda: len(result.failures) + len(result.errors)
        self._problems_before = self._problems()
        return super().run(result)

    def _show_failure(self):
        if self._problems() == self._problems_before:
            return
        picture = pathlib.Path(os.environ.get("VARNEL_PICTURES", ".")) / f"{self.id()}.png"
        self.program.screen.screenshot(picture)
        print(f"picture: {picture}\nlog:\n{self.program.log()}", file=sys.stderr)
