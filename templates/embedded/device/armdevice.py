"""A Cortex-M chip, and the files of a firmware project for it."""
import dataclasses
import os
import pathlib
import re
import shutil
from xml.etree import ElementTree

from varneltexts import tr

LARGEST_SVD = 100_000_000  # bytes
MOST_INTERRUPTS = 480
_EXCEPTIONS = {2: "NMI", 3: "HardFault", 4: "MemManage", 5: "BusFault", 6: "UsageFault", 11: "SVC", 12: "DebugMon",
               14: "PendSV", 15: "SysTick"}


class DeviceError(Exception):
    """A text of the form that cannot be used; `field` is its name."""

    def __init__(self, field, message):
        super().__init__(message)
        self.field = field


@dataclasses.dataclass(frozen=True)
class Core:
    name: str
    flags: str
    machine: str = ""  # QEMU's board with this core; empty if there is none
    memories: tuple = ((0, 0x400000), (0x20000000, 0x400000))  # of that board: flash and RAM

    @property
    def has_fpu(self):
        return "-mfpu" in self.flags

    @property
    def interrupts(self):
        return 32 if re.search(r"-m(0|1|23)\b|-m0plus", self.flags) else 96


_SMALL = ((0, 0x40000), (0x20000000, 0x4000))
_SECURE = ((0x10000000, 0x400000), (0x38000000, 0x400000))
CORES = [Core("Cortex-M0", "-mcpu=cortex-m0", "microbit", _SMALL),
         Core("Cortex-M0+", "-mcpu=cortex-m0plus"),
         Core("Cortex-M3", "-mcpu=cortex-m3", "mps2-an385"),
         Core("Cortex-M4", "-mcpu=cortex-m4", "mps2-an386"),
         Core("Cortex-M4 with FPU", "-mcpu=cortex-m4 -mfpu=fpv4-sp-d16 -mfloat-abi=hard", "mps2-an386"),
         Core("Cortex-M7", "-mcpu=cortex-m7+nofp", "mps2-an500"),
         Core("Cortex-M7 with FPU", "-mcpu=cortex-m7 -mfpu=fpv5-d16 -mfloat-abi=hard", "mps2-an500"),
         Core("Cortex-M23", "-mcpu=cortex-m23"),
         Core("Cortex-M33", "-mcpu=cortex-m33+nofp+nodsp", "mps2-an505", _SECURE),
         Core("Cortex-M33 with FPU", "-mcpu=cortex-m33 -mfpu=fpv5-sp-d16 -mfloat-abi=hard", "mps2-an505", _SECURE)]


@dataclasses.dataclass(frozen=True)
class Probe:
    name: str
    interface: str = ""  # OpenOCD's file
    transport: str = "swd"


PROBES = [Probe("CMSIS-DAP", "interface/cmsis-dap.cfg"),
          Probe("J-Link", "interface/jlink.cfg"),
          Probe("ST-LINK", "interface/stlink-dap.cfg", "dapdirect_swd"),
          Probe("A debug server at 127.0.0.1:3333"),
          Probe("No probe: emulation by QEMU")]
SERVER, EMULATION = PROBES[3], PROBES[4]


@dataclasses.dataclass(frozen=True)
class Device:
    core: Core
    flash: tuple  # start and size in bytes
    ram: tuple
    probe: Probe
    svd_file: str = ""
    chip_file: str = ""  # OpenOCD's description of the chip
    interrupts: tuple = ()  # names by number; empty ones are reserved

    @staticmethod
    def of_texts(core, flash_start, flash_size, ram_start, ram_size, svd_file="", probe=EMULATION.name, chip_file=""):
        """What the user has entered. Raises DeviceError."""
        kind = next(each for each in CORES if each.name == core)
        flash = (_number("flashStart", flash_start), _number("flashSize", flash_size))
        ram = (_number("ramStart", ram_start), _number("ramSize", ram_size))
        svd_file = os.path.expanduser(svd_file.strip())
        interrupts = interrupts_of(svd_file) if svd_file else ("",) * kind.interrupts
        _check_memories(flash, ram, 4 * (16 + len(interrupts)))
        if not re.fullmatch(r"[\w./ +-]*", chip_file):
            raise DeviceError("chip", tr("The chip file of OpenOCD has a name such as target/chip.cfg."))
        device = Device(kind, flash, ram, next(each for each in PROBES if each.name == probe), svd_file,
                        chip_file.strip(), interrupts)
        if device.probe is EMULATION:
            _check_board(device)
        return device


