"""Tests of recording and replaying events."""
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


if __name__ == "__main__":
    unittest.main()
