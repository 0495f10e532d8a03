"""Debug sessions of a native program."""
import os
import signal
import unittest

from debugging import line_of
from debugtest import DebugTest

NEEDS_REBUILDING = "The project '%s' needs rebuilding."


class NativeTest(DebugTest):
    workspace = "calculator/calculator.vnw"
    project = "calculator"

    def test_disassembly_opened_before_the_session_shows_the_program(self):
        self.user.build()
        self.varnel.choose("debugViewDisassembly")
        self.varnel.wait_for("DisassemblyMessage", "text", "No instructions can be read here.")
        self.varnel.choose("debugStepOver")
        self.user.wait_for_state("paused")
        self.varnel.wait_for("disassembly/calculator/lines", "text", lambda text: "; main" in text)
        self.varnel.wait_for("DisassemblyMessage", "text", "")
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")

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
        words = "The value cannot be changed: No symbol \"seven\" in current context."
        self.varnel.wait_for(self.user.window("variablesView"), "message", words)
        self.wait_for_local("value", "7")
        self.user.change_local("value", "argc + 41")
        self.wait_for_local("value", "42")
        self.keyboard.press("F10")
        self.varnel.wait_until(lambda: self.user.console() == "1 + 2 * 3 = 42\n", "the program's output")
        self.user.wait_for_stop(line_of(main, "&text : texts)"))

        self.keyboard.press("F5")
        self.user.wait_for_stop(call)
        self.keyboard.press("F11")
        self.user.wait_for_function("work main.cpp, ")
        self.varnel.wait_until(lambda: "argc" not in self.user.locals(), "the variables of the called function")
        self.user.choose_function(1)
        self.varnel.wait_for("cursorLabel", "text", f" Ln {call}, Col 1")
        self.varnel.wait_until(lambda: "argc" in self.user.locals(), "the variables of the caller")

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
        self.assertFalse(self.varnel.read("variablesDockWindow", "visible"))  # the dock layout is that of editing again

    def test_killed_gdb_is_reported(self):
        self.user.build()
        self.keyboard.press("F10")
        self.user.wait_for_state("paused")
        self.varnel.wait_until(lambda: self.user.children("gdb"), "gdb")
        os.kill(self.user.children("gdb")[0], signal.SIGKILL)
        self.user.wait_for_state("unknown")
        self.assertIn("gdb has ended unexpectedly.", self.debug_page())

if __name__ == "__main__":
    unittest.main()
