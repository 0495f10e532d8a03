"""The base of tests that debug the examples."""
import pathlib
import tempfile

from debugging import Debugging, copy_of_examples
from driver import ProgramTest, Screen


class DebugTest(ProgramTest):
    workspace = None
    project = None
    settings = None

    @classmethod
    def setUpClass(cls):
        """The tests of a class share a copy of the examples, so that each program is built once."""
        parent = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="varnel-debug."))
        cls.examples = copy_of_examples(parent)

    def setUp(self):
        screen = Screen(1440, 900)
        self.addCleanup(screen.close)
        self.launch("-w", self.examples / self.workspace, settings=self.settings, screen=screen)
        name = pathlib.Path(self.workspace).stem
        self.varnel.wait_for("mainWindow", "windowTitle", f"Varnel - {name}")
        self.user = Debugging(self.program, name, self.project)
        self.addCleanup(self.check_that_all_processes_end)
        self.keyboard = screen.keyboard

    def check_that_all_processes_end(self):
        """Stops the session and waits until all child processes have ended."""
        if self.program.process.poll() is None and self.varnel.read("debugStop", "enabled"):
            self.varnel.choose("debugStop")
        self.varnel.wait_until(lambda: not self.user.children(), "the end of debuggers and emulators")

    def go_to_line(self, line):
        self.varnel.choose("viewGotoLine")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.keyboard.type(f"{line}\n")
        self.varnel.find_gone("inputDialog")
        self.varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col 1")
        self.wait_for_keyboard()

    def debug_page(self):
        return self.varnel.read("DebugPage", "plainText")

    def wait_for_local(self, name, value):
        self.varnel.wait_until(lambda: self.user.locals().get(name) == value, f"{name} = {value}")

    def wait_for_words(self, words):
        self.varnel.wait_for("DebugPage", "plainText", lambda text: words in text)