def _number(field, text):
    match = re.fullmatch(r"\s*(0[xX][0-9a-fA-F_]+|[0-9]+)\s*([kKmM]?)[bB]?\s*", text)
    if not match:
        raise DeviceError(field, tr("'{}' is not a number. Write it like 0x8000, 64K or 1M.").format(text))
    return int(match[1].replace("_", ""), 0 if match[1][:2] in ("0x", "0X") else 10) \
        * {"": 1, "K": 1024, "M": 1048576}[match[2].upper()]


def _check_memories(flash, ram, vectors):
    for field, (start, size), least in (("flash", flash, vectors + 256), ("ram", ram, 1024)):
        if size < least:
            raise DeviceError(field + "Size", tr("The memory is too small: it needs {} bytes.").format(least))
        if start + size > 0x100000000:
            raise DeviceError(field + "Start", tr("The memory does not end below 4 GB."))
        if start % 1024:
            raise DeviceError(field + "Start", tr("The memory must begin at a multiple of 1024."))
        if size % 8:
            raise DeviceError(field + "Size", tr("The size of the memory must be a multiple of 8."))
    if flash[0] < ram[0] + ram[1] and ram[0] < flash[0] + flash[1]:
        raise DeviceError("ramStart", tr("Flash and RAM overlap."))


