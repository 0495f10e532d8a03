"""The options dialog and the external tools, operated by object names and keys."""
import pathlib
import tempfile
import unittest

from driver import ProgramTest

TOOLS, MORE = "toolsPage", "morePage"


class OptionsTest(ProgramTest):
    def open_options(self, page):
        self.varnel.choose("toolsOptions")
        self.varnel.wait_for("optionsDialog", "visible", True)
        for tab in range(self.varnel.read("OptionsTabs", "count")):
            self.varnel.write("OptionsTabs", "currentIndex", tab)
            if self.varnel.read(page, "visible"):
                return
        self.fail(f"no page {page}")

    def close_options(self, button):
        self.varnel.click(button)
        self.varnel.find_gone("optionsDialog")
        self.wait_for_keyboard()

    def exit(self):
        self.varnel.choose("fileExit")
        self.assertEqual(self.program.wait(), 0)

    def test_tool_from_the_dialog_runs_from_the_menu_and_writes_to_the_page_debug(self):
        file = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-options."))) / "notes.tar.gz.txt"
        file.write_text("text\n", encoding="utf-8")
        self.launch()
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", file)
        self.varnel.wait_for("viewManagerTabBar", "count", 1)
        self.open_options(TOOLS)
        self.varnel.click("NewButton")
        self.varnel.write("NameEdit", "text", "Echo")
        self.varnel.write("CommandEdit", "text", "/bin/echo")
        self.varnel.write("ArgumentsEdit", "text", "$(FileName) $(FileExt) $(Unknown)")
        self.close_options("OKButton")
        self.program.screen.keyboard.press("Alt+T")
        self.varnel.wait_for("toolsMenu", "visible", True)
        self.program.screen.keyboard.press("1")
        self.varnel.wait_for("DebugPage", "plainText", lambda text: "exited normally (0)" in text)
        lines = self.varnel.read("DebugPage", "plainText").splitlines()
        self.assertEqual(lines[:3], ["Running '/bin/echo notes.tar.gz tar.gz.txt $(Unknown)'...",
                                     "notes.tar.gz tar.gz.txt $(Unknown)",
                                     "Process '/bin/echo' exited normally (0)"])
        self.exit()
        self.assertIn("tool0command=/bin/echo", self.program.settings_file().read_text(encoding="utf-8"))

    def test_accepted_options_are_kept_and_cancelled_ones_are_not(self):
        self.launch()
        self.open_options(MORE)
        self.varnel.write("ZoomSpin", "value", 150)
        self.varnel.press("Space", on="AskBeforeScriptsCheck")
        self.close_options("OKButton")
        self.open_options(MORE)
        self.assertEqual(self.varnel.read("ZoomSpin", "value"), 150)
        self.assertFalse(self.varnel.read("AskBeforeScriptsCheck", "checked"))
        self.varnel.write("ZoomSpin", "value", 200)
        self.close_options("CancelButton")
        self.exit()
        settings = self.program.settings_file().read_text(encoding="utf-8")
        self.assertIn("Zoom=150", settings)
        self.assertIn("AskBeforeScripts=0", settings)

    def test_directory_that_is_no_virtual_environment_is_refused(self):
        self.launch()
        self.open_options(MORE)
        self.varnel.write("VirtualEnvironmentEdit", "text", "/usr")
        self.varnel.click("OKButton")
        self.varnel.answer("pyvenv.cfg", "Return")
        self.varnel.find_gone("messageBox")
        self.assertTrue(self.varnel.read("optionsDialog", "visible"))
        self.close_options("CancelButton")
        self.exit()
        self.assertNotIn("VirtualEnvironment", self.program.settings_file().read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
