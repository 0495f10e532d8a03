"""Fails when a source file of the program calls a plug-in without the functions of source/base/callplugin.h.

A plug-in may throw exceptions and may call back, so the program must not dereference its interfaces. The check knows
the interfaces that plug-ins implement, and their functions, from their headers:

- A file can call a function only if it includes the header, directly or not. In such a file no object may be followed
  by "->" or "." and the name of the function, however the object was got. Objects of the program that have functions of
  the same name are listed below.
- Names of variables and functions that are declared with an interface in a file and in its header must not be followed
  by "->". This includes the objects of that list.
- queryInterface<T>() must not be used at all: it is for plug-ins.
"""
import functools
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
# Objects of the program in files that include an interface with a function of the same name: by file,
# "object.function", with "()" for an object that a function returns. Timers and clocks are known by their names.
OWN = {
    "debugcontrol.h": {
        "m_run.pause", "m_run.restart", "m_run.run", "m_run.stepInto", "m_run.stepOver", "m_run.stop",
        "m_run.wakeUp"},
    "filefindcommands.cpp": {"m_searcher.start", "m_searcher.stop"},
    "ideapplication.cpp": {"event.type", "m_pluginManager.create", "m_pluginManager.featureList"},
    "livewindow.cpp": {"globalInstance().start"},
    "mainwindow.cpp": {"fileFindCommands.stop"},
    "memorywindow.cpp": {"m_access.read", "m_access.readLive", "m_access.write"},
    "peripheralwidget.cpp": {
        "fieldRow.value", "item.value", "m_fields.value", "m_states.value", "owner.value", "row.setValue",
        "row.value", "section.setValue"},
    "peripheralwidgettooltip.cpp": {"row.description"},
    "pluginbinder.cpp": {"extensionDocks().value", "project.name"},
    "plugindocuments.cpp": {"plugins.create"},
    "project.cpp": {"file.setProject", "folder.setProject"},
    "projectcommands.cpp": {"m_fileCheck.run"},
    "registerwidget.cpp": {
        "group.setValue", "item.value", "m_formats.value", "m_groups.value", "row.setValue", "row.value",
        "words.value"},
    "runcontrol.cpp": {"m_session.start"},
    "scriptdebugger.cpp": {"model().restart", "model().stop"},
    "scriptmemorytype.cpp": {"memory.read", "memory.write"},
    "scriptperipherals.cpp": {"peripheralsOf().value", "self.setValue"},
    "scriptprocessortype.cpp": {
        "processor.breakpoints", "processor.currentLocation", "processor.evaluate", "processor.processorStatus",
        "processor.programStatus"},
    "scriptregisters.cpp": {"self.setValue"},
    "toolscommands.cpp": {"m_tools.stop"},
    "watchwindow.cpp": {"m_members.assign"},
    "windowmenus.cpp": {"view.title"},
    "windowparts.cpp": {"formats.apply", "ui.title"},
}
NEWLINE = "\n"
TIMER = re.compile(r"(?:\w*(?:[tT]imer|[cC]lock|[tT]ime)|since|m_since\w+)\.(?:start|stop)")
CLASS = re.compile(r"^class (I\w+) : public QUnknownInterface", re.MULTILINE)
QUERY = re.compile(r"(?<![\w:.>])(?:::)?queryInterface<|->queryInterface\((?!\s*QString)[^)]*,[^)]*\)")
BODY = re.compile(r"^class (I\w+) : public QUnknownInterface\s*\{(.*?)^\};", re.MULTILINE | re.DOTALL)
FUNCTION = re.compile(r"virtual [^;]*?[ *&](\w+)\(")
INCLUDE = re.compile(r'#include "(?:[^"/]*/)*([^"/]+)"')
USE = re.compile(r"\s*(?:->|\.)(\w+)\(")
RECEIVER = re.compile(r"(?:(\w+)(\([^()]*\))?|.)$")
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)


def interfaces(root):
    names = {"QUnknownInterface"}
    for header in (root / "source" / "interfaces").glob("*.h"):
        names |= set(CLASS.findall(header.read_text(encoding="utf-8")))
    return names - HOST


def functions(root):
    """The names of the functions of plug-ins, by the name of the header."""
    found = {}
    for header in (root / "source" / "interfaces").glob("*.h"):
        text = COMMENT.sub(blank, header.read_text(encoding="utf-8"))
        for interface, body in BODY.findall(text):
            if interface not in HOST:
                found.setdefault(header.name, set()).update(FUNCTION.findall(body))
    return found


class Includes:
    """The headers that a file of the source includes, directly or not."""

    def __init__(self, root):
        files = [path for path in (root / "source").rglob("*") if path.suffix in {".cpp", ".h"}]
        self._direct = {path.name: set(INCLUDE.findall(path.read_text(encoding="utf-8"))) for path in files}

    @functools.lru_cache(maxsize=None)
    def of(self, name):
        found, rest = set(), [name]
        while rest:
            for header in self._direct.get(rest.pop(), set()) - found:
                found.add(header)
                rest.append(header)
        return found


