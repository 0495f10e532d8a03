"""Tests of files that are too large for the editor."""
import os
import pathlib
import tempfile
import unittest

from driver import ProgramTest, Screen

TOO_LARGE = "The file is too large to open for editing.\n\nIt will be opened read-only."
LINE_COUNT = 1_000_000
LINE = "{:07} a line of a log that another program has written to this file\n"


class LargeFileTest(ProgramTest):
    def setUp(self):
        directory = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-large.")))
        self.file = directory / "long.log"
        with open(self.file, "w", encoding="ascii") as file:
            file.writelines(map(LINE.format, range(LINE_COUNT)))
        screen = Screen()
        self.addCleanup(screen.close)
        self.launch(screen=screen)
        self.keyboard = screen.keyboard

    def open(self):
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", self.file)
        self.varnel.answer(TOO_LARGE, "Return")
        self.varnel.wait_for("long/lines", "visible", True)
        self.wait_for_keyboard()

    def wait_for_line(self, number, column=1):
        self.varnel.wait_for("cursorLabel", "text", f" Ln {number}, Col {column}")

    def shown(self):
        return self.varnel.read("long/lines", "text")

    def wait_for_words(self, name, words):
        self.varnel.wait_for(name, "text", lambda text: words in text)

    def test_log_is_paged_searched_and_reloaded(self):
        self.open()
        self.wait_for_words("LargeTextStatus", "1,000,000 lines")
        self.keyboard.press("PageDown")
        self.varnel.wait_for("cursorLabel", "text", lambda text: int(text.split()[1].rstrip(",")) > 10)
        self.keyboard.press("Ctrl+End")
        self.wait_for_line(LINE_COUNT, len(LINE.format(0)))
        self.assertIn("0999999 a line", self.shown())

        self.keyboard.press("Ctrl+F")
        self.varnel.wait_for("LargeTextFindWhat", "visible", True)
        self.varnel.wait_until(lambda: not self.varnel.read("findDialog", "visible"), "no dialog")
        self.keyboard.type("0123456\n")
        self.wait_for_words("LargeTextResult", "1 of 1")
        self.wait_for_line(123_457)
        self.keyboard.press("F3")
        self.wait_for_words("LargeTextResult", "past the end of the file")
        self.keyboard.press("Escape")
        self.varnel.find_gone("LargeTextFindWhat")

        self.varnel.choose("viewGotoLine")
        self.varnel.wait_for("inputDialog", "isActiveWindow", True)
        self.keyboard.type("777777\n")
        self.wait_for_line(777_777)
        self.assertIn("0777776 a line", self.shown())

        os.truncate(self.file, 10 * len(LINE.format(0)))
        self.wait_for_words("LargeTextNotice", "The file has become shorter.")
        self.varnel.click("LargeTextReload")
        self.wait_for_words("LargeTextStatus", "10 lines")
        self.varnel.wait_for("LargeTextReload", "visible", False)
        self.assertTrue(self.shown().startswith("0000000 a line"))

    def test_end_is_followed_while_another_program_writes(self):
        self.open()
        self.varnel.click("LargeTextFollow", x=8)
        self.wait_for_words("long/lines", "0999999 a line")
        with open(self.file, "a", encoding="ascii") as file:
            file.write("the last words\n")
        self.wait_for_words("long/lines", "the last words")
        self.file.unlink()
        self.wait_for_words("LargeTextNotice", "The file has been deleted or moved.")
        self.assertIn("the last words", self.shown())


if __name__ == "__main__":
    unittest.main()
