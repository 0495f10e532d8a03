"""What the build system of a folder tells about its programs: make, CMake, or a compile_commands.json."""
import dataclasses
import glob
import json
import os
import re
import shutil
import tempfile

import commandlines
from backgroundprocess import run
from commandlines import Compilation, Linking
from varneltexts import tr

LARGEST_FILE = 200_000_000  # bytes
LARGEST_COPY = 500_000_000  # bytes
_MAKEFILES = ("GNUmakefile", "makefile", "Makefile")
# How commands make a header that is not in the folder yet
_MADE_HEADER = re.compile(r"(?:\bmv\s+(?:-f\s+)?\S+\s+|>\s*)([^\s;&|'\"`$]+\.(?:h|hh|hpp|hxx|inc))(?=$|[\s;&|)])")
# Makefiles of automake would run these programs to renew themselves.
_NO_RENEWAL = ("ACLOCAL=:", "AUTOCONF=:", "AUTOMAKE=:", "AUTOHEADER=:", "MAKEINFO=:")


@dataclasses.dataclass
class Target:
    """A program or a library of the folder, with all sources that it needs."""

    name: str
    is_program: bool
    compilations: list
    linking: Linking


@dataclasses.dataclass
class Findings:
    """What is known about a folder, and what is not."""

    origin: str = ""  # the build system, for the user; empty if there is none
    targets: list = dataclasses.field(default_factory=list)
    compilations: list = dataclasses.field(default_factory=list)  # of all targets
    problems: list = dataclasses.field(default_factory=list)
    is_whole: bool = True  # False if objects are linked of which it is not known how they are compiled


def read_build_system(folder, ask, build_directory):
    """The `Findings` of the first build system that gives any. `ask` allows to run make and CMake.

    CMake writes into `build_directory`, which is created then.
    """
    found = read_cmake_replies(folder) or read_compile_commands(folder)
    problems = []
    has_cmake = os.path.exists(os.path.join(folder, "CMakeLists.txt"))
    has_make = any(os.path.exists(os.path.join(folder, name)) for name in _MAKEFILES)
    if not found and has_cmake and ask:
        found = run_cmake(folder, build_directory, problems)
    if not found and has_make and ask:
        found = run_make(folder, problems)
    if found:
        found.problems[:0] = problems
        return found
    if not ask and (has_cmake or has_make):
        problems.append(tr("The {} of the folder was not read, since that would run programs.").format(
            "CMakeLists.txt" if has_cmake else "Makefile"))
    if not os.path.exists(os.path.join(folder, "Makefile")) and os.path.exists(os.path.join(folder, "configure")):
        problems.append(tr("The folder has a script 'configure' but no Makefile. Run it in a terminal, and create the "
                           "project again to take over its settings."))
    return Findings(problems=problems)


def _read_json(path):
    try:
        if os.path.getsize(path) > LARGEST_FILE:
            return None
        with open(path, encoding="utf-8", errors="replace") as file:
            return json.load(file)
    except (OSError, ValueError, RecursionError):
        return None


# compile_commands.json ------------------------------------------------------

def read_compile_commands(folder):
    """`Findings` of the compile_commands.json in the folder or in a directory below it; None if there is none."""
    escaped = glob.escape(folder)
    for pattern in ("compile_commands.json", "*/compile_commands.json"):
        for path in sorted(glob.glob(os.path.join(escaped, pattern))):
            found = Findings(os.path.relpath(path, folder))
            entries = _read_json(path)
            for entry in entries if isinstance(entries, list) else ():
                found.compilations += _compilations_of(entry)
            if found.compilations:
                return found
    return None


def _compilations_of(entry):
    if not isinstance(entry, dict) or not isinstance(entry.get("directory"), str):
        return []
    directory, words, line = entry["directory"], entry.get("arguments"), entry.get("command")
    if isinstance(words, list) and all(isinstance(word, str) for word in words):
        commands = [(directory, words)]
    elif isinstance(line, str):
        commands = commandlines.commands_of(line, directory)
    else:
        return []
    found = [each for where, command in commands for each in commandlines.read_command(command, where)]
    return [each for each in found if isinstance(each, Compilation)]


# make -----------------------------------------------------------------------

def run_make(folder, problems):
    """`Findings` of the commands that make would run; None if there are no compilations among them."""
    output, error = _dry_run(folder)
    found = read_make_output(output, folder)
    if not found.is_whole:
        found = _run_make_in_copy(folder) or found
    if found.compilations:
        return found
    reason = error.strip().splitlines()
    problems.append(tr("make shows no compiler commands: {}").format(reason[-1]) if reason
                    else tr("make shows no compiler commands."))
    return None


def _dry_run(directory):
    return run(["make", "-n", "-w", "-k", "V=1", *_NO_RENEWAL], directory)


