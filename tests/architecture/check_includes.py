"""Fails when a source file includes a file of a folder that its own folder must not depend on.

The folders are those below source, branding, and `plugins` for all plug-ins. An include is checked if a file of that
name exists in one of the folders. Folders without windows must not include a widget of the toolkit either.

The sub-folders of source/framework have levels: one includes only sub-folders of its own level and of those below, and
sub-folders of one level do not include each other in a ring.
"""
import pathlib
import re
import sys

MAY_INCLUDE = {
    "base": {"interfaces"},
    "interfaces": set(),
    "project": {"base", "interfaces"},
    "widgets": {"base"},
    "workspace": {"base", "interfaces", "widgets"},
    "objectmodel": {"base", "project", "workspace", "interfaces", "widgets"},
    "framework": {"base", "project", "workspace", "objectmodel", "interfaces", "widgets"},
    "main.cpp": {"framework"},
    "runscript.cpp": {"base", "framework"},
    "branding": set(),
    "plugins": {"interfaces", "workspace"},
}
WITHOUT_WINDOWS = {"base", "interfaces", "project"}
FRAMEWORK_LEVELS = (  # from the bottom to the top
    {"plugins", "output", "dialogs"},
    {"build", "debug", "tree", "windows"},
    {"shell"},
    {"automation"},
    {"framework"},  # the files outside sub-folders: the entry function
)
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
    yield from folder_violations(root)
    yield from framework_violations(root)


def folder_violations(root):
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
            if found and not found & (MAY_INCLUDE[folder] | {folder}):
                yield f"{path.relative_to(root)}: includes {name} of {', '.join(sorted(found))}"
            if folder in WITHOUT_WINDOWS and WIDGET.match(name):
                yield f"{path.relative_to(root)}: includes {name}, but '{folder}' must not use widgets"


def framework_violations(root):
    framework = root / "source" / "framework"
    files = [path for path in sorted(framework.rglob("*")) if path.suffix in SUFFIXES]
    owners = {path.name: sub_folder_of(path, framework) for path in files}
    levels = {folder: level for level, folders in enumerate(FRAMEWORK_LEVELS) for folder in folders}
    included = {folder: set() for folder in levels}
    for path in files:
        folder = owners[path.name]
        if folder not in levels:
            yield f"{path.relative_to(root)}: '{folder}' is not in the table of levels"
            continue
        for _, name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            other = owners.get(pathlib.PurePosixPath(name).name, folder)
            if levels.get(other, -1) > levels[folder]:
                yield f"{path.relative_to(root)}: includes {name} of {other}, which is above {folder}"
            elif other != folder:
                included[folder].add(other)
    for folder in sorted(levels):
        if folder in reachable(folder, included):
            yield f"source/framework/{folder}: includes itself through other sub-folders"


def sub_folder_of(path, framework):
    parts = path.relative_to(framework).parts
    return parts[0] if len(parts) > 1 else framework.name


def reachable(start, included):
    """The folders that start includes, directly or through others."""
    found, pending = set(), [start]
    while pending:
        new = included.get(pending.pop(), set()) - found
        found |= new
        pending += new
    return found


def selftest():
    """A tree with one forbidden include of each kind gives exactly these messages."""
    import tempfile
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        texts = {
            "source/base/varnelassert.h": "",
            "source/interfaces/unknown.h": "#include <QUuid>\n",
            "source/interfaces/bad.h": '#include "varnelassert.h"\n',
            "source/project/project.h": '#include "unknown.h"\n#include "varnelassert.h"\n',
            "source/project/bad.cpp": '#include "mainwindow.h"\n#include <QTreeWidget>\n',
            "source/widgets/bad.h": '#include "project.h"\n',
            "source/framework/shell/mainwindow.h":
                '#include "project.h"\n#include <QMainWindow>\n#include "finddialog.h"\n#include "server.h"\n',
            "source/framework/automation/server.h": "",
            "source/framework/dialogs/finddialog.h": '#include "dialogs/finddialog.h"\n',
            "source/framework/dialogs/bad.cpp": '#include "shell/mainwindow.h"\n',
            "source/framework/build/build.cpp": '#include "debug.h"\n#include "finddialog.h"\n',
            "source/framework/debug/debug.h": '#include "tree/tree.h"\n',
            "source/framework/tree/tree.h": '#include "windows.h"\n',
            "source/framework/windows/windows.h": '#include "debug.h"\n',
            "source/framework/attic/older.h": '#include "mainwindow.h"\n',
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
        "source/framework/attic/older.h: 'attic' is not in the table of levels",
        "source/framework/debug: includes itself through other sub-folders",
        "source/framework/dialogs/bad.cpp: includes shell/mainwindow.h of shell, which is above dialogs",
        "source/framework/shell/mainwindow.h: includes server.h of automation, which is above shell",
        "source/framework/tree: includes itself through other sub-folders",
        "source/framework/windows: includes itself through other sub-folders",
        "source/interfaces/bad.h: includes varnelassert.h of base",
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