def called(path, text, names):
    """The lines and texts of uses of functions with these names, without those of objects of the program."""
    for match in USE.finditer(text):
        if match.group(1) not in names:
            continue
        receiver = RECEIVER.search(text, max(0, match.start() - 200), match.start())
        name, arguments = receiver.groups() if receiver else (None, None)
        use = f"{name}{'()' if arguments else ''}.{match.group(1)}"
        if use not in OWN.get(path.name, set()) and not TIMER.fullmatch(use):
            said = (receiver.group() if receiver else "") + match.group().lstrip()
            yield line_of(text, match.end()), said


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
    of_headers = functions(root)
    includes = Includes(root)
    for folder in FOLDERS:
        for path in sorted((root / "source" / folder).rglob("*")):
            if path.suffix not in {".cpp", ".h"} or path.name in EXCEPT:
                continue
            text = COMMENT.sub(blank, path.read_text(encoding="utf-8"))
            header = path.with_suffix(".h")
            known = text if header == path or not header.exists() else header.read_text(encoding="utf-8") + text
            found = {(line, said) for line, said in uses(text, declared(known, names))}
            callable_here = set().union(*(of_headers.get(name, set()) for name in includes.of(path.name)))
            found |= set(called(path, text, callable_here))
            for line, said in sorted(found):
                yield f"{path.relative_to(root)}:{line}: calls a plug-in without {GUARD}: {said.strip()}"


def blank(comment):
    return "\n" * comment.group().count("\n")


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def uses(text, names):
    patterns = [QUERY, re.compile(r"(?:build|execution)Interface\(\)\s*->(?=\w+\()")]
    if names:
        patterns.append(re.compile(rf"(?<![\w.>:])(?:{'|'.join(sorted(names))})(?:\.get\(\))?\s*->"))
    for pattern in patterns:
        for match in pattern.finditer(text):
            yield line_of(text, match.start()), match.group()


def selftest():
    """A tree with one unguarded call of each kind gives exactly these messages."""
    import tempfile
    includes = '#include "activity.h"\n#include "imemory.h"\n#include "ihost.h"\n'
    good = [
        "askPlugin<&IMemory::regions>(memory); // memory->regions()",
        "project->name();",
        "m_changeTimer.start();",
        "runPlugin<&IExecutionEnvironment::stop>(m_activity.currentEnvironment());",
        "activity.environments().regions;",
    ]
    bad = {
        "memory->regions();": "memory->regions(",
        "m_memory->read();": "m_memory->",
        "project->buildInterface()->stop();": "buildInterface()->",
        "queryInterface<IMemory>(object);": "queryInterface<",
        "memory.get()->read();": "get()->read(",
        "a.currentEnvironment()->stop();": "currentEnvironment()->stop(",
        "m_activity.currentEnvironment()->run();": "currentEnvironment()->run(",
        "environmentOfKey(k)->stop();": "environmentOfKey(k)->stop(",
        "environmentOfKey(keyOf(k))->stop();": ")->stop(",
        "for (const auto &e : a.environments()) e->pause();": "e->pause(",
        "v[0]->regions();": "]->regions(",
        "for (const auto &m : memories) m->regions();": "m->regions(",
        "(*memory).regions();": ").regions(",
        "queryPlugin<IMemory>(x)->regions();": ")->regions(",
        "auto m = std::move(v.front()); m->regions();": "m->regions(",
        "pages[1]->title();": "]->title(",
        "page.owner->title();": "owner->title(",
        "page\n    .owner->title();": "owner->title(",
    }
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        texts = {
            "source/interfaces/imemory.h": "class IMemory : public QUnknownInterface\n{\npublic:\n"
                                           "    virtual QList<int> regions() = 0; // the memory\n"
                                           "    virtual int read() = 0;\n};\n",
            "source/interfaces/iproject.h": "class IProject : public QUnknownInterface\n{\n"
                                            "    virtual QString name() = 0;\n};\n",
            "source/interfaces/ihost.h": "class IOptionsPage : public QUnknownInterface\n{\n"
                                         "    virtual QString title() = 0;\n};\n"
                                         "class IHost : public QUnknownInterface\n{\n"
                                         "    virtual void output() = 0;\n};\n",
            "source/interfaces/iexecutionenvironment.h": "class IExecutionEnvironment : public QUnknownInterface\n{\n"
                                                         "    virtual void run() = 0;\n    virtual void pause() = 0;\n"
                                                         "    virtual bool start(bool) = 0;\n"
                                                         "    virtual void stop() = 0;\n};\n",
            "source/project/activity.h": '#include "iexecutionenvironment.h"\n',
            "source/project/pane.h": "    InterfacePtr<IMemory> m_memory;\n",
            "source/project/free.cpp": "list.regions();\nview->title();\n", # includes no interface
            "source/project/good.cpp": includes + "\n".join(good) + "\n",
            "source/framework/pane.h": "    InterfacePtr<IMemory> m_memory;\n",
            "source/framework/pane.cpp": "int x = m_memory->read();\n",
        }
        texts |= {f"source/project/bad{i}.cpp": includes + '#include "pane.h"\n' + text + "\n"
                  for i, text in enumerate(bad)}
        for name, text in texts.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        found = list(violations(root))
    says = "calls a plug-in without callplugin.h:"
    problems = []
    for i, (text, said) in enumerate(bad.items()):
        place = f"source/project/bad{i}.cpp:{5 + text.count(NEWLINE)}: {says} "
        if not any(line.startswith(place) and said in line for line in found):
            problems.append(text)
    problems += [line for line in found if not line.startswith("source/project/bad")]
    if f"source/framework/pane.cpp:1: {says} m_memory->" in problems:
        problems.remove(f"source/framework/pane.cpp:1: {says} m_memory->") # by the declaration in its header
    else:
        problems.append("pane.cpp")
    if problems:
        sys.exit("not as expected:\n" + "\n".join(problems) + "\nfound:\n" + "\n".join(found))


if sys.argv[1] == "--selftest":
    selftest()
else:
    messages = list(violations(pathlib.Path(sys.argv[1])))
    if messages:
        sys.exit("\n".join(messages))
