"""Tests of recording and replaying events."""
import pathlib
import tempfile
import unittest

from driver import GuiTest, replayable


class RecordingTest(GuiTest):
    def setUp(self):
        super().setUp()
        self.varnel.find("searchBox")
        self.varnel.write("searchBox", "enabled", True)

    def test_replayed_events_have_the_same_result(self):
        recording = self.varnel.record()
        self.varnel.type("searchBox", "Find Me\b")
        self.varnel.press("Home", on="searchBox")
        self.varnel.press("Delete", on="searchBox")
        typed = self.varnel.read("searchBox", "currentText")
        commands = [command for command in recording.stop() if "searchBox" in command]
        self.assertEqual(typed, "ind M")
        self.assertEqual(len(commands), 20)  # each key has a press and a release

        self.varnel.press("Ctrl+A", on="searchBox")
        self.varnel.press("Delete", on="searchBox")
        self.assertEqual(self.varnel.read("searchBox", "currentText"), "")
        for command in commands:
            word, name, kind, *fields = replayable(command).split(" ", 3)
            self.assertEqual((word, name), ("EVENT", "searchBox"))
            self.varnel.event(name, kind, *fields)
        self.assertEqual(self.varnel.read("searchBox", "currentText"), typed)

    def test_click_is_recorded_with_the_path_of_the_widget(self):
        recording = self.varnel.record()
        self.varnel.click("searchBox", 3, 4)
        self.varnel.press("Escape", on="searchBox")
        presses = [command for command in recording.stop() if command.split(" ")[2] == "2"]
        self.assertRegex(presses[0], r"^EVENT mainWindow\.\w+\.searchBox 2 3 4 3 4 1 0$")


class EditorRecordingTest(GuiTest):
    """Records keys and clicks of two panes of an editor."""

    TEXT = "int first;\nint second;\nint third;\n"

    def setUp(self):
        super().setUp()
        directory = tempfile.TemporaryDirectory(prefix="varnel-recording.")
        self.addCleanup(directory.cleanup)
        self.file = pathlib.Path(directory.name) / "sample.c"
        self.open_file()

    def open_file(self):
        """With a fresh text and two panes."""
        self.file.write_text(self.TEXT, encoding="ascii")
        self.varnel.choose("fileOpen")
        self.varnel.choose_file("openFileDialog", self.file)
        self.varnel.wait_for("sample", "visible", True)
        self.varnel.choose("windowSplit")
        self.varnel.wait_for("sample2", "visible", True)

    def edit(self):
        """Replaces words by selecting them with the mouse and the keyboard, and types a block that is indented."""
        line = self.varnel.read("sample2/text", "height") // 100 + 3  # within the first line
        self.varnel.click("sample2/text", 2, line)
        self.varnel.press("Shift+Ctrl+Right", on="sample2")
        self.varnel.type("sample2", "long ")
        self.varnel.click("sample/text", 8, line, double=True)
        self.varnel.type("sample", "char")
        self.varnel.press("Ctrl+End", on="sample")
        self.varnel.type("sample", "void f()")
        self.varnel.press("Return", on="sample")
        self.varnel.type("sample", "{")
        self.varnel.press("Return", on="sample")
        self.varnel.type("sample", "x")
        self.varnel.press("Backspace", on="sample")
        self.varnel.type("sample", "return;")

    def text(self):
        return self.varnel.read("sample", "text")

    def test_recording_of_an_editor_gives_the_same_text_again(self):
        recording = self.varnel.record()
        self.edit()
        commands = [command for command in recording.stop() if "sample" in command]
        typed = self.text()
        self.assertEqual(typed, "char first;\nint second;\nint third;\nvoid f()\n{\n\treturn;")
        self.varnel.choose("fileSave")
        self.varnel.choose("fileClose")
        self.varnel.find_gone("sample")

        self.open_file()
        self.assertEqual(self.text(), self.TEXT)
        names = set()
        for command in commands:
            _, name, kind, *fields = replayable(command).split(" ", 3)
            names.add(name)
            self.varnel.event(name, kind, *fields)
        self.assertEqual(self.text(), typed)
        self.assertLessEqual({"sample", "sample2", "sample/text", "sample2/text"}, names)


if __name__ == "__main__":
    unittest.main()
