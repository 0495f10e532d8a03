"""Firmware projects for chips of one's own: what the form accepts, and the files that are made."""
import pathlib
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

from program import use_scripts

use_scripts("embedded/device")
from armdevice import CORES, EMULATION, PROBES, Device, DeviceError, interrupts_of, write_project  # noqa: E402

SVD = """<device><peripherals><peripheral><name>UART</name>
<interrupt><name>UART0</name><value>5</value></interrupt><interrupt><name>bad name</name><value>0x1</value></interrupt>
<interrupt><name>UART0</name><value>7</value></interrupt><interrupt><name>X</name><value>99999</value></interrupt>
<interrupt><name>Y</name></interrupt><interrupt/></peripheral></peripherals></device>"""


def texts(**other):
    return {"core": "Cortex-M3", "flash_start": "0", "flash_size": "256K", "ram_start": "0x20000000", "ram_size": "16K",
            **other}


class DeviceTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name, "a 'b' \u00e4 %1")
        self.root.mkdir()
        self.target = self.root / "fw"

    def create(self, **other):
        device = Device.of_texts(**texts(**other))
        self.project = ElementTree.parse(write_project(device, "fw", self.target)).getroot()
        return {each.get("key"): each.text for each in
                self.project.find("properties/configuration[@name='Debug']")}

    def run_tool(self, *command):
        result = subprocess.run(command, cwd=self.target, capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout + result.stderr

    def link(self, options):
        """Builds the program as the project does, and returns the addresses of its symbols."""
        self.assertEqual(self.run_tool(
            "arm-none-eabi-gcc", *options["buildMachine"].split(), "-Og", "-Wall", "-Wextra", "-std=gnu11",
            "-ffreestanding", "-nostdlib", "-nostartfiles", f"-T{options['buildLinkerScript']}", "main.c", "startup.c",
            "-lgcc", "-o", "fw.elf"), "")
        lines = self.run_tool("arm-none-eabi-nm", "fw.elf").splitlines()
        return {name: int(address, 16) for address, _, name in (line.split() for line in lines)}

    def test_numbers(self):
        for text, value in (("0", 0), (" 0x8000 ", 0x8000), ("64K", 65536), ("1 MB", 1048576), ("0x10_0000", 0x100000),
                            ("2m", 2097152), ("01024", 1024)):
            device = Device.of_texts(**texts(flash_start=text, probe=PROBES[0].name))
            self.assertEqual(device.flash[0], value, text)

    def test_texts_that_are_refused(self):
        for field, other in (("flashStart", {"flash_start": "x"}), ("flashSize", {"flash_size": "-1"}),
                             ("flashSize", {"flash_size": ""}), ("flashSize", {"flash_size": "512"}),
                             ("flashStart", {"flash_start": "0xFFFFFC00", "flash_size": "64K"}),
                             ("flashStart", {"flash_start": "100"}), ("ramSize", {"ram_size": "1000"}),
                             ("ramSize", {"ram_size": "1025"}), ("ramSize", {"ram_size": "1G"}),
                             ("ramStart", {"ram_start": "0x1000"}), ("svd", {"svd_file": "/no/such"}),
                             ("svd", {"svd_file": "/dev/null"}), ("svd", {"svd_file": "/"}),
                             ("chip", {"chip_file": "a}; exit"}), ("chip", {"core": "Cortex-M0+"}),
                             ("flashStart", {"flash_start": "0x8000000"}), ("flashStart", {"flash_start": "1K"}),
                             ("ramStart", {"ram_start": "0x30000000"})):
            with self.assertRaises(DeviceError, msg=str(other)) as raised:
                Device.of_texts(**texts(**other))
            self.assertEqual(raised.exception.field, field, other)

    def test_each_core_is_built_without_warnings(self):
        for core in CORES:
            (flash, _), (ram, _) = core.memories
            with self.subTest(core.name), tempfile.TemporaryDirectory() as directory:
                self.target = pathlib.Path(directory)
                options = self.create(core=core.name, flash_start=hex(flash), ram_start=hex(ram), probe=PROBES[0].name)
                symbols = self.link(options)
                self.assertEqual(symbols["vectors"], flash)
                self.assertEqual(symbols["top_of_stack"], ram + 16 * 1024)
                self.assertEqual(symbols["start_data"], ram)

    def test_vector_table_has_the_interrupts_of_the_svd_file(self):
        svd = self.root / "chip.svd"
        svd.write_text(SVD, encoding="utf-8")
        self.assertEqual(interrupts_of(str(svd)), ("", "bad_name", "", "", "", "UART0"))
        options = self.create(svd_file=str(svd))
        self.assertEqual(options["gdbSvdFile"], "chip.svd")
        self.assertEqual((self.target / "chip.svd").read_text(encoding="utf-8"), SVD)
        main = self.target / "main.c"
        main.write_text(main.read_text(encoding="utf-8") + "void UART0_IRQHandler(void) { ++counter; }\n"
                        "void SysTick_Handler(void) { ++counter; }\n", encoding="utf-8")
        symbols = self.link({**options, "buildMachine": options["buildMachine"] + " -Wno-missing-prototypes"})
        self.run_tool("arm-none-eabi-objcopy", "-O", "binary", "-j", ".vectors", "fw.elf", "fw.bin")
        words = memoryview((self.target / "fw.bin").read_bytes()).cast("I")
        self.assertEqual(len(words), 16 + 6)
        self.assertEqual([words[0], words[1], words[2], words[15], words[16], words[21]],
                         [symbols["top_of_stack"]] + [symbols[name] | 1 for name in (
                             "Reset_Handler", "Default_Handler", "SysTick_Handler", "Default_Handler", "UART0_IRQHandler")])

    def test_openocd_reads_the_configuration_of_each_probe(self):
        for probe in PROBES[:3]:
            for chip in ("", "target/stm32f4x.cfg"):
                with self.subTest(probe.name, chip=chip), tempfile.TemporaryDirectory() as directory:
                    self.target = pathlib.Path(directory)
                    options = self.create(probe=probe.name, chip_file=chip)
                    self.assertEqual((options["gdbTarget"], options["gdbResetCommand"]), ("remote", "reset halt"))
                    self.assertEqual(options["gdbServer"], 'openocd -c "gdb_port $(Port)" -f openocd.cfg')
                    self.assertIn("targets are", self.run_tool(
                        "openocd", "-f", "openocd.cfg", "-c", 'echo "targets are [target names]"', "-c", "shutdown"))

    def test_debug_server_and_emulation(self):
        self.assertEqual(self.create(probe=PROBES[3].name)["gdbAddress"], "127.0.0.1:3333")
        self.target = self.root / "other"
        options = self.create(probe=EMULATION.name)
        self.assertEqual((options["gdbTarget"], options["gdbMachine"]), ("qemu", "mps2-an385"))
        self.assertFalse((self.target / "openocd.cfg").exists())

    def test_no_file_is_replaced(self):
        self.target.mkdir()
        (self.target / "main.c").write_text("mine", encoding="utf-8")
        with self.assertRaises(FileExistsError):
            self.create()
        self.assertEqual([each.name for each in self.target.iterdir()], ["main.c"])


if __name__ == "__main__":
    unittest.main()
