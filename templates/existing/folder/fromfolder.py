"""Asks for a folder, and makes a project of the program that is built there."""
import contextlib
import os
import pathlib
import shutil
import tempfile
from xml.sax.saxutils import escape

from folderproject import Inspection, describe
from projecttemplates import file_name, file_problem, give_up
from projectwriter import readable
from varnel import app, mbOk
from varneltexts import tr


def createProject(name, template_directory, project_path):
    form = FolderForm(template_directory, project_path)
    answer = form.ask()
    has_build = os.path.exists(os.path.join(project_path, "build"))
    path, message = None, ""
    try:
        if answer:
            path = create(name, template_directory, Inspection(*answer))
    except OSError as error:
        message = file_problem(error)
    finally:  # also after a cancellation
        if not path and not has_build:
            remove_build_of_cmake(project_path)
        if not path:
            give_up(name, project_path, form.title, message)
    return path


def create(name, template_directory, inspection):
    """Returns the path of the project; None if the user cancels."""
    target = choose_target(template_directory, inspection)
    if inspection.targets and target is None:
        return None
    path = inspection.create(file_name(name), target)
    inspection.show_problems()
    return path


def remove_build_of_cmake(project_path):
    shutil.rmtree(os.path.join(project_path, "build", "cmake"), ignore_errors=True)
    with contextlib.suppress(OSError):
        os.rmdir(os.path.join(project_path, "build"))


class FolderForm:
    """The dialog that asks for the folder."""

    def __init__(self, template_directory, project_path):
        self._project_path = project_path
        self._form = app.loadUI(os.path.join(template_directory, "fromfolder.ui"))
        self._form.browseButton.onClicked = self._browse
        self._form.buttonBox.onAccepted = self._accept
        self.title = self._form.windowTitle
        with contextlib.suppress(OSError):  # the project's folder could not be created
            if os.listdir(project_path):
                self._form.folderEdit.text = project_path

    def ask(self):
        """Returns the arguments of an `Inspection`; None if the user cancels."""
        if not self._form.execute():
            return None
        return self._folder(), self._project_path, bool(self._form.askCheck.checked)

    def _folder(self):
        return os.path.abspath(os.path.expanduser(self._form.folderEdit.text.strip()))

    def _browse(self, _button):
        file = app.openFileDialog(self._form.browseButton.toolTip, self._folder() + "/", tr("All files (*)"))
        if file:
            self._form.folderEdit.text = os.path.dirname(file)

    def _accept(self, _box):
        if self._form.folderEdit.text.strip() and os.path.isdir(self._folder()):
            self._form.accept()
            return
        app.messageBox(self.title, self._form.folderEdit.toolTip, mbOk)
        self._form.folderEdit.setFocus()


def choose_target(template_directory, inspection):
    """A program or library of the folder; None if there is no choice, or if the user cancels."""
    targets = inspection.targets
    if len(targets) < 2:
        return targets[0] if targets else None
    rows = "".join(f"<item><property name='text'><string>{escape(readable(describe(each)))}</string></property></item>"
                   for each in targets)
    form = pathlib.Path(template_directory, "target.ui").read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as directory:
        file = pathlib.Path(directory, "target.ui")
        file.write_text(form.replace("<!-- targets -->", rows), encoding="utf-8")
        dialog = app.loadUI(str(file))
    dialog.targetList.currentRow = 0
    return targets[dialog.targetList.currentRow] if dialog.execute() else None
