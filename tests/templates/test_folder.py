"""Projects from existing folders: what is taken over from make, CMake and compile_commands.json."""
import io
import json
import os
import pathlib
import random
import re
import shutil
import signal
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from unittest import mock

from program import use_scripts

use_scripts("existing/folder")
import backgroundprocess  # noqa: E402
import buildsystems  # noqa: E402
import commandlines  # noqa: E402
import projectwriter  # noqa: E402
from backgroundprocess import run  # noqa: E402
from folderproject import Inspection, describe  # noqa: E402
from foldersources import has_main  # noqa: E402

MAIN = "int main(void) { return 0; }\n"
CMAKE = """cmake_minimum_required(VERSION 3.20)
project(demo C CXX)
set(CMAKE_CXX_STANDARD 17)
add_library(motor STATIC "lib dir/motor.cpp")
target_include_directories(motor PUBLIC "lib dir")
target_compile_definitions(motor PUBLIC "NAME=\\"a b\\"" PRIVATE INSIDE)
add_executable(demo main.c)
target_compile_options(demo PRIVATE -Wshadow)
target_link_libraries(demo motor m)
"""


class FolderTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(os.path.realpath(directory.name), "a 'b' \u00e4 %1")
        self.folder, self.target = self.root / "sources", self.root / "project"
        self.target.mkdir(parents=True)

    def write(self, files):
        for name, text in files.items():
            path = self.folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def inspect(self, ask=True):
        return Inspection(self.folder, self.target, ask)

    def create(self, inspection, target=0):
        """The project's files with their own options, and the options of its configuration Release."""
        path = inspection.create("fw", inspection.targets[target] if inspection.targets else None)
        self.project = ElementTree.parse(path).getroot()
        files = {each.get("path"): options_of(each.find("properties/configuration[@name='Debug']"))
                 for each in self.project.iter("file")}
        return files, options_of(self.project.find("properties/configuration[@name='Release']"))


def options_of(configuration):
    return {} if configuration is None else {each.get("key"): each.text for each in configuration}


class FullFile(io.FileIO):
    """A new file on a full disk."""

    def __init__(self, path):
        super().__init__(path, "x")

    def write(self, _data):
        raise OSError(28, "No space left on device")


class CommandLines(unittest.TestCase):
    def read(self, line, directory="/src"):
        return [each for where, words in commandlines.commands_of(line, directory)
                for each in commandlines.read_command(words, where)]

    def test_settings_of_a_compilation(self):
        one, = self.read("arm-none-eabi-gcc -mcpu=cortex-m4 -DA -D B='\"x y\"' -Iinc -I /abs -isystem sys -include c.h "
                         "-std=gnu99 -O2 -g3 -Wall -MD -MF out/a.d -c -o out/a.o ../a.c")
        self.assertEqual(one, commandlines.Compilation(
            "/a.c", "/src/out/a.o", "arm-none-eabi-gcc", ["A", 'B="x y"'], ["/src/inc", "/abs"], "gnu99", "2",
            ["-mcpu=cortex-m4"], ["-isystem", "/src/sys", "-include", "/src/c.h", "-Wall"]))

    def test_directories_and_several_commands_in_a_line(self):
        found = self.read("cd lib && gcc -c a.c; echo 'gcc -c no.c' ; (cd .. ; cc -c b.c) > log 2>&1")
        self.assertEqual([(each.source, each.object) for each in found],
                         [("/src/lib/a.c", "/src/lib/a.o"), ("/src/b.c", "/src/b.o")])

    def test_launchers_variables_and_libtool_are_skipped(self):
        for line in ("ccache gcc -c a.c", "LANG=C X='a b' /usr/bin/gcc-12 -c a.c", "time env A=1 gcc -c a.c",
                     "/bin/bash ./libtool --tag=CC --mode=compile gcc -c a.c"):
            self.assertEqual([each.source for each in self.read(line)], ["/src/a.c"], line)

    def test_other_commands_are_ignored(self):
        for line in ("rm -f a.c", "gcc --version", "gcc -E a.c", "gcc -MM a.c", "gcc", "echo gcc -c 'a.c", "", "ar",
                     "gccx -c a.c", "install -c a.c"):
            self.assertEqual(self.read(line), [], line)

    def test_linking(self):
        one, = self.read("gcc -Wl,-s -mthumb -nostdlib -Lout -T ld/b.ld -o prog a.o out/libx.a -lm -l c")
        self.assertEqual(one, commandlines.Linking("/src/prog", "gcc", ["/src/a.o", "/src/out/libx.a"], ["m", "c"],
                                                   ["/src/out"], "/src/ld/b.ld", ["-Wl,-s", "-mthumb", "-nostdlib"]))
        self.assertTrue(one.is_program)
        self.assertFalse(self.read("gcc -shared -o x.so a.o")[0].is_program)

    def test_compilation_and_linking_in_one_command(self):
        first, second, linking = self.read("gcc -O2 a.c b.c -o prog -lm")
        self.assertEqual(linking.inputs, [first.object, second.object])

    def test_prefix_of_tools(self):
        for compiler, prefix in (("/opt/bin/arm-none-eabi-gcc-12", "arm-none-eabi-"), ("cc", ""), ("clang++", ""),
                                 ("x86_64-linux-gnu-g++", ""), ("avr-gcc", "avr-"), ("other", "")):
            self.assertEqual(commandlines.tool_prefix(compiler), prefix, compiler)


