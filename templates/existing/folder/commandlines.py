"""Reads the command lines of compilers, archivers and linkers, as build systems print them."""
import dataclasses
import os
import re
import shlex

SOURCES = {".c": "c", ".cpp": "cpp", ".cc": "cpp", ".cxx": "cpp", ".c++": "cpp", ".C": "cpp", ".CPP": "cpp",
           ".s": "asm", ".S": "asm", ".sx": "asm", ".asm": "asm"}

_COMPILER = re.compile(r"(?P<prefix>.*?)(?P<kind>gcc|g\+\+|c\+\+|clang\+\+|clang|cc|c99)(-\d+(\.\d+)*)?$")
_ARCHIVER = re.compile(r"(.*-)?ar$")
_LAUNCHERS = {"ccache", "distcc", "libtool", "env", "time", "nice"}
_SEPARATORS = {";", "&&", "||", "|", "&", "(", ")"}
# Flags whose argument is the next word, if it does not follow at once
_WITH_PATH = ("-I", "-isystem", "-iquote", "-idirafter", "-include", "-imacros", "-T", "-L")
_IGNORED_WITH_WORD = {"-MF", "-MT", "-MQ", "-x", "-arch"}
_IGNORED = {"-c", "-MD", "-MMD", "-MP", "-M", "-MM", "-pipe", "-S", "-E"}
_TOOL = re.compile(r"(gcc|g\+\+|cc|c\+\+|clang|c99|ar)")
_CHOICE = re.compile(r"`test -f '?([^'`]*)'? \|\| echo '?([^'`]*)'?`")  # automake's way to name a source


@dataclasses.dataclass
class Compilation:
    """The settings with which one source is compiled. Paths are absolute."""

    source: str
    object: str = ""
    compiler: str = "gcc"
    defines: list = dataclasses.field(default_factory=list)
    includes: list = dataclasses.field(default_factory=list)
    standard: str = ""
    optimisation: str = ""
    machine: list = dataclasses.field(default_factory=list)
    flags: list = dataclasses.field(default_factory=list)

    @property
    def language(self):
        return SOURCES.get(os.path.splitext(self.source)[1], "c")


@dataclasses.dataclass
class Linking:
    """How a program or a library is made. Paths are absolute."""

    output: str
    compiler: str = ""  # empty for an archive
    inputs: list = dataclasses.field(default_factory=list)  # objects, archives, sources
    libraries: list = dataclasses.field(default_factory=list)
    directories: list = dataclasses.field(default_factory=list)
    script: str = ""
    flags: list = dataclasses.field(default_factory=list)

    @property
    def is_program(self):
        return bool(self.compiler) and "-shared" not in self.flags and not self.output.endswith((".la", ".so"))


def tool_prefix(compiler):
    """What precedes "gcc" in the name of a compiler, such as "arm-none-eabi-"; empty for that of this computer."""
    match = _COMPILER.fullmatch(os.path.basename(compiler))
    prefix = match["prefix"] if match else ""
    return "" if re.fullmatch(r"(x86_64|i[3-6]86)-.*", prefix) else prefix


def is_clang(compiler):
    return "clang" in os.path.basename(compiler)


def commands_of(line, directory):
    """Yields the commands in a line of a shell: their directory and their words. What cannot be read is left out."""
    if not _TOOL.search(line):
        return  # most lines of a build; the rest takes its time
    try:
        lexer = shlex.shlex(_with_choices(line, directory), posix=True, punctuation_chars=True)
        lexer.whitespace_split = True
        lexer.commenters = ""
        words = list(lexer)
    except ValueError:  # a quote is not closed
        return
    command = []
    for word in [*words, ";"]:
        if word not in _SEPARATORS:
            command.append(word)
            continue
        if len(command) == 2 and command[0] == "cd":
            directory = _absolute(command[1], directory)
        elif command:
            yield directory, command
        command = []


def _with_choices(line, directory):
    return _CHOICE.sub(lambda match: "" if os.path.exists(_absolute(match[1], directory)) else match[2], line)


def _absolute(path, directory):
    return os.path.normpath(os.path.join(directory, path))


def read_command(words, directory):
    """A list of the `Compilation`s and `Linking`s that a command stands for; empty if it is something else."""
    words = _without_launcher(words)
    if not words:
        return []
    if _ARCHIVER.fullmatch(os.path.basename(words[0])) and len(words) > 3:
        inputs = [_absolute(word, directory) for word in words[3:] if not word.startswith("-")]
        return [Linking(_absolute(words[2], directory), inputs=inputs)]
    if not _COMPILER.fullmatch(os.path.basename(words[0])):
        return []
    return _CompilerCommand(words, directory).result()


