"""Fails when a source file includes a file of a folder that its own folder must not depend on.

The folders are those below source, branding, and `plugins` for all plug-ins. An include is checked if a file of that
name exists in one of the folders. Folders without windows must not include a widget of the toolkit either.
"""
import pathlib
import re
import sys

MAY_INCLUDE = {
    "base": set(),
    "interfaces": set(),
    "project": {"interfaces"},
    "widgets": set(),
    "workspace": {"interfaces", "widgets"},
    "objectmodel": {"project", "workspace", "interfaces", "widgets"},
    "framework": {"project", "workspace", "objectmodel", "interfaces", "widgets"},
    "main.cpp": {"framework"},
    "branding": set(),
    "plugins": {"interfaces", "workspace"},
}
WITHOUT_WINDOWS = {"base", "interfaces", "project"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
WIDGET = re.compile(r"^(QtWidgets/)?Q(Widget|Dialog|MainWindow|Menu|Action|ToolBar|Tree\w*|List(View|Widget\w*)|Table\w*"
                    r"|Label|LineEdit|ComboBox|MessageBox|\w*Button|\w*Layout|Application|PlainTextEdit|TextEdit"
                    r"|TextBrowser|Splitter|Style\w*|AbstractItemView|AbstractScrollArea|Mdi\w*|Tab\w*|StatusBar)$")
SUFFIXES = {".h", ".cpp"}


def folder_of(path, root):
    parts = path.relative_to(root).parts
    return parts[1] if parts[0] == "source" else parts[0]


def sources(root):
    for top in ("source", "branding", "plugins"):
        for path in sorted((root / top).rglob("*")):
            if path.suffix in SUFFIXES:
                yield path


def violations(root):
    files = list(sources(root))
    owners = {}
    for path in files:
        owners.setdefault(path.name, set()).add(folder_of(path, root))
    for path in files:
        folder = folder_of(path, root)
        if folder not in MAY_INCLUDE:
            yield f"{path.relative_to(root)}: '{folder}' is not in the table of folders"
            continue
        for _, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            found = owners.get(pathlib.PurePosixPath(name).name, set())
            if found and not found & (MAY_INCLUDE[folder] | {folder, "base"}):
                yield f"{path.relative_to(root)}: includes {name} of {', '.join(sorted(found))}"
            if folder in WITHOUT_WINDOWS and WIDGET.match(name):
                yield f"{path.relative_to(root)}: includes {name}, but '{folder}' must not use widgets"


def selftest():
    """A tree with one forbidden include of each kind gives exactly these messages."""
    import tempfile
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        texts = {
            "source/base/varnelassert.h": "",
            "source/interfaces/unknown.h": "#include <QUuid>\n",
            "source/project/project.h": '#include "unknown.h"\n#include "varnelassert.h"\n',
            "source/project/bad.cpp": '#include "mainwindow.h"\n#include <QTreeWidget>\n',
            "source/widgets/bad.h": '#include "project.h"\n',
            "source/framework/shell/mainwindow.h": '#include "project.h"\n#include <QMainWindow>\n',
            "source/attic/old.h": "",
            "plugins/gdb/gdb.cpp": '#include "unknown.h"\n# include "shell/mainwindow.h"\n',
        }
        for name, text in texts.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        found = sorted(violations(root))
    expected = sorted([
        "plugins/gdb/gdb.cpp: includes shell/mainwindow.h of framework",
        "source/attic/old.h: 'attic' is not in the table of folders",
        "source/project/bad.cpp: includes QTreeWidget, but 'project' must not use widgets",
        "source/project/bad.cpp: includes mainwindow.h of framework",
        "source/widgets/bad.h: includes project.h of project",
    ])
    if found != expected:
        sys.exit("found:\n" + "\n".join(found) + "\nexpected:\n" + "\n".join(expected))


if sys.argv[1] == "--selftest":
    selftest()
else:
    messages = list(violations(pathlib.Path(sys.argv[1])))
    if messages:
        sys.exit("\n".join(messages))
