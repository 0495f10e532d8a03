"""Debug sessions: a native program, two emulated boards, and killed processes."""
import os
import pathlib
import signal
import tempfile
import unittest

from debugging import Debugging, copy_of_examples, line_of
from driver import ProgramTest, Screen

HIT_ELSEWHERE = "A breakpoint has been hit in project 'morse'.\n\nThe current project will be switched."
CANNOT_START = "Cannot start debugger.\n\nPlease see Debug Output window for details."
NEEDS_REBUILDING = "The project '%s' needs rebuilding."


def runs(number):
    """Whether the process with that id exists and has not ended."""
    try:
        return pathlib.Path(f"/proc/{number}/stat").read_text(encoding="utf-8").rpartition(") ")[2][0] != "Z"
    except OSError:
        return False


class DebugTest(ProgramTest):
    workspace = None
    project = None

    @classmethod
    def setUpClass(cls):
        """The tests of a class share a copy of the examples, so that each program is built once."""
        parent = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="varnel-debug."))
        cls.examples = copy_of_examples(parent)

    def setUp(self):
        screen = Screen(1440, 900)
        self.addCleanup(screen.close)
        self.launch("-w", self.examples / self.workspace, screen=screen)
        name = pathlib.Path(self.workspace).stem
        self.varnel.wait_for("mainWindow", "windowTitle", f"Varnel - {name}")
        self.user = Debugging(self.program, name, self.project)
        self.addCleanup(self.check_that_all_processes_end)
        self.keyboard = screen.keyboard

    def check_that_all_processes_end(self):
        """Stops the session and waits until all child processes have ended."""
        if self.program.process.poll() is None and self.varnel.read("debugStop", "enabled"):
            self.varnel.choose("debugStop")
        self.varnel.wait_until(lambda: not self.user.children(), "the end of debuggers and emulators")

    def go_to_line(self, line):
        self.varnel.choose("viewGotoLine")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.keyboard.type(f"{line}\n")
        self.varnel.find_gone("inputDialog")
        self.varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col 1")
        self.wait_for_keyboard()

    def debug_page(self):
        return self.varnel.read("DebugPage", "plainText")

    def wait_for_local(self, name, value):
        self.varnel.wait_until(lambda: self.user.locals().get(name) == value, f"{name} = {value}")

    def wait_for_words(self, words):
        self.varnel.wait_for("DebugPage", "plainText", lambda text: words in text)


class NativeTest(DebugTest):
    workspace = "calculator/calculator.vnw"
    project = "calculator"

    def test_native_program_is_stepped_changed_and_restarted(self):
        (self.examples / "calculator/main.cpp").touch()  # not up to date, whether built already or not
        main = self.examples / "calculator/main.cpp"
        call = line_of(main, "work(text, variables);")
        self.user.open_file(main, 1)
        self.user.click_margin("main.cpp", call)
        self.keyboard.press("F5")
        self.varnel.answer(NEEDS_REBUILDING % "calculator", "y")
        self.user.wait_for_stop(call, timeout=300)
        self.user.show_docks()
        self.user.wait_for_function(f"main main.cpp, {call}")

        self.keyboard.press("F10")
        self.user.wait_for_stop(call + 1)
        self.wait_for_local("value", "7")
        self.user.change_local("value", "seven")
        self.wait_for_words("The value cannot be changed: No symbol \"seven\" in current context.")
        self.wait_for_local("value", "7")
        self.user.change_local("value", "argc + 41")
        self.wait_for_local("value", "42")
        self.keyboard.press("F10")
        self.varnel.wait_until(lambda: self.user.console() == "1 + 2 * 3 = 42\n", "the program's output")

        self.keyboard.press("F5")
        self.user.wait_for_stop(call)
        self.keyboard.press("F11")
        self.user.wait_for_function("work main.cpp, ")

        self.user.click_margin("main.cpp", call)  # disabled
        self.keyboard.press("F5")
        self.user.wait_for_state("finished")
        self.wait_for_words("The program ended.")
        self.assertTrue(self.user.console().endswith("(1 + 5 ^ 0.5) / 2 = 1.61803\n"))

        self.keyboard.press("Ctrl+Shift+F5")
        self.user.wait_for_function("main main.cpp, ")
        self.go_to_line(call + 1)
        self.keyboard.press("Ctrl+F10")
        self.user.wait_for_stop(call + 1)
        self.keyboard.press("Shift+F5")
        self.user.wait_for_state("")
        self.assertFalse(self.varnel.read("pluginLocals", "visible"))  # the dock layout is that of editing again

    def test_killed_gdb_is_reported(self):
        self.user.build()
        self.keyboard.press("F10")
        self.user.wait_for_state("paused")
        self.varnel.wait_until(lambda: self.user.children("gdb"), "gdb")
        os.kill(self.user.children("gdb")[0], signal.SIGKILL)
        self.user.wait_for_state("unknown")
        self.assertIn("gdb has ended unexpectedly.", self.debug_page())


