"""New projects from the shipped templates: created by keys in the dialog, built, debugged, changed and opened again."""
import pathlib
import re
import subprocess
import tempfile
import unittest

from debugging import Debugging, line_of
from driver import ProgramTest, Screen
from templates import TEMPLATES, Creator

MAKEFILE = """CFLAGS = -O2 -DSTEP=3 -Iinclude
counter: main.o count.o
\t$(CC) -o $@ $^
other: other.o count.o
\t$(CC) -o $@ $^
all: counter other
"""
SOURCES = {"Makefile": "default: all\n" + MAKEFILE, "include/count.h": "int count(int number);\n",
           "count.c": "#include <count.h>\nint count(int number) { return number + STEP; }\n",
           "main.c": "#include <count.h>\n\nint main(void)\n{\n    int number = count(1);\n    return number;\n}\n",
           "other.c": "int main(void) { return 0; }\n"}


class TemplateTest(ProgramTest):
    def setUp(self):
        screen = Screen(1000, 700)
        self.addCleanup(screen.close)
        self.launch(screen=screen)
        self.keyboard = screen.keyboard
        self.creator = Creator(self.program, self.keyboard)
        self.directory = self.creator.directory
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel")
        self.wait_for_keyboard()

    def begin(self, template, name="demo project", project=""):
        """Accepts the dialog. Returns the project's directory."""
        self.creator.fill_in(template, name)
        self.creator.accept()
        self.name, self.user = name, Debugging(self.program, name, project or name)
        return self.directory / name

    def create(self, template, name="demo project", project=""):
        directory = self.begin(template, name, project)
        self.creator.wait_for_project(name)
        return directory

    def build(self):
        """Returns the compiled files."""
        output = self.user.build()
        self.assertNotIn("arning", output)
        return set(re.findall(r"Compiling (\S+)$", output, re.M))

    def set_breakpoint(self, source, text):
        line = line_of(source, text)
        self.user.open_file(source, 1)
        self.varnel.choose("viewGotoLine")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.keyboard.type(f"{line}\n")
        self.varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col 1")
        self.wait_for_keyboard()
        self.varnel.choose("debugToggleBreakpoint")
        return line

    def debug(self, source, breakpoint_text, function="main", timeout=60):
        """Starts a session by F5 with a breakpoint, and waits until it is hit."""
        line = self.set_breakpoint(source, breakpoint_text)
        self.keyboard.press("F5")
        self.user.wait_for_stop(line, timeout)
        self.user.show_docks()
        self.user.wait_for_function(f"{function} {source.name}, {line}")

    def stop(self):
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")
        self.varnel.wait_until(lambda: not self.user.children(), "the end of debuggers and emulators")

    # A change, and the next day -------------------------------------------------

    def edit_optimisation(self):
        self.varnel.choose("projectProperties")
        self.varnel.wait_for("propertyEditorDialog", "isActiveWindow", True)
        self.varnel.call("FilterEdit", "setFocus()")
        self.keyboard.type("Optimisation")
        self.varnel.wait_for("FilterEdit", "text", "Optimisation")
        self.keyboard.press("Down")
        self.varnel.wait_for("propertyListEditor", "visible", True)

    def change_and_open_again(self, directory, project_directory=None):
        """Changes an option, builds again, closes the workspace and opens it: the option and the build are still there."""
        self.edit_optimisation()
        self.keyboard.type("si")  # the first letters of the choice
        self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
        self.keyboard.press("Return")  # ends the edit
        self.varnel.wait_for("PropertyList", "focus", True)
        self.varnel.click("OkButton")
        self.varnel.find_gone("propertyEditorDialog")
        self.wait_for_keyboard()
        self.assertTrue(self.build())
        ninja = (project_directory or directory) / "build/Debug/build.ninja"
        self.assertIn("-Os", ninja.read_text(encoding="utf-8"))
        self.varnel.choose("projectClose")
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel")
        self.varnel.choose("projectOpen")
        self.varnel.choose_file("openWorkspaceDialog", directory / f"{self.name}.vnw")
        self.creator.wait_for_project(self.name)
        self.assertEqual(self.build(), set())
        self.edit_optimisation()
        self.varnel.wait_for("propertyListEditor", "currentText", "Size (-Os)")
        self.varnel.click("CancelButton")
        self.varnel.find_gone("propertyEditorDialog")

    # Firmware ---------------------------------------------------------------

    def test_avr_firmware(self):
        project = self.create("embedded/avr")
        self.build()
        self.assertTrue((project / "build/Debug/demo project.elf").exists())
        self.debug(project / "main.c", "uart_text(text);")
        self.stop()
        self.change_and_open_again(project)

    def test_cortexm_firmware(self):
        project = self.create("embedded/cortexm")
        self.build()
        self.debug(project / "main.c", "uart_number(seconds);")
        self.varnel.wait_until(lambda: self.user.console() == "started\n", "the program's output")
        self.stop()
        self.change_and_open_again(project)

    def test_cortexm_firmware_with_printf(self):
        project = self.create("embedded/cortexm-printf")
        self.build()
        self.debug(project / "main.c", "return 0;")
        self.varnel.wait_until(lambda: "10 squared is 100\n" in self.user.console(), "the program's output")
        self.stop()
        self.change_and_open_again(project)

    def test_cortexm_firmware_with_two_cores(self):
        project = self.create("embedded/cortexm-twocores")
        self.build()
        self.debug(project / "main.c", "uart_number(answer);")
        self.stop()
        self.varnel.choose("debugRun")
        self.user.wait_for_state("paused")
        self.varnel.choose("debugToggleBreakpoint")  # off
        self.user.open_file(project / "second.c", 2)
        line = line_of(project / "second.c", "mailbox.answer =")
        self.varnel.choose("viewGotoLine")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.keyboard.type(f"{line}\n")
        self.varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col 1")
        self.varnel.choose("debugToggleBreakpoint")
        self.varnel.choose("debugRun")
        self.user.wait_for_function(f"second_main second.c, {line}")  # on the second core
        self.varnel.wait_until(lambda: "1 squared is 1\n" in self.user.console(), "the program's output")
        self.stop()
        self.change_and_open_again(project)

    def test_own_arm_device(self):
        self.begin("embedded/device")
        self.varnel.wait_for("deviceDialog", "isActiveWindow", True)
        self.keyboard.press("Alt+F")
        self.keyboard.type("0x8000000")
        self.keyboard.press("Alt+P")
        self.keyboard.press("End")
        self.keyboard.press("Return")
        self.varnel.answer("The emulated board 'mps2-an385' has this memory at 0x0", "Return")
        self.varnel.wait_for("deviceDialog", "isActiveWindow", True)
        self.keyboard.press("Ctrl+A")
        self.keyboard.type("0")
        self.keyboard.press("Return")
        project = self.directory / self.name
        self.creator.wait_for_project(self.name)
        self.build()
        self.debug(project / "main.c", "++counter;")
        self.stop()
        self.change_and_open_again(project)

    def test_cancelled_forms_leave_nothing(self):
        for form, template in (("deviceDialog", "embedded/device"), ("fromFolderDialog", "existing/folder")):
            with self.subTest(template):
                project = self.begin(template)
                self.varnel.wait_for(form, "isActiveWindow", True)
                self.keyboard.press("Escape")
                self.varnel.find_gone(form)
                self.wait_for_keyboard()
                self.varnel.wait_until(lambda: not project.exists(), "the empty folder to be removed")  # noqa: B023
                self.creator.has_recent = True

    def test_riscv_firmware(self):
        project = self.create("embedded/riscv")
        self.build()
        self.debug(project / "main.c", "uart_number(seconds);")
        self.varnel.wait_until(lambda: self.user.console() == "started\n", "the program's output")
        self.stop()
        self.change_and_open_again(project)

    def test_two_processors_that_exchange_messages(self):
        directory = self.create("embedded/twoprocessors", project="asker")
        self.build()
        self.varnel.choose("debugRun")
        self.user.wait_for_state("running")
        self.user.show_docks()
        self.varnel.wait_until(lambda: "2 squared is 4\n" in self.user.console(), "the answers of the other board", 60)
        self.stop()
        self.debug(directory / "asker/main.c", "uart_")
        self.stop()
        self.change_and_open_again(directory, directory / "asker")

    # An existing folder -----------------------------------------------------

    def test_existing_folder_with_a_makefile(self):
        sources = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-folder.")))
        (sources / "include").mkdir()
        for name, text in SOURCES.items():
            (sources / name).write_text(text, encoding="utf-8")
        self.begin("existing/folder")
        self.varnel.wait_for("fromFolderDialog", "isActiveWindow", True)
        self.keyboard.press("Return")
        self.varnel.answer("Please enter the folder", "Return")
        self.varnel.wait_for("fromFolderDialog", "isActiveWindow", True)
        self.keyboard.type(f"{sources}\n")
        self.varnel.wait_for("targetDialog", "isActiveWindow", True)
        self.keyboard.press("Return")
        self.creator.wait_for_project(self.name)
        self.assertEqual(len(self.build()), 2)
        self.debug(sources / "main.c", "return number;")
        self.varnel.wait_until(lambda: self.user.locals().get("number") == "4", "the variable that STEP was added to")
        self.stop()
        self.change_and_open_again(self.directory / self.name)

    # Programs for this computer ---------------------------------------------

    def test_c_program(self):
        project = self.create("native/c")
        self.build()
        self.debug(project / "main.c", "printf(")
        self.stop()
        self.change_and_open_again(project)

    def test_cpp_program(self):
        project = self.create("native/cpp")
        self.build()
        self.debug(project / "main.cpp", "std::cout <<")
        self.stop()
        self.change_and_open_again(project)

    def test_static_library(self):
        project = self.create("native/library")
        self.build()
        names = subprocess.run(["nm", project / "build/Debug/libdemo project.a"], capture_output=True, text=True,
                               check=True).stdout
        self.assertIn("T greatest_common_divisor", names)
        self.change_and_open_again(project)

    # Extensions of Varnel ---------------------------------------------------

    def test_script_with_a_docked_panel(self):
        project = self.create("varnel/panel")
        self.varnel.find("projectPanel")
        self.build()
        self.debug(project / "main.c", "printf(")
        self.varnel.wait_for("valueLabel", "text", "1")
        self.varnel.call("runButton", "click()")
        self.varnel.wait_for("valueLabel", "text", "3")
        self.stop()
        self.change_and_open_again(project)

    def test_plugin(self):
        project = self.create("varnel/plugin")
        self.build()
        self.debug(project / "plugin.cpp", "return featureList().contains", "Factory::create", 300)  # of a second Varnel
        self.stop()
        self.change_and_open_again(project)

    def test_every_template_is_tested_here(self):
        text = pathlib.Path(__file__).read_text(encoding="utf-8")
        for each in TEMPLATES.glob("*/*/template.xml"):
            self.assertIn(f'"{each.parent.relative_to(TEMPLATES)}"', text)


if __name__ == "__main__":
    unittest.main()
