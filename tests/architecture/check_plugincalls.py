"""Fails when a source file of the program calls a plug-in without the functions of source/base/callplugin.h.

A plug-in may throw exceptions and may call back, so the program must not dereference its interfaces. The check knows
the interfaces that plug-ins implement from their headers, and the names of variables and functions that are declared
with them in a file and in its header. Each of these names must not be followed by "->", and queryInterface<T>() must
not be used at all: it is for plug-ins.
"""
import pathlib
import re
import sys

# Implemented by the program
HOST = {"IBuildEvents", "IExecutionEvents", "IProject", "IProjectFolder", "IProjectFile", "IProjectProperties",
        "IQueryPluginInterface", "IHost", "IDebugReplies", "IStartProgress",
        "IValueReplies"}
GUARD = "callplugin.h"
# The root object of a library is called in the first with the library's path in the report; the second calls objects of
# the program.
EXCEPT = {"pluginmanager.cpp", "handout.h"}
FOLDERS = ("project", "workspace", "objectmodel", "framework")
CLASS = re.compile(r"^class (I\w+) : public QUnknownInterface", re.MULTILINE)
QUERY = re.compile(r"(?<![\w:.>])(?:::)?queryInterface<|->queryInterface\((?!\s*QString)[^)]*,[^)]*\)")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)


def interfaces(root):
    names = {"QUnknownInterface"}
    for header in (root / "source" / "interfaces").glob("*.h"):
        names |= set(CLASS.findall(header.read_text(encoding="utf-8")))
    return names - HOST


def declared(text, names):
    """The variables and functions of text whose type is one of the interfaces."""
    types = "|".join(sorted(names))
    found = set(re.findall(rf"\b(?:{types}) \*(?:const )?(\w+)", text))
    found |= set(re.findall(rf"InterfacePtr<(?:{types})> &?(\w+)", text))
    found |= set(re.findall(r"(?:Activity::)?\bEnvironment &?(\w+)", text))
    found |= set(re.findall(rf"auto &?(\w+)\s*=\s*(?:queryPlugin|queryInterface|shareInterface)<(?:{types})>", text))
    for name, initial in re.findall(r"auto &?(\w+)(?:\s*=\s*|\()shareInterface\(([^;]*)\)", text):
        if re.search(r"Interface\(\)|environmentOfKey|get\(\)|environment|iface|peripherals|registers", initial):
            found.add(name)
    return found


def violations(root):
    names = interfaces(root)
    for folder in FOLDERS:
        for path in sorted((root / "source" / folder).rglob("*")):
            if path.suffix not in {".cpp", ".h"} or path.name in EXCEPT:
                continue
            text = COMMENT.sub(blank, path.read_text(encoding="utf-8"))
            header = path.with_suffix(".h")
            known = text if header == path or not header.exists() else header.read_text(encoding="utf-8") + text
            yield from uses(path.relative_to(root), text, declared(known, names))


def blank(comment):
    return "\n" * comment.group().count("\n")


def uses(path, text, names):
    patterns = [QUERY, re.compile(r"(?:build|execution)Interface\(\)\s*->")]
    if names:
        patterns.append(re.compile(rf"(?<![\w.>:])(?:{'|'.join(sorted(names))})(?:\.get\(\))?\s*->"))
    for pattern in patterns:
        for match in pattern.finditer(text):
            line = text.count("\n", 0, match.start()) + 1
            yield f"{path}:{line}: calls a plug-in without {GUARD}: {match.group().strip()}"


def selftest():
    """A tree with one unguarded call of each kind gives exactly these messages."""
    import tempfile
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        texts = {
            "source/interfaces/imemory.h": "class IMemory : public QUnknownInterface\n{};\n",
            "source/interfaces/iproject.h": "class IProject : public QUnknownInterface\n{};\n",
            "source/project/good.cpp": "void f(IProject *project, IMemory *memory)\n{\n    project->name();\n"
                                       "    askPlugin<&IMemory::regions>(memory); // memory->regions()\n}\n",
            "source/project/bad.cpp": "void f(IMemory *memory)\n{\n    memory->regions();\n}\n",
            "source/framework/pane.h": "    InterfacePtr<IMemory> m_memory;\n",
            "source/framework/pane.cpp": "int x = m_memory->read();\n",
            "source/framework/chain.cpp": "\nbool b = project->buildInterface()->stop();\n",
            "source/framework/query.cpp": "const auto memory = queryInterface<IMemory>(object);\nmemory.get()->read();\n",
            "source/framework/shared.cpp": "const auto kept = shareInterface(environmentOfKey(key));\nkept->stop();\n",
        }
        for name, text in texts.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        found = sorted(violations(root))
    says = "calls a plug-in without callplugin.h:"
    expected = sorted([
        f"source/framework/chain.cpp:2: {says} buildInterface()->",
        f"source/framework/pane.cpp:1: {says} m_memory->",
        f"source/framework/query.cpp:1: {says} queryInterface<",
        f"source/framework/query.cpp:2: {says} memory.get()->",
        f"source/framework/shared.cpp:2: {says} kept->",
        f"source/project/bad.cpp:3: {says} memory->",
    ])
    if found != expected:
        sys.exit("found:\n" + "\n".join(found) + "\nexpected:\n" + "\n".join(expected))


if sys.argv[1] == "--selftest":
    selftest()
else:
    messages = list(violations(pathlib.Path(sys.argv[1])))
    if messages:
        sys.exit("\n".join(messages))
