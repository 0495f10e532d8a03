"""Writes the project file of an existing program."""
import collections
import os
import re
from xml.etree import ElementTree

import commandlines
from varneltexts import tr

_TOOL_CHAINS = {  # by the prefix of the compiler: name and feature of the build environment
    "": ("GNU Host", "{6bca5f2f-17de-4d7e-b2dd-e693ae57731c}"),
    "arm-none-eabi-": ("GNU Arm", "{4a4905aa-65c2-400d-a8cd-89d2955cfc30}"),
    "avr-": ("GNU AVR", "{8f5eeaa5-7523-4d75-a632-bda646b40d4a}"),
    "riscv64-unknown-elf-": ("GNU RISC-V", "{bd60aff8-4b70-4014-b42e-e4075d27866d}")}
_DEBUGGER = "{27aa5f2d-ef64-4eab-9fda-9693e2e6117f}"
_MATCH = r"(?:In file included from | +from |.*ld: [^ ]*\.o:|.*ld: |)(file):(line)[:,]"
_STANDARDS = {"c": ("buildCStandard", ["c99", "gnu99", "c11", "gnu11", "c17", "gnu17"]),
              "cpp": ("buildCppStandard", ["c++11", "c++14", "c++17", "gnu++17", "c++20", "gnu++20"])}
_FLAG_KEYS = {"c": "buildCFlags", "cpp": "buildCppFlags", "asm": "buildAssemblerFlags"}
_SAME_STANDARDS = {"c18": "c17", "gnu18": "gnu17", "c++0x": "c++11", "c++1y": "c++14", "c++1z": "c++17",
                   "c++2a": "c++20", "gnu++2a": "gnu++20", "gnu++1z": "gnu++17"}
_CONFIGURATIONS = "Debug", "Release"
_NOTHING = {"buildDefines": ";", "buildIncludes": ";"}  # what replaces a list by an empty one; flags: "-pipe"


