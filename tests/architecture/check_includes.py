"""Fails when a source file includes something from a room that its own room may not see.

Rooms are the folders below source; `plugins` stands for every plug-in. An include counts when a file of that name
exists in one of the rooms. The rooms without windows must not include a widget of the toolkit either.
"""
import pathlib
import re
import sys

MAY_SEE = {
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


def room_of(path, root):
    parts = path.relative_to(root).parts
    return parts[1] if parts[0] == "source" else parts[0]


def sources(root):
    for folder in ("source", "branding", "plugins"):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in SUFFIXES:
                yield path


def violations(root):
    files = list(sources(root))
    owners = {}
    for path in files:
        owners.setdefault(path.name, set()).add(room_of(path, root))
    for path in files:
        room = room_of(path, root)
        if room not in MAY_SEE:
            yield f"{path.relative_to(root)}: '{room}' is no room of the house"
            continue
        for _, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            seen = owners.get(pathlib.PurePosixPath(name).name, set())
            if seen and not seen & (MAY_SEE[room] | {room, "base"}):
                yield f"{path.relative_to(root)}: includes {name} of {', '.join(sorted(seen))}"
            if room in WITHOUT_WINDOWS and WIDGET.match(name):
                yield f"{path.relative_to(root)}: includes {name}, but '{room}' knows no widget"


def selftest():
    """A tree with one arrow of each forbidden kind gives exactly these complaints."""
    import tempfile
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
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
        "source/attic/old.h: 'attic' is no room of the house",
        "source/project/bad.cpp: includes QTreeWidget, but 'project' knows no widget",
        "source/project/bad.cpp: includes mainwindow.h of framework",
        "source/widgets/bad.h: includes project.h of project",
    ])
    if found != expected:
        sys.exit("found:\n" + "\n".join(found) + "\nexpected:\n" + "\n".join(expected))


if sys.argv[1] == "--selftest":
    selftest()
else:
    complaints = list(violations(pathlib.Path(sys.argv[1])))
    if complaints:
        sys.exit("\n".join(complaints))
