"""New projects from the shipped templates: created by keys in the dialog, built, and debugged."""
import subprocess
import unittest

from debugging import Debugging, line_of
from driver import ProgramTest, Screen


class TemplateTest(ProgramTest):
    def setUp(self):
        screen = Screen(1000, 700)
        self.addCleanup(screen.close)
        self.launch(screen=screen)
        self.keyboard = screen.keyboard
        self.directory = self.program.home / "Documents"
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel")
        self.wait_for_keyboard()

    def create(self, folder, template, name="demo project"):
        """Creates a project with keys only: the template's number in the folder of that number."""
        self.keyboard.press("Ctrl+Shift+N")
        self.varnel.find("newProjectDialog")
        self.varnel.wait_for("newProjectDialog", "isActiveWindow", True)
        for _ in range(folder):
            self.keyboard.press("Down")
        self.keyboard.press("Tab")
        for _ in range(template):
            self.keyboard.press("Right")
        self.keyboard.press("Tab")
        self.keyboard.type(name)
        self.keyboard.press("Return")
        if not self.directory.exists():
            self.varnel.answer("Do you want to create it?", "Return")
        self.varnel.find_gone("newProjectDialog")
        self.varnel.wait_for("mainWindow", "windowTitle", lambda title: title.startswith("Varnel - "))
        self.user = Debugging(self.program, name, name)
        return self.directory / name

    def build(self):
        self.assertNotIn("arning", self.user.build())

    def debug(self, source, breakpoint_text):
        """Starts a session by F5 with a breakpoint, and waits until it is hit."""
        line = line_of(source, breakpoint_text)
        self.user.open_file(source, 1)
        self.user.click_margin(source.name, line)
        self.keyboard.press("F5")
        self.user.wait_for_stop(line)
        self.user.show_docks()
        self.user.wait_for_function(f"main {source.name}, {line}")

    def stop(self):
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")
        self.varnel.wait_until(lambda: not self.user.children(), "the end of debuggers and emulators")

    # Firmware ---------------------------------------------------------------

    def test_avr_firmware(self):
        project = self.create(0, 0)
        self.build()
        self.assertTrue((project / "build/Debug/demo project.elf").exists())
        self.debug(project / "main.c", "uart_text(text);")
        self.stop()

    def test_cortexm_firmware(self):
        project = self.create(0, 1)
        self.build()
        self.debug(project / "main.c", "uart_number(seconds);")
        self.varnel.wait_until(lambda: self.user.console() == "started\n", "the program's output")
        self.stop()

    def test_cortexm_firmware_with_printf(self):
        project = self.create(0, 2)
        self.build()
        self.debug(project / "main.c", "return 0;")
        self.varnel.wait_until(lambda: "10 squared is 100\n" in self.user.console(), "the program's output")
        self.stop()

    def test_riscv_firmware(self):
        project = self.create(0, 3)
        self.build()
        self.debug(project / "main.c", "uart_number(seconds);")
        self.varnel.wait_until(lambda: self.user.console() == "started\n", "the program's output")
        self.stop()

    def test_two_processors_that_exchange_messages(self):
        self.create(0, 4)
        self.user = Debugging(self.program, "demo project", "asker")
        self.build()
        self.varnel.choose("debugRun")
        self.user.wait_for_state("running")
        self.user.show_docks()
        self.varnel.wait_until(lambda: "2 squared is 4\n" in self.user.console(), "the answers of the other board", 60)
        self.stop()

    # Programs for this computer ---------------------------------------------

    def test_c_program(self):
        project = self.create(1, 0)
        self.build()
        self.debug(project / "main.c", "printf(")
        self.stop()

    def test_cpp_program(self):
        project = self.create(1, 1)
        self.build()
        self.debug(project / "main.cpp", "std::cout <<")
        self.stop()

    def test_static_library(self):
        project = self.create(1, 2)
        self.build()
        names = subprocess.run(["nm", project / "build/Debug/libdemo project.a"], capture_output=True, text=True,
                               check=True).stdout
        self.assertIn("T greatest_common_divisor", names)


if __name__ == "__main__":
    unittest.main()
