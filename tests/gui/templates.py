"""Creates projects from the shipped templates with the keyboard, for tests and pictures."""
import pathlib

TEMPLATES = pathlib.Path(__file__).parents[2] / "templates"


def position(path):
    """How often a key is pressed to reach a template in the dialog: for its folder, and in that folder."""
    folder, template = path.split("/")
    folders = sorted(each.parent.name for each in TEMPLATES.glob("*/template.xml"))
    templates = sorted(each.parent.name for each in (TEMPLATES / folder).glob("*/template.xml"))
    return folders.index(folder), templates.index(template)


class Creator:
    """Operates the dialog by keys only. The program was started in a new home directory."""

    def __init__(self, program, keyboard):
        self._varnel, self._keyboard = program.client, keyboard
        self.directory = program.home / "Documents"
        self.has_recent = False  # the first folder is that of the templates that were used last

    def fill_in(self, template, name):
        """Opens the dialog, and chooses a template by the path of its directory, such as "native/c"."""
        self._keyboard.press("Ctrl+Shift+N")
        self._varnel.find("newProjectDialog")
        self._varnel.wait_for("newProjectDialog", "isActiveWindow", True)
        folder, number = position(template)
        for _ in range(folder + self.has_recent):
            self._keyboard.press("Down")
        self._keyboard.press("Tab")
        for _ in range(number):
            self._keyboard.press("Right")
        self._keyboard.press("Tab")
        self._keyboard.type(name)
        self._varnel.wait_for("NameLineEdit", "text", name)

    def accept(self):
        self._keyboard.press("Return")
        if not self.directory.exists():
            self._varnel.answer("Do you want to create it?", "Return")
        self._varnel.find_gone("newProjectDialog")

    def wait_for_project(self, workspace):
        self._varnel.wait_for("mainWindow", "windowTitle", f"Varnel - {workspace}", 60)
        self._varnel.wait_for("mainWindow", "isActiveWindow", True)