class Make(FolderTest):
    def test_program_and_its_library_become_one_project(self):
        self.write({"Makefile": "CFLAGS = -O3 -Ilib -DNAME='\"a b\"' -std=gnu99 -Wshadow\nprog: src/main.o lib/libx.a\n"
                                "\t$(CC) -o $@ $^ -lm\nlib/libx.a: lib/x.o\n\tar rcs $@ $^\nlib/x.o: CFLAGS += -DX\n",
                    "src/main.c": MAIN, "lib/x.c": "", "lib/x.h": "", "lib/unused.c": ""})
        inspection = self.inspect()
        self.assertEqual([describe(each) for each in inspection.targets],
                         ["prog (program, 2 sources)", "libx (library, 1 source)"])
        files, options = self.create(inspection)
        self.assertEqual(files, {"../sources/src/main.c": {}, "../sources/lib/x.h": {},
                                 "../sources/lib/x.c": {"buildDefines": 'NAME="a b";X'}})
        self.assertEqual({key: value for key, value in options.items() if key != "buildMatch"},
                         {"buildCFlags": "-Wshadow", "buildCStandard": "gnu99", "buildDefines": 'NAME="a b"',
                          "buildIncludes": "../sources/lib", "buildLibraries": "m", "buildOptimisation": "3",
                          "buildOutputName": "prog", "buildWarnings": "default"})
        self.assertEqual(inspection.problems, [])
        self.assertFalse((self.folder / "prog").exists())  # nothing was built

    def test_library_is_a_target_of_its_own(self):
        self.write({"Makefile": "libx.a: x.o\n\tar rcs $@ $^\n", "x.c": ""})
        _, options = self.create(self.inspect())
        self.assertEqual(options["buildTargetType"], "library")

    def test_makefiles_in_directories_below(self):
        self.write({"Makefile": "all:\n\t$(MAKE) -C sub\n\t$(CC) -o p sub/a.o\n", "sub/Makefile": "a.o: a.c\n",
                    "sub/a.c": MAIN})
        files, _ = self.create(self.inspect())
        self.assertEqual(list(files), ["../sources/sub/a.c"])

    def test_folder_that_is_up_to_date_is_read_all_the_same(self):
        self.write({"Makefile": "p: a.o\n\t$(CC) -o $@ $^\n", "a.c": MAIN})
        run(["make"], self.folder)
        before = {each: each.stat().st_mtime_ns for each in self.folder.rglob("*")}
        self.assertEqual([describe(each) for each in self.inspect().targets], ["p (program, 1 source)"])
        self.assertEqual({each: each.stat().st_mtime_ns for each in self.folder.rglob("*")}, before)

    def test_folder_that_is_built_in_part_is_read_all_the_same(self):
        self.write({"Makefile": "p: a.o b.o\n\t$(CC) -o $@ $^\n", "a.c": MAIN, "b.c": ""})
        run(["make", "a.o"], self.folder)
        inspection = self.inspect()
        self.assertEqual(sorted(self.create(inspection)[0]), ["../sources/a.c", "../sources/b.c"])

    def test_firmware(self):
        self.write({"Makefile": "f.elf: a.c\n\tarm-none-eabi-gcc -mcpu=cortex-m3 -nostdlib -Tb.ld $^ -o $@ -lgcc\n",
                    "a.c": MAIN, "b.ld": "", "arch.h": ""})
        inspection = self.inspect()
        files, options = self.create(inspection)
        self.assertEqual(self.project.get("buildenvironmentname"), "GNU Arm")
        self.assertEqual(options["buildMachine"], "-mcpu=cortex-m3")
        self.assertEqual(options["buildLinkerScript"], "../sources/b.ld")
        self.assertEqual(options["buildLinkFlags"], "-nostdlib")
        self.assertIn("../sources/b.ld", files)
        self.assertIn("choose the target of the debugger", inspection.problems[0])

    def test_unknown_tools_keep_their_prefix(self):
        self.write({"Makefile": "p: a.c\n\tmips-elf-gcc $^ -o $@\n", "a.c": MAIN})
        self.assertEqual(self.create(self.inspect())[1]["buildToolPrefix"], "mips-elf-")

    def test_generated_sources_are_reported(self):
        self.write({"Makefile": "p: a.c gen.c\n\t$(CC) $^ -o $@\ngen.c:\n\techo > $@\n", "a.c": MAIN})
        inspection = self.inspect()
        self.assertEqual(list(self.create(inspection)[0]), ["../sources/a.c"])
        self.assertIn("gen.c", inspection.problems[0])

    def test_generated_headers_are_reported(self):
        self.write({"Makefile": "p: a.c sub/one.h two.h there.h\n\t$(CC) $< -o $@\nsub/one.h:\n\tmkdir -p sub\n"
                                "\techo > $@-t && mv -f $@-t $@\ntwo.h:\n\t(echo 1; echo 2) >$@\nthere.h: a.c\n\techo > $@\n",
                    "there.h": "", "a.c": MAIN})
        self.assertEqual(self.inspect().problems, [
            "These headers are generated by the build of the folder, but do not exist yet. Run its build once: "
            f"{self.folder}/sub/one.h, {self.folder}/two.h"])

    def test_makefile_without_compilations_is_reported(self):
        self.write({"Makefile": "all: missing\n", "a.c": MAIN})
        inspection = self.inspect()
        self.assertEqual(list(self.create(inspection)[0]), ["../sources/a.c"])
        self.assertIn("make shows no compiler commands: make:", inspection.problems[0])

    def test_make_is_not_run_unasked(self):
        self.write({"Makefile": "X := $(shell touch ran)\np: a.c\n\t$(CC) $^ -o $@\n", "a.c": MAIN})
        inspection = self.inspect(ask=False)
        self.assertFalse((self.folder / "ran").exists())
        self.assertEqual(inspection.problems, ["The Makefile of the folder was not read, since that would run programs."])

    def test_configure_that_was_not_run_is_reported(self):
        self.write({"configure": "", "a.c": MAIN})
        self.assertIn("'configure'", self.inspect().problems[0])

    def test_sources_named_like_automake_does(self):
        self.write({"Makefile": "p: src/a.c\n\tgcc -c -o a.o `test -f 'src/a.c' || echo './'`src/a.c\n\tgcc -o p a.o\n",
                    "src/a.c": MAIN})
        self.assertEqual(list(self.create(self.inspect())[0]), ["../sources/src/a.c"])

    def test_makefile_that_writes_for_ever_is_stopped(self):
        self.write({"Makefile": "X := $(shell yes >&2)\n"})
        before, backgroundprocess.MOST_OUTPUT = backgroundprocess.MOST_OUTPUT, 1_000_000
        try:
            self.assertIn("wrote too much", self.inspect().problems[0])
        finally:
            backgroundprocess.MOST_OUTPUT = before

    def test_endless_makefile_can_be_interrupted(self):
        self.write({"Makefile": "X := $(shell sleep 1000)\n"})

        def interrupt(*_):
            raise KeyboardInterrupt

        signal.signal(signal.SIGALRM, interrupt)
        signal.setitimer(signal.ITIMER_REAL, 0.3)
        with self.assertRaises(KeyboardInterrupt):
            self.inspect()


