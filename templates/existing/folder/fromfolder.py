"""Asks for a folder, and makes a project of the program that is built there."""
import contextlib
import os
import pathlib
import tempfile
from xml.sax.saxutils import escape

from folderproject import Inspection, describe
from varnel import app, mbOk

TITLE = "From an existing folder"


def createProject(name, template_directory, project_path):
    answer = FolderForm(template_directory, project_path).ask()
    target = None
    if answer:
        inspection = Inspection(*answer)
        target = choose_target(template_directory, inspection)
    if not answer or (inspection.targets and target is None):
        with contextlib.suppress(OSError):
            os.rmdir(project_path)  # only an empty one: the next attempt needs the name
        return None
    try:
        path = inspection.create(name, target)
    except FileExistsError as error:
        app.messageBox(TITLE, f"The file '{error.filename}' exists already.", mbOk)
        return None
    inspection.show_problems()
    return path


class FolderForm:
    """The dialog that asks for the folder."""

    def __init__(self, template_directory, project_path):
        self._project_path = project_path
        self._form = app.loadUI(os.path.join(template_directory, "fromfolder.ui"))
        self._form.browseButton.onClicked = self._browse
        self._form.buttonBox.onAccepted = self._accept
        if any(os.scandir(project_path)):
            self._form.folderEdit.text = project_path

    def ask(self):
        """Returns the arguments of an `Inspection`; None if the user cancels."""
        if not self._form.execute():
            return None
        return self._folder(), self._project_path, bool(self._form.askCheck.checked)

    def _folder(self):
        return os.path.abspath(os.path.expanduser(self._form.folderEdit.text.strip()))

    def _browse(self, _button):
        file = app.openFileDialog(self._form.browseButton.toolTip, self._folder() + "/", "All files (*)")
        if file:
            self._form.folderEdit.text = os.path.dirname(file)

    def _accept(self, _box):
        if self._form.folderEdit.text.strip() and os.path.isdir(self._folder()):
            self._form.accept()
            return
        app.messageBox(TITLE, self._form.folderEdit.toolTip, mbOk)
        self._form.folderEdit.setFocus()


def choose_target(template_directory, inspection):
    """A program or library of the folder; None if there is no choice, or if the user cancels."""
    targets = inspection.targets
    if len(targets) < 2:
        return targets[0] if targets else None
    rows = "".join(f"<item><property name='text'><string>{escape(describe(each))}</string></property></item>"
                   for each in targets)
    form = pathlib.Path(template_directory, "target.ui").read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as directory:
        file = pathlib.Path(directory, "target.ui")
        file.write_text(form.replace("<!-- targets -->", rows), encoding="utf-8")
        dialog = app.loadUI(str(file))
    dialog.targetList.currentRow = 0
    return targets[dialog.targetList.currentRow] if dialog.execute() else None
