"""Tests of the disassembly of emulated boards."""
import unittest

from debugging import line_of
from debugtest import DebugTest

LINES = "disassembly/thermostat/lines"


class DisassemblyTest(DebugTest):
    workspace = "thermostat/thermostat.vnw"
    project = "thermostat"

    def rows(self):
        return self.varnel.read(LINES, "text").splitlines()

    def row_of(self, words):
        """The number of the first row on screen that contains `words`."""
        return next(number for number, row in enumerate(self.rows()) if words in row)

    def address_in(self, row):
        return int(self.rows()[row].split()[0], 16)

    def click(self, part, row, column=0):
        """Clicks into "text" or "margin"."""
        self.varnel.click(f"disassembly/thermostat/{part}",
                          x=self.varnel.read(LINES, "charWidth") * column + 4,
                          y=self.varnel.read(LINES, "lineHeight") * row + 6)

    def wait_for_address(self, address):
        """Waits until the program is paused with the cursor at that address."""
        self.user.wait_for_stop(address + 1)

    def open_at_main(self):
        self.user.build()
        self.varnel.choose("debugStepOver")
        self.user.wait_for_stop(line_of(self.examples / "thermostat/main.c", "int main") + 3)
        self.varnel.choose("debugViewDisassembly")
        self.varnel.wait_for("viewManagerTabBar", "count", 2)
        self.wait_for_keyboard()

    def test_board_is_debugged_by_instructions(self):
        self.open_at_main()
        call = self.row_of("<board_init>")
        self.wait_for_address(self.address_in(call))  # it opens where the program is
        back = self.address_in(call)

        self.keyboard.press("F11")
        self.varnel.wait_until(lambda: any("; board_init" in row for row in self.rows()), "the called function")
        start = self.address_in(self.row_of("; board_init"))
        self.wait_for_address(start)
        self.keyboard.press("F11")
        self.wait_for_address(start + 2)

        called = self.row_of("<uart_init>")
        target = int(self.rows()[called].split(" bl ")[1].split()[0], 16)
        self.click("text", called, self.rows()[called].index("0x") + 1)
        self.wait_for_address(target)
        self.click("margin", self.row_of("; uart_init"))
        self.wait_for_keyboard()
        self.keyboard.press("Alt+Left")
        self.wait_for_address(start + 2)

        self.keyboard.press("F5")
        self.wait_for_address(target)  # the breakpoint is hit
        self.varnel.write("DisassemblyGoTo", "text", f"{back:#x}")
        self.varnel.press("Return", on="DisassemblyGoTo")
        self.wait_for_address(back)
        self.keyboard.press("Alt+Left")
        self.wait_for_address(target)
        self.varnel.choose("debugStop")
        self.user.wait_for_state("")


class TwoDisassembliesTest(DebugTest):
    workspace = "twoprocessors.vnw"
    project = "thermostat"
    settings = {"Editor": {"WorkspaceStyle": 1}}  # windows in the main window

    def rows(self, project):
        return self.varnel.read(f"disassembly/{project}/lines", "text").splitlines()

    def test_two_processors_side_by_side(self):
        self.user.build()
        self.varnel.choose("debugStepOver")
        self.varnel.wait_until(lambda: len(self.user.children("qemu")) == 2, "both boards", 60)
        self.varnel.wait_for("debugStepOver", "enabled", True)
        self.varnel.choose("debugViewDisassembly")
        self.varnel.wait_until(lambda: any("; main" in row for row in self.rows("thermostat")), "the first processor")
        self.varnel.press("Down" if self.varnel.read("projectDropdown", "currentIndex") == 0 else "Up", on="projectDropdown")
        self.varnel.wait_for("projectDropdown", "currentText", "morse")
        self.varnel.wait_for("debugViewDisassembly", "enabled", True)
        self.varnel.choose("debugViewDisassembly")
        self.varnel.wait_until(lambda: self.rows("morse"), "the second processor")
        self.varnel.choose("windowTile")
        for project in ("thermostat", "morse"):
            self.assertTrue(self.varnel.read(f"disassembly/{project}/text", "visible"), project)
        current = self.varnel.read("cursorLabel", "text")
        self.varnel.choose("debugStepOver")  # of both; the current one is in front
        self.varnel.wait_for("cursorLabel", "text", lambda text: text != current, 60)
        self.varnel.wait_for("debugStepOver", "enabled", True)
        self.assertNotEqual(self.rows("morse")[:3], self.rows("thermostat")[:3])
        self.varnel.choose("debugStop")
        self.varnel.wait_for("debugStop", "enabled", False)


if __name__ == "__main__":
    unittest.main()