def _run_make_in_copy(folder):
    """`Findings` of a folder that was built before: in a copy without the objects, which make shows how to make."""
    with tempfile.TemporaryDirectory() as directory:
        copy = os.path.join(os.path.realpath(directory), "copy")
        if not _copy_without_objects(folder, copy):
            return None
        output, _ = _dry_run(copy)
        found = read_make_output(output.replace(copy, folder), folder)
    return found if found.compilations else None


def _copy_without_objects(folder, copy):
    """False if the folder is too large, or cannot be copied."""
    size = 0
    for directory, _, files in os.walk(folder):
        size += sum(os.path.getsize(os.path.join(directory, each)) for each in files
                    if os.path.isfile(os.path.join(directory, each)))
        if size > LARGEST_COPY:
            return False
    try:
        shutil.copytree(folder, copy, symlinks=True, ignore=shutil.ignore_patterns("*.o", "*.lo", "*.obj", ".git"))
    except (OSError, shutil.Error):
        return False
    return True


def read_make_output(output, folder):
    """`Findings` of the output of `make -n -w`."""
    found = Findings("Makefile")
    directories, linkings, headers = [folder], [], {}
    for line in re.sub(r"\\\n", " ", output).splitlines():
        if entered := re.match(r"\S*make(?:\[\d+\])?: Entering directory '(.*)'$", line):
            directories.append(entered[1])
        elif re.match(r"\S*make(?:\[\d+\])?: Leaving directory '", line):
            if len(directories) > 1:
                directories.pop()
        else:
            made = (os.path.normpath(os.path.join(directories[-1], each)) for each in _MADE_HEADER.findall(line))
            headers.update(dict.fromkeys(each for each in made if not os.path.exists(each)))
            for directory, words in commandlines.commands_of(line, directories[-1]):
                for each in commandlines.read_command(words, directory):
                    (linkings if isinstance(each, Linking) else found.compilations).append(each)
    found.compilations = list({(each.object, each.source): each for each in found.compilations}.values())
    found.targets = _targets(linkings, found.compilations)
    known = {_key(each.object) for each in found.compilations}
    found.is_whole = bool(found.compilations) and all(
        _key(each) in known for linking in linkings for each in linking.inputs if each.endswith((".o", ".lo", ".obj")))
    if headers:
        found.problems.append(tr("These headers are generated by the build of the folder, but do not exist yet. Run its "
                                 "build once: {}").format(", ".join(headers)))
    return found


def _targets(linkings, compilations):
    """Programs first, each with the sources of the libraries of the folder that it is linked with."""
    makers = {_key(each.output): each for each in linkings}
    by_object = {_key(each.object): each for each in compilations}
    targets = []
    for linking in makers.values():
        sources, libraries = _sources_of(linking, makers, by_object)
        if sources:
            targets.append(Target(os.path.splitext(os.path.basename(linking.output))[0], linking.is_program, sources,
                                  dataclasses.replace(linking, inputs=libraries)))
    return sorted(targets, key=lambda target: not target.is_program)


def _key(path):
    """Objects and libraries of libtool have further names."""
    stem, suffix = os.path.splitext(path)
    return stem + {".lo": ".o", ".la": ".a"}.get(suffix, suffix)


def _sources_of(linking, makers, by_object):
    """The compilations that a program needs, and the finished libraries."""
    sources, libraries, seen, waiting = {}, [], set(), list(linking.inputs)
    while waiting:
        path = waiting.pop(0)
        key = _key(path)
        if key in seen:
            continue
        seen.add(key)
        if key in by_object:
            sources[key] = by_object[key]
        elif key in makers:
            waiting += makers[key].inputs
            linking.libraries += [each for each in makers[key].libraries if each not in linking.libraries]
        else:
            libraries.append(path)
    return list(sources.values()), libraries


# CMake ----------------------------------------------------------------------

def run_cmake(folder, build_directory, problems):
    """Configures the folder's project in `build_directory`, and returns its `Findings`; None if that fails."""
    query = os.path.join(build_directory, ".cmake/api/v1/query")
    os.makedirs(query, exist_ok=True)
    for name in ("codemodel-v2", "toolchains-v1"):
        with open(os.path.join(query, name), "w", encoding="utf-8"):
            pass
    _, error = run(["cmake", "-S", folder, "-B", build_directory, "-G", "Ninja"], folder)
    found = read_reply(os.path.join(build_directory, ".cmake/api/v1/reply"))
    if not found:
        reason = [line for line in error.splitlines() if line.strip()]
        problems.append(tr("CMake could not read the folder: {}").format(" ".join(reason[:3])) if reason
                        else tr("CMake could not read the folder."))
    return found


