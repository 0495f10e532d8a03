"""What the scripts of project templates share."""

import contextlib
import os

from varnel import app, mbOk
from varneltexts import tr


def file_name(name):
    """The name of a project as the stem of its file: what createProject() returns has one dot only."""
    return name.replace(".", "_")


def give_up(name, project_path, title="", message=""):
    """Ends a createProject() that makes no project, with a message if there is one.

    The folder that the dialog has created for the project goes if it is empty, since the next attempt needs the name.
    """
    if os.path.basename(os.path.normpath(project_path)) == name:
        with contextlib.suppress(OSError):
            os.rmdir(project_path)
    if message:
        app.messageBox(title, message, mbOk)


def file_problem(error):
    """The reason for an OSError while the project was written, as a sentence."""
    if isinstance(error, FileExistsError):
        return tr("The file '{}' exists already.").format(error.filename)
    return tr("The project could not be written: {}").format(error)
