"""Debug sessions of two emulated boards."""
import os
import pathlib
import signal
import unittest

from debugging import line_of
from debugtest import DebugTest

HIT_ELSEWHERE = "A breakpoint has been hit in project 'morse'.\n\nThe current project will be switched."
CANNOT_START = "Cannot start debugger.\n\nPlease see Debug Output window for details."


def runs(number):
    """Whether the process with that id exists and has not ended."""
    try:
        return pathlib.Path(f"/proc/{number}/stat").read_text(encoding="utf-8").rpartition(") ")[2][0] != "Z"
    except OSError:
        return False


class TwoProcessorsTest(DebugTest):
    workspace = "twoprocessors.vnw"
    project = "thermostat"

    def start_running(self):
        self.varnel.wait_for("debugRun", "enabled", True)  # an earlier session may be ending
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
        self.assertEqual(self.varnel.read("pluginTarget-console", "windowTitle"), "Target console (thermostat)")
        self.assertTrue(self.varnel.read("pluginTarget-console", "visible"))

    def test_live_window_shows_both_boards_while_they_run(self):
        self.user.build()
        self.varnel.choose("debugToggleLiveWindow")
        self.start_running()
        for processor in range(2):
            self.varnel.write("liveProject", "currentIndex", processor)
            self.varnel.write("liveExpression", "text", "board_ticks")
            self.varnel.click("liveAdd")
        self.varnel.click("liveRate", x=6)
        self.assertTrue(self.varnel.read("liveRate", "checked"))
        self.varnel.wait_until(lambda: min(self.live_values()) > 0, "a value of both boards", 60)
        first = self.live_values()
        self.varnel.wait_until(lambda: all(now > then for now, then in zip(self.live_values(), first)),
                               "values that grow on both boards", 60)
        self.varnel.choose("debugPause")
        self.user.wait_for_state("paused")
        self.varnel.wait_until(lambda: self.live_values() == self.live_values(), "values that stay")
        plot = self.varnel.read("livePlot", "text")
        self.assertIn("thermostat: board_ticks = ", plot)
        self.assertIn("morse: board_ticks = ", plot)

    def live_values(self):
        """The values of the variables "board_ticks", 0 for one that has none yet."""
        rows = self.varnel.read("liveWindow", "text").splitlines()
        texts = [row.split("|")[2] for row in rows if row.startswith("board_ticks|")]
        return [int(text) if text.isdigit() else 0 for text in texts]

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
