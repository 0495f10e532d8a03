"""Memory, registers, peripherals and watches of two emulated boards."""
import pathlib
import re
import unittest

from debugtest import DebugTest

DESCRIPTION = pathlib.Path(__file__).parents[1] / "plugins/gdb/programs/board.svd"
TOGGLES = ("debugToggleRegisterWindow", "debugToggleMemoryWindow", "debugTogglePeripheralWindow", "debugToggleWatchWindow")


class FourWindowsTest(DebugTest):
    workspace = "twoprocessors.vnw"
    project = "thermostat"

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        for project in ("thermostat", "morse"):
            file = cls.examples / project / f"{project}.vnp"
            text = file.read_text(encoding="utf-8")
            file.write_text(text.replace("group=examples", f"group=examples;svdFile={DESCRIPTION}"), encoding="utf-8")

    # What the windows show -------------------------------------------------------

    def pane(self, name, project):
        return f"{project}/{name}"

    def rows(self, name, project):
        """[(name, value)] of the rows on the screen."""
        lines = self.varnel.read(self.pane(name, project), "text").splitlines()
        return [tuple(part.strip() for part in line.partition(" = ")[::2]) for line in lines]

    def value(self, name, project, row):
        return dict(self.rows(name, project)).get(row)

    def changed(self, name, project):
        return self.varnel.read(self.pane(name, project), "changed").splitlines()

    def wait_for_value(self, name, project, row, value):
        self.varnel.wait_until(lambda: self.value(name, project, row) == value, f"{row} = {value} in {name} of {project}")

    def first_word(self):
        """The address and the first word of the memory window in front."""
        words = self.varnel.read("memoryEdit", "plainText").split()
        return int(words[0], 16), words[1]

    # What the user does ----------------------------------------------------------

    def choose_project(self, project):
        for _ in range(2):
            if self.varnel.read("projectDropdown", "currentText") != project:
                self.varnel.press("Down" if self.varnel.read("projectDropdown", "currentIndex") == 0 else "Up",
                                  on="projectDropdown")
        self.varnel.wait_for("projectDropdown", "currentText", project)
        for name in ("registers", "memory", "peripherals", "watches"):
            self.varnel.wait_for(self.pane(name, project), "visible", True)

    def start_paused(self):
        self.user.build()
        for toggle in TOGGLES:
            if not self.varnel.read(toggle, "checked"):
                self.varnel.choose(toggle)
        self.varnel.choose("debugStepOver")
        self.varnel.wait_until(lambda: len(self.user.children("qemu")) == 2, "both boards", 60)
        self.wait_for_pause()

    def wait_for_pause(self):
        self.varnel.wait_for("debugStepOver", "enabled", True)
        self.user.wait_for_state("paused")

    def go_to_row(self, view, name, project, row):
        self.varnel.wait_until(lambda: self.value(name, project, row) is not None, f"a row {row}")
        self.varnel.press("Home", on=view)
        for _ in range([entry[0] for entry in self.rows(name, project)].index(row)):
            self.varnel.press("Down", on=view)

    def enter(self, view, name, project, row, text):
        """Edits a register or a field."""
        self.go_to_row(view, name, project, row)
        self.varnel.press("F2", on=view)
        self.varnel.wait_for("propertyEdit", "visible", True)
        self.varnel.write("propertyEdit", "text", text)
        self.varnel.press("Return", on=view)

    def enter_register(self, project, row, text):
        self.enter("registerList", "registers", project, row, text)

    def enter_device(self, project, row, text):
        self.enter("peripheralList", "peripherals", project, row, text)

    def open_device(self, project, row):
        self.go_to_row("peripheralList", "peripherals", project, row)
        self.varnel.press("Right", on="peripheralList")

    def rename(self, text):
        self.varnel.wait_for("renameEdit", "visible", True)
        self.varnel.write("renameEdit", "text", text)
        self.varnel.press("Return", on="renameEdit")
        self.varnel.wait_until(lambda: not self.varnel.exists("renameEdit"), "the text to be taken")

    def add_watch(self, project, expression):
        """Returns its value, for which the debugger is asked."""
        self.varnel.press("End", on="watchListView")
        self.varnel.press("F2", on="watchListView")
        self.rename(expression)
        self.varnel.wait_until(lambda: self.value("watches", project, expression), f"the value of {expression}")
        return self.value("watches", project, expression)

    def show_memory(self, address):
        self.varnel.press("Home", on="memoryRegion")
        for _ in range(6):
            if self.varnel.read("memoryRegion", "currentText") != "RAM":
                self.varnel.press("Down", on="memoryRegion")
        self.assertEqual(self.varnel.read("memoryRegion", "currentText"), "RAM")
        self.varnel.write("memoryAddress", "currentText", f"{address:#x}")
        self.varnel.press("Return", on="memoryAddress")
        self.varnel.wait_until(lambda: self.first_word()[0] == address, f"the memory at {address:#x}")

    # The tests -------------------------------------------------------------------

    def test_values_of_one_processor_are_changed_in_all_windows(self):
        self.start_paused()
        for project, number in (("thermostat", 0x1234), ("morse", 0x5678)):
            with self.subTest(project):
                self.choose_project(project)
                self.check_memory_and_watches(project, number)
                self.check_registers(project, number)
                self.check_peripherals(project, number)
        self.choose_project("thermostat")
        self.assertEqual(self.value("watches", "thermostat", "board_ticks"), str(0x1235))  # not those of the other one
        self.wait_for_value("registers", "thermostat", "r5", "0x00001234")
        self.wait_for_value("peripherals", "thermostat", "BLOCK0.LOAD", "0x00001234")

    def check_memory_and_watches(self, project, number):
        """Changes a variable in the memory window and in the watch window."""
        self.add_watch(project, "board_ticks")
        address = int(re.search(r"0x([0-9a-f]+)", self.add_watch(project, "&board_ticks")).group(1), 16)
        self.show_memory(address)
        self.varnel.wait_until(lambda: re.fullmatch("[0-9A-F]{8}", self.first_word()[1]), "the memory")
        self.varnel.press("Home", on="memoryEdit")
        for _ in range(9):
            self.varnel.press("Right", on="memoryEdit")
        self.varnel.type("memoryEdit", f"{number:08x}")
        self.varnel.press("Return", on="memoryEdit")
        self.wait_for_value("watches", project, "board_ticks", str(number))
        self.assertIn("board_ticks", self.changed("watches", project))

        self.varnel.press("Home", on="watchListView")
        self.varnel.press("Right", on="watchListView")  # to the value
        self.varnel.press("F2", on="watchListView")
        self.rename(str(number + 1))
        self.wait_for_value("watches", project, "board_ticks", str(number + 1))
        self.varnel.wait_until(lambda: self.first_word() == (address, f"{number + 1:08X}"), "the value in the memory")

    def check_registers(self, project, number):
        self.enter_register(project, "r5", f"{number:#x}")
        self.wait_for_value("registers", project, "r5", f"0x{number:08X}")
        self.assertIn("r5", self.changed("registers", project))
        self.assertEqual(self.add_watch(project, "$r5"), str(number))

    def check_peripherals(self, project, number):
        self.open_device(project, "DUALTIMER")
        self.enter_device(project, "BLOCK0.LOAD", f"{number:#x}")
        self.wait_for_value("peripherals", project, "BLOCK0.LOAD", f"0x{number:08X}")
        self.open_device(project, "BLOCK0.CONTROL")
        self.enter_device(project, "ENABLE [7]", "1")
        self.varnel.wait_until(lambda: int(self.value("peripherals", project, "BLOCK0.CONTROL"), 16) & 0x80, "the bit")
        self.assertIn("ENABLE [7]", self.changed("peripherals", project))
        self.open_device(project, "UART0")
        self.assertEqual(self.value("peripherals", project, "UART0.DATA"), "not read")
        self.assertEqual(self.value("peripherals", project, "UART0.INTCLEAR"), "write only")
        self.enter_device(project, "UART0.INTCLEAR", "0xf")
        self.wait_for_value("peripherals", project, "UART0.INTCLEAR", "0x0000000F")

    def test_step_of_each_processor_shows_its_new_values(self):
        self.start_paused()
        before = {}
        for project in ("morse", "thermostat"):
            self.choose_project(project)
            self.add_watch(project, "$pc,x")
            self.start_timer(project)
            before[project] = self.values(project)
        self.assertNotEqual(before["morse"], before["thermostat"])
        for project in ("thermostat", "morse"):
            self.choose_project(project)
            self.varnel.choose("debugStepOver")
            self.varnel.wait_until(lambda: all(new != old for new, old in zip(self.values(project), before[project])),
                                   f"new values of {project}", 60)
            self.wait_for_pause()
            self.assertIn("pc", self.changed("registers", project))
            self.assertNotIn("r11", self.changed("registers", project))
            self.assertIn("$pc,x", self.changed("watches", project))
            self.assertIn("BLOCK0.VALUE", self.changed("peripherals", project))
            self.assertNotIn("BLOCK0.LOAD", self.changed("peripherals", project))

    def start_timer(self, project):
        self.open_device(project, "DUALTIMER")
        self.enter_device(project, "BLOCK0.LOAD", "0x70000000")
        self.open_device(project, "BLOCK0.CONTROL")
        self.enter_device(project, "SIZE [1]", "1")
        self.enter_device(project, "ENABLE [7]", "1")
        self.go_to_row("peripheralList", "peripherals", project, "BLOCK0.VALUE")  # only rows on the screen are read

    def values(self, project):
        """Values that each step changes."""
        return (self.value("registers", project, "pc"), self.value("watches", project, "$pc,x"),
                self.value("peripherals", project, "BLOCK0.VALUE"))


if __name__ == "__main__":
    unittest.main()
