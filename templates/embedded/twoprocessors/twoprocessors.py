"""Creates a workspace of two projects, whose emulated boards are connected by their second serial ports."""
import pathlib
import shutil
import zlib

PROCESSORS = "asker", "answerer"


def createProject(name, template_directory, project_path):
    """Copies the sources, and writes both projects and the workspace. Returns the path of the workspace."""
    template, target = pathlib.Path(template_directory), pathlib.Path(project_path)
    target.mkdir(parents=True, exist_ok=True)
    for folder in ("board", *PROCESSORS):
        shutil.copytree(template / folder, target / folder)
    # Messages between the boards are sent over these ports of the computer; each workspace gets its own.
    ports = [20000 + 2 * (zlib.crc32(str(target).encode()) % 6000) + number for number in range(2)]
    text = (template / "processor.vnp").read_text(encoding="utf-8")
    for processor, own, other in zip(PROCESSORS, ports, reversed(ports)):
        project = text.replace("@OWN@", str(own)).replace("@OTHER@", str(other))
        (target / processor / f"{processor}.vnp").write_text(project, encoding="utf-8")
    lines = "".join(f' <project path="{each}/{each}.vnp"/>\n' for each in PROCESSORS)
    workspace = target / (name.replace(".", "_") + ".vnw")  # a file name with one dot only
    workspace.write_text(f"<workspace>\n{lines}</workspace>\n", encoding="utf-8")
    return str(workspace)
