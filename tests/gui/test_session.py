"""Tests that files and unsaved text are restored after an exit and after a crash."""
import json
import pathlib
import tempfile
import unittest

from driver import Program, ProgramTest, Screen

CHANGED_OUTSIDE = "This file has been modified outside of the editor. Do you want to reload it?"
SAVE_CHANGES = "has changed.\n\nDo you want to save the changes?"
RECOVER = "Do you want to recover the changes?"
LINES = "".join(f"int value{number};\n" for number in range(2, 201))
FILES = {
    "station.vnw": '<workspace>\n <project path="clock/clock.vnp"/>\n <project path="radio/radio.vnp"/>\n</workspace>\n',
    "clock/clock.vnp": '<project>\n <folder name="Sources">\n  <extension name="c"/>\n'
                       '  <file path="clock.c"/>\n  <file path="hand.c"/>\n </folder>\n</project>\n',
    "radio/radio.vnp": '<project>\n <folder name="Sources">\n  <extension name="c"/>\n'
                       '  <file path="tuner.c"/>\n </folder>\n</project>\n',
    "clock/clock.c": "/* clock */\n" + LINES,
    "clock/hand.c": "/* hand */\n" + LINES,
    "radio/tuner.c": "/* tuner */\n" + LINES,
}


class SessionTest(ProgramTest):
    """Runs programs one after the other, on the same screen and with the same home directory."""

    def setUp(self):
        self.directory = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-session.")))
        for name, text in FILES.items():
            file = self.directory / name
            file.parent.mkdir(exist_ok=True)
            file.write_text(text, encoding="utf-8")
        self.home = self.directory / "home"
        self.home.mkdir()
        self.screen = Screen()
        self.addCleanup(self.screen.close)
        self.start()

    def start(self):
        self.launch(screen=self.screen, home=self.home)

    def text(self, name):
        return (self.directory / name).read_text(encoding="utf-8")

    def type(self, text):
        self.wait_for_keyboard()
        self.screen.keyboard.type(text)

    def open_workspace(self):
        self.varnel.choose("projectOpen")
        self.varnel.choose_file("openWorkspaceDialog", self.directory / "station.vnw")
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - station")

    def open_file(self, name, count, current):
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", self.directory / name)
        self.wait_for_files(count, current)

    def open_from_tree(self, keys, count, current):
        self.varnel.call("ProjectTree", "setFocus()")
        self.wait_for_keyboard()
        for key in keys.split():
            self.screen.keyboard.press(key)
        self.wait_for_files(count, current)

    def wait_for_files(self, count, current):
        self.varnel.wait_for("viewManagerTabBar", "count", count)
        self.varnel.wait_for("viewManagerTabBar", "currentIndex", current)

    def go_to_line(self, line):
        self.wait_for_keyboard()
        self.varnel.choose("viewGotoLine")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.screen.keyboard.type(f"{line}\n")
        self.varnel.find_gone("inputDialog")
        self.wait_for_cursor(line, 1)

    def wait_for_cursor(self, line, column):
        self.varnel.wait_for("cursorLabel", "text", f" Ln {line}, Col {column}")

    def change_outside(self, name, text):
        self.screen.focus.take_away()
        self.varnel.wait_for("mainWindow", "isActiveWindow", False)
        (self.directory / name).write_text(text, encoding="utf-8")
        self.screen.focus.give_back()

    def panes_at_the_end(self):
        """The cursor line in each pane of the files that were open at the exit."""
        (file,) = (self.home / ".local/state/Ostrand Labs/Varnel/sessions").glob("*.json")
        files = json.loads(file.read_text(encoding="utf-8"))["files"]
        return {pathlib.Path(file["path"]).name: [pane["line"] + 1 for pane in file["panes"]] for file in files}

    def test_restart_restores_workspace_files_panes_and_cursor(self):
        self.open_workspace()
        self.open_file("clock/clock.c", 1, 0)
        self.open_from_tree("Home Down Down Right Down Down Return", 2, 1)
        self.open_from_tree("Home Down Down Left Down Down Right Down Return", 3, 2)

        self.wait_for_cursor(1, 1)
        self.type("extern ")
        self.wait_for_cursor(1, 8)
        self.screen.keyboard.press("Ctrl+S")
        self.varnel.wait_until(lambda: self.text("radio/tuner.c").startswith("extern /* tuner */\n"), "the saved file")

        self.change_outside("clock/hand.c", "/* minute hand */\n" + LINES)
        self.varnel.answer(f"hand.c\n\n{CHANGED_OUTSIDE}", "y")
        self.wait_for_files(3, 1)  # the reloaded file becomes current

        self.wait_for_keyboard()
        self.varnel.choose("windowNext")
        self.wait_for_files(3, 2)
        self.varnel.choose("windowSplit")
        self.go_to_line(120)
        self.open_file("clock/hand.c", 3, 1)
        self.go_to_line(50)
        self.type("x")
        self.wait_for_cursor(50, 2)

        self.varnel.choose("fileExit")
        self.varnel.answer(f"hand.c {SAVE_CHANGES}", "y")
        self.assertEqual(self.program.wait(), 0)
        reloaded = ("/* minute hand */\n" + LINES).splitlines()
        self.assertEqual(self.text("clock/hand.c").splitlines(), [*reloaded[:49], "x" + reloaded[49], *reloaded[50:]])

        self.start()
        self.varnel.wait_for("mainWindow", "windowTitle", "Varnel - station")
        self.wait_for_files(3, 1)
        self.wait_for_cursor(50, 2)
        self.varnel.choose("windowNext")
        self.wait_for_files(3, 2)
        self.wait_for_cursor(120, 1)  # the lower pane has the focus, as before
        self.varnel.choose("fileExit")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.panes_at_the_end(), {"clock.c": [1], "hand.c": [50], "tuner.c": [1, 120]})

    def test_discarded_changes_do_not_reach_the_file(self):
        self.open_file("clock/clock.c", 1, 0)
        self.type("lost")
        self.wait_for_cursor(1, 5)
        self.varnel.choose("fileExit")
        self.varnel.answer(f"clock.c {SAVE_CHANGES}", "Escape")
        self.assertIsNone(self.program.process.poll())
        self.varnel.choose("fileExit")
        self.varnel.answer(f"clock.c {SAVE_CHANGES}", "n")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.text("clock/clock.c"), FILES["clock/clock.c"])

    def test_unsaved_text_is_recovered_after_a_crash(self):
        self.open_file("clock/clock.c", 1, 0)
        self.type("precious ")
        swap = self.home / ".local/state/Ostrand Labs/Varnel/swap"
        self.varnel.wait_until(lambda: any(b"precious /* clock */" in file.read_bytes() for file in swap.glob("*.swap")),
                               "the copy of the unsaved text")
        self.program.process.kill()
        self.program.wait()

        self.start()
        self.varnel.answer(RECOVER, "y")
        self.wait_for_files(1, 0)
        self.varnel.choose("fileClose")
        self.varnel.answer(f"clock.c {SAVE_CHANGES}", "y")
        self.varnel.wait_until(lambda: self.text("clock/clock.c") == "precious " + FILES["clock/clock.c"],
                               "the recovered text to be saved")
        self.assertEqual(list(swap.glob("*.swap")), [])


if __name__ == "__main__":
    unittest.main()