def _without_launcher(words):
    words = list(words)
    while words:
        name = os.path.basename(words[0])
        if name in ("sh", "bash") and len(words) > 1 and os.path.basename(words[1]) == "libtool":
            words = words[1:]
        elif name == "libtool":
            words = words[1:]
            while words and words[0].startswith("-"):
                words = words[1:]
        elif name in _LAUNCHERS or re.fullmatch(r"\w+=.*", words[0], re.DOTALL):
            words = words[1:]
        else:
            break
    return words


class _CompilerCommand:
    """Walks through the words of a compiler's command line."""

    def __init__(self, words, directory):
        self._directory = directory
        self._words = iter(words[1:])
        self._settings = Compilation("", compiler=words[0])
        self._linking = Linking("", compiler=words[0])
        self._sources, self._inputs, self._object = [], [], ""
        self._stops_early = bool({"-c", "-S", "-E", "-M", "-MM"} & set(words))
        self._is_query = bool({"-E", "-M", "-MM", "--version", "-v"} & set(words))
        for word in self._words:
            self._take(word)

    def _take(self, word):
        if not word.startswith("-"):
            self._input(word)
        elif word == "-o":
            self._object = self._path(next(self._words, ""))
        elif word in _IGNORED_WITH_WORD:
            next(self._words, "")
        elif word in _IGNORED or word.startswith(("-MF", "-MT", "-MQ", "-Wp,-M", "-fdiagnostics-color")):
            pass
        elif option := next((each for each in _WITH_PATH if word.startswith(each)), None):
            self._path_option(word, option)
        else:
            self._flag(word)

    def _path(self, word):
        return _absolute(word, self._directory)

    def _input(self, word):
        if word == ">" or word == "<":
            next(self._words, "")
        elif os.path.splitext(word)[1] in SOURCES:
            self._sources.append(self._path(word))
        elif word.endswith(".ld"):
            self._linking.script = self._path(word)
        elif word.endswith((".o", ".lo", ".obj", ".a", ".la", ".so")):
            self._inputs.append(self._path(word))

    def _path_option(self, word, option):
        if word.startswith("-include-pch"):
            next(self._words, "")
            return
        path = self._path(word[len(option):] or next(self._words, ""))
        if option == "-I":
            self._settings.includes.append(path)
        elif option == "-L":
            self._linking.directories.append(path)
        elif option == "-T":
            self._linking.script = path
        else:
            self._settings.flags += [option, path]

    def _flag(self, word):
        settings, linking = self._settings, self._linking
        if word.startswith("-D"):
            settings.defines.append(word[2:] or next(self._words, ""))
        elif word.startswith("-std="):
            settings.standard = word[5:]
        elif word.startswith("-O"):
            settings.optimisation = word[2:] or "1"
        elif word.startswith("-l"):
            linking.libraries.append(word[2:] or next(self._words, ""))
        elif word.startswith("-m"):
            settings.machine.append(word)
            linking.flags.append(word)
        elif word in ("-Xlinker", "-z", "-u"):
            linking.flags += [word, next(self._words, "")]
        elif word == "-rpath" or word == "-version-info":  # for libtool
            next(self._words, "")
        elif word.startswith(("-Wl,", "-nostd", "-nostart", "-nodefault", "-nolib", "-specs", "--specs", "-static",
                              "-shared", "-rdynamic", "-pie", "-no-pie")):
            linking.flags.append(word)
        elif word == "-pthread":
            settings.flags.append(word)
            linking.flags.append(word)
        elif not re.fullmatch(r"-g\d?|-g(gdb|dwarf).*|-all-static|-no-undefined|-avoid-version|-no-install", word):
            settings.flags.append(word)

    def result(self):
        if self._is_query or not (self._sources or self._inputs):
            return []
        compilations = [dataclasses.replace(self._settings, source=each, object=self._object_of(each))
                        for each in self._sources]
        if self._stops_early:
            return compilations
        self._linking.output = self._object or self._path("a.out")
        self._linking.inputs = [each.object for each in compilations] + self._inputs
        return [*compilations, self._linking]

    def _object_of(self, source):
        if self._object and self._stops_early:
            return self._object
        stem = os.path.splitext(os.path.basename(source))[0]
        return source + ".o" if not self._stops_early else self._path(stem + ".o")