class TwoProcessorsTest(DebugTest):
    workspace = "twoprocessors.vnw"
    project = "thermostat"

    def start_running(self):
        self.varnel.choose("debugRun")
        self.user.wait_for_state("running")

    def start_paused(self):
        """Starts a session by a step, which ends in main or in a function that it calls."""
        self.varnel.choose("debugStepOver")
        self.varnel.wait_until(lambda: len(self.user.children("qemu")) == 2, "both boards", 60)
        self.varnel.wait_for("debugStepOver", "enabled", True)
        self.user.wait_for_state("paused")

    def test_breakpoint_of_the_other_processor_makes_it_current(self):
        lamp = self.examples / "morse/lamp.c"
        self.user.build()
        self.user.open_file(lamp, 1)
        self.go_to_line(line_of(lamp, "lamp->code = code_of(letter);"))
        self.keyboard.press("F9")
        self.varnel.choose("debugRun")
        self.varnel.wait_for("messageBox", "text", HIT_ELSEWHERE, 60)
        self.assertEqual(self.varnel.read("projectDropdown", "currentText"), "thermostat")
        self.varnel.answer(HIT_ELSEWHERE, "Return")
        self.varnel.wait_for("projectDropdown", "currentText", "morse")
        self.user.wait_for_stop(line_of(lamp, "lamp->code = code_of(letter);"))

        self.keyboard.press("F10")
        self.user.wait_for_stop(line_of(lamp, "lamp->code = code_of(letter);") + 1)
        self.keyboard.press("F9")  # sets a second breakpoint, at the next statement
        self.keyboard.press("F9")  # disables it
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")

    def test_both_processors_pause_and_restart_together(self):
        self.user.build()
        self.user.show_docks()
        self.start_running()
        self.varnel.wait_until(lambda: self.user.console().startswith("thermostat\nroom "), "output of the board")
        self.varnel.choose("debugPause")
        self.user.wait_for_state("paused")
        self.varnel.choose("debugRestart")
        self.user.wait_for_stop(line_of(self.examples / "thermostat/main.c", "int main") + 1)
        self.varnel.wait_until(lambda: self.user.console() == "", "an empty console")
        self.assertEqual(self.varnel.read("pluginTarget console", "windowTitle"), "Target console (thermostat)")
        self.assertTrue(self.varnel.read("pluginTarget console", "visible"))

    def test_compile_error_prevents_the_session(self):
        self.user.build()
        source = self.examples / "morse/code.c"
        good = source.read_text(encoding="utf-8")
        source.write_text(good + "int wrong = sine;\n", encoding="utf-8")
        self.varnel.choose("debugRun")
        self.varnel.wait_for("messageBox", "text", CANNOT_START, 60)
        self.assertIn("'sine' undeclared", self.varnel.read("BuildPage", "plainText"))
        self.varnel.answer(CANNOT_START, "Return")
        self.user.wait_for_state("")

        source.write_text(good, encoding="utf-8")
        self.start_running()
        self.assertEqual(len(self.user.children("qemu")), 2)

    def test_exit_ends_the_session_and_its_processes(self):
        self.user.build()
        self.start_running()
        started = self.user.children()
        self.assertEqual(len(started), 4)
        self.varnel.choose("fileExit")
        self.assertEqual(self.program.wait(), 0)
        for number in started:
            self.varnel.wait_until(lambda: not runs(number), f"process {number} to end")

    def test_killed_process_ends_one_processor_only(self):
        self.user.build()
        for victim, state, words in (("qemu", "finished", "thermostat: 'qemu-system-arm' was ended by a signal."),
                                     ("gdb", "unknown", "thermostat: gdb has ended unexpectedly.")):
            for start in (self.start_running, self.start_paused):
                with self.subTest(victim=victim, start=start.__name__):
                    start()
                    self.assertEqual(len(self.user.children()), 4)
                    os.kill(self.user.children(victim)[0], signal.SIGKILL)
                    self.user.wait_for_state(state)
                    self.wait_for_words(words)
                    self.assertFalse(self.varnel.exists("messageBox"))
                    self.varnel.wait_until(lambda: len(self.user.children("qemu")) == 1, "the other board only")
                    self.varnel.choose("debugStop")
                    self.user.wait_for_state("")
                    self.varnel.wait_until(lambda: not self.user.children(), "the end of debuggers and emulators")


if __name__ == "__main__":
    unittest.main()