class ProjectWriter:
    """Collects the settings of a project and writes them.

    Settings that most files have become options of the project, and the others options of the files.
    """

    def __init__(self, path, name):
        self._directory = os.path.dirname(os.path.abspath(path))
        self._path = path
        self._name = name
        self.problems = []
        self._settings = {}  # the options of the project
        self._compilations = []
        self._headers, self._scripts, self._excluded = [], [], set()
        self._optimisation = "2"
        self._compiler = "gcc"

    def add(self, compilations, headers=(), scripts=(), excluded=()):
        """`excluded` are those of the sources that are not built."""
        sources = {each.source: each for each in compilations}
        unstorable = [each for each in (*sources, *headers, *scripts) if readable(each) != each]
        self._compilations = [each for path, each in sources.items() if path not in unstorable]
        self._headers, self._scripts = ([each for each in paths if each not in unstorable] for paths in (headers, scripts))
        self._excluded = set(excluded)
        if unstorable:
            self.problems.append(tr("These files have names that a project cannot store: {}").format(
                ", ".join(map(readable, unstorable))))
        if self._compilations:
            self._compiler = _most_common([each.compiler for each in self._compilations])
        if any(commandlines.is_clang(each.compiler) for each in self._compilations):
            self.problems.append(tr("The compiler is clang. The project uses gcc, which does not have all of its flags."))

    def set_linking(self, linking, is_program):
        settings = {"buildLinkerScript": self._relative(linking.script) if linking.script else "",
                    "buildLibraries": ";".join(self._libraries(linking)),
                    "buildLibraryDirectories": ";".join(self._relative(each) for each in linking.directories),
                    "buildLinkFlags": _joined(_without_repetitions(each for each in linking.flags
                                                                   if not each.startswith("-m")))}
        if not is_program:
            settings = {"buildTargetType": "library"}
            if linking.compiler:
                self.problems.append(tr("The folder makes a shared library. The project makes a static one."))
        self._settings.update({key: value for key, value in settings.items() if value})

    def _libraries(self, linking):
        """Those of the folder's build that the project cannot make are used as files."""
        missing = [each for each in linking.inputs if not os.path.exists(each)]
        if missing:
            self.problems.append(tr("These files are made by the build of the folder, but do not exist yet: {}").format(
                ", ".join(missing)))
        files = [self._relative(each) for each in linking.inputs if each not in missing]
        return _without_repetitions(files + linking.libraries)

    def set_output_name(self, name):
        if name != self._name:
            self._settings["buildOutputName"] = name

    @property
    def is_cross(self):
        return bool(commandlines.tool_prefix(self._compiler))

    def set_tool_chain(self, prefix):
        """For sources whose compiler is not known."""
        self._compiler = prefix + "gcc"

    def write(self):
        """Returns the path. Raises FileExistsError if the file exists."""
        self._read_common_settings()
        root = ElementTree.Element("project", self._environments())
        for name, suffixes, files in (("Sources", ["c", "cpp", "cc", "cxx", "S", "s", "asm"], self._compilations),
                                      ("Headers", ["h", "hh", "hpp", "hxx"], self._headers),
                                      ("Linker scripts", ["ld"], self._scripts)):
            folder = ElementTree.SubElement(root, "folder", name=name)
            for suffix in suffixes:
                ElementTree.SubElement(folder, "extension", name=suffix)
            for file in files:
                self._write_file(folder, file)
        self._write_properties(root)
        ElementTree.indent(root, " ")
        text = ElementTree.tostring(root, encoding="unicode") + "\n"
        _write_new(self._path, text.encode("utf-8"))
        return self._path

    def _environments(self):
        prefix = commandlines.tool_prefix(self._compiler)
        name, feature = _TOOL_CHAINS.get(prefix, _TOOL_CHAINS[""])
        if prefix not in _TOOL_CHAINS:
            self._settings["buildToolPrefix"] = prefix
        return {"buildenvironment": feature, "buildenvironmentname": name, "buildenvironmentoption": "",
                "executionenvironment": _DEBUGGER, "executionenvironmentname": "GDB",
                "executionenvironmentoption": "auto" if prefix else "native"}

    # Settings

    def _read_common_settings(self):
        known = self._compilations
        if not known:
            return
        self._settings["buildMachine"] = _joined(flag for flag in known[0].machine
                                                 if all(flag in each.machine for each in known))
        preprocessed = [each for each in known if each.language != "asm"] or known
        self._settings["buildDefines"] = _most_common([self._defines(each) for each in preprocessed])
        self._settings["buildIncludes"] = _most_common([self._includes(each) for each in preprocessed])
        levels = [each.optimisation for each in known if each.optimisation]
        if levels and _most_common(levels) in ("0", "g", "1", "2", "3", "s"):
            self._optimisation = _most_common(levels)
        for language, key in _FLAG_KEYS.items():
            same = [each for each in known if each.language == language]
            if same and language in _STANDARDS:
                self._settings[_STANDARDS[language][0]] = _most_common([self._standard(each) for each in same])
            if same:
                self._settings[key] = _most_common([self._flags(each) for each in same])
        self._settings = {key: value for key, value in self._settings.items() if value}

    def _defines(self, compilation):
        return ";".join(each for each in _without_repetitions(compilation.defines) if ";" not in each)

    def _includes(self, compilation):
        return ";".join(_without_repetitions(self._relative(each) for each in compilation.includes))

    def _standard(self, compilation):
        name = _SAME_STANDARDS.get(compilation.standard, compilation.standard)
        return name if name in _STANDARDS[compilation.language][1] else ""

    def _flags(self, compilation):
        machine = self._settings.get("buildMachine", "").split()
        flags = [each for each in compilation.machine if each not in machine]
        flags += [self._relative(each) if os.path.isabs(each) else each for each in compilation.flags]
        if compilation.standard and compilation.language in _STANDARDS and not self._standard(compilation):
            flags.append(f"-std={compilation.standard}")
        return _joined(flags + [f"-D{each}" for each in compilation.defines if ";" in each])

    def _relative(self, path):
        """Files of the computer itself keep their paths."""
        if path.startswith(("/usr/", "/opt/")) and not self._directory.startswith(("/usr/", "/opt/")):
            return path
        return os.path.relpath(path, self._directory)

    # The file

    def _write_file(self, folder, file):
        compilation = file if isinstance(file, commandlines.Compilation) else None
        path = compilation.source if compilation else file
        element = ElementTree.SubElement(folder, "file", path=self._relative(path))
        settings = self._own_settings(compilation) if compilation else {}
        if settings:
            properties = ElementTree.SubElement(element, "properties")
            for name in _CONFIGURATIONS:
                _write_configuration(properties, name, settings)

    def _own_settings(self, compilation):
        """The options in which a file differs from the project."""
        if compilation.source in self._excluded:
            return {"buildExclude": "1"}
        own = {_FLAG_KEYS[compilation.language]: self._flags(compilation)}
        if compilation.language != "asm":
            own |= {"buildDefines": self._defines(compilation), "buildIncludes": self._includes(compilation)}
            key = _STANDARDS[compilation.language][0]
            own[key] = self._standard(compilation)
            if not own[key] and self._settings.get(key):
                own[key] = "default"
        different = {key: value for key, value in own.items() if value != self._settings.get(key, "")}
        return {key: value or _NOTHING.get(key, "-pipe") for key, value in different.items()}

    def _write_properties(self, root):
        properties = ElementTree.SubElement(root, "properties", currentconfiguration=_CONFIGURATIONS[0])
        for name in _CONFIGURATIONS:
            own = dict(self._settings, buildMatch=_MATCH, buildWarnings="default")
            own["buildOptimisation"] = self._optimisation if name == "Release" else "g" if self.is_cross else "0"
            _write_configuration(properties, name, own)


def _write_configuration(properties, name, settings):
    configuration = ElementTree.SubElement(properties, "configuration", name=name)
    for key, value in sorted(settings.items()):
        ElementTree.SubElement(configuration, "property", key=key).text = readable(value)


def _write_new(path, data):
    """Raises FileExistsError if the file exists. After another error it does not exist, so that it can be tried again."""
    with open(path, "xb") as file:
        try:
            file.write(data)
            file.flush()
        except OSError:
            os.remove(path)
            raise


def readable(text):
    """Without the characters that a file of XML cannot have."""
    return re.sub(r"[^\t\n\r\x20-\ud7ff\ue000-\ufffd\U00010000-\U0010ffff]", "?", text)


def _most_common(values):
    return collections.Counter(values).most_common(1)[0][0]


def _without_repetitions(values):
    return list(dict.fromkeys(values))


def _joined(words):
    """As in a command line. The program reads quotes as a shell does."""
    return " ".join(word if re.fullmatch(r"[\w@%+=:,./#~^-]+", word) else "'" + word.replace("'", "'\\''") + "'"
                    for word in words)
