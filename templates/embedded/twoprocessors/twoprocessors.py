"""Creates a workspace of two projects, whose emulated boards are connected by their second serial ports."""
import pathlib
import shutil
import zlib

from projecttemplates import file_name, file_problem, give_up
from varneltexts import tr

PROCESSORS = "asker", "answerer"
FOLDERS = "board", *PROCESSORS


def createProject(name, template_directory, project_path):
    """Copies the sources, and writes both projects and the workspace. Returns the path of the workspace."""
    template, target = pathlib.Path(template_directory), pathlib.Path(project_path)
    workspace = target / (file_name(name) + ".vnw")
    try:
        for path in (workspace, *(target / folder for folder in FOLDERS)):
            if path.exists():
                raise FileExistsError(17, "File exists", str(path))
        write_files(template, target, workspace)
    except OSError as error:  # also of the module shutil
        return give_up(name, project_path, tr("Two processors"), file_problem(error))
    return str(workspace)


def write_files(template, target, workspace):
    target.mkdir(parents=True, exist_ok=True)
    for folder in FOLDERS:
        shutil.copytree(template / folder, target / folder)
    # Messages between the boards are sent over these ports of the computer; each workspace gets its own.
    ports = [20000 + 2 * (zlib.crc32(str(target).encode()) % 6000) + number for number in range(2)]
    text = (template / "processor.vnp").read_text(encoding="utf-8")
    for processor, own, other in zip(PROCESSORS, ports, reversed(ports)):
        project = text.replace("@OWN@", str(own)).replace("@OTHER@", str(other))
        (target / processor / f"{processor}.vnp").write_text(project, encoding="utf-8")
    lines = "".join(f' <project path="{each}/{each}.vnp"/>\n' for each in PROCESSORS)
    workspace.write_text(f"<workspace>\n{lines}</workspace>\n", encoding="utf-8")
