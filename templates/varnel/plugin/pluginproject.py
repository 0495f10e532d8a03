"""Makes a plug-in project: fills in where the headers of Varnel and of Qt are, and a new feature."""
import os
import pathlib
import re
import subprocess
import uuid

from projecttemplates import file_name, file_problem, give_up
from varneltexts import tr

TIME_LIMIT = 5  # seconds
FILES = "plugin.cpp", "CMakeLists.txt", "demo/demo.vnp", "demo/build.sh"
INSTALLATION = pathlib.Path("/proc/self/exe").resolve().parents[1]


def createProject(name, template_directory, project_path):
    title = tr("Plug-in")
    headers = INSTALLATION / "include" / "varnel"
    if not (headers / "pluginfactory.h").exists():
        return give_up(name, project_path, title, tr("The headers for plug-ins are not installed:\n\n{}\n\n"
                                                     "Install the package varnel-sdk.").format(headers))
    qt = paths_of_qt()
    if not qt:
        return give_up(name, project_path, title,
                       tr("The program 'qmake6' was not found. Install the package qt6-base-dev."))
    try:
        return write_project(name, pathlib.Path(template_directory), pathlib.Path(project_path), headers, qt)
    except OSError as error:
        return give_up(name, project_path, title, file_problem(error))


def write_project(name, template, target, headers, qt):
    values = {"@NAME@": name, "@TARGET@": re.sub(r"\W", "_", name, flags=re.ASCII), "@FEATURE@": f"{{{uuid.uuid4()}}}",
              "@VARNEL@": str(INSTALLATION / "bin" / "varnel"), "@PREFIX@": str(INSTALLATION), "@SDK@": str(headers),
              "@QT@": qt["QT_INSTALL_HEADERS"], "@MOC@": os.path.join(qt["QT_HOST_LIBEXECS"], "moc")}
    project = target / f"{file_name(name)}.vnp"
    for path in (project, *(target / file for file in FILES)):
        if path.exists():
            raise FileExistsError(17, "File exists", str(path))
    (target / "demo").mkdir(parents=True, exist_ok=True)
    for file in FILES:
        write(template / file, target / file, values)
    (target / "demo" / "build.sh").chmod(0o755)
    write(template / "plugin.vnp", project, values)
    return str(project)


def paths_of_qt():
    """The paths of the Qt for development; empty if there is none."""
    try:
        answer = subprocess.run(["qmake6", "-query"], capture_output=True, text=True, check=True,
                                timeout=TIME_LIMIT).stdout
    except (OSError, subprocess.SubprocessError):
        return {}
    paths = dict(line.split(":", 1) for line in answer.splitlines() if ":" in line)
    return paths if {"QT_INSTALL_HEADERS", "QT_HOST_LIBEXECS"} <= paths.keys() else {}


def write(source, target, values):
    """A copy with values, which are quoted as the language of the file needs it. Raises FileExistsError."""
    quoted = {".vnp": in_xml, ".cpp": in_cpp}.get(target.suffix, str)
    text = source.read_text(encoding="utf-8")
    for key, value in values.items():
        text = text.replace(key, quoted(value))
    with target.open("x", encoding="utf-8") as file:
        file.write(text)


def in_cpp(text):
    return text.replace("\\", "\\\\").replace('"', '\\"')


def in_xml(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace('"', "&quot;")
