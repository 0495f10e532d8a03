"""Tests of the program: start, about box, exit."""
import pathlib
import struct
import unittest

from driver import AutomationError, GuiTest


class ProgramTest(GuiTest):
    def test_window_has_the_title(self):
        self.varnel.wait_for("mainWindow", "visible", True)
        self.assertEqual(self.varnel.read("mainWindow", "windowTitle"), "Varnel")

    def test_about_box_opens_and_closes_and_exit_ends_the_program(self):
        self.varnel.choose("helpAbout")
        self.assertEqual(self.varnel.find("aboutBox"), "QDialog")
        self.varnel.wait_for("aboutBox", "visible", True)
        self.assertEqual(self.varnel.read("aboutBox", "windowTitle"), "About Varnel")
        self.assertEqual(self.varnel.read("versionLabel", "text"), "Version 2.9 (Multi-processor support enabled)")
        self.varnel.press("Escape", on="aboutBox")
        self.varnel.find_gone("aboutBox")
        self.varnel.choose("fileExit")
        self.assertEqual(self.program.wait(), 0)

    def test_screenshot_shows_the_window(self):
        self.varnel.wait_for("mainWindow", "visible", True)
        picture = pathlib.Path(self.program.home) / "screen.png"

        def colours():
            width, _, rows = self.program.screen.pixels()
            return {rows[400][x * 3:x * 3 + 3] for x in range(width)}

        self.varnel.wait_until(lambda: len(colours()) > 1, "the window to be painted")
        self.program.screen.screenshot(picture)
        data = picture.read_bytes()
        self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual(struct.unpack(">II", data[16:24]), (1280, 800))

    def test_disabled_command_is_refused(self):
        self.varnel.find("mainWindow")
        self.assertFalse(self.varnel.read("editUndo", "enabled"))
        with self.assertRaisesRegex(AutomationError, "disabled"):
            self.varnel.choose("editUndo")

    def test_settings_are_saved_in_the_home_of_the_test(self):
        self.varnel.choose("fileExit")
        self.assertEqual(self.program.wait(), 0)
        self.assertIn("MainWindowWidth", self.program.settings_file().read_text(encoding="utf-8"))

    def test_exit_ends_a_script_that_ignores_interrupts(self):
        script = pathlib.Path(self.program.home) / "stubborn.py"
        script.write_text("from varnel import app\n"
                          "print('the script runs')\n"
                          "while True:\n"
                          "    try:\n"
                          "        app.processEvents(50)\n"
                          "    except KeyboardInterrupt:\n"
                          "        pass\n", encoding="utf-8")
        self.varnel.type("commandWindow", f"exec(open({str(script)!r}).read())\n")
        self.varnel.wait_until(lambda: "\nthe script runs\n" in self.varnel.read("commandWindow", "plainText"), "the script")
        self.varnel.choose("fileExit")
        self.assertEqual(self.program.wait(), 0)
        self.assertIn("MainWindowWidth", self.program.settings_file().read_text(encoding="utf-8"))
        self.assertIn("a script ignores KeyboardInterrupt", self.program.log())


if __name__ == "__main__":
    unittest.main()
