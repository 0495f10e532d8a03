"""Makes a plug-in project: fills in where the headers of Varnel and of Qt are, and a new feature."""
import os
import pathlib
import re
import subprocess
import uuid

from varnel import app, mbOk

TITLE = "Plug-in"
FILES = "plugin.cpp", "CMakeLists.txt", "demo/demo.vnp", "demo/build.sh"


def createProject(name, template_directory, project_path):
    template, target = pathlib.Path(template_directory), pathlib.Path(project_path)
    installation = pathlib.Path("/proc/self/exe").resolve().parents[1]
    headers = installation / "include" / "varnel"
    qt = paths_of_qt()
    if not (headers / "pluginfactory.h").exists():
        return refuse(f"The headers for plug-ins are not installed:\n\n{headers}\n\nInstall the package varnel-sdk.")
    if not qt:
        return refuse("The program 'qmake6' was not found. Install the package qt6-base-dev.")
    values = {"@NAME@": name, "@TARGET@": re.sub(r"\W", "_", name, flags=re.ASCII), "@FEATURE@": f"{{{uuid.uuid4()}}}",
              "@VARNEL@": str(installation / "bin" / "varnel"), "@PREFIX@": str(installation), "@SDK@": str(headers),
              "@QT@": qt["QT_INSTALL_HEADERS"], "@MOC@": os.path.join(qt["QT_HOST_LIBEXECS"], "moc")}
    (target / "demo").mkdir(parents=True, exist_ok=True)
    for file in FILES:
        write(template / file, target / file, values)
    (target / "demo" / "build.sh").chmod(0o755)
    project = target / f"{name}.vnp"
    write(template / "plugin.vnp", project, values)
    return str(project)


def refuse(message):
    app.messageBox(TITLE, message, mbOk)


def paths_of_qt():
    """The paths of the Qt for development; empty if there is none."""
    try:
        answer = subprocess.run(["qmake6", "-query"], capture_output=True, text=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError):
        return {}
    return dict(line.split(":", 1) for line in answer.splitlines() if ":" in line)


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