def _check_board(device):
    core = device.core
    if not core.machine:
        raise DeviceError("chip", tr("QEMU has no board with a {}.").format(core.name))
    for field, (start, size), (first, most) in (("flash", device.flash, core.memories[0]),
                                                ("ram", device.ram, core.memories[1])):
        outside = start < first or start + size > first + most
        if outside or (field == "flash" and start != first):  # it starts with the vector table there
            raise DeviceError(field + "Start",
                              tr("The emulated board '{board}' has this memory at {start} with {size} KB.").format(
                                  board=core.machine, start=f"{first:#x}", size=most // 1024))


def interrupts_of(svd_file):
    """The names of the interrupts that an SVD file describes, by their number. Raises DeviceError."""
    try:
        if os.path.getsize(svd_file) > LARGEST_SVD:
            raise DeviceError("svd", tr("'{}' is too large for an SVD file.").format(svd_file))
        names = dict(_interrupts(svd_file))
    except (OSError, ElementTree.ParseError) as error:
        raise DeviceError("svd", tr("The SVD file cannot be read: {}").format(error)) from None
    count = max(names, default=-1) + 1
    return tuple(names.get(number, "") for number in range(count))


def _interrupts(svd_file):
    used = set()
    for _, element in ElementTree.iterparse(svd_file):
        if element.tag != "interrupt":
            continue
        name = re.sub(r"\W", "_", element.findtext("name", "").strip(), flags=re.ASCII)
        value = element.findtext("value", "").strip()
        if not name or name in used or not re.fullmatch(r"0[xX][0-9a-fA-F]+|[0-9]+", value):
            continue
        number = int(value, 16 if value[1:2] in ("x", "X") else 10)
        if number < MOST_INTERRUPTS:
            used.add(name)
            yield number, name


# The files ------------------------------------------------------------------

def write_project(device, name, directory):
    """Writes the files of the project, and returns the path of the project file. Replaces no file."""
    target = pathlib.Path(directory)
    target.mkdir(parents=True, exist_ok=True)
    files = {"device.ld": linker_script(device), "startup.c": startup(device), "main.c": _MAIN}
    if device.probe.interface:
        files["openocd.cfg"] = openocd(device)
    svd_name = os.path.basename(device.svd_file)
    files[f"{name}.vnp"] = project(device, svd_name)
    for file in [*files, *([svd_name] if svd_name else [])]:
        if (target / file).exists() and not _is_same(target / file, device.svd_file):
            raise FileExistsError(17, "File exists", str(target / file))
    for file, text in files.items():
        (target / file).write_text(text, encoding="utf-8")
    if svd_name and not (target / svd_name).exists():
        shutil.copyfile(device.svd_file, target / svd_name)
    return str(target / f"{name}.vnp")


def _is_same(path, other):
    return bool(other) and path.samefile(other)


_MAIN = """volatile unsigned int counter; /* watch it in the debugger */

int main(void)
{
    for (;;)
        ++counter;
}
"""


def linker_script(device):
    return f"""/* Code and constants in the flash memory, data in the RAM. */
ENTRY(Reset_Handler)

MEMORY
{{
    flash (rx) : ORIGIN = {device.flash[0]:#010x}, LENGTH = {device.flash[1]:#x}
    ram (rwx) : ORIGIN = {device.ram[0]:#010x}, LENGTH = {device.ram[1]:#x}
}}

top_of_stack = ORIGIN(ram) + LENGTH(ram);

SECTIONS
{{
    .vectors : {{ KEEP(*(.vectors)) }} > flash
    .text : {{ *(.text*) . = ALIGN(4); }} > flash
    .rodata : {{ *(.rodata*) . = ALIGN(4); }} > flash
    .data : {{ start_data = .; *(.data*) . = ALIGN(4); end_data = .; }} > ram AT > flash
    load_data = LOADADDR(.data);
    .bss (NOLOAD) : {{ start_bss = .; *(.bss*) *(COMMON) . = ALIGN(4); end_bss = .; }} > ram
}}
"""


def startup(device):
    handlers = [_EXCEPTIONS.get(number, "") for number in range(2, 16)] + list(device.interrupts)
    handlers = [f"{each}_Handler" if each and number < 14 else f"{each}_IRQHandler" if each else ""
                for number, each in enumerate(handlers)]
    weak = "".join(f'void {each}(void) __attribute__((weak, alias("Default_Handler")));\n'
                   for each in handlers if each)
    table = "".join(f"    {each or 'Default_Handler'},\n" for each in handlers)
    fpu = """    *(volatile uint32_t *)0xE000ED88 |= 0xFu << 20; /* lets the program use the floating-point unit */
    __asm volatile("dsb\\n isb");
""" if device.core.has_fpu else ""
    return f"""/* The vector table, and the initialisation of memory between reset and main. */
#include <stdint.h>

extern uint32_t load_data[], start_data[], end_data[], start_bss[], end_bss[], top_of_stack[];

int main(void);

void Reset_Handler(void)
{{
{fpu}    const uint32_t *from = load_data;
    for (uint32_t *to = start_data; to < end_data; ++to)
        *to = *from++;
    for (uint32_t *to = start_bss; to < end_bss; ++to)
        *to = 0;
    main();
    for (;;)
        ;
}}

/* Interrupts and faults without a handler stop here: the call stack shows where they came from. */
void Default_Handler(void)
{{
    for (;;)
        ;
}}

/* To handle one of these, define a function of its name. */
{weak}
typedef void (*handler)(void);

/* The stack pointer, the exceptions of the core, then the {len(device.interrupts)} interrupts of the chip. */
__attribute__((section(".vectors"), used)) static const handler vectors[] = {{
    (handler)top_of_stack,
    Reset_Handler,
{table}}};

/* The compiler generates calls of these two functions. */
__attribute__((optimize("no-tree-loop-distribute-patterns"))) void *memset(void *to, int value, unsigned int count)
{{
    for (unsigned int i = 0; i < count; ++i)
        ((uint8_t *)to)[i] = (uint8_t)value;
    return to;
}}

__attribute__((optimize("no-tree-loop-distribute-patterns"))) void *memcpy(void *to, const void *from,
                                                                           unsigned int count)
{{
    for (unsigned int i = 0; i < count; ++i)
        ((uint8_t *)to)[i] = ((const uint8_t *)from)[i];
    return to;
}}
"""


def openocd(device):
    if device.chip_file:
        chip = f"source [find {{{device.chip_file}}}]\n"
    else:
        chip = f"""# Any Cortex-M core. Its flash memory cannot be written: for that, name the file of your chip instead, as in
# source [find target/chip.cfg]
swd newdap chip cpu -expected-id 0
dap create chip.dap -chain-position chip.cpu
target create chip.cpu cortex_m -dap chip.dap
chip.cpu configure -work-area-phys {device.ram[0]:#x} -work-area-size {min(device.ram[1], 4096):#x}
"""
    return f"""# How OpenOCD reaches the chip.
source [find {device.probe.interface}]
transport select {device.probe.transport}
adapter speed 1000

{chip}
# Only the debugger connects, so that several sessions can run.
tcl_port disabled
telnet_port disabled
"""


def project(device, svd_name):
    environment = {"buildenvironment": "{4a4905aa-65c2-400d-a8cd-89d2955cfc30}", "buildenvironmentname": "GNU Arm",
                   "buildenvironmentoption": "", "executionenvironment": "{27aa5f2d-ef64-4eab-9fda-9693e2e6117f}",
                   "executionenvironmentname": "GDB", "executionenvironmentoption": ""}
    root = ElementTree.Element("project", environment)
    board = ["startup.c", "device.ld"] + (["openocd.cfg"] if device.probe.interface else [])
    for name, suffixes, files in (("Sources", ["c", "s"], ["main.c"]), ("Headers", ["h"], []),
                                  ("Board", [], board + ([svd_name] if svd_name else []))):
        folder = ElementTree.SubElement(root, "folder", name=name)
        for suffix in suffixes:
            ElementTree.SubElement(folder, "extension", name=suffix)
        for file in files:
            ElementTree.SubElement(folder, "file", path=file)
    properties = ElementTree.SubElement(root, "properties", currentconfiguration="Debug")
    settings = {**_build_settings(device), **_debug_settings(device, svd_name)}
    for name, optimisation in (("Debug", "g"), ("Release", "s")):
        configuration = ElementTree.SubElement(properties, "configuration", name=name)
        for key, value in sorted({**settings, "buildOptimisation": optimisation}.items()):
            ElementTree.SubElement(configuration, "property", key=key).text = value
    ElementTree.indent(root, " ")
    return ElementTree.tostring(root, encoding="unicode") + "\n"


def _build_settings(device):
    return {"buildCStandard": "gnu11", "buildDebugInformation": "3", "buildFlags": "-ffreestanding",
            "buildLibraries": "gcc", "buildLinkFlags": "-nostdlib -nostartfiles", "buildLinkerScript": "device.ld",
            "buildMachine": f"{device.core.flags} -mthumb", "buildWarnings": "extra", "buildImage": "ihex",
            "buildMatch": r"(?:In file included from | +from |.*ld: [^ ]*\.o:|.*ld: |)(file):(line)[:,]"}


def _debug_settings(device, svd_name):
    settings = {"gdbSvdFile": svd_name} if svd_name else {}
    if device.probe is EMULATION:
        return {**settings, "gdbTarget": "qemu", "gdbMachine": device.core.machine}
    settings |= {"gdbTarget": "remote", "gdbResetCommand": "reset halt",
                 "gdbRegions": f"Flash:{device.flash[0]:#x}:{device.flash[1]:#x}:rom;"
                               f"RAM:{device.ram[0]:#x}:{device.ram[1]:#x}:ram;Devices:0x40000000:0x20000000:io"}
    if device.probe is SERVER:
        return {**settings, "gdbAddress": "127.0.0.1:3333"}
    return {**settings, "gdbAddress": "127.0.0.1:$(Port)", "gdbServer": 'openocd -c "gdb_port $(Port)" -f openocd.cfg'}