class CMake(FolderTest):
    def setUp(self):
        super().setUp()
        self.write({"CMakeLists.txt": CMAKE, "main.c": MAIN, "lib dir/motor.cpp": "", "lib dir/motor.h": ""})

    def check(self, inspection):
        self.assertEqual([describe(each) for each in inspection.targets],
                         ["demo (program, 2 sources)", "motor (library, 1 source)"])
        files, options = self.create(inspection)
        self.assertEqual(files, {"../sources/main.c": {}, "../sources/lib dir/motor.h": {},
                                 "../sources/lib dir/motor.cpp": {"buildDefines": 'INSIDE;NAME="a b"'}})
        self.assertEqual(options["buildDefines"], 'NAME="a b"')
        self.assertEqual(options["buildIncludes"], "../sources/lib dir")
        self.assertEqual((options["buildCFlags"], options["buildLibraries"]), ("-Wshadow", "m"))
        self.assertEqual(options["buildCppStandard"], "gnu++17")

    def test_folder_is_configured_outside_of_it(self):
        before = sorted(self.folder.rglob("*"))
        self.check(self.inspect())
        self.assertEqual(sorted(self.folder.rglob("*")), before)

    def test_answer_in_a_build_directory_is_used(self):
        query = self.folder / "out/.cmake/api/v1/query"
        query.mkdir(parents=True)
        (query / "codemodel-v2").touch()
        run(["cmake", "-S", self.folder, "-B", self.folder / "out"], self.folder)
        self.check(self.inspect(ask=False))

    def test_error_of_cmake_is_reported(self):
        self.write({"CMakeLists.txt": "cmake_minimum_required(VERSION 3.20)\nproject(p C)\nfind_package(NoSuch REQUIRED)"})
        inspection = self.inspect()
        self.assertIn("CMake could not read the folder", inspection.problems[0])
        self.assertEqual(sorted(self.create(inspection)[0])[-1], "../sources/main.c")

    def test_answer_that_is_damaged_is_skipped(self):
        reply = self.folder / "out/.cmake/api/v1/reply"
        reply.mkdir(parents=True)
        for text in ("", "[]", "{}", '{"paths": 5}', '{"paths": {"source": "/", "build": "/"}, "configurations": []}',
                     '{"paths": {"source": "/", "build": "/"}, "configurations": [{"targets": [{"id": "a", "jsonFile": "../x"}]}]}'):
            (reply / "codemodel-v2-1.json").write_text(text, encoding="utf-8")
            self.assertEqual(self.inspect(ask=False).targets, [], text)