def read_cmake_replies(folder):
    """`Findings` of an answer that CMake has left in a build directory of the folder; None if there is none."""
    escaped = glob.escape(folder)
    for pattern in (".cmake/api/v1/reply", "*/.cmake/api/v1/reply"):
        for directory in sorted(glob.glob(os.path.join(escaped, pattern))):
            if found := read_reply(directory):
                return found
    return None


def read_reply(directory):
    """`Findings` of an answer of CMake's file API; None if there is none, or if it is damaged."""
    for path in sorted(glob.glob(os.path.join(glob.escape(directory), "codemodel-v2-*.json")), reverse=True):
        try:
            return _CodeModel(_read_json(path), directory).findings()
        except (AttributeError, IndexError, KeyError, TypeError):  # not what CMake writes
            continue
    return None


class _CodeModel:
    """An object "codemodel" of CMake's file API, with the objects "target" that it refers to."""

    def __init__(self, model, directory):
        self._top, self._build = model["paths"]["source"], model["paths"]["build"]
        configuration = model["configurations"][0]
        self._targets = {}
        for each in configuration["targets"]:
            if target := _read_json(os.path.join(directory, os.path.basename(each["jsonFile"]))):
                self._targets[each["id"]] = target
        self._compilers = self._read_compilers(directory)
        self._problems = []

    def _read_compilers(self, directory):
        for path in glob.glob(os.path.join(glob.escape(directory), "toolchains-v1-*.json")):
            chains = (_read_json(path) or {}).get("toolchains", [])
            return {each["language"]: each["compiler"].get("path", "") for each in chains}
        return {}

    def findings(self):
        found = Findings("CMake")
        for identity, target in self._targets.items():
            kind = target.get("type", "")
            if not kind.endswith(("EXECUTABLE", "LIBRARY")) or kind in ("OBJECT_LIBRARY", "INTERFACE_LIBRARY"):
                continue
            compilations = {each.source: each for one in self._with_libraries(identity) for each in self._sources(one)}
            if compilations:
                found.targets.append(Target(target["name"], kind == "EXECUTABLE", list(compilations.values()),
                                            self._linking(target)))
                found.compilations += compilations.values()
        found.targets.sort(key=lambda target: not target.is_program)
        found.problems = list(dict.fromkeys(self._problems))
        return found if found.compilations else None

    def _with_libraries(self, identity):
        """A target, and the libraries that it depends on."""
        seen, waiting = [], [identity]
        while waiting:
            current = waiting.pop(0)
            target = self._targets.get(current)
            if target is None or current in seen or (seen and not target["type"].endswith("LIBRARY")):
                continue
            seen.append(current)
            waiting += [each["id"] for each in target.get("dependencies", [])]
        return [self._targets[each] for each in seen]

    def _sources(self, target):
        groups = target.get("compileGroups", [])
        for source in target.get("sources", []):
            if "compileGroupIndex" not in source:
                continue
            path = os.path.normpath(os.path.join(self._top, source["path"]))
            if not os.path.exists(path):
                self._problems.append(
                    tr("{} is generated by the build of the folder, and does not exist yet.").format(path))
                continue
            yield self._compilation(path, groups[source["compileGroupIndex"]])

    def _compilation(self, path, group):
        compiler = self._compilers.get(group["language"]) or ("g++" if group["language"] == "CXX" else "gcc")
        line = " ".join(each["fragment"] for each in group.get("compileCommandFragments", []))
        commands = list(commandlines.commands_of(f"{compiler} {line} -c x.c", self._build))
        found = commandlines.read_command(commands[0][1], self._build) if commands else []
        compilation = found[0] if found else Compilation("", compiler=compiler)
        compilation.source, compilation.object = path, path + ".o"
        compilation.defines += [each["define"] for each in group.get("defines", [])]
        for each in group.get("includes", []):
            if each.get("isSystem"):
                compilation.flags += ["-isystem", each["path"]]
            else:
                compilation.includes.append(each["path"])
        return compilation

    def _linking(self, target):
        output = target.get("artifacts", [{"path": target["name"]}])[0]["path"]
        fragments = target.get("link", {}).get("commandFragments", [])
        line = " ".join(each["fragment"] for each in fragments)
        own = {artifact["path"] for each in self._targets.values() for artifact in each.get("artifacts", [])}
        commands = list(commandlines.commands_of(f"gcc x.o {line} -o {target['name']}", self._build))
        found = commandlines.read_command(commands[0][1], self._build) if commands else []
        linking = found[-1] if found else Linking("", "gcc")
        linking.output = os.path.join(self._build, output)
        made = {os.path.normpath(os.path.join(self._build, each)) for each in own}
        made.add(os.path.join(self._build, "x.o"))
        linking.inputs = [each for each in linking.inputs if os.path.normpath(each) not in made]
        return linking