class CompileCommands(FolderTest):
    def write_commands(self, entries, name="build/compile_commands.json"):
        self.write({name: json.dumps(entries)})

    def test_both_forms_are_read(self):
        self.write({"a.c": MAIN, "b.c": "", "inc/x.h": ""})
        self.write_commands([
            {"directory": str(self.folder), "command": "gcc -DA='\"q\"' -Iinc -c a.c", "file": "a.c"},
            {"directory": str(self.folder), "arguments": ["gcc", "-DA=\"q\"", "-I", "inc", "-c", "b.c"], "file": "b.c"}])
        files, options = self.create(self.inspect(ask=False))
        self.assertEqual(files, {"../sources/a.c": {}, "../sources/b.c": {}, "../sources/inc/x.h": {}})
        self.assertEqual((options["buildDefines"], options["buildIncludes"]), ('A="q"', "../sources/inc"))

    def test_second_function_main_is_excluded(self):
        self.write({"a.c": MAIN, "test.c": MAIN})
        self.write_commands([{"directory": str(self.folder), "command": f"gcc -c {name}", "file": name}
                             for name in ("a.c", "test.c")])
        inspection = self.inspect()
        self.assertEqual(self.create(inspection)[0]["../sources/test.c"], {"buildExclude": "1"})
        self.assertIn("2 functions 'main'", inspection.problems[0])

    def test_commands_of_another_computer_are_replaced_by_the_sources_of_the_folder(self):
        self.write({"a.c": MAIN, "b.c": ""})
        self.write_commands([{"directory": "/elsewhere", "command": "gcc -c a.c", "file": "a.c"}])
        inspection = self.inspect(ask=False)
        self.assertEqual(sorted(self.create(inspection)[0]), ["../sources/a.c", "../sources/b.c"])
        self.assertEqual(inspection.problems, ["None of the sources that build/compile_commands.json names exists. All "
                                               "sources in the folder are used instead."])

    def test_damaged_files_are_skipped(self):
        self.write({"a.c": MAIN})
        for content in ("", "{", "5", '{"a": 1}', "[5, null, {}]", '[{"directory": 5, "command": "gcc -c a.c"}]',
                        '[{"directory": "/", "arguments": [5]}]', "[" * 100000):
            self.write({"compile_commands.json": content})
            self.assertEqual(self.inspect(ask=False).origin, "", content[:50])


class Plain(FolderTest):
    def test_all_sources_below_without_generated_ones(self):
        self.write(dict.fromkeys(["z.c", "a/b.cpp", "a/B.HPP", "start.S", "board.ld", "x.txt", ".hidden/h.c",
                                  "out/CMakeCache.txt", "out/gen.c", "out/sub/gen.c"], ""))
        (self.folder / "loop").symlink_to(self.folder)
        files, options = self.create(self.inspect())
        self.assertEqual(sorted(files), ["../sources/a/B.HPP", "../sources/a/b.cpp", "../sources/board.ld",
                                         "../sources/start.S", "../sources/z.c"])
        self.assertEqual(options["buildIncludes"], "../sources/a")

    def test_firmware_is_recognised_by_its_linker_script(self):
        self.write({"a.c": MAIN, "b.ld": ""})
        inspection = self.inspect()
        self.create(inspection)
        self.assertEqual(self.project.get("buildenvironmentname"), "GNU Arm")
        self.assertIn("linker script", inspection.problems[0])

    def test_empty_folder(self):
        self.folder.mkdir()
        inspection = self.inspect()
        self.assertEqual(self.create(inspection)[0], {})
        self.assertEqual(inspection.problems, ["The folder has no source files."])

    def test_project_in_the_folder_itself(self):
        self.write({"a.c": MAIN, "inc/a.h": ""})
        shutil.rmtree(self.target)
        self.target = self.folder
        files, options = self.create(self.inspect())
        self.assertEqual(sorted(files), ["a.c", "inc/a.h"])
        self.assertEqual(options["buildIncludes"], "inc")

    def test_existing_project_is_not_replaced(self):
        self.write({"a.c": MAIN})
        (self.target / "fw.vnp").write_text("mine", encoding="utf-8")
        with self.assertRaises(FileExistsError):
            self.create(self.inspect())
        self.assertEqual((self.target / "fw.vnp").read_text(encoding="utf-8"), "mine")

    def test_huge_folder_is_searched_in_part(self):
        self.write({f"{number}.c": "" for number in range(2100)})
        inspection = self.inspect()
        self.assertEqual(len(self.create(inspection)[0]), 2000)
        self.assertIn("too many files", inspection.problems[0])

    def test_folder_that_vanished(self):
        self.assertEqual(self.inspect().targets, [])

    def test_names_that_a_project_cannot_store_are_left_out_and_reported(self):
        for name, shown in ((b"x\xff.c", "x?.c"), (b"x\x01.h", "x?.h"), (b"x\xff.ld", "x?.ld")):
            with self.subTest(shown):
                self.write({"a.c": MAIN})
                (self.folder / os.fsdecode(name)).touch()
                inspection = self.inspect()
                self.assertEqual(list(self.create(inspection)[0]), ["../sources/a.c"])
                self.assertIn(f"These files have names that a project cannot store: {self.folder}/{shown}",
                              inspection.problems)
                shutil.rmtree(self.folder)
                (self.target / "fw.vnp").unlink()

    def test_project_that_cannot_be_written_leaves_no_file(self):
        self.write({"a.c": MAIN})
        with mock.patch.object(projectwriter, "open", lambda *_: FullFile(self.target / "fw.vnp"), create=True), \
                self.assertRaises(OSError):
            self.create(self.inspect())
        self.assertEqual(list(self.target.iterdir()), [])

    def test_functions_main_are_found(self):
        for text, found in ((MAIN, True), ("int\nmain(void)\n{\n}", True), ("static int main (int a,\n  char **b)\n\n{", True),
                            ("main()\r\n{", True), ("int main(void);", False), ("int domain(void) {", False),
                            ("x = main(1); y {", False), ("// int main(void) {", False), ("int main = 1;", False)):
            self.write({"a.c": text})
            self.assertEqual(has_main(self.folder / "a.c"), found, text)

    def test_search_for_main_ends_soon_in_large_files(self):
        signal.alarm(60)  # ends the test; patterns that try again at each line need hours
        self.addCleanup(signal.alarm, 0)
        for text in ("a\n", "a ", "main ", "main(\n", "main()", "main\n", " ", "\n"):
            self.write({"a.c": text * (1_000_000 // len(text))})
            self.assertFalse(has_main(self.folder / "a.c"), text)


class Hostile(FolderTest):
    def test_output_of_make_that_is_no_sense(self):
        for text in ("gcc -c", "gcc -D", "gcc -I", "gcc -o", "ar rcs", "make: Leaving directory 'x'\n" * 3, "`" * 1000,
                     "(" * 1000 + "gcc -c a.c", "gcc -c a.c\0", "gcc -o p p", "ar r a.a a.a\ngcc -o p a.a x.c",
                     "make: Entering directory '/no such'\ngcc -c a.c -o"):
            found = buildsystems.read_make_output(text, "/src")
            self.assertIsInstance(found.targets, list, text[:40])

    def test_damaged_output_of_make_raises_nothing(self):
        output = ("make: Entering directory '/src'\ncd lib && ccache gcc -DA='\"x y\"' -Iinc -std=c99 -c -o a.o ../a.c; "
                  "echo `test -f 'b.c' || echo './'`b.c\nar rcs libx.a a.o\n/bin/sh ../libtool --mode=link g++ -o prog m.o "
                  "libx.a -lm -Wl,-s \\\n -T b.ld > x.h\nmake: Leaving directory '/src'\n")
        pieces = ["'", '"', "`", "\\", "\n", ";", "&&", "(", ")", "|", ">", "-o", "-I", "-D", "gcc", "\0", "\udcff", "$("]
        numbers = random.Random(1)
        for _ in range(300):
            text = output
            for _ in range(numbers.randint(1, 4)):
                start = numbers.randrange(len(text))
                text = text[:start] + numbers.choice(pieces) + text[start + numbers.choice((0, 1, 5, 30)):]
            buildsystems.read_make_output(text, "/src")

    def test_damaged_answer_of_cmake_raises_nothing(self):
        reply = self.root / "reply"
        reply.mkdir()
        target = {"name": "p", "id": "p", "type": "EXECUTABLE", "artifacts": [{"path": "p"}],
                  "dependencies": [{"id": "p"}], "sources": [{"path": str(self.root / "reply"), "compileGroupIndex": 0}],
                  "compileGroups": [{"language": "C", "defines": [{"define": "A"}], "includes": [{"path": "/i"}],
                                     "compileCommandFragments": [{"fragment": "-O2"}]}],
                  "link": {"commandFragments": [{"fragment": "-lm", "role": "libraries"}]}}
        model = {"paths": {"source": "/s", "build": "/b"},
                 "configurations": [{"targets": [{"id": "p", "jsonFile": "target.json"}]}]}
        numbers = random.Random(1)
        for _ in range(300):
            for name, value in (("target.json", target), ("codemodel-v2-1.json", model)):
                text = json.dumps(value)
                for _ in range(numbers.randint(0, 2)):
                    old = numbers.choice(re.findall(r'"[^"]*"|\d+|[][{}]', text))
                    text = text.replace(old, numbers.choice(('"x"', "5", "[]", "{}", "null", "[", '"id"')), 1)
                (reply / name).write_text(text, encoding="utf-8")
            buildsystems.read_reply(str(reply))


if __name__ == "__main__":
    unittest.main()
